#pragma once
// A WinUSB-style USB device: interface 0 with its bulk pipes, checked when opened; a receive
// worker on the data pipe 0x82 and a transmit worker on 0x01, plus a notification worker on 0x83
// and a command worker on 0x04 where the device has them.

#include <NorvaBusComms/Devices/Link.h>

#include <libraries/WINUSB.h>

#include <memory>

namespace norva {

class TWinUSBRXEventHandler;
class TWinUSBTXEventHandler;

class TWinUsbLink final : public TLink {
 public:
  explicit TWinUsbLink(TLinkHost& host);
  ~TWinUsbLink() override;

  TPlatformResult Open(const QString& path, std::uint32_t generation) override;
  TPlatformResult Close() override;
  bool IsOpen() const override { return mWinUSBHandle != nullptr; }
  // On the command pipe where there is one; otherwise announced with a vendor command and sent
  // on the data pipe.
  bool SendPacketText(const QByteArray& text) override;
  bool EchoesPackets(TCommsDeviceType connected) const override;
  void Send(const TTXItem& item) override;
  bool Sending() const override;
  void TakeReceivedBytes(int kind, QByteArray& appendTo) override;
  void FlushReceived() override;

 private:
  // Checks the endpoints and sets their policy; a failure names the pipe of the wrong kind.
  TPlatformResult PreparePipes(bool& hasNotifyPipe, bool& hasCommandPipe);

  std::unique_ptr<TWinUsbInterface> mWinUSBHandle;
  std::unique_ptr<TWinUSBRXEventHandler> mReceiver;
  std::unique_ptr<TWinUSBTXEventHandler> mTransmitter;
  std::unique_ptr<TWinUSBRXEventHandler> mNotifyReceiver;
  std::unique_ptr<TWinUSBTXEventHandler> mCommandTransmitter;
};

}  // namespace norva
