#pragma once
// The common part of every worker thread: where it posts its messages, the device it serves, and
// how it is told to stop. Workers only read or write their device, post messages and wait.

#include <NorvaBusComms/Devices/SyncPrimitives.h>

#include <QEvent>
#include <QObject>

#include <atomic>
#include <cstdint>
#include <thread>

namespace norva {

// A plain thread (no event loop of its own: a worker only reads, writes, posts and waits).
class TCommEventHandler {
 public:
  // `window` receives the worker's messages; `generation` is stamped on each so that messages of
  // a link that has since been closed can be recognised and dropped.
  TCommEventHandler(QObject* window, int device, std::uint32_t generation, const char* className);
  virtual ~TCommEventHandler();
  TCommEventHandler(const TCommEventHandler&) = delete;
  TCommEventHandler& operator=(const TCommEventHandler&) = delete;

  // Posts message 0x501 with the system error code and ends the worker.
  void PostError(int errorCode);

 protected:
  // Each concrete worker starts itself at the end of its constructor, once it is whole.
  void Start();
  // Waits until the thread has ended.
  void Join();
  virtual void Execute() = 0;
  void Post(QEvent::Type type, std::intptr_t parameter);
  bool Terminated() const { return mTerminated.load(); }
  // Asks the thread to stop and wakes it from any wait on its device; nothing more is posted.
  void RequestStop();

  std::atomic<QObject*> mWindowHandle;
  const int mDevice;
  TWakeDescriptor mWake;

 private:
  const std::uint32_t mGeneration;
  const char* const mClassName;
  std::atomic<bool> mTerminated{false};
  std::thread mThread;
};

}  // namespace norva
