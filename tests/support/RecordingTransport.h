#pragma once
// A transport that records what the packet engine hands it, and plays back received bytes.

#include <NorvaBusComms/BusTransport.h>

#include <QByteArray>
#include <QList>

#include <map>

namespace norva::testing {

class TRecordingTransport : public TBusTransport {
 public:
  bool Open = true;
  bool MainTransmitter = true;
  bool CommandTransmitter = false;
  int QueuedStillSending = 0;  // MainTransmitterSending answers true this many times

  QList<TTXItem> MainItems;
  QList<TTXItem> CommandItems;
  QByteArray SocketBytes;
  int PipeFlushes = 0;
  std::map<int, QByteArray> WorkerBuffers;  // by source kind

  bool IsOpen() const override { return Open; }
  void WriteToSocket(const QByteArray& bytes) override { SocketBytes += bytes; }
  bool HasMainTransmitter() const override { return MainTransmitter; }
  void QueueOnMainTransmitter(const TTXItem& item) override { MainItems.append(item); }
  bool MainTransmitterSending() const override;
  bool HasCommandTransmitter() const override { return CommandTransmitter; }
  void QueueOnCommandTransmitter(const TTXItem& item) override { CommandItems.append(item); }
  void TakeReceivedBytes(int kind, QByteArray& appendTo) override;
  void FlushReceivePipe() override { ++PipeFlushes; }

  // The plain data bytes queued on the main transmitter, in order.
  QByteArray MainData() const;

 private:
  mutable int mSendingPolls = 0;
};

}  // namespace norva::testing
