#include <IR/NorvaCodes.h>

#include <NorvaGlobal/Zones.h>

#include <QList>
#include <QStringList>

#include <array>

namespace norva {

namespace {

// Frame lengths in 1/3 us (the word gap in 256/3 us).
constexpr std::uint16_t OneMs = 3000;
constexpr std::uint16_t TwoMs = 6000;
constexpr std::uint16_t ThreeMs = 9000;
constexpr std::uint16_t FiveMs = 15000;
constexpr std::uint16_t VolumeWordGap = 938;           // about 80 ms: volume keys repeat slowly
constexpr std::uint16_t WordGap = 176;                 // about 15 ms
constexpr std::uint16_t NativeModulationPeriod = 272;  // 12 MHz / 272, about 44.1 kHz
constexpr TPeriodID ZeroBitID = 2;
constexpr TPeriodID OneBitID = 3;

// The byte of sources 1..16, in source order; video sources send the same.
constexpr std::array<std::uint8_t, 16> SourceBytes = {
    0x05, 0x06, 0x07, 0x03, 0x00, 0x01, 0x02, 0x04, 0x08, 0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x0E, 0x0F};
constexpr std::uint8_t MediaSourceByte = 0x12;

bool Between(int value, int first, int last) { return first <= value && value <= last; }

bool IsIntegra(TNorvaCommandType type) {
  return type == IntegraAmpCommand || type == IntegraPreampCommand;
}

// Appends pairs with on ID 0 and the given off IDs.
class TFrameWriter {
 public:
  explicit TFrameWriter(TIRStreamData& frame) : mFrame(frame) {}
  void Pair(TPeriodID off) { mFrame.Pairs[mNext++] = {0, off}; }
  void Bits(std::uint8_t value, int count, TPeriodID zero, TPeriodID one) {
    for (int bit = count - 1; bit >= 0; --bit) Pair((value >> bit & 1) != 0 ? one : zero);
  }
  int Count() const { return static_cast<int>(mNext); }

