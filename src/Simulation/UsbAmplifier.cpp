#include <Simulation/UsbAmplifier.h>

#include <NorvaBusComms/BusTextParser.h>
#include <NorvaBusComms/NotificationFraming.h>
#include <NorvaBusComms/UsbPipes.h>
#include <NorvaGlobal/Vocabulary.h>

namespace norva::sim {

TUsbAmplifier::TUsbAmplifier(TSimulatedUsbBackend& backend)
    : mDevice(backend.AddDevice(QString::fromLatin1(DevicePath), QString::fromLatin1(HardwareId))) {
  mDevice->SetWriteHandler(
      [this](std::uint8_t pipeId, const QByteArray& bytes) { OnWrite(pipeId, bytes); });
  mDevice->SetControlHandler(
      [this](const TSimulatedControlTransfer& transfer) { return OnControl(transfer); });
}

TUsbAmplifier::~TUsbAmplifier() {
  mDevice->SetWriteHandler(nullptr);
  mDevice->SetControlHandler(nullptr);
}

const std::vector<TDemoObject>& TUsbAmplifier::DemoObjects() {
  static const std::vector<TDemoObject> objects = {
      {1, 2048, "keypad-lounge.keycfg"}, {2, 512, "ir-codes.bin"}, {3, 96, "zone-names.txt"}};
  return objects;
}

void TUsbAmplifier::SendKeypress(std::uint8_t zoneByte, std::uint8_t key, std::uint8_t repeats) {
  SendPacket(BuildCommandPacket(KeypressCommand, zoneByte, {(repeats * 32 | key) & 0xFF}));
}

void TUsbAmplifier::SendLog(const QByteArray& text) {
  mDevice->PushIn(NotifyInPipe, EncodeLogFrame(text));
}

void TUsbAmplifier::SendPacket(const TCommandPacket& packet) {
  if (const QByteArray frame = EncodeCommandFrame(packet); !frame.isEmpty())
    mDevice->PushIn(NotifyInPipe, frame);
}

void TUsbAmplifier::AnswerEnumeration() {
  QByteArray list;
  for (const TDemoObject& object : DemoObjects()) {
    list.append(static_cast<char>(object.Id));
    for (int shift = 0; shift < 32; shift += 8)
      list.append(static_cast<char>((object.Size >> shift) & 0xFF));
    list += object.Name;
    list.append('\0');
  }
  mDevice->PushIn(DataInPipe, list);
  SendLog(QByteArray("enumerated ") + QByteArray::number(static_cast<int>(DemoObjects().size())) +
          " objects");
}

std::vector<std::uint8_t> TUsbAmplifier::ControlRequests() const {
  std::lock_guard lock(mLock);
  return mControlRequests;
}

void TUsbAmplifier::OnWrite(std::uint8_t /*pipeId*/, const QByteArray& bytes) {
  // Both OUT pipes carry bus text here; whole lines are answered, the rest waits.
  QByteArray lines;
  {
    std::lock_guard lock(mLock);
    mPendingText += bytes;
    const qsizetype end = mPendingText.lastIndexOf('\n') + 1;
    lines = mPendingText.left(end);
    mPendingText.remove(0, end);
  }
  if (!lines.isEmpty()) AnswerBusText(lines);
}

bool TUsbAmplifier::OnControl(const TSimulatedControlTransfer& transfer) {
  {
    std::lock_guard lock(mLock);
    mControlRequests.push_back(transfer.Setup.Request);
  }
  if (transfer.Setup.Request == usb_enumerate_objects) AnswerEnumeration();
  return true;
}

void TUsbAmplifier::AnswerBusText(const QByteArray& text) {
  std::vector<TCommandPacket> packets;
  ParseBusText(text, 0, packets);
  for (const TCommandPacket& packet : packets) {
    SendPacket(packet);  // the echo
    if (packet.Cmd < AcknowledgeOffset) {
      TCommandPacket ack = packet;
      ack.Cmd = static_cast<TCommand>(packet.Cmd + AcknowledgeOffset);
      SendPacket(ack);
    }
  }
}

}  // namespace norva::sim
