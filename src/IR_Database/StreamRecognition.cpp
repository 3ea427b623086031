#include <IR_Database/StreamRecognition.h>

#include <IR/IRProtocols.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace norva {

namespace {

constexpr int PairIDMask = 0x0F;

// Protocol, device, sub-device and function, of every part of a compound code: what stays the
// same from press to press.
QByteArray DecodeKey(const TIRDecode& decode) {
  QByteArray key = decode.Protocol.toUtf8();
  for (const std::optional<std::int64_t>& value :
       {decode.Parameters.D, decode.Parameters.S, decode.Parameters.F}) {
    key += value ? ' ' + QByteArray::number(static_cast<qlonglong>(*value)) : QByteArray(" -");
  }
  for (const TIRDecode& part : decode.Then) key += " + " + DecodeKey(part);
  return key;
}

// The part of a generic description that a few percent of jitter does not change: all of it for a
// bit coding ("pulse-distance 32 bits 0x20DF10EF"); for durations without bit structure ("other
// 11 durations 201201:23103") only their count, since a duration near the bound between two of
// its classes may fall in either.
QString StableDescription(const QString& generic) {
  return generic.startsWith(u"other ") ? generic.section(u' ', 0, 2) : generic;
}

QByteArray ShapeOf(const TIRStreamData& stream, const QString& generic) {
  QByteArray shape;
  shape += static_cast<char>(stream.Format);
  shape += QByteArray::number(stream.GetEndPos(true)) + ' ' +
           QByteArray::number(stream.GetEndPos(false)) + ' ';
  shape += StableDescription(generic).toUtf8();
  return shape;
}

TStreamTimings TimingsOf(const TIRStreamData& stream) {
  TStreamTimings timings;
  if (stream.ModulationPeriod != 0) timings.CarrierHz = ModulationClockHz / stream.ModulationPeriod;
  const int end = stream.GetEndPos(false);
  timings.Durations.reserve(2 * static_cast<std::size_t>(end + 1));
  for (int i = 0; i <= end; ++i) {
    const TPeriodIDPair& pair = stream.Pairs[static_cast<std::size_t>(i)];
    const double offUnit = pair.IsWordEnd() ? WordEndLengthUnit : PeriodLengthUnit;
    timings.Durations.push_back(
        static_cast<float>(stream.Lengths[pair.OnID & PairIDMask] * PeriodLengthUnit * 1e6));
    timings.Durations.push_back(
        static_cast<float>(stream.Lengths[pair.OffID & PairIDMask] * offUnit * 1e6));
  }
  return timings;
}

bool DurationsAgree(float a, float b) {
  return std::abs(a - b) <=
         RecognitionDurationTolerance * std::max(a, b) + RecognitionDurationSlackMicroseconds;
}

float DurationSum(const TStreamTimings& timings) {
  return std::accumulate(timings.Durations.begin(), timings.Durations.end(), 0.0F);
}

// The sums of durations that can agree one by one with those of `timings`, a little widened for
// the rounding of the sums.
std::pair<float, float> AgreeingSums(const TStreamTimings& timings) {
  const float sum = DurationSum(timings);
  const auto slack = static_cast<float>(RecognitionDurationSlackMicroseconds *
                                        static_cast<double>(timings.Durations.size()));
  const auto keep = static_cast<float>(1 - RecognitionDurationTolerance);
  return {(keep * sum - slack) * 0.999F, (sum + slack) / keep * 1.001F};
}

bool TimingsAgree(const TStreamTimings& a, const TStreamTimings& b) {
  if ((a.CarrierHz == 0) != (b.CarrierHz == 0)) return false;
  if (std::abs(a.CarrierHz - b.CarrierHz) >
      RecognitionCarrierTolerance * std::max(a.CarrierHz, b.CarrierHz))
    return false;
  return std::equal(a.Durations.begin(), a.Durations.end(), b.Durations.begin(), b.Durations.end(),
                    DurationsAgree);
}

}  // namespace

TButtonPrint ButtonPrintOf(const TIRStreamData& stream) {
  TButtonPrint print;
  if (stream.IsEmpty() || stream.GetEndPos(false) < 0) return print;
  const QList<TIRDecode> decodes = DecodeIRStream(stream);
  for (const TIRDecode& decode : decodes)
    if (decode.IsKnown()) print.DecodeKeys << DecodeKey(decode);
  if (!print.DecodeKeys.isEmpty() || decodes.isEmpty()) return print;
  print.Shape = ShapeOf(stream, decodes.front().Generic);
  print.Timings = TimingsOf(stream);
  return print;
}

bool SameButton(const TButtonPrint& a, const TButtonPrint& b) {
  if (!a.DecodeKeys.isEmpty() || !b.DecodeKeys.isEmpty()) {
    return std::any_of(a.DecodeKeys.begin(), a.DecodeKeys.end(),
                       [&b](const QByteArray& key) { return b.DecodeKeys.contains(key); });
  }
  return !a.Shape.isEmpty() && a.Shape == b.Shape && TimingsAgree(a.Timings, b.Timings);
}

void TStreamRecognitionIndex::Add(const TIRStreamData& data, const TStreamName& name) {
  TButtonPrint print = ButtonPrintOf(data);
  if (print.IsBlank()) return;
  const int position = static_cast<int>(mNames.size());
  mNames.push_back(name);
  for (const QByteArray& key : print.DecodeKeys) mByDecode[key].push_back(position);
  if (!print.Shape.isEmpty()) {
    const float sum = DurationSum(print.Timings);
    mByShape[print.Shape].insert({sum, {position, std::move(print.Timings)}});
  }
}

QList<TStreamName> TStreamRecognitionIndex::Find(const TButtonPrint& print) const {
  std::vector<int> positions;
  for (const QByteArray& key : print.DecodeKeys) {
    const auto found = mByDecode.constFind(key);
    if (found != mByDecode.constEnd())
      positions.insert(positions.end(), found->begin(), found->end());
  }
  const auto shaped = print.Shape.isEmpty() ? mByShape.constEnd() : mByShape.constFind(print.Shape);
  if (shaped != mByShape.constEnd()) {
    const auto [low, high] = AgreeingSums(print.Timings);
    for (auto candidate = shaped->lower_bound(low); candidate != shaped->upper_bound(high);
         ++candidate) {
      if (TimingsAgree(candidate->second.Timings, print.Timings))
        positions.push_back(candidate->second.Position);
    }
  }
  // A stream that two decodes explain is listed under both.
  std::sort(positions.begin(), positions.end());
  positions.erase(std::unique(positions.begin(), positions.end()), positions.end());
  QList<TStreamName> names;
  names.reserve(static_cast<qsizetype>(positions.size()));
  for (const int position : positions) names << mNames[static_cast<std::size_t>(position)];
  return names;
}

const TStreamRecognitionIndex& NativeStreamRecognition() {
  static const TStreamRecognitionIndex index = IndexOfNativeCodes<TStreamRecognitionIndex>();
  return index;
}

}  // namespace norva
