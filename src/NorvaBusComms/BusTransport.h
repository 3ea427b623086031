#pragma once
// The transmit seam: what carries bytes between the packet engine and a device. The connection
// manager implements it over serial, USB and Ethernet; tests implement it by recording.

#include <NorvaBusComms/TXItem.h>

#include <QByteArray>

namespace norva {

class TBusTransport {
 public:
  virtual ~TBusTransport() = default;

  // True while a device is open (Ethernet: while the socket is active).
  virtual bool IsOpen() const = 0;

  // Ethernet: append to the socket's write buffer and start writing, only while it is connected.
  virtual void WriteToSocket(const QByteArray& bytes) = 0;

  // The main transmit worker (serial port, or the USB data pipe).
  virtual bool HasMainTransmitter() const = 0;
  virtual void QueueOnMainTransmitter(const TTXItem& item) = 0;
  // True while the main transmit worker still has queued items.
  virtual bool MainTransmitterSending() const = 0;

  // The dedicated USB command-pipe worker, where the device has one.
  virtual bool HasCommandTransmitter() const = 0;
  virtual void QueueOnCommandTransmitter(const TTXItem& item) = 0;

  // Appends the bytes a receive worker of this source kind holds, and releases that worker.
  virtual void TakeReceivedBytes(int kind, QByteArray& appendTo) = 0;

  // Flushes the device's receive pipe, where a USB interface is open.
  virtual void FlushReceivePipe() = 0;
};

}  // namespace norva
