#include "StudioLink.h"

#include <NorvaBusComms/Devices/BusClient.h>

namespace studio {

TStudioLink::TStudioLink(norva::TNorvaBusClientCore& client, QObject* parent)
    : QObject(parent), mClient(client) {
  mRecheck.setInterval(RecheckIntervalMs);
  connect(&mRecheck, &QTimer::timeout, this, [this] {
    if (norva::TNorvaBusComms* bus = Bus(); bus && bus->CheckConnections()) emit StateChanged();
  });
}

TStudioLink::~TStudioLink() { Close(); }

norva::TNorvaBusComms* TStudioLink::Bus() const { return mClient.BusComms(); }

void TStudioLink::Close() {
  mRecheck.stop();
  mClient.Disconnect();  // the bus goes with its last client, before the device it talked to
  mSimulator.reset();
  mName.clear();
  emit StateChanged();
}

bool TStudioLink::Open(norva::TNorvaBusComms* bus, const QString& name) {
  mName = name;
  mLastError.clear();
  // Heard first, then left unhandled: the library's own box tells the installer.
  bus->SetOnError([this](norva::TNorvaBusComms&, const QString& text, bool&) {
    mLastError = text.simplified();
    emit StateChanged();
  });
  mClient.Attach(bus);
  mClient.SetConnected(true);
  mRecheck.start();
  emit StateChanged();
  return mClient.GetConnected();
}

bool TStudioLink::ConnectSimulator() {
  Close();
  mSimulator = std::make_unique<norva::sim::TDeviceSimulator>();
  const QString port = mSimulator->ServePty();
  if (port.isEmpty()) {
    mSimulator.reset();
    mLastError = tr("The simulator could not open a pseudo-terminal.");
    emit StateChanged();
    return false;
  }
  return Open(new norva::TNorvaBusComms(port, nullptr), tr("the simulator (%1)").arg(port));
}

bool TStudioLink::ConnectSerial(const QString& port) {
  Close();
  return Open(new norva::TNorvaBusComms(port, nullptr), port);
}

bool TStudioLink::ConnectEthernet(const QString& address) {
  Close();
  return Open(
      new norva::TNorvaBusComms(norva::EthernetInterface, {norva::NorvaAmp}, address, nullptr),
      address);
}

bool TStudioLink::ConnectUsb(const QString& path) {
  Close();
  return Open(new norva::TNorvaBusComms(norva::USBInterface, norva::RecognisedUsbDeviceTypes(),
                                        path, nullptr),
              path.isEmpty() ? tr("the first USB device") : path);
}

norva::TUsbDeviceSearch TStudioLink::UsbDevices() {
  return norva::SearchUsbDevices(norva::RecognisedUsbDeviceTypes());
}

QString TStudioLink::State() const {
  const norva::TNorvaBusComms* bus = Bus();
  if (!bus || mName.isEmpty()) return tr("Not connected");
  if (bus->LinkUp()) return tr("Connected to %1").arg(mName);
  const QString reason = mLastError.isEmpty() ? bus->LinkRetryReason() : mLastError;
  if (reason.isEmpty())
    return bus->GetConnected() ? tr("Connecting to %1").arg(mName)
                               : tr("Not connected to %1").arg(mName);
  return bus->GetConnected() ? tr("Not connected to %1: %2; trying again").arg(mName, reason)
                             : tr("Not connected to %1: %2").arg(mName, reason);
}

}  // namespace studio
