#pragma once
// The bus object: the one connection between the application and a device (serial port, USB
// serial adapter or Ethernet), its worker threads, and the packet engine that talks over it.
// Bus client objects share it; the last one to let go frees it (later, when it lets go from inside
// a call the bus made to it). Runs on the UI thread.

#include <NorvaBusComms/Devices/EthernetLink.h>
#include <NorvaBusComms/Devices/UsbDeviceSearch.h>
#include <NorvaBusComms/PacketEngine.h>
#include <NorvaGlobal/UIServices.h>

#include <QObject>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <memory>

namespace norva {

class TRXEventHandler;
class TTXEventHandler;
class TWinUsbInterface;
class TNorvaBusClientCore;
class TNorvaBusComms;

// A connection failure offered to the application before any box is shown; set `handled` to
// keep the box away.
using TCommsError =
    std::function<void(TNorvaBusComms& sender, const QString& errorMsg, bool& handled)>;

class TNorvaBusComms : public QObject, public TNorvaPacketEngine, private TBusTransport {
  Q_OBJECT
  Q_PROPERTY(QString DevicePath READ DevicePath WRITE SetDevicePath)
  Q_PROPERTY(norva::TCommsInterface SelectedCommsInterface READ SelectedCommsInterface WRITE
                 SetSelectedCommsInterface)
  Q_PROPERTY(norva::TCommsInterface ConnectedCommsInterface READ ConnectedCommsInterface)
  Q_PROPERTY(norva::TCommsDeviceType ConnectedDeviceType READ ConnectedDeviceType WRITE
                 SetConnectedDeviceType)
  Q_PROPERTY(bool Connected READ GetConnected WRITE SetConnected)
  Q_PROPERTY(int InProcessCmd READ InProcessCmd)
  Q_PROPERTY(bool ProcessingEcho READ ProcessingEcho)
  Q_PROPERTY(bool ForceRawProcessing READ ForceRawProcessing WRITE SetForceRawProcessing)
  Q_PROPERTY(int USBDeviceCount READ GetUSBDeviceCount)
  Q_PROPERTY(int USBDeviceIndex READ GetUSBDeviceIndex WRITE SetUSBDeviceIndex)
  Q_PROPERTY(norva::TCommsDeviceType ConnectedUSBDeviceType READ ConnectedUSBDeviceType)

 public:
  // `owner` is the bus client whose host receives the workers' messages (none: the first client).
  // Anything that is not a bus client's host would swallow them unseen, so it is refused with
  // std::invalid_argument.
  // A serial port (RS232, talking to an amplifier) at `device`.
  TNorvaBusComms(const QString& device, QObject* owner);
  // USB devices of the given types (the USB interface).
  TNorvaBusComms(const TCommsDeviceTypes& usbDeviceTypes, QObject* owner);
  TNorvaBusComms(TCommsInterface commsInterface, const TCommsDeviceTypes& deviceTypes,
                 const QString& devicePath, QObject* owner);
  ~TNorvaBusComms() override;

  // Closes any open connection and opens `path` on the selected interface; `report` says whether
  // an open failure may show a box (the OnError handler hears of it in any case). A USB device
  // named here is the only one the bus opens later (none: the first recognised device).
  void SetDevicePath(const QString& path) { SetDevicePath(path, true); }
  void SetDevicePath(const QString& path, bool report);
  QString DevicePath() const { return mDevicePath; }
  void CloseDevice();

  bool GetConnected() const;
  void SetConnected(bool value);
  // Reopens a lost connection; true when the connection state changed. Called periodically by
  // the application and after a worker failure.
  bool CheckConnections();

  TCommsInterface ConnectedCommsInterface() const { return mConnectedCommsInterface; }
  const TCommsDeviceTypes& SelectedDeviceTypes() const { return mSelectedDeviceTypes; }
  void SetSelectedDeviceTypes(const TCommsDeviceTypes& types) { mSelectedDeviceTypes = types; }

