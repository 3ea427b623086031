#pragma once
// Learnt raw signals as common capture tools write them: a carrier frequency and alternating
// pulse and gap durations in microseconds, starting with a pulse.

#include <IR/IRStreamData.h>

#include <QList>

namespace norva {

// The gap that closes a signal ending on a pulse.
inline constexpr double RawClosingGapMicroseconds = 100000;

// Raises "Infra-red durations must be positive, not D." for the first duration that is not a
// positive finite number.
void CheckRawDurations(const QList<double>& microseconds);

// The stream of a raw signal. The last gap ends a word; the first gap above 8 ms inside the
// signal ends a first word too (format RepeatBothWords), as in hex codes. `frequencyHz` 0 gives an
// unmodulated stream. Raises for an empty signal, a duration that is not positive, a carrier
// whose period does not fit 16 bits or is shorter than one tick, and the period analysis's
// failures.
TIRStreamData RawSignalStream(double frequencyHz, const QList<double>& microseconds);

// The stream that sends `once` a single time, then `repeat` for as long as the key is held: each
// alternating pulse and gap durations in microseconds, starting with a pulse; a word ending on a
// pulse gets the closing gap. Either may be empty, not both: repeat only gives RepeatWord1, once
// only NoRepeat, both RepeatWord2. Raises as RawSignalStream does.
TIRStreamData WordsStream(double frequencyHz, const QList<double>& once,
                          const QList<double>& repeat);

}  // namespace norva
