#include <NorvaBusComms/Devices/ReceiveWorkers.h>
#include <NorvaBusComms/Devices/SerialLink.h>
#include <NorvaBusComms/Devices/SerialPort.h>
#include <NorvaBusComms/Devices/TransmitWorkers.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace norva {

bool DeviceNodePresent(const QString& path) {
  struct stat info {};
  return stat(path.toLocal8Bit().constData(), &info) == 0;
}

TSerialLink::TSerialLink(TLinkHost& host, bool softwareFlowControl)
    : TLink(host), mSoftwareFlowControl(softwareFlowControl) {}

TSerialLink::~TSerialLink() { Close(); }

TPlatformResult TSerialLink::Open(const QString& path, std::uint32_t generation) {
  Close();
  TPlatformResult result = OpenSerialPort(path, mSoftwareFlowControl, mDevice);
  if (!result.Ok()) return result;
  mPath = path;
  mReceiver = std::make_unique<TComRXEventHandle>(&Host().MessageWindow(), mDevice, generation);
  mTransmitter = std::make_unique<TComTXEventHandler>(&Host().MessageWindow(), mDevice, generation);
  return result;
}

TPlatformResult TSerialLink::Close() {
  // Workers first: they must not touch the descriptor once it is closed.
  if (mReceiver) mReceiver->Close();
  if (mTransmitter) mTransmitter->Close();
  mReceiver.reset();
  mTransmitter.reset();
  if (mDevice < 0) return {};
  const int device = std::exchange(mDevice, -1);
  if (close(device) != 0)
    return TPlatformResult::Failure(errno, QStringLiteral("Error closing device"));
  return {};
}

bool TSerialLink::IsOpen() const { return mDevice >= 0 && DeviceNodePresent(mPath); }

bool TSerialLink::SendPacketText(const QByteArray& text) {
  Send(TTXItem{usb_no_command, 0, 0, text});
  return true;
}

bool TSerialLink::EchoesPackets(TCommsDeviceType /*connected*/) const { return true; }

// The worker discards vendor commands: a serial port has no command pipe.
void TSerialLink::Send(const TTXItem& item) {
  if (mTransmitter) mTransmitter->Send(item);
}

bool TSerialLink::Sending() const { return mTransmitter && mTransmitter->Sending(); }

void TSerialLink::TakeReceivedBytes(int /*kind*/, QByteArray& appendTo) {
  if (mReceiver) mReceiver->TakeBuffer(appendTo);
}

bool TUsbSerialLink::EchoesPackets(TCommsDeviceType connected) const {
  return EchoesOverUSB(connected);
}

}  // namespace norva
