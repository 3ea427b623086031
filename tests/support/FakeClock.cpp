#include "support/FakeClock.h"

#include <atomic>

namespace norva::testing {

namespace {
std::atomic<TTickCount> gNow{0};
TTickCount FakeNow() { return gNow.load(); }
}  // namespace

TFakeClock::TFakeClock(TTickCount start) : mPrevious(SetTickSource(&FakeNow)) { gNow = start; }

TFakeClock::~TFakeClock() { SetTickSource(mPrevious); }

void TFakeClock::Advance(TTickCount ms) { gNow += ms; }

void TFakeClock::Set(TTickCount now) { gNow = now; }

}  // namespace norva::testing
