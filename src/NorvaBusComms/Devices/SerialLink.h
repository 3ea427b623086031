#pragma once
// Serial links: an RS232 port talking to an amplifier (XON/XOFF on), and a USB device that
// presents itself as a serial port (no flow control; it echoes only where the device type does
// over USB). Each runs a receive and a transmit worker on the open descriptor.

#include <NorvaBusComms/Devices/Link.h>

#include <memory>

namespace norva {

class TComRXEventHandle;
class TComTXEventHandler;

class TSerialLink : public TLink {
 public:
  explicit TSerialLink(TLinkHost& host) : TSerialLink(host, true) {}
  ~TSerialLink() override;

  TPlatformResult Open(const QString& path, std::uint32_t generation) override;
  TPlatformResult Close() override;
  // Open while the descriptor is, and while its device node exists: an unplugged adapter (or a
  // simulator that hung up) takes its node with it.
  bool IsOpen() const override;
  bool SendPacketText(const QByteArray& text) override;
  bool EchoesPackets(TCommsDeviceType connected) const override;
  void Send(const TTXItem& item) override;
  bool Sending() const override;
  void TakeReceivedBytes(int kind, QByteArray& appendTo) override;

 protected:
  TSerialLink(TLinkHost& host, bool softwareFlowControl);

 private:
  const bool mSoftwareFlowControl;
  int mDevice = -1;
  QString mPath;
  std::unique_ptr<TComRXEventHandle> mReceiver;
  std::unique_ptr<TComTXEventHandler> mTransmitter;
};

class TUsbSerialLink final : public TSerialLink {
 public:
  explicit TUsbSerialLink(TLinkHost& host) : TSerialLink(host, false) {}
  bool EchoesPackets(TCommsDeviceType connected) const override;
};

// The serial device behind `path` is present (its node exists).
bool DeviceNodePresent(const QString& path);

}  // namespace norva
