#pragma once
// A device link: one kind of connection (a serial port, a USB adapter that presents itself as a
// serial port, Ethernet, a WinUSB-style USB device) behind the one interface the bus object
// drives. A link opens and closes its device, runs its workers and carries bytes; it reports
// failures as results and never talks to the user: the bus object decides what the user hears.

#include <NorvaBusComms/BusTransport.h>
#include <NorvaGlobal/PlatformResult.h>
#include <NorvaGlobal/UIServices.h>

#include <QByteArray>
#include <QObject>
#include <QString>

#include <cstdint>

namespace norva {

// What a link tells the bus object that owns it. Called on the UI thread.
class TLinkHost {
 public:
  virtual ~TLinkHost() = default;

  // Where the link's workers post their messages.
  virtual QObject& MessageWindow() = 0;
  // Bytes a link read on the UI thread itself (Ethernet).
  virtual void LinkReceived(const QByteArray& bytes) = 0;
  // The connection was made or lost by itself (Ethernet).
  virtual void LinkConnectionChanged() = 0;
  // A failure of an open link, to be shown with `caption` and `icon` unless handled.
  virtual void LinkFailed(const TPlatformResult& failure, const QString& caption,
                          TMessageIcon icon) = 0;
};

class TLink : public TBusTransport {
 public:
  explicit TLink(TLinkHost& host) : mHost(host) {}
  TLink(const TLink&) = delete;
  TLink& operator=(const TLink&) = delete;

  // Opens `path`; worker messages carry `generation`. A failed open leaves nothing open.
  virtual TPlatformResult Open(const QString& path, std::uint32_t generation) = 0;
  // Stops the workers (abandoning what they still hold) and closes the device.
  virtual TPlatformResult Close() = 0;
  // Bytes can reach the device now (Ethernet: the socket is connected, not just connecting).
  virtual bool IsUp() const { return IsOpen(); }
  // Why a link that keeps trying to connect by itself is not up: its last connection error; ""
  // once it is up, and for links that do not retry.
  virtual QString RetryReason() const { return {}; }

  // Raw data and USB vendor commands: a link that cannot carry an item drops it.
  void TakeReceivedBytes(int /*kind*/, QByteArray& /*appendTo*/) override {}
  void FlushReceived() override {}

 protected:
  TLinkHost& Host() const { return mHost; }

 private:
  TLinkHost& mHost;
};

}  // namespace norva
