#include <IR_Database/StreamNames.h>

#include <NorvaGlobal/Vocabulary.h>
#include <OrbGlobal/Undo/UndoControl.h>

namespace norva {

QByteArray StreamMatchKey(const TIRStreamData& data) {
  const int end = data.GetEndPos(false);
  QByteArray key;
  key.reserve(3 + 2 * PeriodIDCount + 2 * (end + 1));
  key.append(static_cast<char>(data.ModulationPeriod & 0xFF));
  key.append(static_cast<char>(data.ModulationPeriod >> 8));
  key.append(static_cast<char>(data.Format));
  for (int id = 0; id < PeriodIDCount; ++id) {
    const std::uint16_t length = data.IsPeriodUsed(static_cast<TPeriodID>(id), end)
                                     ? data.Lengths[static_cast<std::size_t>(id)]
                                     : 0;
    key.append(static_cast<char>(length & 0xFF));
    key.append(static_cast<char>(length >> 8));
  }
  if (data.IsEmpty()) return key;  // an empty stream writes no pairs
  for (int i = 0; i <= end; ++i) {
    key.append(static_cast<char>(data.Pairs[static_cast<std::size_t>(i)].OnID & 0x0F));
    key.append(static_cast<char>(data.Pairs[static_cast<std::size_t>(i)].OffID & 0x0F));
  }
  return key;
}

void TStreamNameIndex::Add(const TIRStreamData& data, const TStreamName& name) {
  const QByteArray key = StreamMatchKey(data);
  if (!mNames.contains(key)) mNames.insert(key, name);
}

const TStreamName* TStreamNameIndex::Find(const TIRStreamData& data) const {
  const auto found = mNames.constFind(StreamMatchKey(data));
  return found == mNames.constEnd() ? nullptr : &found.value();
}

bool ForEachNativeCode(const std::function<bool(const TNorvaIRStream&)>& visit) {
  // Making codes is no edit of a document: nothing of it belongs in the undo history.
  const TUndoSuspended undoOff;
  TNorvaIRStream stream;
  for (int type = AmpCommand; type <= VideoSwitcherCommand; ++type) {
    for (int zone = -1; zone <= MaxZone; ++zone) {
      for (int command = nvStandbyCmd; command <= nvAlarmSleep; ++command) {
        const auto native = static_cast<TNorvaCommand>(command);
        const auto kind = static_cast<TNorvaCommandType>(type);
        if (!NorvaFunctionUseful(native, zone, kind)) continue;
        stream.SetNorva(zone, native, kind);
        if (visit(stream)) return true;
      }
    }
  }
  return false;
}

const TStreamNameIndex& NativeStreamNames() {
  static const TStreamNameIndex names = IndexOfNativeCodes<TStreamNameIndex>();
  return names;
}

}  // namespace norva
