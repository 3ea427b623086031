#include "support/RecordingTransport.h"

namespace norva::testing {

bool TRecordingTransport::MainTransmitterSending() const {
  return mSendingPolls++ < QueuedStillSending;
}

void TRecordingTransport::TakeReceivedBytes(int kind, QByteArray& appendTo) {
  appendTo += WorkerBuffers[kind];
  WorkerBuffers[kind].clear();
}

QByteArray TRecordingTransport::MainData() const {
  QByteArray data;
  for (const TTXItem& item : MainItems)
    if (item.USBCommand == usb_no_command) data += item.RawData;
  return data;
}

}  // namespace norva::testing
