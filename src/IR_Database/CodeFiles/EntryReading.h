#pragma once
// What the code file readers share: one entry read at a time, a failure kept as that entry's
// refusal, and the numbers the files write.

#include <IR_Database/CodeFileEntries.h>
#include <NorvaGlobal/Exceptions.h>

#include <QStringView>

#include <cstdint>

namespace norva {

// Appends the entry `readEntry` returns, placed at `place`, or, when it raises, a refusal at
// `place` with the reason: one bad entry never stops the others.
template <typename Read>
void ReadEntry(TCodeFileEntries& read, const QString& place, Read&& readEntry) {
  try {
    TCodeFileEntry entry = readEntry();
    entry.Place = place;
    read.Entries.append(std::move(entry));
  } catch (const ENorvaError& error) {
    read.Refusals.append({place, error.Message()});
  }
}

// A whole number in decimal, with an optional minus sign. Raises "<what> is no whole number:
// '<text>'" for anything else, one that does not fit 64 bits included.
std::int64_t WholeNumber(QStringView text, QStringView what);

// A number of microseconds or hertz: decimal, perhaps with a fraction. Raises "<what> is no
// number: '<text>'", also for infinities and not-a-number.
double DecimalNumber(QStringView text, QStringView what);

}  // namespace norva
