#include <NorvaBusComms/Devices/BusClient.h>
#include <NorvaBusComms/Devices/BusComms.h>
#include <NorvaBusComms/Devices/BusMessages.h>
#include <NorvaBusComms/Devices/ReceiveWorkers.h>
#include <NorvaBusComms/Devices/SerialPort.h>
#include <NorvaBusComms/Devices/TransmitWorkers.h>
#include <NorvaBusComms/Devices/WinUsbWorkers.h>
#include <NorvaGlobal/UIServices.h>

#include <QCoreApplication>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace norva {

namespace {
QString SystemText(int code) { return QString::fromLocal8Bit(std::strerror(code)); }

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

constexpr std::uint8_t DataInPipe = 0x82;
constexpr std::uint8_t NotifyInPipe = 0x83;
constexpr std::uint8_t DataOutPipe = 0x01;
constexpr std::uint8_t CommandOutPipe = 0x04;
}  // namespace

TNorvaBusComms::TNorvaBusComms(const QString& device, QObject* owner)
    : TNorvaBusComms(RS232Interface, TCommsDeviceTypes{NorvaAmp}, device, owner) {}

TNorvaBusComms::TNorvaBusComms(const TCommsDeviceTypes& usbDeviceTypes, QObject* owner)
    : TNorvaBusComms(USBInterface, usbDeviceTypes, QString(), owner) {}

TNorvaBusComms::TNorvaBusComms(TCommsInterface commsInterface, const TCommsDeviceTypes& deviceTypes,
                               const QString& devicePath, QObject* owner)
    : mDevicePath(devicePath),
      mDevicePathNamed(!devicePath.isEmpty()),
      mSelectedDeviceTypes(deviceTypes) {
  Init(owner);
  SetSelectedCommsInterface(commsInterface);
}

void TNorvaBusComms::Init(QObject* owner) {
  mDevice = -1;
  SetOwner(owner);
  SetTransport(this);
}

TNorvaBusComms::~TNorvaBusComms() {
  CloseDevice();
  SetTransport(nullptr);
}

void TNorvaBusComms::SetOwner(QObject* owner) {
  if (owner && !dynamic_cast<TNorvaBusClientCore*>(owner))
    throw std::invalid_argument(
        "the bus object's message target must be a bus client (TNorvaBusClient, TNorvaBusForm)");
  mOwner = owner;
}

bool TNorvaBusComms::CallingOut() const { return mCallingOut > 0 || InProcessCmd() > 0; }

void TNorvaBusComms::ReleaseLastClient() {
  if (CallingOut())
    deleteLater();
  else
    delete this;
}

QStringList TNorvaBusComms::GetComPorts() { return SerialPortNames(); }

// --- Opening and closing ---

void TNorvaBusComms::SetDevicePath(const QString& path, bool report) {
  mDevicePathNamed = !path.isEmpty();
  OpenDevice(path, report);
}

void TNorvaBusComms::OpenDevice(const QString& path, bool report) {
  CloseDevice();
  mDevicePath = path;
  switch (SelectedCommsInterface()) {
    case EthernetInterface: OpenEthernet(path, report); break;
    case RS232Interface: OpenSerial(path, true, report); break;
    case USBInterface:
      if (UsesWinUsb(path))
        OpenWinUsb(path, report);
      else
        OpenSerial(path, false, report);  // a USB device that presents itself as a serial port
      break;
    case NoCommsInterface: break;
  }
}

void TNorvaBusComms::OpenSerial(const QString& path, bool softwareFlowControl, bool report) {
  TSerialOpenError error;
  const int fd = OpenSerialPort(path, softwareFlowControl, error);
  if (fd < 0) {
    ReportOpenFailure(error.Message, error.Code, report);
    return;
  }
  mDevice = fd;
  ++mGeneration;
  mConnectedCommsInterface = SelectedCommsInterface();
  SetConnectedDeviceType(AssumedDeviceType(mSelectedDeviceTypes));
  RXEventHandler = std::make_unique<TComRXEventHandle>(this, mDevice, mGeneration);
  TXEventHandler = std::make_unique<TComTXEventHandler>(this, mDevice, mGeneration);
}

void TNorvaBusComms::OpenEthernet(const QString& path, bool report) {
  if (!mTCPClient) {
    mTCPClient = std::make_unique<TEthernetLink>(
        TEthernetLink::THooks{[this](const QByteArray& bytes) {
                                const TCallOut callOut(*this);
                                ReceiveBytes(SerialRXKind, bytes);
                              },
                              [this] { TellUsersConnectionChanged(); },
                              [this](const QString& text) { ReportSendFailure(text); }});
  }
  if (!mTCPClient->Open(path)) {
    ReportOpenFailure(QStringLiteral("Cannot open device ") + path, EINVAL, report);
    return;
  }
  ++mGeneration;
  mConnectedCommsInterface = EthernetInterface;
  SetConnectedDeviceType(AssumedDeviceType(mSelectedDeviceTypes));
}

