#pragma once
// A headless bus client that records what the bus gives it: packets and whether each came as an
// echo, log notifications, raw bytes once it takes them, connection changes and the messages
// telling it its connection dropped.

#include <NorvaBusComms/Devices/BusClient.h>
#include <NorvaBusComms/Devices/BusComms.h>
#include <NorvaBusComms/Devices/BusMessages.h>

namespace norva::testing {

class TRecordingClient : public TNorvaBusClient {
 public:
  using TNorvaBusClient::TNorvaBusClient;
  QList<TCommandPacket> Packets;
  QList<bool> Echoes;
  QList<QByteArray> Logs;
  QByteArray Raw;
  bool TakeRaw = false;
  int ConnectionChanges = 0;
  int DroppedMessages = 0;

  void ProcessCommand(const TCommandPacket& packet) override {
    Packets.append(packet);
    Echoes.append(BusComms() && BusComms()->ProcessingEcho());
  }
  bool ProcessRawData(QByteArray& bytes) override {
    if (!TakeRaw) return false;
    Raw += bytes;
    bytes.clear();
    return true;
  }
  bool ProcessNotification(TUSBNotification kind, const QByteArray& data) override {
    if (kind == usb_log_event) Logs.append(data);
    return false;  // later users see it too
  }
  void ConnectionChange() override { ++ConnectionChanges; }

 protected:
  bool event(QEvent* event) override {
    if (event->type() == ConnectionDroppedMessage) ++DroppedMessages;
    return TNorvaBusClient::event(event);
  }
};

}  // namespace norva::testing
