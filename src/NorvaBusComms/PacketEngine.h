#pragma once
// The bus packet engine: sends packets in their text form, remembers the last 80 sent, cuts
// received bytes into packets, coalesces status reports, recognises echoes of its own sends and
// delivers everything to the registered users. Runs on the UI thread; the nesting counters (not
// locks) make it safe against re-entry from users that pump events.

#include <NorvaBusComms/BusTransport.h>
#include <NorvaBusComms/BusUser.h>
#include <NorvaBusComms/CommandPacket.h>
#include <NorvaBusComms/CommsTypes.h>
#include <NorvaGlobal/Vocabulary.h>

#include <QByteArray>
#include <QByteArrayView>

#include <array>
#include <memory>
#include <span>
#include <vector>

namespace norva {

class TNorvaPacketEngine;

// Whatever drives a USB object exchange (an enumeration, a download, ...): it is told of every
// change of the exchange's status, including the final return to NoUSBCommand, whoever makes it.
class TIUSBCommandUser {
 public:
  static constexpr const char* InterfaceId = "{FD5833B0-874C-4136-B872-23C7DF98B61D}";
  virtual ~TIUSBCommandUser() = default;
  virtual void USBCommandStatusChange(TNorvaPacketEngine& bus, TUSBCommandStatus newStatus,
                                      TUSBCommandStatus oldStatus) = 0;
};

// Source kinds of received bytes.
inline constexpr int SerialRXKind = 0;
inline constexpr int DataPipeRXKind = 0x82;          // 130: raw data only
inline constexpr int NotificationPipeRXKind = 0x83;  // 131: binary notification frames

class TNorvaPacketEngine {
 public:
  static constexpr int SentHistorySize = 80;
  static constexpr TTickCount EchoWindowMs = 5000;
  // The most a channel holds for later: bytes arriving while a user's handler pumps events, and
  // what a raw-data user leaves for the next arrival. Sixty-four reads of a receive worker, far
  // more than a device says while a handler is busy, and a batch cut from it (one packet per five
  // bytes at most) stays small.
  static constexpr qsizetype MaxPendingBytes = qsizetype{64} * 1024;

  TNorvaPacketEngine() = default;
  virtual ~TNorvaPacketEngine() = default;
  TNorvaPacketEngine(const TNorvaPacketEngine&) = delete;
  TNorvaPacketEngine& operator=(const TNorvaPacketEngine&) = delete;

  // The link to the device (not owned). Without one the bus is not connected.
  void SetTransport(TBusTransport* transport) { mTransport = transport; }
  TBusTransport* Transport() const { return mTransport; }
  bool IsOpen() const { return mTransport && mTransport->IsOpen(); }

  TCommsInterface SelectedCommsInterface() const { return mSelectedCommsInterface; }
  void SetSelectedCommsInterface(TCommsInterface value) { mSelectedCommsInterface = value; }
  TCommsDeviceType ConnectedDeviceType() const { return mConnectedDeviceType; }
  void SetConnectedDeviceType(TCommsDeviceType value) { mConnectedDeviceType = value; }

  // Users, in delivery order. Not owned; a user may remove itself while being delivered to.
  void AddUser(TNorvaBusUser* user);
  void RemoveUser(TNorvaBusUser* user);
  const std::vector<TNorvaBusUser*>& Users() const { return mUsers; }

  // --- Transmitting (all silent no-ops while the bus is not connected) ---
  void SendCmd(const TCommandPacket& packet);
  // The acknowledgement of a received packet: its command plus 0x80.
  void AckCmd(const TCommandPacket& packet);
  // Command 0x0B with one data byte: the key in bits 0-4, the repeat count in bits 5-7.
  void SendKeypress(std::uint8_t zone, std::uint8_t key, std::uint8_t repeats);
  void SendXOFF();
  void SendXON();
  void SendRaw(const QByteArray& bytes);
  // Queues an item on the main transmit worker (not on Ethernet).
  void Send(const TTXItem& item);
  // A vendor command for the device; with waitForQueue, first lets the main worker drain (500 ms at
  // most).
  void SendUSBCommand(TUSBCommand command, std::uint16_t wValue, std::uint16_t wIndex,
                      const QByteArray& data, bool waitForQueue);

  // The sent-packet history; index 0 is the newest.
  const TCommandPacket& CommandRecentlySent(int index) const;

  // --- Receiving ---
  // Entry point for a receive worker's bytes of the given kind (0 serial, 130, 131).
  void RXEvent(int kind);
  // Appends bytes to the channel of `kind` and processes them (what RXEvent does once it has them).
  // Bytes arriving while a handler is busy wait for it, up to MaxPendingBytes; see
  // docs/receive-bounds.md for every bound and what happens past it.
  void ReceiveBytes(int kind, QByteArrayView bytes);
  // Parses bus text, delivers the packets and returns the number of characters consumed.
  qsizetype ProcessRawNorvaCommandString(QByteArrayView received);
  // Delivers a batch; only the newest status report (commands 4-7) per command and zone gets
  // through.
  void ProcessCommands(const std::vector<TCommandPacket>& packets);
  // Marks an echo and delivers one packet to every user.
  void ProcessCommand(const TCommandPacket& packet);
  // Offers raw bytes to the users; the first that takes charge leaves in `bytes` what it keeps.
  void ProcessRawData(QByteArray& bytes);
  // Offers a notification to the users until one consumes it; returns whether one did.
  bool ProcessNotification(TUSBNotification kind, const QByteArray& data);
  void FlushRawData();