bool TNorvaBusComms::UsesWinUsb(const QString& path) const {
  return SelectedCommsInterface() == USBInterface && !IsSerialDevicePath(path);
}

void TNorvaBusComms::OpenWinUsb(const QString& path, bool report) {
  QString loadError;
  if (!UsbBackend().LoadWinUsb(loadError)) {
    ReportOpenFailure(loadError, ELIBACC, report);
    return;
  }
  int code = 0;
  mWinUSBHandle = UsbBackend().Open(path, code);
  if (!mWinUSBHandle) {
    QString message = code == EBUSY ? QStringLiteral("Error opening WinUSB device")
                                    : QStringLiteral("Cannot open device ") + path;
    if (code == EACCES) message += QStringLiteral("\r\n\r\n") + UsbPermissionHint(path);
    ReportOpenFailure(message, code, report);
    return;
  }
  bool hasNotifyPipe = false;
  bool hasCommandPipe = false;
  if (!PreparePipes(report, hasNotifyPipe, hasCommandPipe)) return;
  ++mGeneration;
  TWinUsbInterface& usb = *mWinUSBHandle;
  RXEventHandler = std::make_unique<TWinUSBRXEventHandler>(this, usb, DataInPipe, mGeneration);
  TXEventHandler = std::make_unique<TWinUSBTXEventHandler>(this, usb, DataOutPipe, mGeneration);
  if (hasNotifyPipe)
    NotifyEventHandler =
        std::make_unique<TWinUSBRXEventHandler>(this, usb, NotifyInPipe, mGeneration);
  if (hasCommandPipe)
    NorvaCommandTXEventHandler =
        std::make_unique<TWinUSBTXEventHandler>(this, usb, CommandOutPipe, mGeneration);
  mConnectedCommsInterface = USBInterface;
  const int index = GetUSBDeviceIndex();
  SetConnectedDeviceType(index >= 0 ? mUSBDevices[static_cast<std::size_t>(index)].DeviceType
                                    : AssumedDeviceType(mSelectedDeviceTypes));
}

bool TNorvaBusComms::PreparePipes(bool report, bool& hasNotifyPipe, bool& hasCommandPipe) {
  TUsbInterfaceDescriptor descriptor;
  if (!mWinUSBHandle->QueryInterfaceSettings(0, descriptor)) {
    ReportOpenFailure(QStringLiteral("Error: WinUsb_QueryInterfaceSettings"),
                      mWinUSBHandle->LastError(), report);
    return false;
  }
  for (std::uint8_t index = 0; index < descriptor.NumEndpoints; ++index) {
    TWinUsbPipeInformation pipe;
    if (!mWinUSBHandle->QueryPipe(0, index, pipe) || pipe.PipeType != TUsbPipeType::Bulk) continue;
    const bool in = pipe.PipeId & 0x80;
    if (in && pipe.PipeId != DataInPipe && pipe.PipeId != NotifyInPipe) {
      ReportOpenFailure(QStringLiteral("Error: In pipe ID incorrect"), EINVAL, report);
      return false;
    }
    if (!in && pipe.PipeId != DataOutPipe && pipe.PipeId != CommandOutPipe) {
      ReportOpenFailure(QStringLiteral("Error: Out pipe ID incorrect"), EINVAL, report);
      return false;
    }
    hasNotifyPipe |= pipe.PipeId == NotifyInPipe;
    hasCommandPipe |= pipe.PipeId == CommandOutPipe;
    mWinUSBHandle->SetPipePolicy(pipe.PipeId, TPipePolicy::AutoClearStall, true);
    mWinUSBHandle->SetPipePolicy(pipe.PipeId, TPipePolicy::ShortPacketTerminate, true);
  }
  return true;
}

void TNorvaBusComms::ReportOpenFailure(const QString& message, int code, bool report) {
  const QString text = message + QStringLiteral("\r\n\r\nError: ") + SystemText(code) +
                       QStringLiteral(" (") + QString::number(code) + QStringLiteral(")");
  ReportError(text, QStringLiteral("Error"), TMessageIcon::Stop, report);
  CloseDevice();
}

void TNorvaBusComms::ReportSendFailure(const QString& text) {
  ReportError(text, TEthernetLink::ErrorCaption(QAbstractSocket::NetworkError, true),
              TMessageIcon::Exclamation, true);
}

void TNorvaBusComms::ReportError(const QString& text, const QString& caption, TMessageIcon icon,
                                 bool mayShowBox) {
  const TCallOut callOut(*this);
  bool handled = false;
  if (mOnError) mOnError(*this, text, handled);
  if (!handled && mayShowBox) UIServices().MessageBox(text, caption, icon, TMessageButtons::OK);
}

