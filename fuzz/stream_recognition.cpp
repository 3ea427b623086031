// Arbitrary bytes as a received stream's raw fields (carrier, format, lengths, pairs; IDs kept to
// 0..15 as every reader of streams keeps them): recognising it never fails, and a stream with
// anything to recognise it by is the same button as itself and is found by an index that holds it.
#include <IR_Database/StreamRecognition.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  norva::TIRStreamData stream;
  std::uint8_t fields[3 + sizeof(stream.Lengths) + norva::MaxPeriodIDPairs] = {};
  std::memcpy(fields, data, std::min(size, sizeof(fields)));
  stream.ModulationPeriod = static_cast<std::uint16_t>(fields[0] | fields[1] << 8);
  stream.Format = static_cast<norva::TIRStreamFormat>(fields[2] % 4);
  std::memcpy(stream.Lengths.data(), fields + 3, sizeof(stream.Lengths));
  const std::uint8_t* pairs = fields + 3 + sizeof(stream.Lengths);
  for (norva::TPeriodIDPair& pair : stream.Pairs) {
    pair = {static_cast<norva::TPeriodID>(*pairs & 0x0F),
            static_cast<norva::TPeriodID>(*pairs >> 4)};
    ++pairs;
  }

  const norva::TButtonPrint print = norva::ButtonPrintOf(stream);
  norva::TStreamRecognitionIndex index;
  index.Add(stream, {QStringLiteral("received"), QStringLiteral("fuzz")});
  const bool found = !index.Find(print).isEmpty();
  if (found == print.IsBlank() || norva::SameButton(print, print) == print.IsBlank()) std::abort();
  return 0;
}
