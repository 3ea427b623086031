#include <IR/IRStreamReplacement.h>

#include <IR/IRStream.h>

namespace norva {

TReplacedIRStream::TReplacedIRStream(TIRStream& stream, std::unique_ptr<TIRStream> previous)
    : TChangeProtocolEntry(static_cast<TOrbObject*>(&stream)), mPrevious(std::move(previous)) {}

TReplacedIRStream::~TReplacedIRStream() = default;

void TReplacedIRStream::Revert() {
  static_cast<TIRStream*>(static_cast<TOrbObject*>(AffectedObject()))->RestoreStream(*mPrevious);
}

}  // namespace norva
