#pragma once
// What the vocabulary knows of each group: display name, ordinal range in its device family,
// class values with their value names and display names, and the group sets.

#include <ButtonClasses/ButtonClassValues.h>
#include <NorvaGlobal/EnumSet.h>

#include <QString>

#include <cstdint>
#include <optional>

namespace norva {

inline constexpr int ButtonClassGroupCount = 31;

using TButtonClassGroupSet = TEnumSet<TButtonClassGroup, 32>;
// A set of Norva class values 0..99, kept in 13 bytes' worth of bits.
using TNorvaButtonClassSet = TEnumSet<std::uint8_t, 104>;

// What a Wk3 keypad can hold as applet classes: groups 5..19, 27 and 28.
extern const TButtonClassGroupSet Wk3AppletClassGroups;
// The Zr900 GUI's applet groups: 21..26, 29 and 30.
extern const TButtonClassGroupSet NvZr900AppletClassGroups;
// Generic device functions that no keypad encodes: groups 1..4.
extern const TButtonClassGroupSet GenericClassGroups;
// The Norva functions that act on one zone: 1..12 and 40..50.
extern const TNorvaButtonClassSet ZonedNorvaButtonClasses;

// The group's ordinals first..last in its family's 16-bit encoding; the generic groups have none
// (Last < First).
struct TOrdinalRange {
  int First = 0;
  int Last = -1;
  bool Holds(int ordinal) const { return First <= ordinal && ordinal <= Last; }
  int Count() const { return Last - First + 1; }
};

// True for 0..30.
bool IsButtonClassGroup(int group);
// The display name the vocabulary gives the group ("Integra Tuner"); empty for the dummy groups
// and the generic applet group, whose classes name themselves.
QString ButtonClassGroupDisplayName(TButtonClassGroup group);
TOrdinalRange ButtonClassGroupOrdinals(TButtonClassGroup group);

// The number of class values the group names, value 0 included: 100 for the Norva group, none for
// the dummy groups and the generic applet group (whose values the client class names).
int ButtonClassValueCount(TButtonClassGroup group);
// The value name ("ButtonClass_iPort_Menu"); for the Norva group and the generic applet group the
// decimal number. Empty for a value the group does not have.
QString ButtonClassValueName(TButtonClassGroup group, int classId);
// The value of that name in the group; a decimal number is accepted for any value the group has
// (and for 0..255 in the generic applet group).
std::optional<std::uint8_t> ButtonClassValueFromName(TButtonClassGroup group, const QString& name);
// The display name of the value ("Back" for ButtonClass_iPort_Menu, "(none)" for value 0, "(None)"
// in the Norva group); empty for a value the group does not name.
QString ButtonClassDisplayName(TButtonClassGroup group, int classId);

}  // namespace norva
