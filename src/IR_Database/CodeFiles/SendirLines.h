#pragma once
// The sendir lines of IP-to-IR gateways, one code a line, perhaps after a name and a TAB:
//   sendir,MODULE:CONNECTOR,ID,FREQUENCY,REPEAT,OFFSET,ON,OFF,...
// durations counted in carrier periods; OFFSET (from 1) is the duration where the part a held key
// repeats begins. A line without a name is named "Code N", N counting the codes of the file.

#include <IR_Database/CodeFileEntries.h>

namespace norva {

// Whether the first line is a sendir line.
bool IsSendirLines(const QByteArray& bytes);
TCodeFileEntries ReadSendirLines(const QByteArray& bytes, const QString& path);

}  // namespace norva