  const TCommsError& OnError() const { return mOnError; }
  void SetOnError(TCommsError handler) { mOnError = std::move(handler); }
  // Offers a failure to the OnError handler, then, unless it was handled and when `mayShowBox`,
  // shows it in a box.
  void ReportError(const QString& text, const QString& caption, TMessageIcon icon, bool mayShowBox);

  // The client whose messages the workers' messages go to (the first client, by default); see the
  // constructors for what is refused.
  QObject* Owner() const { return mOwner; }
  void SetOwner(QObject* owner);

  // Called by the last client letting go: frees the bus at once, or, while the bus is calling out
  // (delivering, telling of a connection change, reporting an error), once control has left it.
  void ReleaseLastClient();

  // The serial ports offered to the user.
  static QStringList GetComPorts();

  // Lists the connected USB devices of the selected types (a failing search says so in a box).
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
  bool Sending() const;

 protected:
  bool event(QEvent* event) override;

 private:
  // Counts one call out of the bus (to a user, a client or a handler) for as long as it lives.
  class TCallOut {
   public:
    explicit TCallOut(TNorvaBusComms& bus) : mBus(bus) { ++mBus.mCallingOut; }
    ~TCallOut() { --mBus.mCallingOut; }
    TCallOut(const TCallOut&) = delete;
    TCallOut& operator=(const TCallOut&) = delete;

   private:
    TNorvaBusComms& mBus;
  };
  bool CallingOut() const;

  void Init(QObject* owner);
  // Opens `path` without making it the named device (the tries of ConnectUSB).
  void OpenDevice(const QString& path, bool report);
  void OpenSerial(const QString& path, bool softwareFlowControl, bool report);
  void OpenEthernet(const QString& path, bool report);
  void OpenWinUsb(const QString& path, bool report);
  // Checks the endpoints and sets their policy; false (after reporting) on a pipe of the wrong
  // kind.
  bool PreparePipes(bool report, bool& hasNotifyPipe, bool& hasCommandPipe);
  void ConnectUSB(bool reportMissing);
  bool CheckUSBConnections();
  bool UsesWinUsb(const QString& path) const;
  void ReportOpenFailure(const QString& message, int code, bool report);
  bool DeviceNodePresent() const;
  void TellUsersConnectionChanged();
  void ReportSendFailure(const QString& text);
  // Where worker messages go when the owner is gone: the first remaining client.
  QObject* MessageTarget();

  // The transmit seam, over whichever link is open.
  bool IsOpen() const override { return GetConnected(); }
  void WriteToSocket(const QByteArray& bytes) override;
  bool HasMainTransmitter() const override;
  void QueueOnMainTransmitter(const TTXItem& item) override;
  bool MainTransmitterSending() const override;
  bool HasCommandTransmitter() const override { return NorvaCommandTXEventHandler != nullptr; }
  void QueueOnCommandTransmitter(const TTXItem& item) override;
  void TakeReceivedBytes(int kind, QByteArray& appendTo) override;
  void FlushReceivePipe() override;

  int mDevice = -1;
  std::unique_ptr<TEthernetLink> mTCPClient;
  std::unique_ptr<TRXEventHandler> RXEventHandler;
  std::unique_ptr<TTXEventHandler> TXEventHandler;
  std::unique_ptr<TRXEventHandler> NotifyEventHandler;
  std::unique_ptr<TTXEventHandler> NorvaCommandTXEventHandler;
  std::unique_ptr<TWinUsbInterface> mWinUSBHandle;
  std::vector<TUSBDevice> mUSBDevices;
  QString mDevicePath;
  bool mDevicePathNamed = false;  // the application named the device: no other will do
  QPointer<QObject> mOwner;
  int mCallingOut = 0;
  TCommsDeviceTypes mSelectedDeviceTypes;
  TCommsInterface mConnectedCommsInterface = NoCommsInterface;
  TCommsError mOnError;
  std::uint32_t mGeneration = 0;  // counts openings; messages of older ones are stale
};

}  // namespace norva