  bool ExpectEcho() const;
  // Pumps events until the newest sent packet's echo has arrived; false after `timeoutMs`.
  bool WaitUntilEchoReceived(TTickCount timeoutMs);

  // --- The USB object exchange: one at a time ---
  TUSBCommandStatus USBCommandStatus() const { return mUSBCommandStatus; }
  TUSBCommandResult USBCommandResult() const { return mUSBCommandResult; }
  void SetUSBCommandResult(TUSBCommandResult result) { mUSBCommandResult = result; }
  const std::shared_ptr<TIUSBCommandUser>& USBCommandUser() const { return mUSBCommandUser; }
  // Tells the registered user of a change, stores the status, and registers `user` (released again
  // when the status returns to NoUSBCommand).
  void SetUSBCommandStatus(TUSBCommandStatus newStatus, std::shared_ptr<TIUSBCommandUser> user);
  // Pumps events until the exchange has ended. Fails (status NoUSBCommand, result failure) when
  // no raw data arrived for `timeoutMs` or the link is lost, asking the user as designed; with
  // `canIgnoreError` the user may choose to continue (true).
  bool WaitUSBCommandResponse(TTickCount timeoutMs, bool canIgnoreError);
  // Pumps events until the device has been silent (no packet other than echoes) for `timeoutMs`.
  void WaitForCommands(TTickCount timeoutMs, bool commandsExpected);

  int InProcessCmd() const { return mInProcessCmd; }
  // True while the engine has called out to a user, a handler or the event loop and not yet
  // returned: whoever owns the engine must not free it now.
  bool CallingOut() const { return mCallingOut > 0; }
  bool ProcessingEcho() const { return mProcessingEcho; }
  bool ForceRawProcessing() const { return mForceRawProcessing; }
  void SetForceRawProcessing(bool value) { mForceRawProcessing = value; }
  TTickCount TimeLastCommand() const { return mTimeLastCommand; }
  TTickCount LastRX() const { return mLastRX; }
  // Bytes received but not yet processed on the main channel and on the notification channel.
  const QByteArray& PendingRawData() const { return mRawData; }
  const QByteArray& PendingNotificationData() const { return mNotificationData; }

 protected:
  // Counts one call out of the engine (to users, handlers, or pumped events) while it lives.
  class TCallOut {
   public:
    explicit TCallOut(TNorvaPacketEngine& engine) : mEngine(engine) { ++mEngine.mCallingOut; }
    ~TCallOut();
    TCallOut(const TCallOut&) = delete;
    TCallOut& operator=(const TCallOut&) = delete;

   private:
    TNorvaPacketEngine& mEngine;
  };
  // The outermost call out has returned.
  virtual void CallOutsEnded() {}

 private:
  struct TSentEntry {
    TCommandPacket Packet;
    bool Matchable = false;  // a sent packet whose echo has not yet been seen
  };

  // Sent packets still awaiting their echo, counted by a hash of command and zone: a received
  // packet whose count is zero cannot be an echo, so the history is only walked when it might be.
  static std::size_t EchoKey(const TCommandPacket& packet) {
    return (packet.Cmd + packet.Zone * 7u) % EchoKeyCount;
  }
  static constexpr std::size_t EchoKeyCount = 256;
  void SetMatchable(TSentEntry& entry, bool matchable);

  bool ReadsBusText(int kind) const;
  void ProcessMainChannel(QByteArray& buffer, int kind);
  void ProcessBusText(QByteArray& buffer);
  void ProcessNotificationChannel(QByteArray& buffer);
  void RecordSent(const TCommandPacket& packet);
  bool MatchEcho(const TCommandPacket& packet);
  TSentEntry& SentEntry(int index);
  const TSentEntry& SentEntry(int index) const;
  template <typename Deliver>
  bool DeliverToUsers(Deliver&& deliver);

  TBusTransport* mTransport = nullptr;
  TCommsInterface mSelectedCommsInterface = NoCommsInterface;
  TCommsDeviceType mConnectedDeviceType = NoCommsDevice;
  std::vector<TNorvaBusUser*> mUsers;
  int mCallingOut = 0;

  QByteArray mRawData;
  int mRawDataProcessCount = 0;
  QByteArray mNotificationData;
  int mNotificationDataProcessCount = 0;
  // Arrivals were dropped while a handler was busy: what is left before the gap is of no use.
  bool mRawDataCut = false;
  bool mNotificationDataCut = false;
  bool mSkippingLine = false;  // the bus text up to the next line feed belongs to a dropped line
  int mInProcessCmd = 0;
  TTickCount mTimeLastCommand = 0;
  // A ring: mNewestSent is the slot of index 0, older entries follow it.
  std::array<TSentEntry, SentHistorySize> mCommandsRecentlySent{};
  int mNewestSent = 0;
  std::array<std::uint8_t, EchoKeyCount> mMatchableByKey{};  // never above SentHistorySize
  bool mProcessingEcho = false;
  bool mForceRawProcessing = false;
  TTickCount mLastRX = 0;
  TUSBCommandStatus mUSBCommandStatus = NoUSBCommand;
  TUSBCommandResult mUSBCommandResult = USBCommand_Success;
  std::shared_ptr<TIUSBCommandUser> mUSBCommandUser;
};

}  // namespace norva
