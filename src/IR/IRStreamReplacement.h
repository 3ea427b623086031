#pragma once
// The undo entry of an infra-red stream replaced as a whole: it keeps the whole stream as it was
// and puts it back through the same replacement, so that the reverse entry is recorded alike and
// undo and redo give exactly the streams before and after.

#include <OrbGlobal/Undo/ChangeProtocolEntry.h>

#include <memory>

namespace norva {

class TIRStream;

class TReplacedIRStream : public TChangeProtocolEntry {
 public:
  // `previous`: an owner-less stream of the same class holding what `stream` was.
  TReplacedIRStream(TIRStream& stream, std::unique_ptr<TIRStream> previous);
  ~TReplacedIRStream() override;
  void Revert() override;

 private:
  std::unique_ptr<TIRStream> mPrevious;
};

}  // namespace norva
