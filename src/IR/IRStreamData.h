#pragma once
// The raw content of an infra-red stream as a value: carrier period, format, the 16 period lengths
// and the 160 on/off pairs, with the rules that read them (where the stream ends, whether it is
// valid, its text forms). TIRStream holds one and adds the model-object behaviour around it.

#include <IR/IRPeriods.h>
#include <IR/IRTypes.h>

#include <QString>
#include <QStringView>

#include <cstdint>

namespace norva {

// A carrier period of this value means that no stream is defined; 0 means an unmodulated one.
inline constexpr std::uint16_t NoModulationPeriod = 65535;
// The carrier period counts ticks of this clock.
inline constexpr double ModulationClockHz = 12'000'000.0;
// Seconds per unit of an ordinary length and of a word-end length.
inline constexpr double PeriodLengthUnit = 3.3333e-7;
inline constexpr double WordEndLengthUnit = 8.5333e-5;
// A gap longer than this inside a learnt or typed signal of one sequence ends its first word.
inline constexpr double WordSplitMicroseconds = 8000;

struct TIRStreamData {
  std::uint16_t ModulationPeriod = NoModulationPeriod;
  TIRStreamFormat Format = RepeatWord1;
  TPeriodLengths Lengths{};
  TPeriodIDPairs Pairs{};

  bool IsEmpty() const { return ModulationPeriod == NoModulationPeriod; }
  // True for the one-word formats, RepeatWord1 and NoRepeat.
  bool OneWord() const { return Format == RepeatWord1 || Format == NoRepeat; }
  // The index of the pair that ends the stream (with `bothWords` false and a two-word format: the
  // second word), or -1. A pair whose on ID is 15 skips itself and the next two pairs.
  int GetEndPos(bool bothWords) const;
  // Whether a pair 0..endPos refers to `id`; false when endPos < 0.
  bool IsPeriodUsed(TPeriodID id, int endPos) const;
  // "OK", "Undefined", or the first rule the stream breaks ("Cycle 3: off time has zero length").
  QString Status() const;

  // "1671,555,0,...": 16 decimal lengths, 0 for those no pair up to the end uses.
  QString GetPeriodLengthsString() const;
  // Reads 16 decimal fields; a shorter list repeats from its start. Raises EConvertError for a
  // field that is not a number or does not fit 16 bits; the lengths are then unchanged.
  void SetPeriodLengthsString(QStringView text);
  // "01,01,0E": the pairs up to the end, on and off ID as hexadecimal digits; empty when there is
  // no end.
  QString GetPeriodIDPairsString() const;
  // Clears the pairs, then reads one pair from every three characters (other characters than
  // hexadecimal digits read as 0).
  void SetPeriodIDPairsString(QStringView text);

  friend bool operator==(const TIRStreamData&, const TIRStreamData&) = default;
};

// Round to nearest, ties to even, as every unit conversion of the streams does.
double RoundToEven(double value);

}  // namespace norva
