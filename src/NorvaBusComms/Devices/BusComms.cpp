#include <NorvaBusComms/Devices/BusClient.h>
#include <NorvaBusComms/Devices/BusComms.h>
#include <NorvaBusComms/Devices/BusMessages.h>
#include <NorvaBusComms/Devices/EthernetLink.h>
#include <NorvaBusComms/Devices/SerialLink.h>
#include <NorvaBusComms/Devices/SerialPort.h>
#include <NorvaBusComms/Devices/WinUsbLink.h>

#include <QCoreApplication>

#include <cerrno>
#include <stdexcept>
#include <utility>

namespace norva {

namespace {
// Serial and Ethernet links cannot tell what is at the other end: the first selected type says.
TCommsDeviceType AssumedDeviceType(const TCommsDeviceTypes& selected) {
  TCommsDeviceType result = NoCommsDevice;
  selected.ForEach([&](TCommsDeviceType type) {
    if (result == NoCommsDevice) result = type;
  });
  return result;
}

// A path that names a serial device rather than a native USB device.
bool IsSerialDevicePath(const QString& path) { return path.startsWith(u'/'); }
}  // namespace

TNorvaBusComms::TNorvaBusComms(const QString& device, QObject* messageTarget)
    : TNorvaBusComms(RS232Interface, TCommsDeviceTypes{NorvaAmp}, device, messageTarget) {}

TNorvaBusComms::TNorvaBusComms(const TCommsDeviceTypes& usbDeviceTypes, QObject* messageTarget)
    : TNorvaBusComms(USBInterface, usbDeviceTypes, QString(), messageTarget) {}

TNorvaBusComms::TNorvaBusComms(TCommsInterface commsInterface, const TCommsDeviceTypes& deviceTypes,
                               const QString& devicePath, QObject* messageTarget)
    : mDevicePath(devicePath),
      mDevicePathNamed(!devicePath.isEmpty()),
      mSelectedDeviceTypes(deviceTypes) {
  SetOwner(messageTarget);
  SetSelectedCommsInterface(commsInterface);
  SetTransport(this);
}

TNorvaBusComms::~TNorvaBusComms() {
  CloseDevice();
  SetTransport(nullptr);
}

void TNorvaBusComms::SetOwner(QObject* messageTarget) {
  if (messageTarget && !dynamic_cast<TNorvaBusClientCore*>(messageTarget))
    throw std::invalid_argument(
        "the bus object's message target must be a bus client (TNorvaBusClient, TNorvaBusForm)");
  mOwner = messageTarget;
}

void TNorvaBusComms::ReleaseLastClient() {
  if (CallingOut())
    mReleaseRequested = true;
  else
    delete this;
}

// The outermost call out of the bus has returned; what is left of the bus's own call on the stack
// only returns, so the deletion is posted rather than done here.
void TNorvaBusComms::CallOutsEnded() {
  if (mReleaseRequested) deleteLater();
}

QStringList TNorvaBusComms::GetComPorts() { return SerialPortNames(); }

// --- Opening and closing ---

void TNorvaBusComms::SetDevicePath(const QString& path, bool report) {
  mDevicePathNamed = !path.isEmpty();
  OpenDevice(path, report);
}

bool TNorvaBusComms::UsesWinUsb(const QString& path) const {
  return SelectedCommsInterface() == USBInterface && !IsSerialDevicePath(path);
}

TLink* TNorvaBusComms::LinkFor(const QString& path) {
  TLinkHost& host = *this;
  const auto kept = [this](TLinkKind kind, auto make) {
    if (!mLinks[kind]) mLinks[kind] = make();
    return mLinks[kind].get();
  };
  switch (SelectedCommsInterface()) {
    case EthernetInterface:
      return kept(EthernetLink, [&host] { return std::make_unique<TEthernetLink>(host); });
    case RS232Interface:
      return kept(SerialLink, [&host] { return std::make_unique<TSerialLink>(host); });
    case USBInterface:
      if (UsesWinUsb(path))
        return kept(WinUsbLink, [&host] { return std::make_unique<TWinUsbLink>(host); });
      return kept(UsbSerialLink, [&host] { return std::make_unique<TUsbSerialLink>(host); });
    case NoCommsInterface: break;
  }
  return nullptr;
}

void TNorvaBusComms::OpenDevice(const QString& path, bool report) {
  CloseDevice();
  mDevicePath = path;
  TLink* link = LinkFor(path);
  if (!link) return;
  const TPlatformResult opened = link->Open(path, ++mGeneration);
  if (!opened.Ok()) {
    ReportOpenFailure(opened, report);
    return;
  }
  mLink = link;
  mConnectedCommsInterface = SelectedCommsInterface();
  const int index = UsesWinUsb(path) ? GetUSBDeviceIndex() : -1;
  SetConnectedDeviceType(index >= 0 ? mUSBDevices[static_cast<std::size_t>(index)].DeviceType
                                    : AssumedDeviceType(mSelectedDeviceTypes));
  emit ConnectionChanged();
}

void TNorvaBusComms::ReportOpenFailure(const TPlatformResult& failure, bool report) {
  ReportError(failure.Described(), QStringLiteral("Error"), TMessageIcon::Stop, report);
  CloseDevice();
}

void TNorvaBusComms::ReportError(const QString& text, const QString& caption, TMessageIcon icon,
                                 bool mayShowBox) {
  const TCallOut callOut(*this);
  bool handled = false;
  if (mOnError) mOnError(*this, text, handled);
  emit ErrorOccurred(text);
  if (!handled && mayShowBox) UIServices().MessageBox(text, caption, icon, TMessageButtons::OK);
}

void TNorvaBusComms::LinkFailed(const TPlatformResult& failure, const QString& caption,
                                TMessageIcon icon) {
  ReportError(failure.Text, caption, icon, true);
}

QString TNorvaBusComms::LinkRetryReason() const { return mLink ? mLink->RetryReason() : QString(); }

void TNorvaBusComms::CloseDevice() {
  TLink* link = std::exchange(mLink, nullptr);
  mConnectedCommsInterface = NoCommsInterface;
  if (!link) return;
  const TPlatformResult closed = link->Close();
  if (!closed.Ok()) ReportError(closed.Text, QStringLiteral("Error"), TMessageIcon::Stop, true);
  emit ConnectionChanged();
}

// --- Connection state ---

bool TNorvaBusComms::GetConnected() const { return mLink && mLink->IsOpen(); }

bool TNorvaBusComms::EthernetConnected() const {
  return SelectedCommsInterface() == EthernetInterface && LinkUp();
}

bool TNorvaBusComms::LinkUp() const { return mLink && mLink->IsUp(); }

bool TNorvaBusComms::Sending() const { return mLink && mLink->Sending(); }

void TNorvaBusComms::SetConnected(bool value) {
  if (GetConnected() == value) return;
  if (!value) {
    CloseDevice();
    return;
  }
  if (UsesWinUsb(mDevicePath))
    ConnectUSB(true);
  else
    OpenDevice(mDevicePath, true);
}

// A device the application named is the only one to open: with two amplifiers, settings must
// never go to the other one because the named one is unplugged.
void TNorvaBusComms::ConnectUSB(bool reportMissing) {
  if (mSelectedDeviceTypes.IsEmpty()) return;
  if (mUSBDevices.empty()) SearchUSBDevices();
  if (mDevicePathNamed) {
    if (GetUSBDeviceIndex() >= 0)
      OpenDevice(mDevicePath, false);
    else if (reportMissing)
      ReportOpenFailure(
          TPlatformResult::Failure(ENODEV, QStringLiteral("USB device ") + mDevicePath +
                                               QStringLiteral(" is not connected")),
          false);
    return;
  }
  for (std::size_t i = 0; i < mUSBDevices.size() && !GetConnected(); ++i)
    OpenDevice(mUSBDevices[i].Path, false);
}

void TNorvaBusComms::SearchUSBDevices() {
  TUsbDeviceSearch search = SearchUsbDevices(mSelectedDeviceTypes);
  mUSBDevices = std::move(search.Devices);
  if (!search.Result.Ok())
    ReportError(search.Result.Text, QStringLiteral("Error"), TMessageIcon::Stop, true);
}

int TNorvaBusComms::GetUSBDeviceIndex() const {
  for (std::size_t i = 0; i < mUSBDevices.size(); ++i)
    if (mUSBDevices[i].Path == mDevicePath) return static_cast<int>(i);
  return -1;
}

void TNorvaBusComms::SetUSBDeviceIndex(int index) {
  if (index >= 0 && index < GetUSBDeviceCount()) SetDevicePath(GetUSBDevicePath(index));
}

QString TNorvaBusComms::GetUSBDevicePath(int index) const {
  return index >= 0 && index < GetUSBDeviceCount()
             ? mUSBDevices[static_cast<std::size_t>(index)].Path
             : QString();
}

TCommsDeviceType TNorvaBusComms::GetUSBDeviceType(int index) const {
  return index >= 0 && index < GetUSBDeviceCount()
             ? mUSBDevices[static_cast<std::size_t>(index)].DeviceType
             : NoCommsDevice;
}

TCommsDeviceType TNorvaBusComms::ConnectedUSBDeviceType() const {
  return GetConnected() && UsesWinUsb(mDevicePath) ? ConnectedDeviceType() : NoCommsDevice;
}

bool TNorvaBusComms::CheckConnections() {
  if (mSelectedDeviceTypes.IsEmpty()) return false;
  if (UsesWinUsb(mDevicePath)) return CheckUSBConnections();
  if (GetConnected()) return false;
  if (SelectedCommsInterface() != EthernetInterface && !DeviceNodePresent(mDevicePath)) {
    // Nothing to open: just let go of what is left of the old connection.
    const bool wasOpen = mLink != nullptr;
    CloseDevice();
    return wasOpen;
  }
  OpenDevice(mDevicePath, false);
  return true;
}

// A USB device unplugged, or plugged in (again).
bool TNorvaBusComms::CheckUSBConnections() {
  const int previousIndex = GetUSBDeviceIndex();
  const bool wasConnected = GetConnected();
  SearchUSBDevices();
  if (mUSBDevices.empty()) {
    if (!GetConnected()) return false;
    CloseDevice();
    return true;
  }
  if (!mDevicePath.isEmpty() && GetUSBDeviceIndex() < 0) CloseDevice();
  if (GetConnected()) return GetUSBDeviceIndex() != previousIndex;
  ConnectUSB(false);
  return wasConnected || GetConnected();
}

void TNorvaBusComms::TellUsersConnectionChanged() {
  const TCallOut callOut(*this);
  emit ConnectionChanged();
  const std::vector<TNorvaBusUser*> users = Users();  // a user may leave while told
  for (TNorvaBusUser* user : users) user->ConnectionChange();
}

// --- Worker messages ---

QObject* TNorvaBusComms::MessageTarget() {
  if (mOwner) return mOwner;
  for (TNorvaBusUser* user : Users())
    if (auto* client = dynamic_cast<TNorvaBusClientCore*>(user)) return &client->Host();
  return nullptr;
}

bool TNorvaBusComms::event(QEvent* event) {
  const TBusMessage* message = TBusMessage::Received(event);
  if (!message || message->type() == ConnectionDroppedMessage) return QObject::event(event);
  if (message->Generation() != mGeneration) return true;  // from a link closed since
  const TCallOut callOut(*this);
  if (QObject* target = MessageTarget()) {
    TBusMessage forwarded(message->type(), message->Parameter(), message->Generation());
    QCoreApplication::sendEvent(target, &forwarded);
  } else if (message->type() == RXEventMessage) {
    RXEvent(static_cast<int>(message->Parameter()));  // nobody to ask: keep the data flowing
  } else {
    CloseDevice();
  }
  return true;
}

void TNorvaBusComms::LinkReceived(const QByteArray& bytes) {
  const TCallOut callOut(*this);
  ReceiveBytes(SerialRXKind, bytes);
}

// --- The transmit seam ---

bool TNorvaBusComms::SendPacketText(const QByteArray& text) {
  return mLink && mLink->SendPacketText(text);
}

// While no link is open, the selected interface says what the link will do.
bool TNorvaBusComms::EchoesPackets(TCommsDeviceType connected) const {
  if (mLink) return mLink->EchoesPackets(connected);
  switch (SelectedCommsInterface()) {
    case EthernetInterface: return false;
    case USBInterface: return EchoesOverUSB(connected);
    default: return true;
  }
}

void TNorvaBusComms::Send(const TTXItem& item) {
  if (mLink) mLink->Send(item);
}

void TNorvaBusComms::TakeReceivedBytes(int kind, QByteArray& appendTo) {
  if (mLink) mLink->TakeReceivedBytes(kind, appendTo);
}

void TNorvaBusComms::FlushReceived() {
  if (mLink) mLink->FlushReceived();
}

}  // namespace norva
