#pragma once
// Flipper remote files: a header ("Filetype: IR signals file", "IR library file" or the like of
// other firmware, "Version:"),
// comments starting with #, and one block of "key: value" lines per button, starting with its
// "name:": "type: raw" with "frequency:" (Hz) and "data:" (microseconds, starting with a pulse), or
// "type: parsed" with "protocol:", "address:" and "command:" (four little-endian bytes each).

#include <IR_Database/CodeFileEntries.h>

namespace norva {

// Whether the first line other than a comment is a file type of infra-red ("... IR ...").
bool IsFlipperFile(const QByteArray& bytes);
TCodeFileEntries ReadFlipperFile(const QByteArray& bytes, const QString& path);

}  // namespace norva
