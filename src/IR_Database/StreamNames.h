#pragma once
// Naming received codes quickly: streams keyed by exactly what the stream comparison compares
// (carrier, format, the lengths the pairs use, the pairs up to the end), so that two streams match
// exactly when their keys are equal.

#include <IR/IRStream.h>
#include <IR/NorvaIRStream.h>

#include <QByteArray>
#include <QHash>
#include <QString>

#include <functional>

namespace norva {

struct TStreamName {
  QString Name;
  QString Category;
};

// Equal exactly when TIRStream::Match holds between the two streams.
QByteArray StreamMatchKey(const TIRStreamData& data);

class TStreamNameIndex {
 public:
  // Keeps the first name given for a key, as a walk in order finds the first match.
  void Add(const TIRStreamData& data, const TStreamName& name);
  const TStreamName* Find(const TIRStreamData& data) const;
  bool IsEmpty() const { return mNames.isEmpty(); }

 private:
  QHash<QByteArray, TStreamName> mNames;
};

// Every native code the installation's devices understand, in the order they are tried: command
// types in order, then zones from all zones (-1) to 95, then commands, where the command is
// useful for that zone and type. `visit` sees each code in turn until it returns true; the result
// is whether it did. The codes are made without undo records.
bool ForEachNativeCode(const std::function<bool(const TNorvaIRStream&)>& visit);

// An index (TStreamNameIndex or alike) of every native code, in the order ForEachNativeCode visits
// them, each under its name and category.
template <typename TIndex>
TIndex IndexOfNativeCodes() {
  TIndex index;
  ForEachNativeCode([&index](const TNorvaIRStream& stream) {
    index.Add(stream.Data(), {stream.GetName(), stream.GetCategory()});
    return false;
  });
  return index;
}

// The names of all native codes (ForEachNativeCode). Built once per process.
const TStreamNameIndex& NativeStreamNames();

}  // namespace norva
