#include <NorvaBusComms/Devices/BusClient.h>
#include <NorvaBusComms/Devices/BusComms.h>
#include <NorvaBusComms/Devices/BusMessages.h>
#include <NorvaGlobal/EventPump.h>
#include <NorvaGlobal/UIServices.h>

#include <QCoreApplication>
#include <QPointer>

#include <cstring>

namespace norva {

void TNorvaBusClientCore::Attach(TNorvaBusComms* bus) {
  if (!bus || bus == mBusComms) return;
  Disconnect();
  bus->AddUser(this);
  if (!bus->Owner()) bus->SetOwner(&mHost);
  mBusComms = bus;
}

void TNorvaBusClientCore::Disconnect() {
  TNorvaBusComms* bus = mBusComms;
  if (!bus) return;
  mBusComms = nullptr;
  bus->RemoveUser(this);
  if (bus->Owner() == &mHost) bus->SetOwner(nullptr);
  if (bus->Users().empty()) bus->ReleaseLastClient();
  Disconnected();
}

bool TNorvaBusClientCore::GetConnected() const { return mBusComms && mBusComms->GetConnected(); }

void TNorvaBusClientCore::SetConnected(bool value) {
  if (mBusComms) mBusComms->SetConnected(value);
  ConnectionChange();
}

bool TNorvaBusClientCore::HandleMessage(QEvent* event) {
  const TBusMessage* message = TBusMessage::Received(event);
  if (!message) return false;
  const auto parameter = static_cast<int>(message->Parameter());
  if (message->type() == RXEventMessage) WMRXEvent(parameter);
  if (message->type() == ThreadCrashMessage) WMThreadCrash(parameter);
  return true;
}

void TNorvaBusClientCore::WMRXEvent(int kind) {
  if (mBusComms && GetConnected()) mBusComms->RXEvent(kind);
}

void TNorvaBusClientCore::WMThreadCrash(int errorCode) {
  if (mHandlingCrash) return;
  mHandlingCrash = true;
  // The failure is still reported when a handler lets go of the bus on the way: the bus is only
  // freed once this call has left it, and then the box speaks alone.
  const QPointer<TNorvaBusComms> bus = mBusComms;
  // A device that was unplugged is found gone within this time, and then nothing is reported.
  const TTickCount start = GetTickCount();
  while (mBusComms && GetConnected() && TicksSince(start) < DeviceGoneWaitMs) {
    SleepAndPumpEvents(DeviceGoneStepMs);
    if (mBusComms) mBusComms->CheckConnections();
  }
  if (mBusComms && GetConnected()) {
    SetConnected(false);
    QCoreApplication::postEvent(&mHost, new TBusMessage(ConnectionDroppedMessage, 0));
    const QString text = QString::fromLocal8Bit(std::strerror(errorCode));
    const QString caption = QStringLiteral("Communications error");
    if (bus)
      bus->ReportError(text, caption, TMessageIcon::Stop, true);
    else
      UIServices().MessageBox(text, caption, TMessageIcon::Stop, TMessageButtons::OK);
  }
  mHandlingCrash = false;
}

TNorvaBusClient::TNorvaBusClient(TNorvaBusComms* bus, QObject* parent)
    : QObject(parent), TNorvaBusClientCore(static_cast<QObject&>(*this)) {
  Attach(bus);
}

TNorvaBusClient::~TNorvaBusClient() { Disconnect(); }

bool TNorvaBusClient::event(QEvent* event) { return HandleMessage(event) || QObject::event(event); }

}  // namespace norva
