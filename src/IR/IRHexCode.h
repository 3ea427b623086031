#pragma once
// The hex code of an infra-red stream: the widely used text of a learnt (raw, modulated) code,
// words of four hexadecimal digits separated by single spaces:
//   preamble (0000; 0100 for a code sent without carrier), frequency word F (carrier period in
//   units of 0.241246 us), the number of burst pairs sent once, the number repeated, then the pairs
//   (on, off) in carrier periods.

#include <IR/IRStreamData.h>

#include <QString>
#include <QStringView>

#include <optional>

namespace norva {

// The text of the stream: empty for an empty stream. Raises "Hex code unavailable for
// non-modulated IR codes." when the carrier has no frequency word, and "Hex code unavailable for
// an infra-red stream without end." when no pair ends it.
QString HexCodeOf(const TIRStreamData& stream);
// The same text, but every word-end gap written as the word nearest its length that ParseHexCode
// reads back into the same coarse unit (reading truncates to that unit, so the nearest word falls
// one unit short about half the time): what a file meant to be read back writes.
QString FaithfulHexCodeOf(const TIRStreamData& stream);

// The stream a hex code describes (carrier, format, lengths and pairs). Nothing when the text has
// fewer than five words. A code whose preamble is 0100 is sent without carrier: it reads as an
// unmodulated stream (carrier period 0), its durations counted in the same units of its frequency
// word as those of a modulated code. Other preambles read as 0000.
// Raises "Invalid hex code string.", "Stream has zero length", "Invalid Total number of tokens
// detected.", "Hex code is too long.", the period analysis's failures, and a failure for a
// carrier or duration that does not fit the stream's 16-bit fields.
std::optional<TIRStreamData> ParseHexCode(QStringView text);

// Whether the trimmed text has the shape of a hex code: at least 4 characters, a space at every
// fifth position, hexadecimal digits elsewhere. Counts and header are not checked.
bool LooksLikeHexCode(QStringView text);

}  // namespace norva
