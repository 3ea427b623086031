// Arbitrary bytes as a learnt signal: the carrier (two bytes, in 100 Hz), then durations in
// microseconds (two bytes each, little-endian, starting with a flash). Decoding it, and the stream
// made of it, never fails, and every protocol named encodes its parameters into a stream that
// decodes to them again, each part of a compound code on its own.
#include <IR/IRProtocols.h>
#include <IR/IRRawSignal.h>
#include <NorvaGlobal/Exceptions.h>

#include <cstdint>
#include <cstdlib>

namespace {

bool Contains(const QList<norva::TIRDecode>& decodes, const norva::TIRDecode& wanted) {
  for (const norva::TIRDecode& decode : decodes)
    if (decode.Protocol == wanted.Protocol && decode.Parameters == wanted.Parameters) return true;
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const double frequency = 100.0 * (data[0] | data[1] << 8);
  QList<double> microseconds;
  for (std::size_t i = 2; i + 1 < size; i += 2) microseconds << (data[i] | data[i + 1] << 8);
  QList<norva::TIRDecode> decodes = norva::DecodeIRSignal(frequency, microseconds);
  if (!microseconds.isEmpty() && decodes.isEmpty()) std::abort();
  try {
    decodes += norva::DecodeIRStream(norva::RawSignalStream(frequency, microseconds));
  } catch (const norva::ENorvaError&) {
    // Durations or a carrier a stream cannot hold.
  }
  for (const norva::TIRDecode& decode : decodes) {
    if (!decode.IsKnown()) {
      if (decode.Generic.isEmpty()) std::abort();
      continue;
    }
    QList<norva::TIRDecode> codes{decode};
    codes += decode.Then;  // each part of a compound code on its own
    for (const norva::TIRDecode& code : codes) {
      try {
        if (!Contains(norva::DecodeIRStream(norva::EncodeIRStream(code.Protocol, code.Parameters)),
                      code))
          std::abort();
      } catch (const norva::ENorvaError&) {
        std::abort();  // what was decoded is in range and fits a stream
      }
    }
  }
  return 0;
}
