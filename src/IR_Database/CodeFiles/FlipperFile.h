#pragma once
// Flipper remote files: a header ("Filetype: IR signals file" or "IR library file", "Version:"),
// comments starting with #, and one block of "key: value" lines per button, starting with its
// "name:": "type: raw" with "frequency:" (Hz) and "data:" (microseconds, starting with a pulse), or
// "type: parsed" with "protocol:", "address:" and "command:" (four little-endian bytes each).

#include <IR_Database/CodeFileEntries.h>

namespace norva {

// Whether the first line is the header's file type.
bool IsFlipperFile(const QByteArray& bytes);
TCodeFileEntries ReadFlipperFile(const QByteArray& bytes, const QString& path);

}  // namespace norva
