// Arbitrary text for both string forms of a stream: the setters take any text without failing
// other than by the library's own failures, and what the getters write reads back the same.
#include <IR/IRHexCode.h>
#include <NorvaGlobal/Exceptions.h>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QString text =
      QString::fromLatin1(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const qsizetype cut = text.indexOf(u'|');
  norva::TIRStreamData stream;
  stream.ModulationPeriod = 316;
  try {
    stream.SetPeriodLengthsString(cut < 0 ? text : text.left(cut));
  } catch (const norva::ENorvaError&) {
  }
  stream.SetPeriodIDPairsString(cut < 0 ? text : text.mid(cut + 1));
  if (size > 0) stream.Format = static_cast<norva::TIRStreamFormat>(data[0] % 4);
  (void)stream.Status();
  (void)stream.GetEndPos(true);

  const QString pairs = stream.GetPeriodIDPairsString();
  norva::TIRStreamData copy = stream;
  copy.SetPeriodIDPairsString(pairs);
  if (copy.GetPeriodIDPairsString() != pairs) std::abort();
  const QString lengths = stream.GetPeriodLengthsString();
  copy.SetPeriodLengthsString(lengths);
  if (copy.GetPeriodLengthsString() != lengths) std::abort();
  try {
    (void)norva::HexCodeOf(stream);
  } catch (const norva::ENorvaError&) {
  }
  return 0;
}
