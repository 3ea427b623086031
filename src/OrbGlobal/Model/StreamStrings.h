#pragma once
// Strings in binary streams (the in-memory snapshots of objects): a signed 32-bit little-endian
// byte count N, twice the number of UTF-16 code units, then the text as UTF-16LE without a mark or
// terminator. The empty string is the four bytes 00 00 00 00.

#include <QIODevice>
#include <QString>

namespace norva {

// Writes `text` at the stream's current position. Raises ENorvaError when the stream takes fewer
// bytes than written, EIntOverflow for a text whose byte count does not fit the count field.
void SaveStringToStream(const QString& text, QIODevice& stream);

// Reads one string from the current position. The reads are not checked: a short stream yields a
// shorter or empty string, a count of zero or below the empty string, and an odd count drops the
// half code unit. Only what the stream really holds is read, whatever the count claims.
QString LoadStringFromStream(QIODevice& stream);

}  // namespace norva
