#include "support/RecordingTransport.h"

namespace norva::testing {

bool TRecordingTransport::SendPacketText(const QByteArray& text) {
  PacketTexts.append(text);
  return RemembersPackets;
}

bool TRecordingTransport::EchoesPackets(TCommsDeviceType connected) const {
  AskedAboutEchoes = connected;
  return Echoes;
}

bool TRecordingTransport::Sending() const { return mSendingPolls++ < QueuedStillSending; }

void TRecordingTransport::TakeReceivedBytes(int kind, QByteArray& appendTo) {
  appendTo += WorkerBuffers[kind];
  WorkerBuffers[kind].clear();
}

QByteArray TRecordingTransport::ItemData() const {
  QByteArray data;
  for (const TTXItem& item : Items)
    if (item.USBCommand == usb_no_command) data += item.RawData;
  return data;
}

}  // namespace norva::testing
