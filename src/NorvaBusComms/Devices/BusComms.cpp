#include <NorvaBusComms/Devices/BusClient.h>
#include <NorvaBusComms/Devices/BusComms.h>
#include <NorvaBusComms/Devices/BusMessages.h>
#include <NorvaBusComms/Devices/ReceiveWorkers.h>
#include <NorvaBusComms/Devices/SerialPort.h>
#include <NorvaBusComms/Devices/TransmitWorkers.h>
#include <NorvaGlobal/UIServices.h>

#include <QCoreApplication>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

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
}  // namespace

TNorvaBusComms::TNorvaBusComms(const QString& device, QObject* owner)
    : TNorvaBusComms(RS232Interface, TCommsDeviceTypes{NorvaAmp}, device, owner) {}

TNorvaBusComms::TNorvaBusComms(const TCommsDeviceTypes& usbDeviceTypes, QObject* owner)
    : TNorvaBusComms(USBInterface, usbDeviceTypes, QString(), owner) {}

TNorvaBusComms::TNorvaBusComms(TCommsInterface commsInterface, const TCommsDeviceTypes& deviceTypes,
                               const QString& devicePath, QObject* owner)
    : mDevicePath(devicePath), mSelectedDeviceTypes(deviceTypes) {
  Init(owner);
  SetSelectedCommsInterface(commsInterface);
}

void TNorvaBusComms::Init(QObject* owner) {
  mDevice = -1;
  mOwner = owner;
  SetTransport(this);
}

TNorvaBusComms::~TNorvaBusComms() {
  CloseDevice();
  SetTransport(nullptr);
}

QStringList TNorvaBusComms::GetComPorts() { return SerialPortNames(); }

// --- Opening and closing ---

void TNorvaBusComms::SetDevicePath(const QString& path, bool report) {
  CloseDevice();
  mDevicePath = path;
  switch (SelectedCommsInterface()) {
    case EthernetInterface: OpenEthernet(path, report); break;
    case RS232Interface: OpenSerial(path, true, report); break;
    case USBInterface:
      if (IsSerialDevicePath(path))
        OpenSerial(path, false, report);  // a USB device that presents itself as a serial port
      else
        ReportOpenFailure(QStringLiteral("Cannot open device ") + path, ENODEV, report);
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
    mTCPClient = std::make_unique<TEthernetLink>(TEthernetLink::THooks{
        [this](const QByteArray& bytes) { ReceiveBytes(SerialRXKind, bytes); },
        [this] { TellUsersConnectionChanged(); }});
  }
  if (!mTCPClient->Open(path)) {
    ReportOpenFailure(QStringLiteral("Cannot open device ") + path, EINVAL, report);
    return;
  }
  ++mGeneration;
  mConnectedCommsInterface = EthernetInterface;
  SetConnectedDeviceType(AssumedDeviceType(mSelectedDeviceTypes));
}

void TNorvaBusComms::ReportOpenFailure(const QString& message, int code, bool report) {
  const QString text = message + QStringLiteral("\r\n\r\nError: ") + SystemText(code) +
                       QStringLiteral(" (") + QString::number(code) + QStringLiteral(")");
  bool handled = false;
  if (mOnError) mOnError(*this, text, handled);
  if (!handled && report)
    UIServices().MessageBox(text, QStringLiteral("Error"), TMessageIcon::Stop, TMessageButtons::OK);
  CloseDevice();
}

void TNorvaBusComms::CloseDevice() {
  // Workers first: they must not touch the descriptor once it is closed.
  if (RXEventHandler) RXEventHandler->Close();
  if (TXEventHandler) TXEventHandler->Close();
  RXEventHandler.reset();
  TXEventHandler.reset();
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
  // An unplugged adapter (or a simulator that hung up) takes its device node with it.
  return mDevice >= 0 && DeviceNodePresent();
}

bool TNorvaBusComms::EthernetConnected() const { return mTCPClient && mTCPClient->Connected(); }

bool TNorvaBusComms::Sending() const {
  return MainTransmitterSending() || (mTCPClient && mTCPClient->BytesToWrite() > 0);
}

void TNorvaBusComms::SetConnected(bool value) {
  if (GetConnected() == value) return;
  if (!value) {
    CloseDevice();
    return;
  }
  SetDevicePath(mDevicePath);
}

bool TNorvaBusComms::CheckConnections() {
  if (mSelectedDeviceTypes.IsEmpty()) return false;
  if (GetConnected()) return false;
  if (SelectedCommsInterface() != EthernetInterface && !DeviceNodePresent()) {
    // Nothing to open: just let go of what is left of the old connection.
    const bool wasOpen = mDevice >= 0;
    CloseDevice();
    return wasOpen;
  }
  SetDevicePath(mDevicePath, false);
  return true;
}

void TNorvaBusComms::TellUsersConnectionChanged() {
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
  if (event->type() != RXEventMessage && event->type() != ThreadCrashMessage)
    return QObject::event(event);
  const TBusMessage& message = TBusMessage::Received(event);
  if (message.Generation() != mGeneration) return true;  // from a link closed since
  if (QObject* target = MessageTarget()) {
    TBusMessage forwarded(message.type(), message.Parameter(), message.Generation());
    QCoreApplication::sendEvent(target, &forwarded);
  } else if (event->type() == RXEventMessage) {
    RXEvent(static_cast<int>(message.Parameter()));  // nobody to ask: keep the data flowing
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

void TNorvaBusComms::TakeReceivedBytes(int kind, QByteArray& appendTo) {
  if (kind == SerialRXKind && RXEventHandler) RXEventHandler->TakeBuffer(appendTo);
}

}  // namespace norva
