#include "support/FakeClock.h"

#include <atomic>

namespace norva::testing {

namespace {
std::atomic<TTickCount> gNow{0};
TTickCount FakeNow() { return gNow.load(); }
// Read and set on the test's own thread only.
QDateTime gDateTime;
QDateTime FakeDateTime() { return gDateTime; }
}  // namespace

TFakeClock::TFakeClock(TTickCount start) : mPrevious(SetTickSource(&FakeNow)) { gNow = start; }

TFakeClock::~TFakeClock() { SetTickSource(mPrevious); }

void TFakeClock::Advance(TTickCount ms) { gNow += ms; }

void TFakeClock::Set(TTickCount now) { gNow = now; }

TFakeDateTime::TFakeDateTime(const QDateTime& now) : mPrevious(SetClockSource(&FakeDateTime)) {
  gDateTime = now;
}

TFakeDateTime::~TFakeDateTime() { SetClockSource(mPrevious); }

void TFakeDateTime::AdvanceMilliseconds(qint64 ms) { gDateTime = gDateTime.addMSecs(ms); }

void TFakeDateTime::Set(const QDateTime& now) { gDateTime = now; }

}  // namespace norva::testing
