#include <IR_Database/BuiltInMakes.h>

#include <IR/NorvaIRStream.h>
#include <NorvaGlobal/Vocabulary.h>
#include <NorvaGlobal/Zones.h>

#include <QUuid>

namespace norva {

namespace {

constexpr int RelayModules = 16;

// The built-in codes are made anew in every run; a GUID made from what a code is (kind of device,
// zone, command) keeps a keypad button's reference to it valid from one run to the next.
QUuid NativeCodeGUID(TNorvaCommandType type, int zone, int command) {
  return {0x6E617476,
          0x636F,
          0x6465,
          static_cast<uchar>(type),
          static_cast<uchar>(zone),
          static_cast<uchar>(command),
          0,
          0,
          0,
          0,
          0};
}

}  // namespace

TNorvaGroup::TNorvaGroup(TOrbObject* owner)
    : TCommandObjectList(owner), mChildObjects(true, this) {}

TNorvaGroup* TNorvaGroup::AddGroup(const QString& name) {
  auto* group = new TNorvaGroup(this);
  group->SetNameRaw(name);
  mChildObjects.Add(group);
  return group;
}

TOrbObjectList* TNorvaGroup::GetChildList(const TOrbObject* child) const {
  if (qobject_cast<const TNorvaGroup*>(child)) return &mChildObjects;
  return TCommandObjectList::GetChildList(child);
}

TNorvaCommandGroup::TNorvaCommandGroup(TOrbObject* owner) : TNorvaGroup(owner) {}

TNorvaCommandGroup::TNorvaCommandGroup(TOrbObject* owner, TNorvaCommandType type, int zone)
    : TNorvaGroup(owner), mZone(zone), mCommandType(type) {
  SetNameRaw(zone == -1 ? QStringLiteral("All zones") : QStringLiteral("Zone %1").arg(zone));
  for (int command = nvStandbyCmd; command <= nvAlarmSleep; ++command) {
    const auto code = static_cast<TNorvaCommand>(command);
    if (!NorvaFunctionUseful(code, zone, type)) continue;
    auto* stream = new TNorvaIRStream(this);
    stream->SetNorva(zone, code, type);
    stream->SetGUID(NativeCodeGUID(type, zone, command));
    AddCommandObject(stream);
  }
}

TNorvaCommandGroup* TNorvaCommandGroup::RelayModule(TOrbObject* owner, int module) {
  auto* group = new TNorvaCommandGroup(owner);
  group->mZone = module;
  group->mCommandType = Sw6Command;
  group->SetNameRaw(QStringLiteral("Zone %1").arg(module));
  for (int letter = FirstSw6Cmd; letter <= LastSw6Cmd; ++letter) {
    auto* stream = new TNorvaIRStream(group);
    stream->SetNorvaSw6(module, static_cast<TSw6Cmd>(letter));
    stream->SetGUID(NativeCodeGUID(Sw6Command, module, letter));
    group->AddCommandObject(stream);
  }
  return group;
}

TNorvaIntegraMake::TNorvaIntegraMake(TOrbObject* owner)
    : TMake(owner), mNorvaCommandGroups(true, this) {}

TNorvaGroup* TNorvaIntegraMake::AddGroup(const QString& name) {
  auto* group = new TNorvaGroup(this);
  group->SetNameRaw(name);
  mNorvaCommandGroups.Add(group);
  return group;
}

void TNorvaIntegraMake::AddZones(TNorvaGroup* group, TNorvaCommandType type, int first, int last) {
  for (int zone = first; zone <= last; ++zone)
    group->AddChild(new TNorvaCommandGroup(group, type, zone));
}

TNorvaMake::TNorvaMake(TOrbObject* owner) : TNorvaIntegraMake(owner) {
  SetNameRaw(QStringLiteral("NORVA"));
  TNorvaGroup* amplifier = AddGroup(QStringLiteral("Amplifier"));
  AddZones(amplifier, AmpCommand, -1, -1);
  AddZones(amplifier->AddGroup(QStringLiteral("Amp zones 0..31")), AmpCommand, 0, LastPreampZone);
  AddZones(amplifier->AddGroup(QStringLiteral("Preamp zones")), PreampCommand, 0, LastPreampZone);
  AddZones(amplifier->AddGroup(QStringLiteral("Amp zones 32..63")), AmpCommand, 32, 63);
  AddZones(amplifier->AddGroup(QStringLiteral("Amp zones 64..95")), AmpCommand, 64, MaxZone);
  AddZones(AddGroup(QStringLiteral("V2HD Video switch")), VideoSwitcherCommand, 0, MaxZone);
  TNorvaGroup* relays = AddGroup(QStringLiteral("Sw6"));
  for (int module = 0; module < RelayModules; ++module)
    relays->AddChild(TNorvaCommandGroup::RelayModule(relays, module));
}

TIntegraMake::TIntegraMake(TOrbObject* owner) : TNorvaIntegraMake(owner) {
  SetNameRaw(QStringLiteral("INTEGRA"));
  TNorvaGroup* quil = AddGroup(QStringLiteral("Quil-2.3"));
  AddZones(quil, IntegraAmpCommand, -1, -1);
  AddZones(quil->AddGroup(QStringLiteral("Amp zones")), IntegraAmpCommand, 0, LastPreampZone);
  AddZones(quil->AddGroup(QStringLiteral("Preamp zones")), IntegraPreampCommand, 0, LastPreampZone);
}

}  // namespace norva