 private:
  TIRStreamData& mFrame;
  std::size_t mNext = 0;
};

std::uint8_t GroupByte(TNorvaCommand command) {
  switch (command) {
    case nvStandbyCmd:
    case nvOnCmd:
    case nvOffCmd: return 0x01;
    case nvMuteCmd: return 0x02;
    case nvVolUpCmd: return 0x11;
    case nvVolDownCmd: return 0x12;
    default: break;
  }
  if (Between(command, nvSrc1VideoCmd, nvSrc16VideoCmd)) return 0x28;
  if (Between(command, nvSelectPreset1Cmd, nvSelectPreset14Cmd)) return 0x1E;
  if (Between(command, nvAlarmOff, nvAlarmSleep)) return 0x23;
  return 0x03;  // the sources, audio sources and "on and source" commands
}

bool IsPreamp(TNorvaCommandType type) {
  return type == PreampCommand || type == IntegraPreampCommand;
}

// The source byte of sources 1..16 counted from `first`, or of the media source at first + 16.
std::uint8_t SourceByte(TNorvaCommand command, TNorvaCommand first) {
  const int index = command - first;
  return index < 16 ? SourceBytes[static_cast<std::size_t>(index)] : MediaSourceByte;
}

QList<std::uint8_t> CommandBytes(TNorvaCommand command, TNorvaCommandType type) {
  const bool amplifier = type <= IntegraPreampCommand;
  switch (command) {
    case nvVolUpCmd:
    case nvVolDownCmd: return {};
    case nvStandbyCmd: return {0x04};
    case nvMuteCmd: return {0x02};
    case nvOnCmd: return {static_cast<std::uint8_t>(amplifier ? 0x07 : 0x01)};
    case nvOffCmd: return {static_cast<std::uint8_t>(amplifier ? 0x06 : 0x00)};
    case nvAlarmOff: return {0xFF, 0x00};
    case nvAlarmOn: return {0xFF, 0x01};
    case nvAlarmSleep: return {0xFF, 0x02, 0x00};
    default: break;
  }
  if (Between(command, nvSrc1Cmd, nvSrcMediaCmd)) return {SourceByte(command, nvSrc1Cmd)};
  if (Between(command, nvSrc1AudioCmd, nvSrcMediaAudioCmd))
    return {static_cast<std::uint8_t>(SourceByte(command, nvSrc1AudioCmd) + 0x40)};
  if (Between(command, nvSrc1VideoCmd, nvSrc16VideoCmd))
    return {SourceByte(command, nvSrc1VideoCmd)};
  if (Between(command, nvOnSrc1Cmd, nvOnSrcMediaCmd))
    return {static_cast<std::uint8_t>(SourceByte(command, nvOnSrc1Cmd) + 0x80)};
  return {static_cast<std::uint8_t>(0x81 + (command - nvSelectPreset1Cmd + 1))};
}

bool AmplifierCommandUseful(TNorvaCommand command, int zone, TNorvaCommandType type) {
  bool useful = true;
  if (Between(command, nvSelectPreset1Cmd, nvAlarmSleep))
    useful = zone == -1;
  else if (command == nvVolUpCmd || command == nvVolDownCmd)
    useful = zone != -1;
  return useful && !(type == PreampCommand && zone > LastPreampZone);
}

// Standby to source 8, on and off, on and source 1..8, presets 1..6, the alarms.
bool IsIntegraCommand(TNorvaCommand command) {
  return Between(command, nvStandbyCmd, nvSrc8Cmd) || Between(command, nvOnCmd, nvOnSrc8Cmd) ||
         Between(command, nvSelectPreset1Cmd, nvSelectPreset6Cmd) ||
         Between(command, nvAlarmOff, nvAlarmSleep);
}

}  // namespace

QString NorvaFunctionName(TNorvaCommand command) {
  const int c = command;
  if (c <= nvVolDownCmd) {
    static const char* const First[] = {"Standby", "Mute", "Vol Up", "Vol Down"};
    return QString::fromLatin1(First[c]);
  }
  if (Between(c, nvSrc1Cmd, nvSrc16Cmd)) return QStringLiteral("Source %1").arg(c - nvSrc1Cmd + 1);
  if (c == nvSrcMediaCmd) return QStringLiteral("Source Media");
  if (Between(c, nvSrc1AudioCmd, nvSrc16AudioCmd))
    return QStringLiteral("Audio source %1").arg(c - nvSrc1AudioCmd + 1);
  if (c == nvSrcMediaAudioCmd) return QStringLiteral("Audio source Media");
  if (Between(c, nvSrc1VideoCmd, nvSrc16VideoCmd))
    return QStringLiteral("Video source %1").arg(c - nvSrc1VideoCmd + 1);
  if (c == nvOnCmd) return QStringLiteral("On");
  if (c == nvOffCmd) return QStringLiteral("Off");
  if (Between(c, nvOnSrc1Cmd, nvOnSrc16Cmd))
    return QStringLiteral("On and Source %1").arg(c - nvOnSrc1Cmd + 1);
  if (c == nvOnSrcMediaCmd) return QStringLiteral("On and Source Media");
  if (Between(c, nvSelectPreset1Cmd, nvSelectPreset14Cmd))
    return QStringLiteral("Select preset %1").arg(c - nvSelectPreset1Cmd + 1);
  static const char* const Alarms[] = {"Alarms off", "Alarms on", "Alarm sleep"};
  if (Between(c, nvAlarmOff, nvAlarmSleep)) return QString::fromLatin1(Alarms[c - nvAlarmOff]);
  return QString();
}

QString Sw6CommandName(TSw6Cmd command) {
  if (command < FirstSw6Cmd || command > LastSw6Cmd) return QString();
  const int index = command - FirstSw6Cmd;
  if (index < 18) {
    static const char* const Actions[] = {"off", "on", "toggle"};
    return QStringLiteral("Relay %1 %2").arg(index % 6 + 1).arg(QLatin1String(Actions[index / 6]));
  }
  static const char* const Others[] = {
      "All relays off",    "All relays on",     "Relay 1 on, 2 off", "Relay 2 on, 1 off",
      "Relay 3 on, 4 off", "Relay 4 on, 3 off", "Relay 5 on, 6 off", "Relay 6 on, 5 off",
      "Relay 5/6 +1",      "Relay 5/6 -1"};
  return QString::fromLatin1(Others[index - 18]);
}

bool NorvaFunctionUseful(TNorvaCommand command, int zone, TNorvaCommandType type) {
  switch (type) {
    case VideoSwitcherCommand:
      return Between(command, nvSrc1Cmd, nvSrc16Cmd) ||
             Between(command, nvSrc1VideoCmd, nvSrc16VideoCmd);
    case AmpCommand:
    case PreampCommand: return AmplifierCommandUseful(command, zone, type);
    case IntegraAmpCommand:
    case IntegraPreampCommand:
      return IsIntegraCommand(command) && zone <= LastPreampZone &&
             AmplifierCommandUseful(command, zone, static_cast<TNorvaCommandType>(type - 2));
    case Sw6Command: break;
  }
  return false;
}

TIRStreamData NorvaFrame(int zone, TNorvaCommand command, TNorvaCommandType type) {
  TIRStreamData frame;
  frame.ModulationPeriod = NativeModulationPeriod;
  frame.Lengths[0] = OneMs;
  frame.Lengths[1] = ThreeMs;
  frame.Lengths[ZeroBitID] = OneMs;
  frame.Lengths[OneBitID] = TwoMs;
  const bool volume = command == nvVolUpCmd || command == nvVolDownCmd;
  frame.Lengths[FirstWordEndID] = volume ? VolumeWordGap : WordGap;

  TFrameWriter writer(frame);
  for (const TPeriodID off : {1, 2, 2, 3}) writer.Pair(off);
  QList<std::uint8_t> bytes = {GroupByte(command),
                               EncodeZone(static_cast<std::int8_t>(zone), IsPreamp(type), false)};
  bytes += CommandBytes(command, type);
  std::uint8_t sum = 0;
  for (const std::uint8_t byte : bytes) sum = static_cast<std::uint8_t>(sum + byte);
  bytes.append(static_cast<std::uint8_t>(-sum));
  for (const std::uint8_t byte : bytes) writer.Bits(byte, 8, ZeroBitID, OneBitID);
  writer.Pair(FirstWordEndID);
  return frame;
}

TIRStreamData LegacyRelayFrame(std::uint8_t a, std::uint8_t b) {
  TIRStreamData frame;
  frame.ModulationPeriod = NativeModulationPeriod;
  frame.Lengths[0] = OneMs;
  frame.Lengths[1] = ThreeMs;
  frame.Lengths[2] = FiveMs;
  TFrameWriter writer(frame);
  writer.Pair(2);
  writer.Pair(0);
  writer.Bits(a, 5, 1, 2);
  writer.Bits(b, 8, 1, 2);
  writer.Pair(FirstWordEndID);
  // The gap tops the frame up to about 100 ms. The sum reads the final pair's length (still 0)
  // on every step instead of each pair's own, which relay modules have always been sent: 973.
  const int pairs = writer.Count();
  const int last = frame.Lengths[FirstWordEndID];
  frame.Lengths[FirstWordEndID] =
      static_cast<std::uint16_t>(1172 - (OneMs + pairs * (OneMs + last)) / 256);
  return frame;
}

QString NorvaCategory(int zone, TNorvaCommandType type) {
  if (IsIntegra(type))
    return zone == -1 ? QStringLiteral("Quil-2.3, all zones")
                      : QStringLiteral("Quil-2.3, zone %1").arg(zone);
  if (zone == -1) return QStringLiteral("Norva, all zones");
  QString category = QStringLiteral("Norva, zone %1").arg(zone);
  if (zone <= LastPreampZone && type == AmpCommand) category += QStringLiteral(" (amp)");
  if (zone <= LastPreampZone && type == PreampCommand) category += QStringLiteral(" (preamp)");
  return category;
}

QString NorvaFrameText(const TIRStreamData& frame) {
  QStringList bytes;
  int value = 0;
  int bits = 0;
  const int last = frame.GetEndPos(true) - 8;
  for (int i = 4; i <= last; ++i) {
    const TPeriodIDPair& pair = frame.Pairs[static_cast<std::size_t>(i)];
    value = value << 1 | (frame.Lengths[pair.OffID] == TwoMs ? 1 : 0);
    if (++bits == 8) {
      bytes << QStringLiteral("%1").arg(value, 2, 16, QLatin1Char('0')).toUpper();
      value = 0;
      bits = 0;
    }
  }
  return bytes.join(u' ');
}

std::optional<TCommandPacket> NorvaFramePacket(const TIRStreamData& frame) {
  constexpr std::array<TPeriodID, 4> LeadIn = {1, 2, 2, 3};
  if (frame.ModulationPeriod != NativeModulationPeriod || frame.Lengths[0] != OneMs ||
      frame.Lengths[1] != ThreeMs || frame.Lengths[ZeroBitID] != OneMs ||
      frame.Lengths[OneBitID] != TwoMs)
    return std::nullopt;
  const int end = frame.GetEndPos(true);
  const int bits = end - static_cast<int>(LeadIn.size());
  if (bits < 3 * 8 || bits % 8 != 0) return std::nullopt;
  for (std::size_t i = 0; i < LeadIn.size(); ++i) {
    if (frame.Pairs[i].OnID != 0 || frame.Pairs[i].OffID != LeadIn[i]) return std::nullopt;
  }
  QByteArray bytes;
  int value = 0;
  for (int i = static_cast<int>(LeadIn.size()); i < end; ++i) {
    const TPeriodIDPair& pair = frame.Pairs[static_cast<std::size_t>(i)];
    if (pair.OnID != 0 || (pair.OffID != ZeroBitID && pair.OffID != OneBitID)) return std::nullopt;
    value = value << 1 | (pair.OffID == OneBitID ? 1 : 0);
    if ((i - static_cast<int>(LeadIn.size())) % 8 == 7) {
      bytes.append(static_cast<char>(value));
      value = 0;
    }
  }
  std::uint8_t sum = 0;
  for (const char byte : bytes)
    sum = static_cast<std::uint8_t>(sum + static_cast<std::uint8_t>(byte));
  if (sum != 0) return std::nullopt;
  TCommandPacket packet =
      BuildCommandPacket(static_cast<TCommand>(bytes[0]), static_cast<std::uint8_t>(bytes[1]));
  packet.SetDataBytes(bytes.mid(2, bytes.size() - 3));
  return packet;
}

std::optional<TButtonClass> NorvaCommandButtonClass(TNorvaCommand command) {
  // The keypad firmware's own function numbers.
  int function = 0;
  if (command <= nvVolDownCmd)
    function = command + 1;
  else if (Between(command, nvSrc1Cmd, nvSrc8Cmd))
    function = 5 + command - nvSrc1Cmd;
  else if (Between(command, nvSrc9Cmd, nvSrc16Cmd))
    function = 40 + command - nvSrc9Cmd;
  else if (command == nvSrcMediaCmd)
    function = 50;
  else if (Between(command, nvSelectPreset1Cmd, nvSelectPreset6Cmd))
    function = 13 + command - nvSelectPreset1Cmd;
  else if (Between(command, nvSelectPreset7Cmd, nvSelectPreset14Cmd))
    function = 60 + command - nvSelectPreset7Cmd;
  else if (Between(command, nvAlarmOff, nvAlarmSleep))
    function = 19 + command - nvAlarmOff;
  if (function == 0) return std::nullopt;
  return TButtonClass(NorvaClassGroup, static_cast<std::uint8_t>(function));
}

}  // namespace norva
