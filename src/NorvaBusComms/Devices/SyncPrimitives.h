#pragma once
// The two ways a worker thread waits: on a manual-reset event set by another thread, and in poll()
// on its device together with a wake descriptor that Close() signals.

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace norva {

// Stays set until reset, like a platform manual-reset event.
class TManualResetEvent {
 public:
  // How long Wait spins before it sleeps. A receive worker's wait usually ends within a few
  // microseconds (the UI thread copying its buffer); waking a sleeping thread costs far more on a
  // virtual machine, so a short spin halves the cost of every hand-over.
  static constexpr int SpinMicroseconds = 50;

  void Set();
  void Reset();
  // Waits until the event is set.
  void Wait();

 private:
  std::mutex mLock;
  std::condition_variable mChanged;
  std::atomic<bool> mSet{false};
};

// An eventfd that, once signalled, stays readable: poll() on it returns at once.
class TWakeDescriptor {
 public:
  TWakeDescriptor();
  ~TWakeDescriptor();
  TWakeDescriptor(const TWakeDescriptor&) = delete;
  TWakeDescriptor& operator=(const TWakeDescriptor&) = delete;

  int Fd() const { return mFd; }
  void Signal();

 private:
  int mFd;
};

}  // namespace norva
