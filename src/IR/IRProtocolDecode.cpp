// Decoding: a stream or raw signal as durations, every protocol of the table tried on them, the
// ones that explain them ranked; the generic description when none does.
#include <IR/IRGenericDescription.h>
#include <IR/IRProtocols.h>
#include <IR/IrpCatalogue.h>
#include <IR/IrpEngine.h>
#include <IR/IrpVectorState.h>

#include <algorithm>
#include <cmath>

namespace norva {

namespace {

// A learnt carrier may be off by this share of the protocol's.
constexpr double CarrierTolerance = 0.15;

// How far a learnt carrier is from the protocol's, as a share of it; 0 when either has none.
double CarrierOffset(double frequencyHz, const TIrpProtocol& protocol) {
  if (frequencyHz <= 0 || protocol.FrequencyHz <= 0) return 0;
  return std::abs(frequencyHz / protocol.FrequencyHz - 1);
}

// A parameter whose value is what its computed default gives (S=255-D) goes without saying.
TIRProtocolParameters PublicParameters(const TIrpCatalogueEntry& entry, const TIrpValues& values) {
  TIRProtocolParameters parameters;
  for (std::size_t i = 0; i < entry.Parameters.size(); ++i) {
    const int variable = entry.Parameters[i];
    if (variable < 0) continue;
    const std::int64_t value = values[static_cast<std::size_t>(variable)];
    const int defaultExpr = entry.Protocol.Variables[static_cast<std::size_t>(variable)].Default;
    const bool implied = !IsConstantIrp(entry.Protocol, defaultExpr) &&
                         EvaluateIrp(entry.Protocol, defaultExpr, values) == value;
    if (!implied) ParameterAt(parameters, i) = value;
  }
  return parameters;
}

QString UnexplainedText(const TIrpRecognition& recognition) {
  QStringList parts;
  if (recognition.MissingRepeat) parts << QStringLiteral("no repeat frame");
  if (recognition.FramesBeyond == 1) parts << QStringLiteral("1 frame beyond the code");
  if (recognition.FramesBeyond > 1)
    parts << QStringLiteral("%1 frames beyond the code").arg(recognition.FramesBeyond);
  return parts.join(QStringLiteral(", "));
}

struct TCandidate {
  std::size_t Entry = 0;
  TIrpRecognition Recognition;
  double CarrierOffset = 0;
};

// Fewer frames beyond the code first, then more bits that confirm others (NEC1's complement over
// NEC1-f16's plain field), then the nearer carrier (Pioneer is NEC2 at 40 kHz), then the table's
// order.
bool Likelier(const TCandidate& a, const TCandidate& b) {
  if (a.Recognition.FramesBeyond != b.Recognition.FramesBeyond)
    return a.Recognition.FramesBeyond < b.Recognition.FramesBeyond;
  if (a.Recognition.CheckedBits != b.Recognition.CheckedBits)
    return a.Recognition.CheckedBits > b.Recognition.CheckedBits;
  if (a.CarrierOffset != b.CarrierOffset) return a.CarrierOffset < b.CarrierOffset;
  return a.Entry < b.Entry;
}

QList<TIRDecode> DecodeDurations(double frequencyHz, std::span<const double> durations) {
  if (durations.empty()) return {};
  thread_local TIrpScratch scratch;
  scratch.Elapsed.resize(durations.size() + 1);
  scratch.Elapsed[0] = 0;
  for (std::size_t i = 0; i < durations.size(); ++i)
    scratch.Elapsed[i + 1] = scratch.Elapsed[i] + durations[i];

  const std::vector<TIrpCatalogueEntry>& catalogue = IrpCatalogue();
  std::vector<TCandidate> candidates;
  TCandidate candidate;
  for (std::size_t i = 0; i < catalogue.size(); ++i) {
    candidate.CarrierOffset = CarrierOffset(frequencyHz, catalogue[i].Protocol);
    if (candidate.CarrierOffset > CarrierTolerance) continue;
    if (!MayOpenWith(catalogue[i].Protocol, durations[0])) continue;
    if (!RecogniseIrp(catalogue[i].Protocol, durations, scratch, candidate.Recognition)) continue;
    candidate.Entry = i;
    candidates.push_back(candidate);
  }
  std::stable_sort(candidates.begin(), candidates.end(), Likelier);

  QList<TIRDecode> decodes;
  for (const TCandidate& found : candidates) {
    const TIrpCatalogueEntry& entry = catalogue[found.Entry];
    TIRDecode decode;
    decode.Protocol = entry.Name;
    decode.Parameters = PublicParameters(entry, found.Recognition.Values);
    decode.Unexplained = UnexplainedText(found.Recognition);
    decodes << decode;
  }
  if (decodes.isEmpty()) {
    TIRDecode decode;
    decode.Generic = GenericIRDescription(durations);
    decodes << decode;
  }
  return decodes;
}

double Microseconds(const TIRStreamData& stream, TPeriodID id, bool wordEnd) {
  const double thirds = stream.Lengths[id];
  return (wordEnd ? thirds * WordEndUnitFactor : thirds) / 3;
}

// The stream as sent while the key is held: the word sent once, then the repeated word twice, so
// that its repetition shows.
std::vector<double> StreamDurations(const TIRStreamData& stream) {
  std::vector<double> durations;
  const int end = stream.GetEndPos(false);
  if (stream.IsEmpty() || end < 0) return durations;
  const bool twoWords = stream.Format == RepeatWord2 || stream.Format == NoRepeat;
  const int onceEnd = twoWords ? stream.GetEndPos(true) : -1;
  const auto addPairs = [&](int from, int to) {
    for (int i = from; i <= to; ++i) {
      const TPeriodIDPair& pair = stream.Pairs[static_cast<std::size_t>(i)];
      if (pair.OnID >= FirstWordEndID) continue;
      durations.push_back(Microseconds(stream, pair.OnID, false));
      durations.push_back(Microseconds(stream, pair.OffID, pair.IsWordEnd()));
    }
  };
  addPairs(0, onceEnd);
  if (stream.Format != NoRepeat) {
    addPairs(onceEnd + 1, end);
    addPairs(onceEnd + 1, end);
  }
  return durations;
}

}  // namespace

QList<TIRDecode> DecodeIRStream(const TIRStreamData& stream) {
  CleanUpperVectorHalves();
  const std::vector<double> durations = StreamDurations(stream);
  const double frequency =
      stream.ModulationPeriod == 0 ? 0 : ModulationClockHz / stream.ModulationPeriod;
  return DecodeDurations(frequency, durations);
}

QList<TIRDecode> DecodeIRSignal(double frequencyHz, const QList<double>& microseconds) {
  CleanUpperVectorHalves();
  for (const double duration : microseconds)
    if (!(duration >= 0) || !std::isfinite(duration)) return {};
  return DecodeDurations(std::isfinite(frequencyHz) ? frequencyHz : 0,
                         std::span<const double>(microseconds.data(), microseconds.size()));
}

}  // namespace norva
