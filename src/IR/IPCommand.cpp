#include <IR/IPCommand.h>

#include <NorvaGlobal/EnumNames.h>
#include <OrbGlobal/Model/AssignTarget.h>
#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlLookup.h>

namespace norva {

namespace {

constexpr const char* BinaryElement = "binary";

}  // namespace

TIPCommand::TIPCommand(TOrbObject* owner) : TDataCommand(owner) {}

QString TIPCommand::GetName() const {
  return HasName() ? TDataCommand::GetName() : QStringLiteral("Unknown IP Command");
}

bool TIPCommand::Match(const TCommandObject* other) const {
  const auto* command = qobject_cast<const TIPCommand*>(other);
  return command && mProtocol == command->mProtocol && mPort == command->mPort &&
         SameData(*command);
}

void TIPCommand::AssignTo(QObject* dest) const {
  const TAssignTarget<TIPCommand> command(this, dest);
  TDataCommand::AssignTo(dest);
  if (!command) return;
  command->SetIPProtocol(mProtocol);
  command->SetPort(mPort);
  AssignDataTo(*command);
}

void TIPCommand::Save(pugi::xml_node element) const {
  if (IsEmpty()) return;
  TDataCommand::Save(element);
  AddEnumElement(element, "ip_protocol", mProtocol);
  AddNumberElement(element, "port", mPort);
  SaveData(element, BinaryElement);
}

void TIPCommand::LoadElement(pugi::xml_node child) {
  TDataCommand::LoadElement(child);
  if (LoadDataElement(child, BinaryElement)) return;
  if (IsNamed(child, "ip_protocol"))
    SetIPProtocol(ElementEnum<TIPProtocol>(child));
  else if (IsNamed(child, "port"))
    SetPort(ElementNumber<quint16>(child, 0));
}

}  // namespace norva
