#pragma once
// The transmit seam: what carries bytes between the packet engine and a device. Every device link
// implements it over its own kind of connection; tests implement it by recording. The engine asks
// it questions, never what kind of link it is.

#include <NorvaBusComms/CommsTypes.h>
#include <NorvaBusComms/TXItem.h>

#include <QByteArray>

namespace norva {

class TBusTransport {
 public:
  virtual ~TBusTransport() = default;

  // True while a device is open (Ethernet: while the socket is active).
  virtual bool IsOpen() const = 0;

  // Sends one packet's bus text the way this link carries packets. True when the device may echo
  // it, so that the engine remembers it among the recently sent packets.
  virtual bool SendPacketText(const QByteArray& text) = 0;
  // Whether a device of the connected type echoes the packets it is sent over this link.
  virtual bool EchoesPackets(TCommsDeviceType connected) const = 0;

  // Queues raw data or a USB vendor command; a link that cannot carry the item drops it.
  virtual void Send(const TTXItem& item) = 0;
  // True while queued items wait to go out.
  virtual bool Sending() const = 0;

  // Appends the bytes a receive worker of this source kind holds, and releases that worker.
  virtual void TakeReceivedBytes(int kind, QByteArray& appendTo) = 0;
  // Drops what the device has ready on its raw-data channel, where the link can.
  virtual void FlushReceived() = 0;
};

}  // namespace norva
