#pragma once
// Transmit workers: take items from a locked first-in first-out queue and write them out. The
// queue's mutex is the only lock shared between the UI thread and the workers, and it is never
// held during a write.

#include <NorvaBusComms/Devices/CommEventHandler.h>
#include <NorvaBusComms/TXItem.h>

#include <chrono>
#include <deque>
#include <mutex>

namespace norva {

class TTXEventHandler : public TCommEventHandler {
 public:
  static constexpr qsizetype ChunkSize = 65536;

  using TCommEventHandler::TCommEventHandler;

  void Send(const TTXItem& item);
  int TXQueueLength() const;
  // True while items wait; the item being written has already left the queue.
  bool Sending() const { return TXQueueLength() > 0; }
  // Stops the worker after the write in hand; items still queued are abandoned.
  void Close();

 protected:
  // Waits until items are queued (or the worker is stopped).
  void WaitForItems();
  bool PopItem(TTXItem& item);

 private:
  TManualResetEvent TXEvent;
  std::deque<TTXItem> TransmitQueue;
  mutable std::mutex TransmitSync;
};

// Writes a serial port in chunks of at most 64 KiB; USB command items are discarded. A write the
// port has not taken within its time-out (output held by the device's XOFF for too long) ends the
// worker with ETIMEDOUT.
class TComTXEventHandler : public TTXEventHandler {
 public:
  static constexpr qsizetype WriteTimeoutPerByteMs = 10;
  static constexpr qsizetype WriteTimeoutConstantMs = 1000;
  static std::chrono::milliseconds WriteTimeout(qsizetype bytes);

  TComTXEventHandler(QObject* window, int device, std::uint32_t generation);

 protected:
  void Execute() override;

 private:
  // Writes all of `bytes`; false (after PostError) on a write error, or when stopped.
  bool WriteAll(const QByteArray& bytes);
  bool WriteChunk(const char* data, qsizetype size);
};

}  // namespace norva
