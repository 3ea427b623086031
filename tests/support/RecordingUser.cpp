#include "support/RecordingUser.h"

namespace norva::testing {

void TRecordingUser::ProcessCommand(const TCommandPacket& packet) {
  Packets.append({packet, mEngine && mEngine->ProcessingEcho()});
  if (OnCommand) OnCommand(packet);
}

bool TRecordingUser::ProcessRawData(QByteArray& bytes) {
  RawOffers.append(bytes);
  if (!TakeRawData) return false;
  bytes = bytes.right(KeepRawBytes);
  return true;
}

bool TRecordingUser::ProcessNotification(TUSBNotification kind, const QByteArray& data) {
  Notifications.append({kind, data});
  return ConsumeNotifications;
}

}  // namespace norva::testing
