#pragma once
// The date and time of day as the library reads them (local time), through a seam so that tests
// can fix the clock: file names stamped with the time, revision stamps.

#include <QDateTime>

namespace norva {

QDateTime CurrentDateTime();

// A plain function that returns the current date and time (nullptr restores the system clock).
// Returns the previous source.
using TClockSource = QDateTime (*)();
TClockSource SetClockSource(TClockSource source);

}  // namespace norva