void TNorvaBusComms::CloseDevice() {
  // Workers first: they must not touch the descriptor or the interface once it is closed.
  for (auto* receiver : {&RXEventHandler, &NotifyEventHandler}) {
    if (*receiver) (*receiver)->Close();
    receiver->reset();
  }
  for (auto* transmitter : {&TXEventHandler, &NorvaCommandTXEventHandler}) {
    if (*transmitter) (*transmitter)->Close();
    transmitter->reset();
  }
  mWinUSBHandle.reset();
  if (mDevice >= 0 && close(mDevice) != 0)
    UIServices().MessageBox(QStringLiteral("Error closing device"), QStringLiteral("Error"),
                            TMessageIcon::Stop, TMessageButtons::OK);
  mDevice = -1;
  if (mTCPClient) mTCPClient->Close();
  mConnectedCommsInterface = NoCommsInterface;
}

// --- Connection state ---

bool TNorvaBusComms::DeviceNodePresent() const {
  struct stat info {};
  return stat(mDevicePath.toLocal8Bit().constData(), &info) == 0;
}

bool TNorvaBusComms::GetConnected() const {
  if (SelectedCommsInterface() == EthernetInterface) return mTCPClient && mTCPClient->Active();
  if (mWinUSBHandle) return true;
  // An unplugged adapter (or a simulator that hung up) takes its device node with it.
  return mDevice >= 0 && DeviceNodePresent();
}

bool TNorvaBusComms::EthernetConnected() const { return mTCPClient && mTCPClient->Connected(); }

bool TNorvaBusComms::LinkUp() const {
  return SelectedCommsInterface() == EthernetInterface ? EthernetConnected() : GetConnected();
}

bool TNorvaBusComms::Sending() const {
  return MainTransmitterSending() || (mTCPClient && mTCPClient->BytesToWrite() > 0);
}

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
          QStringLiteral("USB device ") + mDevicePath + QStringLiteral(" is not connected"), ENODEV,
          false);
    return;
  }
  for (std::size_t i = 0; i < mUSBDevices.size() && !GetConnected(); ++i)
    OpenDevice(mUSBDevices[i].Path, false);
}

void TNorvaBusComms::SearchUSBDevices() {
  mUSBDevices.clear();
  std::vector<TUsbDeviceEntry> found;
  QString error;
  if (!UsbBackend().EnumerateDevices(found, error)) {
    UIServices().MessageBox(error, QStringLiteral("Error"), TMessageIcon::Stop,
                            TMessageButtons::OK);
    return;
  }
  for (const TUsbDeviceEntry& device : found) {
    const TCommsDeviceType type = RecognisedDeviceType(device.HardwareId, mSelectedDeviceTypes);
    if (type != NoCommsDevice) mUSBDevices.push_back({device.DevicePath, type});
  }
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
  return mWinUSBHandle ? ConnectedDeviceType() : NoCommsDevice;
}

bool TNorvaBusComms::CheckConnections() {
  if (mSelectedDeviceTypes.IsEmpty()) return false;
  if (UsesWinUsb(mDevicePath)) return CheckUSBConnections();
  if (GetConnected()) return false;
  if (SelectedCommsInterface() != EthernetInterface && !DeviceNodePresent()) {
    // Nothing to open: just let go of what is left of the old connection.
    const bool wasOpen = mDevice >= 0;
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

// --- The transmit seam ---

void TNorvaBusComms::WriteToSocket(const QByteArray& bytes) {
  if (mTCPClient) mTCPClient->Write(bytes);
}

bool TNorvaBusComms::HasMainTransmitter() const { return TXEventHandler != nullptr; }

void TNorvaBusComms::QueueOnMainTransmitter(const TTXItem& item) {
  if (TXEventHandler) TXEventHandler->Send(item);
}

bool TNorvaBusComms::MainTransmitterSending() const {
  return TXEventHandler && TXEventHandler->Sending();
}

void TNorvaBusComms::QueueOnCommandTransmitter(const TTXItem& item) {
  if (NorvaCommandTXEventHandler) NorvaCommandTXEventHandler->Send(item);
}

void TNorvaBusComms::TakeReceivedBytes(int kind, QByteArray& appendTo) {
  TRXEventHandler* worker =
      kind == NotificationPipeRXKind ? NotifyEventHandler.get() : RXEventHandler.get();
  if (worker) worker->TakeBuffer(appendTo);
}

// Received raw data not yet taken by the device's data pipe is dropped along with ours.
void TNorvaBusComms::FlushReceivePipe() {
  if (mWinUSBHandle) mWinUSBHandle->FlushPipe(DataInPipe);
}

}  // namespace norva
