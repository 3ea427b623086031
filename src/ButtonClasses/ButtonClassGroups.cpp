#include <ButtonClasses/ButtonClassGroups.h>

#include <QMetaEnum>

#include <span>

namespace norva {

namespace {

enum class TFamily : std::uint8_t { None, Generic, Wk3, NvZr900 };

using TNames = std::span<const char16_t* const>;

// One row per group, in group order. The display-name tables hold every value of the group in
// value order; the value names come from the group's enumeration.
struct TGroupRow {
  const char16_t* DisplayName;
  int First;
  int Last;
  TFamily Family;
  TNames Names;
  QMetaEnum (*Values)();
};

template <std::size_t N>
constexpr TNames Names(const char16_t* const (&table)[N]) {
  return TNames(table, N);
}

template <typename E>
QMetaEnum MetaEnumOf() {
  return QMetaEnum::fromType<E>();
}

// The tables read as the vocabulary they are.
// clang-format off

constexpr const char16_t* NorvaNames[] = {
    u"(None)", u"Standby", u"Mute", u"Vol Up", u"Vol Down", u"Source 1", u"Source 2", u"Source 3",
    u"Source 4", u"Source 5", u"Source 6", u"Source 7", u"Source 8", u"Preset 1", u"Preset 2",
    u"Preset 3", u"Preset 4", u"Preset 5", u"Preset 6", u"Alarm off", u"Alarm on", u"Alarm sleep",
    u"All zones off", u"Zone name", u"unused", u"unused", u"unused", u"unused",
    u"Microphone (no page sound)", u"Microphone (with page sound)", u"Home page", u"Back",
    u"unused", u"unused", u"unused", u"unused", u"unused", u"unused", u"unused", u"unused",
    u"Source 9", u"Source 10", u"Source 11", u"Source 12", u"Source 13", u"Source 14",
    u"Source 15", u"Source 16", u"unused", u"unused", u"Source Media", u"unused", u"unused",
    u"unused", u"unused", u"unused", u"unused", u"unused", u"unused", u"unused", u"Preset 7",
    u"Preset 8", u"Preset 9", u"Preset 10", u"Preset 11", u"Preset 12", u"Preset 13", u"Preset 14",
    u"Show flag 1", u"Show flag 2", u"Show flag 3", u"Show flag 4", u"Show flag 5", u"Show flag 6",
    u"Show flag 7", u"Show flag 8", u"Show flag 9", u"Show flag 10", u"Show flag 11",
    u"Show flag 12", u"Show flag 13", u"Show flag 14", u"Show flag 15", u"Show flag 16",
    u"Show flag 17", u"Show flag 18", u"Show flag 19", u"Show flag 20", u"Show flag 21",
    u"Show flag 22", u"Show flag 23", u"Show flag 24", u"Show flag 25", u"Show flag 26",
    u"Show flag 27", u"Show flag 28", u"Show flag 29", u"Show flag 30", u"Show flag 31",
    u"Show flag 32",
};
constexpr const char16_t* TransportNames[] = {
    u"(none)", u"Play", u"Stop", u"Pause", u"Rewind", u"Fast forward", u"Track+", u"Track-",
    u"Disc+", u"Disc-", u"Eject",
};
constexpr const char16_t* NumericNames[] = {
    u"(none)", u"0", u"1", u"2", u"3", u"4", u"5", u"6", u"7", u"8", u"9", u"10", u"Enter", u"",
    u"", u"", u"", u"Channel+", u"Channel-",
};
constexpr const char16_t* CursorNames[] = {
    u"(none)", u"Up", u"Down", u"Left", u"Right", u"Enter", u"Menu", u"Red", u"Green", u"Yellow",
    u"Blue",
};
constexpr const char16_t* SystemNames[] = {
    u"(none)", u"Standby", u"Mute", u"Vol Up", u"Vol Down", u"CD", u"Tuner", u"Tape", u"DVD",
    u"VCR", u"SAT", u"Aux",
};
constexpr const char16_t* IPortNames[] = {
    u"(none)", u"Back", u"Enter", u"Play/Pause / Stop", u"Track+ / Fast forward",
    u"Track- / Rewind", u"Page Up", u"Page Down", u"Up", u"Down", u"Repeat", u"Shuffle", u"Play",
    u"Pause / Stop", u"Stop",
};
constexpr const char16_t* IntegraTunerNames[] = {
    u"(none)", u"Power", u"FM", u"AM", u"XM", u"Sirius", u"DAB", u"Preset Up", u"Preset Down",
    u"Preset 1", u"Preset 2", u"Preset 3", u"Preset 4", u"Preset 5", u"Preset 6", u"Preset 7",
    u"Preset 8", u"Preset 9", u"Preset 10", u"0", u"1", u"2", u"3", u"4", u"5", u"6", u"7", u"8",
    u"9", u"Enter",
};
constexpr const char16_t* IntegraReceiverNames[] = {
    u"(none)", u"Power", u"Mute", u"Vol Up", u"Vol Down", u"Source Up", u"Source Down",
    u"Video1 (VCR/DVR)", u"Video2 (CBL/SAT)", u"Video3 (Game/TV)", u"Video4 (Aux 1)",
    u"Video5 (Aux 2)", u"Video6", u"Video7", u"DVD", u"Tape", u"Tape 2", u"Phono", u"CD", u"FM",
    u"AM", u"Tuner", u"Music Server", u"Internet Radio", u"USB", u"Multi Ch", u"XM", u"Sirius",
    u"Preset Up", u"Preset Down", u"Preset 1", u"Preset 2", u"Preset 3", u"Preset 4", u"Preset 5",
    u"Preset 6", u"Preset 7", u"Preset 8", u"Preset 9", u"Preset 10", u"0", u"1", u"2", u"3", u"4",
    u"5", u"6", u"7", u"8", u"9", u"Enter", u"Source", u"Port", u"USB (rear)", u"Cursor up",
    u"Cursor down", u"Page up", u"Page down", u"Back", u"Enter", u"Play/Pause / Stop", u"Play",
    u"Pause / Stop", u"Stop", u"Track+ / Fast forward", u"Track- / Rewind", u"Repeat", u"Shuffle",
    u"NET",
};
constexpr const char16_t* IntegraDVDPlayerNames[] = {
    u"(none)", u"Power", u"Play/Pause / Stop", u"Track+", u"Track-", u"Disc+", u"Disc-", u"Random",
    u"Repeat", u"Menu / Title", u"Up", u"Down", u"Left", u"Right", u"0", u"1", u"2", u"3", u"4",
    u"5", u"6", u"7", u"8", u"9", u"+10", u"Enter", u"Return", u"Audio", u"Subtitle",
};
constexpr const char16_t* ClockNames[] = {
    u"(none)", u"Mode select", u"Increment", u"Decrement",
};
constexpr const char16_t* VantageLightingNames[] = {
    u"(none)", u"Task", u"Load +", u"Load -",
};
constexpr const char16_t* DLONames[] = {
    u"(none)", u"Up", u"Down", u"Left", u"Right", u"Enter", u"Play/Pause",
    u"Track+ / Fast forward", u"Track- / Rewind", u"Page Up", u"Page Down",
};
constexpr const char16_t* AutonomicNames[] = {
    u"(none)", u"Back", u"Enter", u"Play/Pause / Stop", u"Track+ / Fast forward",
    u"Track- / Rewind", u"Page Up", u"Page Down", u"Up", u"Down", u"Repeat", u"Shuffle", u"Play",
    u"Pause / Stop", u"Stop",
};
constexpr const char16_t* VantageDMMNames[] = {
    u"(none)", u"Back", u"Enter", u"Play/Pause / Stop", u"Track+ / Fast forward",
    u"Track- / Rewind", u"Page Up", u"Page Down", u"Up", u"Down", u"Repeat", u"Shuffle", u"Play",
    u"Pause / Stop", u"Stop",
};
constexpr const char16_t* BrioTunerNames[] = {
    u"(none)", u"Power", u"FM", u"AM", u"Preset Up", u"Preset Down", u"Preset 1", u"Preset 2",
    u"Preset 3", u"Preset 4", u"Preset 5", u"Preset 6", u"Preset 7", u"Preset 8", u"Preset 9",
    u"Preset 10", u"0", u"1", u"2", u"3", u"4", u"5", u"6", u"7", u"8", u"9", u"Enter", u"Tune Up",
    u"Tune Down",
};
constexpr const char16_t* ReQuestNames[] = {
    u"(none)", u"Cancel", u"Up", u"Down", u"Left", u"Right", u"Enter", u"Page Up", u"Page Down",
    u"Track+", u"Track-", u"Shuffle", u"Repeat", u"Play", u"Play/Pause / Stop", u"Pause / Stop",
    u"Source", u"abc", u"def", u"ghi", u"jkl", u"mno", u"pqrs", u"tuv", u"wxyz", u"Stop",
};
constexpr const char16_t* NorvaAlarmCnfgNames[] = {
    u"(none)", u"Preset 1", u"Preset 2", u"Preset 3", u"Preset 4", u"Preset 5", u"Preset 6",
    u"Sunday", u"Monday", u"Tuesday", u"Wednesday", u"Thursday", u"Friday", u"Saturday",
    u"Enable/Disable", u"+Hour", u"-Hour", u"+Minute", u"-Minute", u"Enter", u"Preset 7",
    u"Preset 8", u"Preset 9", u"Preset 10", u"Preset 11", u"Preset 12", u"Preset 13", u"Preset 14",
};
constexpr const char16_t* CBusLightingNames[] = {
    u"(none)", u"Toggle / Dim", u"Off", u"On", u"Load +", u"Load -", u"Scene 1", u"Scene 2",
    u"Scene 3", u"Scene 4", u"Scene 5", u"Scene 6", u"Scene 7", u"Scene 8", u"Scene 9",
    u"Scene 10", u"Scene 1 off", u"Scene 2 off", u"Scene 3 off", u"Scene 4 off", u"Scene 5 off",
    u"Scene 6 off", u"Scene 7 off", u"Scene 8 off", u"Scene 9 off", u"Scene 10 off",
};
constexpr const char16_t* NvZr900GUINames[] = {
    u"(none)", u"Standby", u"Mute", u"Vol Up", u"Vol Down", u"Max vol up", u"Max vol down",
    u"Bass up", u"Bass down", u"Treble up", u"Treble down", u"Balance left", u"Balance right",
    u"Zone# up", u"Zone# down", u"Loudness", u"Restore defaults", u"More sources", u"Source 1",
    u"Source 2", u"Source 3", u"Source 4", u"Source 5", u"Source 6", u"Source 7", u"Source 8",
    u"Source 9", u"Source 10", u"Source 11", u"Source 12", u"Source 13", u"Source 14",
    u"Source 15", u"Source 16", u"Output 0", u"Output 1", u"Output 2", u"Output 3", u"Output 4",
    u"Output 5", u"Output 6", u"Output 7", u"Source gain up", u"Source gain down", u"Delay up",
    u"Delay down", u"Non-preset mode", u"Page preset", u"Select preset", u"Preset 1", u"Preset 2",
    u"Preset 3", u"Preset 4", u"Preset 5", u"Preset 6", u"Preset 7", u"Preset 8", u"Preset 9",
    u"Preset 10", u"Preset 11", u"Preset 12", u"Preset 13", u"Preset 14", u"Home page", u"Back",
    u"Clear alarms", u"Assign to page preset 2", u"Page preset 1 sound", u"Page preset 2 sound",
    u"Source up", u"Source down", u"Show source name", u"Show zone name",
    u"Show zone name + \"Settings\"", u"Show IP Address", u"Show Serial Number",
    u"Page 1 sound none", u"Page 1 sound 1", u"Page 1 sound 2", u"Page 1 sound 3",
    u"Page 1 sound 4", u"Page 1 sound loop", u"Page 2 sound none", u"Page 2 sound 1",
    u"Page 2 sound 2", u"Page 2 sound 3", u"Page 2 sound 4", u"Page 2 sound loop",
    u"Page 2 select page 1", u"Page 2 select preset 1", u"Page 2 select preset 2",
    u"Page 2 select preset 3", u"Page 2 select preset 4", u"Page 2 select preset 5",
    u"Page 2 select preset 6", u"Page 2 select preset 7", u"Page 2 select preset 8",
    u"Page 2 select preset 9", u"Page 2 select preset 10", u"Page 2 select preset 11",
    u"Page 2 select preset 12", u"Page 2 select preset 13", u"Page 2 select preset 14",
    u"Party Mode Toggle", u"Firmware version", u"System reset", u"Zone gain up", u"Zone gain down",
};
constexpr const char16_t* ZoneLinkNames[] = {
    u"(none)", u"Select/None", u"OK", u"Zone up/Next zones", u"Zone down/Prev zones",
    u"Link volume", u"Link standby", u"z + 1", u"z + 2", u"z + 3", u"z + 4", u"z + 5", u"z + 6",
    u"z + 7", u"z + 8",
};
constexpr const char16_t* ZoneNameNames[] = {
    u"(none)", u"1 (punctuation marks)", u"2 abc", u"3 def", u"4 ghi", u"5 jkl", u"6 mno",
    u"7 pqrs", u"8 tuv", u"9 wxyz", u"0 (space)", u"backspace", u"Space", u"#", u"@", u"_", u".",
    u"\\", u"/", u"(", u")", u"Save", u"Cancel",
};
constexpr const char16_t* NvZr900ClockNames[] = {
    u"(none)", u"Mode select", u"Increment", u"Decrement", u"24 hour time", u"Date format",
    u"Enable time server",
};
constexpr const char16_t* NvZr900AlarmNames[] = {
    u"(none)", u"+Hour", u"-Hour", u"+Minute", u"-Minute", u"Sun", u"Mon", u"Tue", u"Wed", u"Thu",
    u"Fri", u"Sat", u"Enable",
};
constexpr const char16_t* DNDNames[] = {
    u"(none)", u"+Hour From", u"+Hour To", u"-Hour From", u"-Hour To", u"+Minute From",
    u"+Minute To", u"-Minute From", u"-Minute To", u"+Preset", u"-Preset",
};
constexpr const char16_t* PresetZonesNames[] = {
    u"(none)", u"Include all", u"Exclude all", u"+Zone/Next Zones", u"-Zone/Prev Zones", u"OK",
    u"z + 1", u"z + 2", u"z + 3", u"z + 4", u"z + 5", u"z + 6", u"z + 7", u"z + 8",
};
constexpr const char16_t* LuxomLightingNames[] = {
    u"(none)", u"Toggle / Dim", u"Off", u"On", u"Ramp up", u"Fade down",
};
constexpr const char16_t* NetworkSettingsNames[] = {
    u"(none)", u"DHCP", u"Static", u"Back", u"Next", u"Decrement", u"Increment",
};
constexpr const char16_t* USBNavigationNames[] = {
    u"(none)", u"Up", u"Down", u"Page Up", u"Page Down", u"Enter", u"Play", u"Stop", u"Prev track",
    u"Next track", u"Pause",
};

// Indexed by TButtonClassGroup.
const TGroupRow Groups[] = {
    {u"Norva", 0, 99, TFamily::None, Names(NorvaNames), nullptr},  // 0 NorvaClassGroup
    {u"Transport", 0, -1, TFamily::Generic, Names(TransportNames), &MetaEnumOf<TTransportButtonClass>},  // 1 TransportClassGroup
    {u"Numeric", 0, -1, TFamily::Generic, Names(NumericNames), &MetaEnumOf<TNumericButtonClass>},  // 2 NumericClassGroup
    {u"Cursor", 0, -1, TFamily::Generic, Names(CursorNames), &MetaEnumOf<TCursorButtonClass>},  // 3 CursorClassGroup
    {u"System", 0, -1, TFamily::Generic, Names(SystemNames), &MetaEnumOf<TSystemButtonClass>},  // 4 SystemClassGroup
    {u"iPort", 100, 113, TFamily::Wk3, Names(IPortNames), &MetaEnumOf<TiPortButtonClass>},  // 5 iPortClassGroup
    {u"Integra Tuner", 200, 228, TFamily::Wk3, Names(IntegraTunerNames), &MetaEnumOf<TIntegraTunerButtonClass>},  // 6 IntegraTunerClassGroup
    {u"Integra Receiver", 300, 367, TFamily::Wk3, Names(IntegraReceiverNames), &MetaEnumOf<TIntegraReceiverButtonClass>},  // 7 IntegraReceiverClassGroup
    {u"", 400, 450, TFamily::Wk3, {}, nullptr},  // 8 dummy_group_1
    {u"", 500, 550, TFamily::Wk3, {}, nullptr},  // 9 dummy_group_2
    {u"Integra DVD Player", 600, 627, TFamily::Wk3, Names(IntegraDVDPlayerNames), &MetaEnumOf<TIntegraDVDPlayerButtonClass>},  // 10 IntegraDVDPlayerClassGroup
    {u"Clock", 700, 702, TFamily::Wk3, Names(ClockNames), &MetaEnumOf<TClockButtonClass>},  // 11 ClockClassGroup
    {u"Vantage Lighting", 800, 802, TFamily::Wk3, Names(VantageLightingNames), &MetaEnumOf<TVantageLightingButtonClass>},  // 12 VantageLightingClassGroup
    {u"DLO Homedock", 900, 909, TFamily::Wk3, Names(DLONames), &MetaEnumOf<TDLOButtonClass>},  // 13 DLOClassGroup
    {u"Autonomic Media Center", 1000, 1013, TFamily::Wk3, Names(AutonomicNames), &MetaEnumOf<TAutonomicButtonClass>},  // 14 AutonomicClassGroup
    {u"Vantage DMM", 1100, 1113, TFamily::Wk3, Names(VantageDMMNames), &MetaEnumOf<TVantageDMMButtonClass>},  // 15 VantageDMMClassGroup
    {u"Brio Tuner", 1200, 1227, TFamily::Wk3, Names(BrioTunerNames), &MetaEnumOf<TBrioTunerButtonClass>},  // 16 BrioTunerClassGroup
    {u"ReQuest", 1300, 1324, TFamily::Wk3, Names(ReQuestNames), &MetaEnumOf<TReQuestButtonClass>},  // 17 ReQuestClassGroup
    {u"Norva Alarm Configuration", 1400, 1426, TFamily::Wk3, Names(NorvaAlarmCnfgNames), &MetaEnumOf<TNorvaAlarmCnfgButtonClass>},  // 18 NorvaAlarmCnfgClassGroup
    {u"C-Bus Lighting", 1500, 1524, TFamily::Wk3, Names(CBusLightingNames), &MetaEnumOf<TCBusLightingButtonClass>},  // 19 CBusLightingClassGroup
    {u"Nv-Zr900 GUI", 0, 107, TFamily::None, Names(NvZr900GUINames), &MetaEnumOf<TNvZr900GUIButtonClass>},  // 20 NvZr900GUIClassGroup
    {u"Zone linking", 250, 263, TFamily::NvZr900, Names(ZoneLinkNames), &MetaEnumOf<TZoneLinkButtonClass>},  // 21 ZoneLinkClassGroup
    {u"Zone name", 200, 221, TFamily::NvZr900, Names(ZoneNameNames), &MetaEnumOf<TZoneNameButtonClass>},  // 22 ZoneNameClassGroup
    {u"Clock", 700, 705, TFamily::NvZr900, Names(NvZr900ClockNames), &MetaEnumOf<TNvZr900ClockButtonClass>},  // 23 NvZr900ClockClassGroup
    {u"Alarm", 300, 311, TFamily::NvZr900, Names(NvZr900AlarmNames), &MetaEnumOf<TNvZr900AlarmButtonClass>},  // 24 NvZr900AlarmClassGroup
    {u"DND", 400, 409, TFamily::NvZr900, Names(DNDNames), &MetaEnumOf<TDNDButtonClass>},  // 25 DNDClassGroup
    {u"Preset zones", 500, 512, TFamily::NvZr900, Names(PresetZonesNames), &MetaEnumOf<TPresetZonesButtonClass>},  // 26 PresetZonesClassGroup
    {u"Luxom Lighting", 1600, 1604, TFamily::Wk3, Names(LuxomLightingNames), &MetaEnumOf<TLuxomLightingButtonClass>},  // 27 LuxomLightingClassGroup
    {u"", 10000, 10099, TFamily::Wk3, {}, nullptr},  // 28 GenericAppletClassGroup
    {u"Network settings", 600, 605, TFamily::NvZr900, Names(NetworkSettingsNames), &MetaEnumOf<TNetworkSettingsButtonClass>},  // 29 NetworkSettingsClassGroup
    {u"USB Navigation", 800, 809, TFamily::NvZr900, Names(USBNavigationNames), &MetaEnumOf<TUSBNavigationButtonClass>},  // 30 USBNavigationClassGroup
};
// clang-format on

static_assert(std::size(Groups) == ButtonClassGroupCount);

const TGroupRow& Row(TButtonClassGroup group) { return Groups[group]; }

TButtonClassGroupSet FamilySet(TFamily family) {
  TButtonClassGroupSet set;
  for (int g = 0; g < ButtonClassGroupCount; ++g)
    if (Groups[g].Family == family) set.Include(static_cast<TButtonClassGroup>(g));
  return set;
}

TNorvaButtonClassSet ZonedNorvaValues() {
  TNorvaButtonClassSet set = TNorvaButtonClassSet::Range(1, 12);
  for (std::uint8_t value = 40; value <= 50; ++value) set.Include(value);
  return set;
}

bool IsNumberedGroup(TButtonClassGroup group) {
  return group == NorvaClassGroup || group == GenericAppletClassGroup;
}

}  // namespace

const TButtonClassGroupSet Wk3AppletClassGroups = FamilySet(TFamily::Wk3);
const TButtonClassGroupSet NvZr900AppletClassGroups = FamilySet(TFamily::NvZr900);
const TButtonClassGroupSet GenericClassGroups = FamilySet(TFamily::Generic);
const TNorvaButtonClassSet ZonedNorvaButtonClasses = ZonedNorvaValues();

bool IsButtonClassGroup(int group) { return group >= 0 && group < ButtonClassGroupCount; }

QString ButtonClassGroupDisplayName(TButtonClassGroup group) {
  if (!IsButtonClassGroup(group)) return QString();
  return QString::fromUtf16(Row(group).DisplayName);
}

TOrdinalRange ButtonClassGroupOrdinals(TButtonClassGroup group) {
  if (!IsButtonClassGroup(group)) return {};
  return {Row(group).First, Row(group).Last};
}

int ButtonClassValueCount(TButtonClassGroup group) {
  if (!IsButtonClassGroup(group)) return 0;
  return static_cast<int>(Row(group).Names.size());
}

QString ButtonClassValueName(TButtonClassGroup group, int classId) {
  if (group == GenericAppletClassGroup && classId >= 0 && classId <= 255)
    return QString::number(classId);
  if (classId < 0 || classId >= ButtonClassValueCount(group)) return QString();
  if (group == NorvaClassGroup) return QString::number(classId);
  return QString::fromLatin1(Row(group).Values().valueToKey(classId));
}

std::optional<std::uint8_t> ButtonClassValueFromName(TButtonClassGroup group, const QString& name) {
  bool isNumber = false;
  const int number = name.toInt(&isNumber);
  if (isNumber) {
    if (!ButtonClassValueName(group, number).isEmpty()) return static_cast<std::uint8_t>(number);
    return std::nullopt;
  }
  if (IsNumberedGroup(group) || ButtonClassValueCount(group) == 0 || name.contains(u':'))
    return std::nullopt;
  bool ok = false;
  const int value = Row(group).Values().keyToValue(name.toLatin1().constData(), &ok);
  if (!ok) return std::nullopt;
  return static_cast<std::uint8_t>(value);
}

QString ButtonClassDisplayName(TButtonClassGroup group, int classId) {
  if (classId < 0 || classId >= ButtonClassValueCount(group)) return QString();
  return QString::fromUtf16(Row(group).Names[static_cast<std::size_t>(classId)]);
}

}  // namespace norva
