#include <NorvaGlobal/TickCount.h>

#include <atomic>
#include <chrono>

namespace norva {

namespace {
TTickCount SystemTicks() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<TTickCount>(
      std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}
std::atomic<TTickSource> gSource{nullptr};
}  // namespace

TTickCount GetTickCount() {
  const TTickSource source = gSource.load(std::memory_order_relaxed);
  return source ? source() : SystemTicks();
}

TTickSource SetTickSource(TTickSource source) { return gSource.exchange(source); }

}  // namespace norva
