// Arbitrary text as a hex code: it is refused with a failure, or gives a stream whose own hex code
// carries all its pairs with their counts. (Reading that text again need not give the same
// stream: word gaps are kept in coarse units, so a short one may round to nothing.)
#include <IR/IRHexCode.h>
#include <NorvaGlobal/Exceptions.h>

#include <QStringList>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QString text =
      QString::fromLatin1(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  (void)norva::LooksLikeHexCode(text);
  std::optional<norva::TIRStreamData> stream;
  try {
    stream = norva::ParseHexCode(text);
  } catch (const norva::ENorvaError&) {
    return 0;
  }
  if (!stream) return 0;
  (void)stream->Status();
  QString written;
  try {
    written = norva::HexCodeOf(*stream);
  } catch (const norva::ENorvaError&) {
    // Only a carrier without frequency word, or a stream without end, has no hex code.
    if (stream->ModulationPeriod > 1 && stream->GetEndPos(false) >= 0) std::abort();
    return 0;
  }
  // What is written has the shape of a hex code and carries every pair up to the end, counted
  // in its once and repeat words.
  const auto pairs = static_cast<qsizetype>(stream->GetEndPos(false) + 1);
  const QStringList words = written.split(u' ');
  if (!norva::LooksLikeHexCode(written) || words.size() != 4 + 2 * pairs ||
      words[2].toInt(nullptr, 16) + words[3].toInt(nullptr, 16) != pairs)
    std::abort();
  return 0;
}
