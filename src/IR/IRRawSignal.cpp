#include <IR/IRRawSignal.h>

#include <NorvaGlobal/Exceptions.h>

#include <cmath>

namespace norva {

namespace {

std::uint32_t Thirds(double microseconds) {
  const double thirds = RoundToEven(microseconds * 3);
  // Anything that does not fit 32 bits is far beyond every slot; the analysis refuses it.
  return thirds >= 4294967295.0 ? 4294967295u : static_cast<std::uint32_t>(thirds);
}

std::uint16_t ModulationPeriodOf(double frequencyHz) {
  if (frequencyHz == 0) return 0;
  const double period = RoundToEven(ModulationClockHz / frequencyHz);
  // A period of no tick would pass for an unmodulated stream.
  if (!(frequencyHz > 0) || !(period >= 1 && period < NoModulationPeriod))
    throw ENorvaError(
        QStringLiteral("Carrier frequency %1 Hz is out of range (%2 Hz or more, below %3 Hz).")
            .arg(frequencyHz)
            .arg(std::ceil(ModulationClockHz / (NoModulationPeriod - 0.5)))
            .arg(2 * ModulationClockHz, 0, 'f', 0));
  return static_cast<std::uint16_t>(period);
}

// The durations as whole pulse and gap pairs: checked, and closed by a gap when they end on a
// pulse.
QList<double> ClosedWord(const QList<double>& microseconds) {
  CheckRawDurations(microseconds);
  QList<double> durations = microseconds;
  if (durations.size() % 2 != 0) durations.append(RawClosingGapMicroseconds);
  return durations;
}

// Adds the pairs of a word whose last gap ends it.
void AddWord(TIRPeriodsLoadHelper& periods, const QList<double>& durations) {
  for (qsizetype i = 0; i < durations.size(); i += 2) {
    const bool wordEnd = i + 2 == durations.size();
    periods.AddOnOffPeriod(Thirds(durations[i]), Thirds(durations[i + 1]), wordEnd);
  }
}

}  // namespace

void CheckRawDurations(const QList<double>& microseconds) {
  for (const double duration : microseconds) {
    if (!(duration > 0) || !std::isfinite(duration))
      throw ENorvaError(
          QStringLiteral("Infra-red durations must be positive, not %1.").arg(duration));
  }
}

TIRStreamData RawSignalStream(double frequencyHz, const QList<double>& microseconds) {
  if (microseconds.isEmpty()) throw ENorvaError(QStringLiteral("Stream has zero length"));
  const QList<double> durations = ClosedWord(microseconds);

  TIRStreamData stream;
  stream.ModulationPeriod = ModulationPeriodOf(frequencyHz);
  const qsizetype lastGap = durations.size() - 1;
  qsizetype firstWordEnd = -1;
  for (qsizetype i = 1; i < lastGap && firstWordEnd < 0; i += 2)
    if (durations[i] > WordSplitMicroseconds) firstWordEnd = i;
  stream.Format = firstWordEnd < 0 ? RepeatWord1 : RepeatBothWords;

  TIRPeriodsLoadHelper periods;
  for (qsizetype i = 0; i < durations.size(); i += 2) {
    const bool wordEnd = i + 1 == lastGap || i + 1 == firstWordEnd;
    periods.AddOnOffPeriod(Thirds(durations[i]), Thirds(durations[i + 1]), wordEnd);
  }
  stream.Lengths = periods.GetPeriodLengths();
  stream.Pairs = periods.GetPairs();
  return stream;
}

TIRStreamData WordsStream(double frequencyHz, const QList<double>& once,
                          const QList<double>& repeat) {
  if (once.isEmpty() && repeat.isEmpty())
    throw ENorvaError(QStringLiteral("Stream has zero length"));
  TIRStreamData stream;
  stream.ModulationPeriod = ModulationPeriodOf(frequencyHz);
  stream.Format = once.isEmpty() ? RepeatWord1 : repeat.isEmpty() ? NoRepeat : RepeatWord2;
  TIRPeriodsLoadHelper periods;
  AddWord(periods, ClosedWord(once));
  AddWord(periods, ClosedWord(repeat));
  stream.Lengths = periods.GetPeriodLengths();
  stream.Pairs = periods.GetPairs();
  return stream;
}

}  // namespace norva
