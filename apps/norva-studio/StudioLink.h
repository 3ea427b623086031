#pragma once
// Which installation the studio talks to: a serial port, an Ethernet address, the first
// recognised USB device, or the simulated amplifier the studio starts itself on a pseudo-terminal
// when the installer has no hardware at hand. The bus object is shared with the bus panel, its
// one client; failures reach the installer the way the library reports them (its error handler,
// then its message box), and a lost link is tried again every few seconds.

#include <NorvaBusComms/Devices/BusComms.h>
#include <NorvaBusComms/Devices/UsbDeviceSearch.h>
#include <Simulation/DeviceSimulator.h>

#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

namespace norva {
class TNorvaBusClientCore;
}

namespace studio {

class TStudioLink : public QObject {
  Q_OBJECT

 public:
  static constexpr int RecheckIntervalMs = 3000;

  // `client` is the form the bus delivers to; it must outlive this object.
  explicit TStudioLink(norva::TNorvaBusClientCore& client, QObject* parent = nullptr);
  ~TStudioLink() override;

  // Each closes the current link first; false when the new one could not be opened (the library
  // has said why). An Ethernet link may still be connecting when this returns.
  bool ConnectSimulator();
  bool ConnectSerial(const QString& port);
  bool ConnectEthernet(const QString& address);  // "host:port"
  // The USB device at `path` (from UsbDevices), or with none the first recognised one.
  bool ConnectUsb(const QString& path = {});
  // The USB devices connected now of the types ConnectUsb takes, or why none could be listed.
  static norva::TUsbDeviceSearch UsbDevices();
  void Close();

  norva::TNorvaBusComms* Bus() const;
  norva::sim::TDeviceSimulator* Simulator() const { return mSimulator.get(); }
  // "Connected to the simulator (/dev/pts/4)", "Connecting to 10.0.0.5:4001", "Not connected",
  // "Not connected to 10.0.0.5:4001: Connection refused; trying again".
  QString State() const;
  // The last failure the library reported, until the next connection attempt.
  QString LastError() const { return mLastError; }

 signals:
  void StateChanged();

 private:
  bool Open(norva::TNorvaBusComms* bus, const QString& name);

  norva::TNorvaBusClientCore& mClient;
  std::unique_ptr<norva::sim::TDeviceSimulator> mSimulator;
  QString mName;  // what the installer chose, for the state line
  QString mLastError;
  QTimer mRecheck;
};

}  // namespace studio
