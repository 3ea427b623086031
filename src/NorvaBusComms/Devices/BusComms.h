#pragma once
// The bus object: the one connection between the application and a device, and the packet engine
// that talks over it. It picks the link for the selected interface and path (a serial port, a USB
// adapter that presents itself as one, Ethernet, or a WinUSB-style USB device), opens and closes
// it, forwards the links' worker messages to its owner client, and is where link failures become
// OnError calls, signals and message boxes (the USB object exchange asks its own questions in
// boxes while it waits). Bus client objects share it; the last
// one to let go frees it (later, when it lets go from inside a call the bus made to it). Runs on
// the UI thread.

#include <NorvaBusComms/Devices/Link.h>
#include <NorvaBusComms/Devices/UsbDeviceSearch.h>
#include <NorvaBusComms/PacketEngine.h>
#include <NorvaGlobal/UIServices.h>

#include <QObject>
#include <QPointer>
#include <QStringList>

#include <array>

#include <functional>
#include <memory>

namespace norva {

class TNorvaBusComms;

// A connection failure offered to the application before any box is shown; set `handled` to
// keep the box away.
using TCommsError =
    std::function<void(TNorvaBusComms& sender, const QString& errorMsg, bool& handled)>;

class TNorvaBusComms : public QObject,
                       public TNorvaPacketEngine,
                       private TBusTransport,
                       private TLinkHost {
  Q_OBJECT
  Q_PROPERTY(QString DevicePath READ DevicePath WRITE SetDevicePath)
  Q_PROPERTY(norva::TCommsInterface SelectedCommsInterface READ SelectedCommsInterface WRITE
                 SetSelectedCommsInterface)
  Q_PROPERTY(norva::TCommsInterface ConnectedCommsInterface READ ConnectedCommsInterface)
  Q_PROPERTY(norva::TCommsDeviceType ConnectedDeviceType READ ConnectedDeviceType WRITE
                 SetConnectedDeviceType)
  Q_PROPERTY(bool Connected READ GetConnected WRITE SetConnected NOTIFY ConnectionChanged)
  Q_PROPERTY(int InProcessCmd READ InProcessCmd)
  Q_PROPERTY(bool ProcessingEcho READ ProcessingEcho)
  Q_PROPERTY(bool ForceRawProcessing READ ForceRawProcessing WRITE SetForceRawProcessing)
  Q_PROPERTY(int USBDeviceCount READ GetUSBDeviceCount)
  Q_PROPERTY(int USBDeviceIndex READ GetUSBDeviceIndex WRITE SetUSBDeviceIndex)
  Q_PROPERTY(norva::TCommsDeviceType ConnectedUSBDeviceType READ ConnectedUSBDeviceType)

 public:
  // `messageTarget` is the bus client whose host receives the workers' messages (none: the first
  // client). Anything that is not a bus client's host would swallow them unseen, so it is refused
  // with std::invalid_argument.
  // A serial port (RS232, talking to an amplifier) at `device`.
  TNorvaBusComms(const QString& device, QObject* messageTarget);
  // USB devices of the given types (the USB interface).
  TNorvaBusComms(const TCommsDeviceTypes& usbDeviceTypes, QObject* messageTarget);
  TNorvaBusComms(TCommsInterface commsInterface, const TCommsDeviceTypes& deviceTypes,
                 const QString& devicePath, QObject* messageTarget);
  ~TNorvaBusComms() override;

  // Closes any open connection and opens `path` on the selected interface; `report` says whether
  // an open failure may show a box (the OnError handler hears of it in any case). A USB device
  // named here is the only one the bus opens later (none: the first recognised device).
  void SetDevicePath(const QString& path) { SetDevicePath(path, true); }
  void SetDevicePath(const QString& path, bool report);
  QString DevicePath() const { return mDevicePath; }
  void CloseDevice();

  bool GetConnected() const;
  // Why the open link is not up while it keeps trying to connect (TLink::RetryReason); "" with
  // none open.
  QString LinkRetryReason() const;
  void SetConnected(bool value);
  // Reopens a lost connection; true when the connection state changed. Called periodically by
  // the application and after a worker failure.
  bool CheckConnections();

  TCommsInterface ConnectedCommsInterface() const { return mConnectedCommsInterface; }
  const TCommsDeviceTypes& SelectedDeviceTypes() const { return mSelectedDeviceTypes; }
  void SetSelectedDeviceTypes(const TCommsDeviceTypes& types) { mSelectedDeviceTypes = types; }

  const TCommsError& OnError() const { return mOnError; }
  void SetOnError(TCommsError handler) { mOnError = std::move(handler); }
  // Offers a failure to the OnError handler and emits ErrorOccurred; then, unless it was handled
  // and when `mayShowBox`, shows it in a box.
  void ReportError(const QString& text, const QString& caption, TMessageIcon icon, bool mayShowBox);

  // The client whose messages the workers' messages go to (the first client, by default); see the
  // constructors for what is refused.
  QObject* Owner() const { return mOwner; }
  void SetOwner(QObject* messageTarget);

  // Called by the last client letting go: frees the bus at once, or, while the bus is calling out
  // (delivering, waiting, telling of a connection change, reporting an error), once control has
  // left it.
  void ReleaseLastClient();

  // The serial ports offered to the user.
  static QStringList GetComPorts();

  // Lists the connected USB devices of the selected types. A failing search goes to OnError and,
  // when no handler takes it, to a box.
  void SearchUSBDevices();
  int GetUSBDeviceCount() const { return static_cast<int>(mUSBDevices.size()); }
  // The found device whose path is the device path, or -1.
  int GetUSBDeviceIndex() const;
  // Opens the found device at `index`.
  void SetUSBDeviceIndex(int index);
  QString GetUSBDevicePath(int index) const;
  TCommsDeviceType GetUSBDeviceType(int index) const;
  // The type of the open USB device (NoCommsDevice when none is open).
  TCommsDeviceType ConnectedUSBDeviceType() const;

  // Ethernet: true once the socket is connected (GetConnected is already true while connecting).
  bool EthernetConnected() const;
  // Bytes can reach the device now: connected, and for Ethernet the socket is up.
  bool LinkUp() const;
  // True while bytes handed to the link wait to go out (queued items, unsent socket data).
  bool Sending() const override;

 signals:
  // The connection was opened, closed, or made or lost by the link itself.
  void ConnectionChanged();
  // A failure was reported (the text OnError is given).
  void ErrorOccurred(const QString& text);

 protected:
  bool event(QEvent* event) override;
  void CallOutsEnded() override;

 private:
  // Opens `path` without making it the named device (the tries of ConnectUSB).
  void OpenDevice(const QString& path, bool report);
  // The link that serves `path` on the selected interface (none without an interface). Each kind
  // of link is made once and kept: a link may be closed from inside its own call to the bus.
  TLink* LinkFor(const QString& path);
  void ConnectUSB(bool reportMissing);
  bool CheckUSBConnections();
  bool UsesWinUsb(const QString& path) const;
  void ReportOpenFailure(const TPlatformResult& failure, bool report);
  void TellUsersConnectionChanged();
  // Where worker messages go when the owner is gone: the first remaining client.
  QObject* MessageTarget();

  // The transmit seam, over whichever link is open.
  bool IsOpen() const override { return GetConnected(); }
  bool SendPacketText(const QByteArray& text) override;
  bool EchoesPackets(TCommsDeviceType connected) const override;
  void Send(const TTXItem& item) override;
  void TakeReceivedBytes(int kind, QByteArray& appendTo) override;
  void FlushReceived() override;

  // What the links tell the bus.
  QObject& MessageWindow() override { return *this; }
  void LinkReceived(const QByteArray& bytes) override;
  void LinkConnectionChanged() override { TellUsersConnectionChanged(); }
  void LinkFailed(const TPlatformResult& failure, const QString& caption,
                  TMessageIcon icon) override;

  enum TLinkKind { SerialLink, UsbSerialLink, EthernetLink, WinUsbLink, LinkKinds };
  std::array<std::unique_ptr<TLink>, LinkKinds> mLinks;
  TLink* mLink = nullptr;  // the open one
  std::vector<TUSBDevice> mUSBDevices;
  QString mDevicePath;
  bool mDevicePathNamed = false;  // the application named the device: no other will do
  QPointer<QObject> mOwner;
  TCommsDeviceTypes mSelectedDeviceTypes;
  TCommsInterface mConnectedCommsInterface = NoCommsInterface;
  TCommsError mOnError;
  std::uint32_t mGeneration = 0;  // counts openings; messages of older ones are stale
  bool mReleaseRequested = false;
};

}  // namespace norva
