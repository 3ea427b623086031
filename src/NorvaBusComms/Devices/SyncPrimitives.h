#pragma once
// The two ways a worker thread waits: on a manual-reset event set by another thread, and in poll()
// on its device together with a wake descriptor that Close() signals.

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace norva {

// Stays set until reset, like a platform manual-reset event. Cancel() is sticky: a cancelled event
// is not reset again, so a waiter that resets and then waits can never miss the cancellation, in
// whatever order the two threads get there.
class TManualResetEvent {
 public:
  // How long Wait spins before it sleeps. A receive worker's wait usually ends within a few
  // microseconds (the UI thread copying its buffer); waking a sleeping thread costs far more on a
  // virtual machine, so a short spin halves the cost of every hand-over.
  static constexpr int SpinMicroseconds = 50;

  void Set();
  // Clears a set event; a cancelled one stays cancelled.
  void Reset();
  // Wakes every waiter, now and from then on.
  void Cancel();
  // Waits until the event is set (true) or cancelled (false).
  bool Wait();

 private:
  bool Released() const {
    return mSet.load(std::memory_order_acquire) || mCancelled.load(std::memory_order_acquire);
  }

  std::mutex mLock;
  std::condition_variable mChanged;
  std::atomic<bool> mSet{false};
  std::atomic<bool> mCancelled{false};
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
