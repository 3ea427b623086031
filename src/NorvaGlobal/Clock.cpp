#include <NorvaGlobal/Clock.h>

#include <atomic>

namespace norva {

namespace {
std::atomic<TClockSource> gSource{nullptr};
}  // namespace

QDateTime CurrentDateTime() {
  const TClockSource source = gSource.load(std::memory_order_relaxed);
  return source ? source() : QDateTime::currentDateTime();
}

TClockSource SetClockSource(TClockSource source) { return gSource.exchange(source); }

}  // namespace norva
