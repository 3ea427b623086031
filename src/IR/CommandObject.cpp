#include <IR/CommandObject.h>

#include <ButtonClasses/ButtonPatterns.h>
#include <IR/CommandCategory.h>
#include <IR/CommandObjectList.h>
#include <NorvaGlobal/HexDigits.h>
#include <OrbGlobal/Model/AssignTarget.h>
#include <OrbGlobal/Model/OrbGuid.h>
#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlLookup.h>
#include <Utils/StringUtils.h>

namespace norva {

namespace {

constexpr int RecordDigits = 2 * static_cast<int>(sizeof(TButtonClass::TRecordBytes));

TButtonClasses ClassesOfData(const QString& data) {
  TButtonClasses classes(data.size() / RecordDigits);
  bool valid = true;
  for (qsizetype i = 0; i < classes.size(); ++i) {
    TButtonClass::TRecordBytes bytes{};
    for (std::size_t b = 0; valid && b < bytes.size(); ++b) {
      const qsizetype at = i * RecordDigits + 2 * static_cast<qsizetype>(b);
      const int byte = HexPairValue(data[at].unicode(), data[at + 1].unicode());
      valid = byte >= 0;
      if (valid) bytes[b] = static_cast<std::uint8_t>(byte);
    }
    classes[i] = TButtonClass::FromRecordBytes(bytes);
  }
  return classes;
}

}  // namespace

TCommandObject::TCommandObject(TOrbObject* owner) : TOrbObject(owner) {}

QString TCommandObject::GetCategory() const {
  if (!mCategory.isEmpty()) return mCategory;
  // The list holding the command may give the category itself (a model is a command list), or
  // its owner may.
  TOrbObject* owner = GetOwner();
  if (owner && !dynamic_cast<const ICommandCategoryOwner*>(owner) &&
      qobject_cast<TCommandObjectList*>(owner))
    owner = owner->GetOwner();
  if (const auto* categoryOwner = dynamic_cast<const ICommandCategoryOwner*>(owner))
    return categoryOwner->CommandCategory();
  return QString();
}

void TCommandObject::SetCategory(const QString& category) {
  if (category == GetCategory()) return;
  Updating("CategoryRaw");
  mCategory = category;
  Updated();
}

void TCommandObject::SetCategoryRaw(const QString& category) {
  ChangeProperty("CategoryRaw", mCategory, category);
}

void TCommandObject::SetButtonClasses(const TButtonClasses& classes) {
  if (classes == mButtonClasses) return;
  Updating("ButtonClassData");
  mButtonClasses = classes;
  Updated();
}

QString TCommandObject::GetButtonClassData() const {
  QByteArray bytes;
  bytes.reserve(mButtonClasses.size() * RecordDigits / 2);
  for (const TButtonClass& c : mButtonClasses) {
    const TButtonClass::TRecordBytes record = c.GetRecordBytes();
    bytes.append(reinterpret_cast<const char*>(record.data()),
                 static_cast<qsizetype>(record.size()));
  }
  return QString::fromLatin1(UpperHex(bytes));
}

void TCommandObject::SetButtonClassData(const QString& data) {
  if (data == GetButtonClassData()) return;
  Updating("ButtonClassData");
  mButtonClasses = ClassesOfData(data);
  Updated();
}

bool TCommandObject::HasButtonClass(const TButtonClass& buttonClass) const {
  return std::any_of(mButtonClasses.begin(), mButtonClasses.end(),
                     [&](const TButtonClass& held) { return held.Equivalent(buttonClass); });
}

void TCommandObject::AddButtonClass(const TButtonClass& buttonClass) {
  if (HasButtonClass(buttonClass)) return;
  Updating("ButtonClassData");
  mButtonClasses.append(buttonClass);
  Updated();
}

void TCommandObject::AutoAssignButtonClass() {
  TButtonClass found;
  if (FindButtonClass(GetName(), found)) AddButtonClass(found);
}

void TCommandObject::UpdateGUID() {
  if (GetGUID() == NoGUID) AssignNewGUID();
}

QString TCommandObject::Status() const { return QStringLiteral("OK"); }

bool TCommandObject::Match(const TCommandObject* other) const { return other == this; }

bool TCommandObject::IsEmpty() const { return false; }

void TCommandObject::AssignTo(QObject* dest) const {
  const TAssignTarget<TCommandObject> command(this, dest);
  TOrbObject::AssignTo(dest);
  if (!command) return;
  command->SetCategory(GetCategory());
  command->SetButtonClasses(mButtonClasses);
  command->mLearnt = mLearnt;
  command->SetGUID(GetGUID());
}

void TCommandObject::Save(pugi::xml_node element) const {
  SetNameAttribute(element, GetNameRaw());
  const QString category = GetCategory();
  if (!category.isEmpty()) element.append_attribute("category") = category.toUtf8().constData();
  element.append_attribute("guid") = GUIDToUtf8(GetGUID()).data();
  const pugi::xml_node classes = AddXMLDOMElement(element, "button_classes");
  for (const TButtonClass& c : mButtonClasses) c.Save(classes);
}

void TCommandObject::Load(pugi::xml_node element) {
  const QString name = NameAttribute(element);
  // One pass over the other attributes: a list reads them for every command.
  for (const pugi::xml_attribute attribute : element.attributes()) {
    if (IsNamed(attribute, "category"))
      SetCategory(XMLValue(attribute.value()));
    else if (IsNamed(attribute, "guid"))
      SetGUID(StringToGUID(QUtf8StringView(attribute.value())));
  }
  SetName(name);
  for (pugi::xml_node child : element.children()) {
    if (child.type() == pugi::node_element) LoadElement(child);
  }
}

void TCommandObject::LoadElement(pugi::xml_node child) {
  if (!IsNamed(child, "button_classes")) return;
  TButtonClasses classes;
  for (pugi::xml_node element : child.children("class")) classes.append(TButtonClass(element));
  SetButtonClasses(classes);
}

}  // namespace norva
