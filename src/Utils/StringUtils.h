#pragma once
// Small string cutting shared by file naming and command-list parsing. Delimiters match exactly
// (case-sensitive); an empty delimiter never matches.

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace norva {

// Everything before the FIRST '.', so "a.b.c" gives "a"; callers pass bare file names.
QString RemoveExtension(const QString& name);

// Cuts the head off `list`: returns the text before the first `delimiter` and leaves the text after
// it in `list`. Without a delimiter the whole of `list` is the head and `list` becomes empty.
QString SplitString(QString& list, const QString& delimiter);

// Field `index` (from 0) of `text` cut at every `delimiter`; empty fields are kept, an index
// beyond the last field (or negative) gives "".
QString SelectSubString(const QString& text, const QString& delimiter, int index);

// Two upper-case hexadecimal digits a byte, no separators, as files write bytes.
QByteArray UpperHex(QByteArrayView bytes);

}  // namespace norva
