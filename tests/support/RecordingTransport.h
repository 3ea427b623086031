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
  bool RemembersPackets = true;  // what SendPacketText answers
  bool Echoes = true;            // what EchoesPackets answers
  int QueuedStillSending = 0;    // Sending answers true this many times

  QList<QByteArray> PacketTexts;
  QList<TTXItem> Items;
  int Flushes = 0;
  mutable TCommsDeviceType AskedAboutEchoes = NoCommsDevice;
  std::map<int, QByteArray> WorkerBuffers;  // by source kind

  bool IsOpen() const override { return Open; }
  bool SendPacketText(const QByteArray& text) override;
  bool EchoesPackets(TCommsDeviceType connected) const override;
  void Send(const TTXItem& item) override { Items.append(item); }
  bool Sending() const override;
  void TakeReceivedBytes(int kind, QByteArray& appendTo) override;
  void FlushReceived() override { ++Flushes; }

  // The plain data bytes of the queued items, in order.
  QByteArray ItemData() const;

 private:
  mutable int mSendingPolls = 0;
};

}  // namespace norva::testing
