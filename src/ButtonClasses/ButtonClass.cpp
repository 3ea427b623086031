#include <ButtonClasses/ButtonClass.h>

#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Model/OrbClassRegistry.h>
#include <OrbGlobal/Model/OrbGuid.h>
#include <OrbGlobal/Model/OrbObject.h>
#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlLookup.h>

#include <array>
#include <memory>
#include <string>
#include <utility>

namespace norva {

namespace {

constexpr int NorvaLastValue = 99;
constexpr int NvZr900LastValue = 107;

// The pairs Similar looks up: (first, second) means first is similar to second.
const std::array<std::pair<TButtonClass, TButtonClass>, 5>& SimilarityPairs() {
  static const std::array<std::pair<TButtonClass, TButtonClass>, 5> pairs{{
      {{NorvaClassGroup, 1}, {SystemClassGroup, ButtonClass_Standby}},
      {{NorvaClassGroup, 2}, {SystemClassGroup, ButtonClass_Mute}},
      {{NorvaClassGroup, 3}, {SystemClassGroup, ButtonClass_VolumeUp}},
      {{NorvaClassGroup, 4}, {SystemClassGroup, ButtonClass_VolumeDown}},
      {{NumericClassGroup, ButtonClass_Enter1}, {CursorClassGroup, ButtonClass_Enter2}},
  }};
  return pairs;
}

// Applet ordinals of one family: the class (group, ordinal - first + 1) of the member group whose
// range holds the ordinal. Every member is looked at; within a family the ranges never overlap.
void SetFamilyOrdinal(TButtonClass& target, const TButtonClassGroupSet& family, int ordinal) {
  family.ForEach([&](TButtonClassGroup group) {
    const TOrdinalRange range = ButtonClassGroupOrdinals(group);
    if (!range.Holds(ordinal)) return;
    target.SetGroup(group);
    target.ClassID = static_cast<std::uint8_t>(ordinal - range.First + 1);
  });
}

// The family ordinal of an applet class: first of the group's range + value - 1.
std::uint16_t AppletOrdinal(const TButtonClass& c) {
  return static_cast<std::uint16_t>(ButtonClassGroupOrdinals(c.Group).First + c.ClassID - 1);
}

// What the client class answers to GetFunctionName, asked of a passing instance: the operation is
// a virtual of the model object, and client classes are small.
QString ClientFunctionName(TOrbObjectClass clientClass, unsigned index) {
  try {
    const std::unique_ptr<TOrbObject> probe(ConstructOrbObject(clientClass, nullptr));
    return probe->GetFunctionName(index);
  } catch (const ENorvaError&) {
    return QString();
  }
}

TOrbObjectClass RegisteredClassOf(const QString& guidText) {
  try {
    return GetOrbObjectClass(guidText);
  } catch (const ENorvaError&) {
    return nullptr;
  }
}

// The classes first..last made by `make`; last = first - 1 gives none.
template <typename Make>
TButtonClasses Sequence(int first, int last, Make make) {
  if (last < first - 1 || first < 0 || last > 255)
    throw ENorvaError(QStringLiteral("Invalid button class sequence %1..%2").arg(first).arg(last));
  TButtonClasses result;
  result.reserve(last - first + 1);
  for (int value = first; value <= last; ++value)
    result.append(make(static_cast<std::uint8_t>(value)));
  return result;
}

}  // namespace

TButtonClass::TButtonClass(TButtonClassGroup group, std::uint8_t classId) : ClassID(classId) {
  SetGroup(group);
}

TButtonClass::TButtonClass(TOrbObjectClass clientClass, std::uint8_t classId)
    : Group(GenericAppletClassGroup), ClassID(classId), ClientClass(clientClass) {}

TButtonClass::TButtonClass(pugi::xml_node element) {
  const pugi::xml_attribute applet = element.attribute("applet_class");
  if (applet) {
    Group = GenericAppletClassGroup;
    ClientClass = RegisteredClassOf(QString::fromUtf8(applet.value()));
  } else {
    const int group = AttributeNumber<int>(element.attribute("group")).value_or(0);
    if (!IsButtonClassGroup(group)) return;
    SetGroup(group);
  }
  ClassID = ElementNumber<std::uint8_t>(element, 0);
}

TButtonClass TButtonClass::FromRecordBytes(const TRecordBytes& bytes) {
  if (!IsButtonClassGroup(bytes[0])) return {};
  TButtonClass result;
  result.SetGroup(bytes[0]);
  result.ClassID = bytes[1];
  const std::uint32_t client =
      bytes[4] | bytes[5] << 8 | bytes[6] << 16 | std::uint32_t{bytes[7]} << 24;
  const QList<TOrbObjectClass>* registered = GetRegisteredOrbClasses();
  if (client > 0 && registered && client <= static_cast<std::uint32_t>(registered->size()))
    result.ClientClass = registered->at(static_cast<qsizetype>(client - 1));
  return result;
}

TButtonClass::TRecordBytes TButtonClass::GetRecordBytes() const {
  std::uint32_t client = 0;
  const QList<TOrbObjectClass>* registered = GetRegisteredOrbClasses();
  if (ClientClass && registered)
    client = static_cast<std::uint32_t>(registered->indexOf(ClientClass) + 1);
  return {static_cast<std::uint8_t>(Group),
          ClassID,
          0,
          0,
          static_cast<std::uint8_t>(client),
          static_cast<std::uint8_t>(client >> 8),
          static_cast<std::uint8_t>(client >> 16),
          static_cast<std::uint8_t>(client >> 24)};
}

TButtonClass TButtonClass::FromOrdValue(std::uint32_t ordinal) {
  TButtonClass result;
  result.SetOrdValue(ordinal);
  return result;
}

TButtonClass TButtonClass::FromOrdValueWk3(std::uint16_t ordinal) {
  TButtonClass result;
  result.SetOrdValueWk3(ordinal);
  return result;
}

TButtonClass TButtonClass::CreateOrdValueNvZr900(std::uint16_t ordinal) {
  TButtonClass result;
  result.SetOrdValueNvZr900(ordinal);
  return result;
}

void TButtonClass::SetGroup(int group) {
  if (group == dummy_group_1 || group == dummy_group_2) group = IntegraReceiverClassGroup;
  if (IsButtonClassGroup(group)) {
    Group = static_cast<TButtonClassGroup>(group);
    return;
  }
  Group = NorvaClassGroup;
  ClassID = 0;
  ClientClass = nullptr;
}

std::uint32_t TButtonClass::GetOrdValue() const {
  return static_cast<std::uint32_t>(Group) << 16 | ClassID;
}

void TButtonClass::SetOrdValue(std::uint32_t ordinal) {
  ClientClass = nullptr;
  ClassID = static_cast<std::uint8_t>(ordinal & 0xFF);
  SetGroup(static_cast<int>(ordinal >> 16 & 0xFF));
}

std::uint16_t TButtonClass::GetOrdValueWk3() const {
  if (IsNone() || GenericClassGroups.Contains(Group)) return 0;
  if (Group == NorvaClassGroup) return ClassID;
  return AppletOrdinal(*this);
}

void TButtonClass::SetOrdValueWk3(std::uint16_t ordinal) {
  *this = TButtonClass();
  if (ordinal <= NorvaLastValue)
    ClassID = static_cast<std::uint8_t>(ordinal);
  else
    SetFamilyOrdinal(*this, Wk3AppletClassGroups, ordinal);
}

std::uint16_t TButtonClass::GetOrdValueNvZr900() const {
  if (IsNone() || GenericClassGroups.Contains(Group)) return 0;
  if (Group == NvZr900GUIClassGroup) return ClassID;
  return AppletOrdinal(*this);
}

void TButtonClass::SetOrdValueNvZr900(std::uint16_t ordinal) {
  *this = TButtonClass(NvZr900GUIClassGroup, 0);
  if (ordinal <= NvZr900LastValue)
    ClassID = static_cast<std::uint8_t>(ordinal);
  else
    SetFamilyOrdinal(*this, NvZr900AppletClassGroups, ordinal);
}

bool TButtonClass::Equal(const TButtonClass& other) const {
  return Group == other.Group && ClassID == other.ClassID && ClientClass == other.ClientClass;
}

bool TButtonClass::Similar(const TButtonClass& other) const {
  for (const auto& [first, second] : SimilarityPairs())
    if (Equal(first)) return other.Equal(second);
  return false;
}

bool TButtonClass::Equivalent(const TButtonClass& other) const {
  return Equal(other) || Similar(other) || other.Similar(*this);
}

QString TButtonClass::GetName() const {
  if (IsNone()) return QStringLiteral("(None)");
  return GetGroupName() + QStringLiteral(" / ") + GetShortName();
}

QString TButtonClass::GetGroupName() const {
  if (Group != GenericAppletClassGroup) return ButtonClassGroupDisplayName(Group);
  return ClientClass ? ClassNameOf(ClientClass) : QStringLiteral("<class undefined>");
}

QString TButtonClass::GetShortName() const {
  if (Group != GenericAppletClassGroup) return ButtonClassDisplayName(Group, ClassID);
  return ClientClass ? ClientFunctionName(ClientClass, ClassID) : QString();
}

void TButtonClass::Save(pugi::xml_node parent) const {
  pugi::xml_node element = AddXMLDOMElement(parent, "class");
  SetXMLDOMText(element, std::to_string(ClassID).c_str());
  if (ClientClass)
    element.append_attribute("applet_class") =
        GUIDToString(ClassGUIDOf(ClientClass)).toUtf8().constData();
  else
    element.append_attribute("group") = static_cast<int>(Group);
}

TButtonClasses GetButtonClassSequence(TButtonClassGroup group, int first, int last) {
  return Sequence(first, last, [group](std::uint8_t value) { return TButtonClass(group, value); });
}

TButtonClasses GetButtonClassSequence(TOrbObjectClass clientClass, int first, int last) {
  return Sequence(first, last,
                  [clientClass](std::uint8_t value) { return TButtonClass(clientClass, value); });
}

}  // namespace norva
