#include <IR/NorvaIRStream.h>

#include <NorvaGlobal/Exceptions.h>
#include <NorvaGlobal/Vocabulary.h>

namespace norva {

TNorvaIRStream::TNorvaIRStream(TOrbObject* owner) : TIRStream(owner) {}

void TNorvaIRStream::SetNorva(int zone, TNorvaCommand command, TNorvaCommandType type) {
  if (zone < -1 || zone > MaxZone)
    throw ENorvaError(QStringLiteral("Zone %1 is not a zone of the installation").arg(zone));
  BeginUpdate();
  ReplaceStream([&] {
    mZone = zone;
    mCommand = command;
    mCommandType = type;
    StoreData(NorvaFrame(zone, command, type));
  });
  SetRepeats(0);
  SetName(NorvaFunctionName(command));
  SetCategory(NorvaCategory(zone, type));
  if (const std::optional<TButtonClass> function = NorvaCommandButtonClass(command))
    AddButtonClass(*function);
  EndUpdate();
}

void TNorvaIRStream::SetNorvaSw6(int zone, TSw6Cmd command) {
  BeginUpdate();
  SetName(Sw6CommandName(command));
  SetCategory(QStringLiteral("Norva Sw6, zone %1").arg(zone));
  SetNorvaCodeOld(static_cast<std::uint8_t>(zone), command);
  EndUpdate();
}

void TNorvaIRStream::SetNorvaCodeOld(std::uint8_t a, std::uint8_t b) {
  BeginUpdate();
  SetData(LegacyRelayFrame(a, b));
  SetRepeats(0);
  EndUpdate();
}

void TNorvaIRStream::CopyDerived(const TIRStream& source) {
  const auto* native = qobject_cast<const TNorvaIRStream*>(&source);
  if (!native) return;
  mZone = native->mZone;
  mCommand = native->mCommand;
  mCommandType = native->mCommandType;
}

bool TNorvaIRStream::SameDerived(const TIRStream& other) const {
  const auto* native = qobject_cast<const TNorvaIRStream*>(&other);
  return !native || (mZone == native->mZone && mCommand == native->mCommand &&
                     mCommandType == native->mCommandType);
}

}  // namespace norva
