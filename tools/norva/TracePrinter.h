#pragma once
// A bus user that prints every packet in the receive-trace form ("<tick> Receive: 0B,05,23",
// echoes marked) and every notification.

#include <NorvaBusComms/PacketEngine.h>

#include <QTextStream>

namespace norva::cli {

class TTracePrinter : public TNorvaBusUser {
 public:
  // `live`: flush after every line, for output that someone watches as it comes.
  TTracePrinter(const TNorvaPacketEngine& engine, QTextStream& out, bool live)
      : mEngine(engine), mOut(out), mLive(live) {}

  void ProcessCommand(const TCommandPacket& packet) override;
  // Prints it and lets later users have it too.
  bool ProcessNotification(TUSBNotification kind, const QByteArray& data) override;

  int Packets() const { return mPackets; }
  int Notifications() const { return mNotifications; }

 private:
  void EndLine();

  const TNorvaPacketEngine& mEngine;
  QTextStream& mOut;
  const bool mLive;
  int mPackets = 0;
  int mNotifications = 0;
};

}  // namespace norva::cli
