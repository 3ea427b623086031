#pragma once
// Receive workers: read the device into a buffer of their own, post message 0x500 and wait until
// the UI thread has copied the buffer. Reception is thereby paced by the UI thread.

#include <NorvaBusComms/Devices/CommEventHandler.h>

#include <QByteArray>

#include <array>
#include <atomic>

namespace norva {

class TRXEventHandler : public TCommEventHandler {
 public:
  static constexpr int BufferSize = 1024;
  static constexpr int OversizedRead = 0x100000;

  using TCommEventHandler::TCommEventHandler;

  // Run on the worker after a read: posts 0x500 with `kind` and waits for the UI thread. False
  // for an empty or oversized read (nothing posted), or when the worker is stopping.
  bool SignalReceive(int kind);
  // Run on the UI thread for a 0x500: appends the waiting bytes and releases the worker.
  void TakeBuffer(QByteArray& appendTo);
  // Stops the worker, releasing it from any wait, and waits for it to end.
  void Close();

 protected:
  // Runs on the worker between its last look at the stop request and the hand-over; tests widen
  // that window here to show that a Close() landing in it cannot be missed.
  virtual void BeforeHandOver() {}

  std::array<char, BufferSize> rx_buf{};
  int rx_buf_len = 0;
  TManualResetEvent rx_buf_sync;

 private:
  std::atomic<bool> mBufferWaiting{false};
};

// Reads a serial port. A hang-up or a read error (EIO, ENODEV: the adapter is gone) is reported
// once through 0x501, and the worker ends.
class TComRXEventHandle : public TRXEventHandler {
 public:
  TComRXEventHandle(QObject* window, int device, std::uint32_t generation);

 protected:
  void Execute() override;

 private:
  // Reads until the driver has nothing more; false when the worker must end.
  bool ReadAvailable();
};

}  // namespace norva
