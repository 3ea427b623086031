#include <IR/RS232Command.h>

#include <NorvaGlobal/EnumNames.h>
#include <OrbGlobal/Model/AssignTarget.h>
#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlLookup.h>

namespace norva {

namespace {

constexpr const char* BinaryElement = "use_hex";

}  // namespace

TRS232Command::TRS232Command(TOrbObject* owner) : TDataCommand(owner) {}

QString TRS232Command::GetName() const {
  return HasName() ? TDataCommand::GetName() : QStringLiteral("Unknown RS232 Command");
}

bool TRS232Command::Match(const TCommandObject* other) const {
  const auto* command = qobject_cast<const TRS232Command*>(other);
  return command && mBaudRate == command->mBaudRate && mDatabits == command->mDatabits &&
         mStopbits == command->mStopbits && mParity == command->mParity && SameData(*command);
}

void TRS232Command::AssignTo(QObject* dest) const {
  const TAssignTarget<TRS232Command> command(this, dest);
  TDataCommand::AssignTo(dest);
  if (!command) return;
  command->SetBaudRate(mBaudRate);
  command->SetDatabits(mDatabits);
  command->SetStopbits(mStopbits);
  command->SetParity(mParity);
  AssignDataTo(*command);
}

void TRS232Command::Save(pugi::xml_node element) const {
  if (IsEmpty()) return;
  TDataCommand::Save(element);
  AddNumberElement(element, "baud_rate", mBaudRate);
  AddNumberElement(element, "databits", mDatabits);
  AddEnumElement(element, "stopbits", mStopbits);
  AddEnumElement(element, "parity", mParity);
  SaveData(element, BinaryElement);
}

void TRS232Command::LoadElement(pugi::xml_node child) {
  TDataCommand::LoadElement(child);
  if (LoadDataElement(child, BinaryElement)) return;
  if (IsNamed(child, "baud_rate"))
    SetBaudRate(ElementNumber<qint32>(child, 9600));
  else if (IsNamed(child, "databits"))
    SetDatabits(ElementNumber<quint8>(child, 8));
  else if (IsNamed(child, "stopbits"))
    SetStopbits(ElementEnum<TNumStopbits>(child));
  else if (IsNamed(child, "parity"))
    SetParity(ElementEnum<TParity>(child));
}

}  // namespace norva
