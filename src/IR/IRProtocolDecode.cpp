// Decoding: a stream or raw signal as durations, every protocol of the table tried on them, the
// ones that explain them ranked; the generic description when none does.
#include <IR/IRGenericDescription.h>
#include <IR/IRProtocols.h>
#include <IR/IrpCatalogue.h>
#include <IR/IrpEngine.h>
#include <IR/IrpVectorState.h>

#include <algorithm>
#include <cmath>
#include <optional>

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

QString FramesBeyondText(int frames) {
  if (frames == 1) return QStringLiteral("1 frame beyond the code");
  return frames > 1 ? QStringLiteral("%1 frames beyond the code").arg(frames) : QString();
}

QString UnexplainedText(const TIrpRecognition& recognition) {
  QStringList parts;
  if (recognition.MissingRepeat) parts << QStringLiteral("no repeat frame");
  if (recognition.FramesBeyond > 0) parts << FramesBeyondText(recognition.FramesBeyond);
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

// The decodes of the capture as one code (with its repeats), the most likely first; none when no
// protocol explains it. `furthest`, when given, is set to the furthest duration any protocol
// compared.
QList<TIRDecode> CodeDecodes(double frequencyHz, std::span<const double> durations,
                             int* furthest = nullptr) {
  thread_local TIrpScratch scratch;
  scratch.Furthest = -1;
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
  if (furthest) *furthest = scratch.Furthest;

  QList<TIRDecode> decodes;
  for (const TCandidate& found : candidates) {
    const TIrpCatalogueEntry& entry = catalogue[found.Entry];
    TIRDecode decode;
    decode.Protocol = entry.Name;
    decode.Parameters = PublicParameters(entry, found.Recognition.Values);
    decode.Unexplained = UnexplainedText(found.Recognition);
    decodes << decode;
  }
  return decodes;
}

// A gap this long ends a frame: the parts of a compound code meet at such gaps.
constexpr double FrameGapMicroseconds = 10000;
// A capture of more frames than this is not searched for the parts of a compound code.
constexpr std::size_t MaxCompoundFrames = 16;

// Where the frames of the capture start: at 0 and after every gap that ends a frame.
std::vector<std::size_t> FrameStarts(std::span<const double> durations) {
  std::vector<std::size_t> starts{0};
  for (std::size_t i = 1; i + 1 < durations.size(); i += 2)
    if (durations[i] >= FrameGapMicroseconds) starts.push_back(i + 1);
  return starts;
}

// The same protocol, device, sub-device and function: the toggle flips from press to press.
bool SameCode(const TIRDecode& a, const TIRDecode& b) {
  return a.Protocol == b.Protocol && a.Parameters.D == b.Parameters.D &&
         a.Parameters.S == b.Parameters.S && a.Parameters.F == b.Parameters.F;
}

// The first decode of the frames from `first` up to `last` (one past), taken without the gap after
// the last frame, since the parts of a compound code follow each other closer than the code's own
// repeats do; none when no protocol explains them.
std::optional<TIRDecode> RunDecode(double frequencyHz, std::span<const double> durations,
                                   const std::vector<std::size_t>& starts, std::size_t first,
                                   std::size_t last) {
  const std::size_t end =
      last == starts.size() ? durations.size() - (1 - durations.size() % 2) : starts[last] - 1;
  const QList<TIRDecode> decodes =
      CodeDecodes(frequencyHz, durations.subspan(starts[first], end - starts[first]));
  if (decodes.isEmpty()) return std::nullopt;
  TIRDecode code = decodes.front();
  code.Unexplained.clear();
  return code;
}

// The codes the capture sends one after the other: from each frame on, a code that the frame is
// on its own, together with the frames after it that are no other code on their own, as long as it
// explains them (its repeats: NEC1's dittos). None when a part's first frame is no code.
std::optional<QList<TIRDecode>> CodesInTurn(double frequencyHz, std::span<const double> durations,
                                            int furthest) {
  const std::vector<std::size_t> starts = FrameStarts(durations);
  if (starts.size() < 2 || starts.size() > MaxCompoundFrames) return std::nullopt;
  // Decoding the whole capture compared no protocol with the first frame to its last flash.
  if (furthest < static_cast<int>(starts[1]) - 2) return std::nullopt;
  std::vector<std::optional<TIRDecode>> alone(starts.size());
  std::vector<bool> tried(starts.size(), false);
  const auto frameAlone = [&](std::size_t frame) -> const std::optional<TIRDecode>& {
    if (!tried[frame]) alone[frame] = RunDecode(frequencyHz, durations, starts, frame, frame + 1);
    tried[frame] = true;
    return alone[frame];
  };
  QList<TIRDecode> codes;
  for (std::size_t first = 0; first < starts.size();) {
    std::optional<TIRDecode> code = frameAlone(first);
    if (!code) return std::nullopt;
    std::size_t last = first + 1;
    for (; last < starts.size(); ++last) {
      const std::optional<TIRDecode>& next = frameAlone(last);
      if (next && !SameCode(*next, *code)) break;
      std::optional<TIRDecode> longer = RunDecode(frequencyHz, durations, starts, first, last + 1);
      if (!longer) break;
      code = std::move(longer);
    }
    codes << *code;
    first = last;
  }
  return codes;
}

// The codes as one compound code: the shortest sequence of them that the rest only repeats, and
// how often it is sent again.
TIRDecode CompoundOf(const QList<TIRDecode>& codes) {
  qsizetype length = 1;
  const auto repeats = [&codes](qsizetype period) {
    if (codes.size() % period != 0) return false;
    for (qsizetype i = period; i < codes.size(); ++i)
      if (!SameCode(codes[i], codes[i % period])) return false;
    return true;
  };
  while (!repeats(length)) ++length;
  TIRDecode compound = codes.front();
  compound.Then = codes.mid(1, length - 1);
  // One code whose frames follow each other otherwise than the protocol sends them.
  compound.Unexplained = length == 1
                             ? QStringLiteral("frames spaced unlike the protocol's")
                             : FramesBeyondText(static_cast<int>(codes.size() / length) - 1);
  return compound;
}

QList<TIRDecode> DecodeDurations(double frequencyHz, std::span<const double> durations) {
  if (durations.empty()) return {};
  int furthest = -1;
  if (QList<TIRDecode> decodes = CodeDecodes(frequencyHz, durations, &furthest); !decodes.isEmpty())
    return decodes;
  if (const std::optional<QList<TIRDecode>> codes = CodesInTurn(frequencyHz, durations, furthest))
    return {CompoundOf(*codes)};
  TIRDecode decode;
  decode.Generic = GenericIRDescription(durations);
  return {decode};
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
