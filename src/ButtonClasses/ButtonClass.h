#pragma once
// A button class: what a keypad button or on-screen control does, independent of the device that
// carries it out. A small value record (group, class value, and for applet classes the model
// class that names them), with its comparisons, its three ordinal encodings and its XML form.

#include <ButtonClasses/ButtonClassGroups.h>
#include <OrbGlobal/Model/OrbClass.h>

#include <QList>
#include <QString>

#include <pugixml.hpp>

#include <array>
#include <cstdint>

namespace norva {

struct TButtonClass {
  // The record as 8 bytes, the unit of a command's stored button-class list: group, class value,
  // two zero bytes, then the client class as a 32-bit little-endian number (0 = none, otherwise
  // its 1-based position in the class registry, so it is only meaningful within one process).
  using TRecordBytes = std::array<std::uint8_t, 8>;

  TButtonClassGroup Group = NorvaClassGroup;
  std::uint8_t ClassID = 0;
  // Set only for GenericAppletClassGroup: the model class that names these classes.
  TOrbObjectClass ClientClass = nullptr;

  // None: the Norva group with no class.
  TButtonClass() = default;
  TButtonClass(TButtonClassGroup group, std::uint8_t classId);
  // An applet class named by `clientClass` (which may be null).
  TButtonClass(TOrbObjectClass clientClass, std::uint8_t classId);
  // Reads a "class" element (see Save). Never raises: a missing or non-numeric "group" reads as
  // group 0 and a number that is no group as none; a class value that is not a number 0..255 as
  // none; an "applet_class" that names no registered class as an applet class without client class.
  explicit TButtonClass(pugi::xml_node element);

  // The record back from its bytes; a group number that is no group gives none, a client class
  // number the registry does not hold gives no client class.
  static TButtonClass FromRecordBytes(const TRecordBytes& bytes);
  TRecordBytes GetRecordBytes() const;

  static TButtonClass FromOrdValue(std::uint32_t ordinal);
  static TButtonClass FromOrdValueWk3(std::uint16_t ordinal);
  static TButtonClass CreateOrdValueNvZr900(std::uint16_t ordinal);

  // Stores the group; the dummy groups 8 and 9 are stored as IntegraReceiverClassGroup, so that
  // old Wk3 ordinals 400..450 and 500..550 come back as Integra Receiver classes. A number that
  // is no group makes the record none (Norva group, no class).
  void SetGroup(int group);

  // Generic 32-bit ordinal: group in bits 16..23, class value in bits 0..7. The client class is
  // not encoded.
  std::uint32_t GetOrdValue() const;
  void SetOrdValue(std::uint32_t ordinal);
  // The number a Wk3 keypad button holds: Norva values as themselves, applet classes from their
  // group's range, generic classes 0.
  std::uint16_t GetOrdValueWk3() const;
  void SetOrdValueWk3(std::uint16_t ordinal);
  // The same for the Zr900 GUI, whose own values are 1..107.
  std::uint16_t GetOrdValueNvZr900() const;
  void SetOrdValueNvZr900(std::uint16_t ordinal);

  // Same group, class value and client class.
  bool Equal(const TButtonClass& other) const;
  friend bool operator==(const TButtonClass& a, const TButtonClass& b) { return a.Equal(b); }
  // Directional: true when (this, other) is one of the similarity pairs, such as (Norva "Mute",
  // System ButtonClass_Mute); never the other way round.
  bool Similar(const TButtonClass& other) const;
  // Equal, or similar either way: how a command is matched to a button from another vocabulary.
  bool Equivalent(const TButtonClass& other) const;

  bool IsNone() const { return ClassID == 0; }
  bool IsGroup(TButtonClassGroup group) const { return !IsNone() && Group == group; }

  // "(None)" for no class, otherwise GetGroupName + " / " + GetShortName.
  QString GetName() const;
  // The group's display name; for applet classes the client class's name, or "<class undefined>".
  QString GetGroupName() const;
  // The class value's display name; for applet classes the client class's function name.
  QString GetShortName() const;

  // Appends a "class" element holding the decimal class value, with the attribute "group" (the
  // group number), or "applet_class" (the client class's GUID) for an applet class.
  void Save(pugi::xml_node parent) const;
};

using TButtonClasses = QList<TButtonClass>;

// The classes (group, first) .. (group, last); empty when last is first - 1. Raises ENorvaError
// for a smaller last or a value above 255.
TButtonClasses GetButtonClassSequence(TButtonClassGroup group, int first, int last);
TButtonClasses GetButtonClassSequence(TOrbObjectClass clientClass, int first, int last);

}  // namespace norva
