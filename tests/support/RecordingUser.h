#pragma once
// A bus user that records what the engine delivers, with hooks to act during a delivery.

#include <NorvaBusComms/PacketEngine.h>

#include <QList>

#include <functional>
#include <utility>

namespace norva::testing {

class TRecordingUser : public TNorvaBusUser {
 public:
  explicit TRecordingUser(TNorvaPacketEngine* engine = nullptr) : mEngine(engine) {}

  struct TDelivered {
    TCommandPacket Packet;
    bool Echo;
  };
  QList<TDelivered> Packets;
  QList<QByteArray> RawOffers;
  QList<std::pair<TUSBNotification, QByteArray>> Notifications;

  bool TakeRawData = false;
  int KeepRawBytes = 0;  // when taking raw data, leave this many bytes for the next arrival
  bool ConsumeNotifications = false;
  std::function<void(const TCommandPacket&)> OnCommand;

  void ProcessCommand(const TCommandPacket& packet) override;
  bool ProcessRawData(QByteArray& bytes) override;
  bool ProcessNotification(TUSBNotification kind, const QByteArray& data) override;

 private:
  TNorvaPacketEngine* mEngine;
};

}  // namespace norva::testing
