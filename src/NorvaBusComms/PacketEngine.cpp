#include <NorvaBusComms/BusTextParser.h>
#include <NorvaBusComms/NotificationFraming.h>
#include <NorvaBusComms/PacketEngine.h>
#include <NorvaGlobal/DebugOutput.h>
#include <NorvaGlobal/EventPump.h>

#include <QVarLengthArray>

#include <algorithm>
#include <bitset>

namespace norva {

namespace {
constexpr TTickCount QueueDrainLimitMs = 500;

// Counts one level of processing for as long as it lives, also when a user's handler throws.
class TNestingGuard {
 public:
  explicit TNestingGuard(int& depth) : mDepth(depth) { ++mDepth; }
  ~TNestingGuard() { --mDepth; }
  TNestingGuard(const TNestingGuard&) = delete;
  TNestingGuard& operator=(const TNestingGuard&) = delete;
  bool Outermost() const { return mDepth == 1; }

 private:
  int& mDepth;
};

// Status reports: only the newest per command and zone in one batch matters.
constexpr bool IsStatusReport(TCommand cmd) { return cmd >= 4 && cmd <= 7; }
constexpr std::size_t StatusReportKeys = std::size_t{4} * 256;  // command 4-7 by zone byte
}  // namespace

TNorvaPacketEngine::TCallOut::~TCallOut() {
  if (--mEngine.mCallingOut == 0) mEngine.CallOutsEnded();
}

void TNorvaPacketEngine::AddUser(TNorvaBusUser* user) {
  if (user && std::find(mUsers.begin(), mUsers.end(), user) == mUsers.end()) mUsers.push_back(user);
}

void TNorvaPacketEngine::RemoveUser(TNorvaBusUser* user) {
  const auto found = std::find(mUsers.begin(), mUsers.end(), user);
  if (found != mUsers.end()) mUsers.erase(found);
}

// The walk survives users that remove themselves: it only moves on when the user it just called
// is still in its place. Stops at the first user whose handler returns true.
template <typename Deliver>
bool TNorvaPacketEngine::DeliverToUsers(Deliver&& deliver) {
  const TCallOut callOut(*this);
  for (std::size_t i = 0; i < mUsers.size();) {
    TNorvaBusUser* const user = mUsers[i];
    if (deliver(user)) return true;
    if (i < mUsers.size() && mUsers[i] == user) ++i;
  }
  return false;
}

// --- Transmitting ---

void TNorvaPacketEngine::SendCmd(const TCommandPacket& packet) {
  if (!IsOpen()) return;
  const QByteArray text = PacketText(packet);
  if (PacketTraceEnabled()) DebugOutput(BusLog(), SendTraceLine(packet, GetTickCount()));
  // A link whose devices never echo (Ethernet) does not have its packets remembered.
  if (mTransport->SendPacketText(text)) RecordSent(packet);
}

void TNorvaPacketEngine::AckCmd(const TCommandPacket& packet) {
  TCommandPacket ack = packet;
  ack.Cmd = static_cast<TCommand>(packet.Cmd + AcknowledgeOffset);
  SendCmd(ack);
}

void TNorvaPacketEngine::SendKeypress(std::uint8_t zone, std::uint8_t key, std::uint8_t repeats) {
  const int keyByte = (repeats * 32 | key) & 0xFF;
  SendCmd(BuildCommandPacket(KeypressCommand, zone, {keyByte}));
}

void TNorvaPacketEngine::SendXOFF() { SendRaw(QByteArray(1, '\x13')); }

void TNorvaPacketEngine::SendXON() { SendRaw(QByteArray(1, '\x11')); }

void TNorvaPacketEngine::SendRaw(const QByteArray& bytes) {
  if (!bytes.isEmpty()) Send(TTXItem{usb_no_command, 0, 0, bytes});
}

void TNorvaPacketEngine::Send(const TTXItem& item) {
  if (IsOpen()) mTransport->Send(item);
}

void TNorvaPacketEngine::SendUSBCommand(TUSBCommand command, std::uint16_t wValue,
                                        std::uint16_t wIndex, const QByteArray& data,
                                        bool waitForQueue) {
  if (waitForQueue) {
    const TCallOut callOut(*this);
    const TTickCount start = GetTickCount();
    while (IsOpen() && mTransport->Sending() && TicksSince(start) < QueueDrainLimitMs)
      SleepAndPumpEvents(WaitStepMs);
  }
  Send(TTXItem{command, wValue, wIndex, data});
}

void TNorvaPacketEngine::RecordSent(const TCommandPacket& packet) {
  mNewestSent = (mNewestSent + SentHistorySize - 1) % SentHistorySize;
  TSentEntry& slot = mCommandsRecentlySent[static_cast<std::size_t>(mNewestSent)];
  SetMatchable(slot, false);  // the entry pushed out of the history
  slot.Packet = packet;
  SetMatchable(slot, true);
}

void TNorvaPacketEngine::SetMatchable(TSentEntry& entry, bool matchable) {
  if (entry.Matchable == matchable) return;
  entry.Matchable = matchable;
  std::uint8_t& count = mMatchableByKey[EchoKey(entry.Packet)];
  count = static_cast<std::uint8_t>(matchable ? count + 1 : count - 1);
}

TNorvaPacketEngine::TSentEntry& TNorvaPacketEngine::SentEntry(int index) {
  return mCommandsRecentlySent[static_cast<std::size_t>((mNewestSent + index) % SentHistorySize)];
}

const TNorvaPacketEngine::TSentEntry& TNorvaPacketEngine::SentEntry(int index) const {
  return mCommandsRecentlySent[static_cast<std::size_t>((mNewestSent + index) % SentHistorySize)];
}

const TCommandPacket& TNorvaPacketEngine::CommandRecentlySent(int index) const {
  return SentEntry(std::clamp(index, 0, SentHistorySize - 1)).Packet;
}

// --- Receiving ---

void TNorvaPacketEngine::RXEvent(int kind) {
  QByteArray received;
  if (mTransport) mTransport->TakeReceivedBytes(kind, received);
  ReceiveBytes(kind, received);
}

void TNorvaPacketEngine::ReceiveBytes(int kind, QByteArrayView bytes) {
  const bool notifications = kind == NotificationPipeRXKind;
  QByteArray& pending = notifications ? mNotificationData : mRawData;
  bool& cut = notifications ? mNotificationDataCut : mRawDataCut;
  int& depth = notifications ? mNotificationDataProcessCount : mRawDataProcessCount;
  // A nested arrival (a user pumping events) only leaves its bytes for the loop further up; they
  // are held until then, so past the bound they are dropped and the stream has a gap.
  if (depth > 0 && pending.size() + bytes.size() > MaxPendingBytes) {
    DebugOutput(
        BusLog(),
        QStringLiteral("Receive: dropped %1 bytes of channel %2 that arrived while a handler "
                       "was busy")
            .arg(pending.size() + bytes.size())
            .arg(kind));
    pending.clear();
    cut = true;
    return;
  }
  pending.append(bytes);
  TNestingGuard guard(depth);
  if (!guard.Outermost()) return;
  QByteArray buffer = std::exchange(pending, QByteArray());
  for (;;) {
    if (notifications)
      ProcessNotificationChannel(buffer);
    else
      ProcessMainChannel(buffer, kind);
    if (std::exchange(cut, false)) {
      // An unfinished frame or line before the gap must not be completed with bytes after it.
      buffer.clear();
      if (!notifications && ReadsBusText(kind)) mSkippingLine = true;
    }
    if (pending.isEmpty()) break;
    buffer.append(pending);
    pending.clear();
  }
  pending = std::move(buffer);
}

bool TNorvaPacketEngine::ReadsBusText(int kind) const {
  // The USB data pipe carries raw data only; packets from USB devices come as notifications.
  return SpeaksTextForm(mConnectedDeviceType) && !mForceRawProcessing && kind != DataPipeRXKind;
}

void TNorvaPacketEngine::ProcessMainChannel(QByteArray& buffer, int kind) {
  if (ReadsBusText(kind)) {
    ProcessBusText(buffer);
    return;
  }
  ProcessRawData(buffer);
  if (buffer.size() > MaxPendingBytes) {
    DebugOutput(
        BusLog(),
        QStringLiteral("Receive: dropped %1 bytes a raw-data user kept").arg(buffer.size()));
    buffer.clear();
  }
}

void TNorvaPacketEngine::ProcessBusText(QByteArray& buffer) {
  if (mSkippingLine) {
    const qsizetype lineFeed = buffer.indexOf('\n');
    mSkippingLine = lineFeed < 0;
    buffer.remove(0, mSkippingLine ? buffer.size() : lineFeed + 1);
  }
  buffer.remove(0, ProcessRawNorvaCommandString(buffer));
  if (buffer.size() > MaxBusTextLine) {
    DebugOutput(BusLog(),
                QStringLiteral("Bus text: dropped an unfinished line of %1 characters, skipping to "
                               "its line feed")
                    .arg(buffer.size()));
    buffer.clear();
    mSkippingLine = true;
  }
}

void TNorvaPacketEngine::ProcessNotificationChannel(QByteArray& buffer) {
  std::vector<TCommandPacket> packets;
  CutNotificationFrames(
      buffer, GetTickCount(), packets,
      [this](TUSBNotification kind, const QByteArray& body) { ProcessNotification(kind, body); });
  ProcessCommands(packets);
}

qsizetype TNorvaPacketEngine::ProcessRawNorvaCommandString(QByteArrayView received) {
  std::vector<TCommandPacket> packets;
  const qsizetype consumed = ParseBusText(received, GetTickCount(), packets);
  ProcessCommands(packets);
  return consumed;
}

void TNorvaPacketEngine::ProcessCommands(const std::vector<TCommandPacket>& packets) {
  // Walk backwards once to find the status reports that a later one in the batch supersedes.
  std::bitset<StatusReportKeys> seenLater;
  QVarLengthArray<bool, 256> superseded(static_cast<qsizetype>(packets.size()));
  for (std::size_t i = packets.size(); i-- > 0;) {
    const TCommandPacket& packet = packets[i];
    bool skip = false;
    if (IsStatusReport(packet.Cmd)) {
      const std::size_t key = static_cast<std::size_t>(packet.Cmd - 4) * 256 + packet.Zone;
      skip = seenLater.test(key);
      seenLater.set(key);
    }
    superseded[static_cast<qsizetype>(i)] = skip;
  }
  for (std::size_t i = 0; i < packets.size(); ++i)
    if (!superseded[static_cast<qsizetype>(i)]) ProcessCommand(packets[i]);
}

void TNorvaPacketEngine::ProcessCommand(const TCommandPacket& packet) {
  TNestingGuard guard(mInProcessCmd);
  // A packet delivered inside another's delivery must not leave its echo flag to the outer one.
  const bool outerEcho = mProcessingEcho;
  mProcessingEcho = ExpectEcho() && MatchEcho(packet);
  const TTickCount now = GetTickCount();
  if (!mProcessingEcho) mTimeLastCommand = now;
  if (PacketTraceEnabled()) DebugOutput(BusLog(), ReceiveTraceLine(packet, mProcessingEcho, now));
  struct TRestoreEcho {
    TNorvaPacketEngine& engine;
    bool value;
    bool nested;
    ~TRestoreEcho() {
      if (nested) engine.mProcessingEcho = value;
    }
  } restore{*this, outerEcho, !guard.Outermost()};
  DeliverToUsers([&packet](TNorvaBusUser* user) {
    user->ProcessCommand(packet);
    return false;
  });
}

bool TNorvaPacketEngine::MatchEcho(const TCommandPacket& packet) {
  if (mMatchableByKey[EchoKey(packet)] == 0) return false;
  const TTickCount now = GetTickCount();
  for (int i = 0; i < SentHistorySize; ++i) {
    TSentEntry& entry = SentEntry(i);
    if (TicksBetween(entry.Packet.Timestamp, now) > EchoWindowMs) return false;
    if (entry.Matchable && entry.Packet.SameContent(packet)) {
      // A cleared entry can never match again.
      SetMatchable(entry, false);
      entry.Packet.Cmd = 0;
      return true;
    }
  }
  return false;
}

void TNorvaPacketEngine::ProcessRawData(QByteArray& bytes) {
  mLastRX = GetTickCount();
  const bool taken =
      DeliverToUsers([&bytes](TNorvaBusUser* user) { return user->ProcessRawData(bytes); });
  if (!taken) bytes.clear();
}

bool TNorvaPacketEngine::ProcessNotification(TUSBNotification kind, const QByteArray& data) {
  return DeliverToUsers(
      [kind, &data](TNorvaBusUser* user) { return user->ProcessNotification(kind, data); });
}

void TNorvaPacketEngine::FlushRawData() {
  mRawData.clear();
  if (mTransport) mTransport->FlushReceived();
}

bool TNorvaPacketEngine::ExpectEcho() const {
  return !mTransport || mTransport->EchoesPackets(mConnectedDeviceType);
}

bool TNorvaPacketEngine::WaitUntilEchoReceived(TTickCount timeoutMs) {
  if (!ExpectEcho()) return true;
  const TCallOut callOut(*this);
  const TTickCount start = GetTickCount();
  do {
    if (TicksSince(start) > timeoutMs) return false;
    SleepAndPumpEvents(WaitStepMs);
  } while (CommandRecentlySent(0).Cmd != 0);
  return true;
}

}  // namespace norva
