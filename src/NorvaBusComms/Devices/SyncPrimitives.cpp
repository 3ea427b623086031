#include <NorvaBusComms/Devices/SyncPrimitives.h>

#include <sys/eventfd.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <system_error>

namespace norva {

void TManualResetEvent::Set() {
  {
    std::lock_guard lock(mLock);
    mSet = true;
  }
  mChanged.notify_all();
}

void TManualResetEvent::Reset() {
  std::lock_guard lock(mLock);
  mSet = false;
}

void TManualResetEvent::Cancel() {
  {
    std::lock_guard lock(mLock);
    mCancelled = true;
  }
  mChanged.notify_all();
}

bool TManualResetEvent::Wait() {
  const auto spinUntil =
      std::chrono::steady_clock::now() + std::chrono::microseconds(SpinMicroseconds);
  while (!Released()) {
    if (std::chrono::steady_clock::now() >= spinUntil) {
      std::unique_lock lock(mLock);
      mChanged.wait(lock, [this] { return Released(); });
      break;
    }
  }
  return !mCancelled.load(std::memory_order_acquire);
}

TWakeDescriptor::TWakeDescriptor() : mFd(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (mFd < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
}

TWakeDescriptor::~TWakeDescriptor() { close(mFd); }

void TWakeDescriptor::Signal() {
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = write(mFd, &one, sizeof one);
}

}  // namespace norva
