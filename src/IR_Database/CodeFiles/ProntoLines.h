#pragma once
// Files of named codes as installers keep them beside a remote control: one code a line, TAB
// separated, the name in the first column and the Pronto hex code in the last, perhaps with
// other columns between them and a header line above.

#include <IR_Database/CodeFileEntries.h>

namespace norva {

// Whether one of the first lines has a TAB and a hex code after its last TAB.
bool IsProntoLines(const QByteArray& bytes);
TCodeFileEntries ReadProntoLines(const QByteArray& bytes, const QString& path);

}  // namespace norva
