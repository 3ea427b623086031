#include <NorvaBusComms/Devices/WinUsbLink.h>
#include <NorvaBusComms/Devices/WinUsbWorkers.h>
#include <NorvaBusComms/PacketEngine.h>
#include <NorvaBusComms/UsbPipes.h>

#include <cerrno>

namespace norva {

TWinUsbLink::TWinUsbLink(TLinkHost& host) : TLink(host) {}

TWinUsbLink::~TWinUsbLink() { Close(); }

TPlatformResult TWinUsbLink::Open(const QString& path, std::uint32_t generation) {
  Close();
  if (TPlatformResult loaded = UsbBackend().LoadWinUsb(); !loaded.Ok()) return loaded;
  TPlatformResult opened;
  mWinUSBHandle = UsbBackend().Open(path, opened);
  if (!mWinUSBHandle) {
    QString message = opened.Code == EBUSY ? QStringLiteral("Error opening WinUSB device")
                                           : QStringLiteral("Cannot open device ") + path;
    if (opened.Code == EACCES) message += QStringLiteral("\r\n\r\n") + UsbPermissionHint(path);
    return TPlatformResult::Failure(opened.Code, message);
  }
  bool hasNotifyPipe = false;
  bool hasCommandPipe = false;
  if (TPlatformResult prepared = PreparePipes(hasNotifyPipe, hasCommandPipe); !prepared.Ok()) {
    mWinUSBHandle.reset();
    return prepared;
  }
  QObject* window = &Host().MessageWindow();
  TWinUsbInterface& usb = *mWinUSBHandle;
  mReceiver = std::make_unique<TWinUSBRXEventHandler>(window, usb, DataInPipe, generation);
  mTransmitter = std::make_unique<TWinUSBTXEventHandler>(window, usb, DataOutPipe, generation);
  if (hasNotifyPipe)
    mNotifyReceiver =
        std::make_unique<TWinUSBRXEventHandler>(window, usb, NotifyInPipe, generation);
  if (hasCommandPipe)
    mCommandTransmitter =
        std::make_unique<TWinUSBTXEventHandler>(window, usb, CommandOutPipe, generation);
  return {};
}

TPlatformResult TWinUsbLink::PreparePipes(bool& hasNotifyPipe, bool& hasCommandPipe) {
  TUsbInterfaceDescriptor descriptor;
  if (!mWinUSBHandle->QueryInterfaceSettings(0, descriptor))
    return TPlatformResult::Failure(mWinUSBHandle->LastError(),
                                    QStringLiteral("Error: WinUsb_QueryInterfaceSettings"));
  for (std::uint8_t index = 0; index < descriptor.NumEndpoints; ++index) {
    TWinUsbPipeInformation pipe;
    if (!mWinUSBHandle->QueryPipe(0, index, pipe) || pipe.PipeType != TUsbPipeType::Bulk) continue;
    const bool in = pipe.PipeId & 0x80;
    if (in && pipe.PipeId != DataInPipe && pipe.PipeId != NotifyInPipe)
      return TPlatformResult::Failure(EINVAL, QStringLiteral("Error: In pipe ID incorrect"));
    if (!in && pipe.PipeId != DataOutPipe && pipe.PipeId != CommandOutPipe)
      return TPlatformResult::Failure(EINVAL, QStringLiteral("Error: Out pipe ID incorrect"));
    hasNotifyPipe |= pipe.PipeId == NotifyInPipe;
    hasCommandPipe |= pipe.PipeId == CommandOutPipe;
    mWinUSBHandle->SetPipePolicy(pipe.PipeId, TPipePolicy::AutoClearStall, true);
    mWinUSBHandle->SetPipePolicy(pipe.PipeId, TPipePolicy::ShortPacketTerminate, true);
  }
  return {};
}

TPlatformResult TWinUsbLink::Close() {
  // Workers first: they must not touch the interface once it is freed.
  for (auto* receiver : {&mReceiver, &mNotifyReceiver}) {
    if (*receiver) (*receiver)->Close();
    receiver->reset();
  }
  for (auto* transmitter : {&mTransmitter, &mCommandTransmitter}) {
    if (*transmitter) (*transmitter)->Close();
    transmitter->reset();
  }
  mWinUSBHandle.reset();
  return {};
}

bool TWinUsbLink::SendPacketText(const QByteArray& text) {
  if (mCommandTransmitter) {
    mCommandTransmitter->Send(TTXItem{usb_no_command, 0, 0, text});
  } else {
    // The device is told how many bytes of bus text follow on the data pipe.
    Send(TTXItem{usb_norva_cmd_num_bytes, static_cast<std::uint16_t>(text.size()), 1, {}});
    Send(TTXItem{usb_no_command, 0, 0, text});
  }
  return true;
}

bool TWinUsbLink::EchoesPackets(TCommsDeviceType connected) const {
  return EchoesOverUSB(connected);
}

void TWinUsbLink::Send(const TTXItem& item) {
  if (mTransmitter) mTransmitter->Send(item);
}

bool TWinUsbLink::Sending() const { return mTransmitter && mTransmitter->Sending(); }

void TWinUsbLink::TakeReceivedBytes(int kind, QByteArray& appendTo) {
  TWinUSBRXEventHandler* worker =
      kind == NotificationPipeRXKind ? mNotifyReceiver.get() : mReceiver.get();
  if (worker) worker->TakeBuffer(appendTo);
}

// Received raw data not yet taken by the device's data pipe is dropped along with ours.
void TWinUsbLink::FlushReceived() {
  if (mWinUSBHandle) mWinUSBHandle->FlushPipe(DataInPipe);
}

}  // namespace norva
