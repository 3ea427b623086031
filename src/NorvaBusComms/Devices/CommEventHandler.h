#pragma once
// The common part of every worker thread: where it posts its messages, the device it serves, and
// how it is told to stop. Workers only read or write their device, post messages and wait.

#include <NorvaBusComms/Devices/SyncPrimitives.h>

#include <QEvent>
#include <QThread>

#include <atomic>
#include <cstdint>

namespace norva {

class TCommEventHandler : public QThread {
 public:
  // `window` receives the worker's messages; `generation` is stamped on each so that messages of
  // a link that has since been closed can be recognised and dropped.
  TCommEventHandler(QObject* window, int device, std::uint32_t generation, const char* className);
  ~TCommEventHandler() override;
  TCommEventHandler(const TCommEventHandler&) = delete;
  TCommEventHandler& operator=(const TCommEventHandler&) = delete;

  // Posts message 0x501 with the system error code and ends the worker.
  void PostError(int errorCode);

 protected:
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
};

}  // namespace norva
