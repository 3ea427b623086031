#include <KeypadDevice/WallKeypad.h>

#include <NorvaGlobal/EnumNames.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Model/AssignTarget.h>
#include <OrbGlobal/Model/OrbGuid.h>
#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlDocument.h>
#include <OrbGlobal/Xml/XmlLookup.h>

#include <algorithm>

namespace norva {

using norva::ENorvaError;

TWallKeypadButton::TWallKeypadButton(norva::TOrbObject* owner) : norva::TOrbObject(owner) {}

void TWallKeypadButton::SetCaption(const QString& caption) {
  ChangeProperty("Caption", mCaption, caption);
}

void TWallKeypadButton::SetButtonClass(const norva::TButtonClass& buttonClass) {
  ChangeProperty("ButtonClassRecord", mButtonClass, buttonClass);
}

QByteArray TWallKeypadButton::GetButtonClassRecord() const {
  const norva::TButtonClass::TRecordBytes bytes = mButtonClass.GetRecordBytes();
  return QByteArray(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size()));
}

void TWallKeypadButton::SetButtonClassRecord(const QByteArray& record) {
  norva::TButtonClass::TRecordBytes bytes{};
  std::copy_n(record.cbegin(), std::min(record.size(), qsizetype(bytes.size())), bytes.begin());
  SetButtonClass(norva::TButtonClass::FromRecordBytes(bytes));
}

void TWallKeypadButton::SetCommandGUID(const QString& guid) {
  const QString stored =
      guid.isEmpty() ? QString() : norva::GUIDToString(norva::StringToGUID(guid));
  ChangeProperty("CommandGUID", mCommandGUID, stored);
}

bool TWallKeypadButton::IsBlank() const {
  return mCaption.isEmpty() && mButtonClass.IsNone() && mCommandGUID.isEmpty();
}

void TWallKeypadButton::Blank() {
  SetCaption(QString());
  SetButtonClass(norva::TButtonClass());
  SetCommandGUID(QString());
}

void TWallKeypadButton::CopyFrom(const TWallKeypadButton& source) {
  SetCaption(source.mCaption);
  SetButtonClass(source.mButtonClass);
  SetCommandGUID(source.mCommandGUID);
}

void TWallKeypadButton::AssignTo(QObject* dest) const {
  const norva::TAssignTarget<TWallKeypadButton> button(this, dest);
  norva::TOrbObject::AssignTo(dest);
  if (button) button->CopyFrom(*this);
}

void TWallKeypadButton::Save(pugi::xml_node element) const {
  norva::SetXMLDOMText(norva::AddXMLDOMElement(element, "caption"), mCaption);
  if (!mButtonClass.IsNone()) mButtonClass.Save(element);
  if (!mCommandGUID.isEmpty())
    norva::SetXMLDOMText(norva::AddXMLDOMElement(element, "command"), mCommandGUID);
}

void TWallKeypadButton::Load(pugi::xml_node element) {
  SetCaption(norva::GetElementText(element.child("caption")));
  const pugi::xml_node buttonClass = element.child("class");
  SetButtonClass(buttonClass ? norva::TButtonClass(buttonClass) : norva::TButtonClass());
  SetCommandGUID(norva::GetElementText(element.child("command")));
}

TWallKeypad::TWallKeypad(norva::TOrbObject* owner) : norva::TKeypadDevice(owner) {
  // Each button is owned by the keypad, so its changes reach the keypad's Updated.
  for (auto& button : mButtons) button = std::make_unique<TWallKeypadButton>(this);
}

void TWallKeypad::SetZoneType(norva::tKeypadZoneType zoneType) {
  ChangeProperty("ZoneType", mZoneType, zoneType);
}

void TWallKeypad::SetFirmwareVersion(int version) {
  ChangeProperty("FirmwareVersion", mFirmwareVersion, version);
}

void TWallKeypad::SaveContents(pugi::xml_node root) const {
  norva::SetXMLDOMText(norva::AddXMLDOMElement(root, "zone_type"), norva::EnumName(mZoneType));
  norva::SetXMLDOMText(norva::AddXMLDOMElement(root, "firmware"),
                       QString::number(mFirmwareVersion));
  for (int i = 0; i < ButtonCount; ++i) {
    if (Button(i).IsBlank()) continue;
    pugi::xml_node element = norva::AddXMLDOMElement(root, "button");
    element.append_attribute("index") = i;
    Button(i).Save(element);
  }
}

// Anything the keypad cannot hold is refused with the reason: the document base then leaves the
// keypad cleared rather than half read.
void TWallKeypad::LoadContents(pugi::xml_node root) {
  const QString zoneText = norva::GetElementText(root.child("zone_type"));
  const auto zoneType = norva::EnumFromName<norva::tKeypadZoneType>(zoneText);
  if (!zoneType) throw ENorvaError(QStringLiteral("Unknown zone type '%1'").arg(zoneText));
  const std::optional<int> firmware = norva::ElementNumber<int>(root.child("firmware"));
  if (!firmware) throw ENorvaError(QStringLiteral("The firmware version is not a number"));
  SetZoneType(*zoneType);
  SetFirmwareVersion(*firmware);
  for (pugi::xml_node element : root.children("button")) {
    const pugi::xml_attribute index = element.attribute("index");
    const std::optional<int> number = norva::AttributeNumber<int>(index);
    if (!number || *number < 0 || *number >= ButtonCount) {
      throw ENorvaError(
          QStringLiteral("No button %1 on this keypad").arg(QString::fromUtf8(index.value())));
    }
    Button(*number).Load(element);
  }
}

void TWallKeypad::AssignContents(const norva::TKeypadDevice& source) {
  const auto* keypad = qobject_cast<const TWallKeypad*>(&source);
  if (!keypad) throw ENorvaError(QStringLiteral("Not a wall keypad: ") + source.GetClassName());
  SetZoneType(keypad->mZoneType);
  SetFirmwareVersion(keypad->mFirmwareVersion);
  for (int i = 0; i < ButtonCount; ++i) Button(i).CopyFrom(keypad->Button(i));
}

void TWallKeypad::Purge() {
  SetZoneType(norva::AmpZone);
  SetFirmwareVersion(CurrentFirmware);
  for (auto& button : mButtons) button->Blank();
}

QByteArray TWallKeypad::Image() const {
  pugi::xml_document document;
  SaveContents(norva::StartXMLDocument(document, "keypad_configuration"));
  return norva::SaveXMLDocument(document);
}

bool TWallKeypad::Upload() {
  if (!mConnected || IsIncompatible()) return false;
  mDeviceImage = Image();
  return true;
}

bool TWallKeypad::Download() {
  if (!mConnected || mDeviceImage.isEmpty()) return false;
  pugi::xml_document document;
  norva::LoadXMLDocument(document, mDeviceImage);
  BeginUpdate();
  try {
    Purge();
    LoadContents(document.document_element());
  } catch (...) {
    EndUpdate();
    throw;
  }
  EndUpdate();
  return true;
}

bool TWallKeypad::Verify() { return mConnected && mDeviceImage == Image(); }

bool TWallKeypad::Connect() {
  mConnected = true;
  return true;
}

void TWallKeypad::Disconnect() { mConnected = false; }

void TWallKeypad::ExternalInstanceChange(norva::TOrbObject* source) {
  if (const auto* keypad = qobject_cast<const TWallKeypad*>(source); keypad && keypad != this)
    AssignContents(*keypad);
}

int TWallKeypad::GetMemoryUsage() const { return static_cast<int>(Image().size()); }

}  // namespace norva
