#pragma once
// What the readers of text code files share: the lines as they take them (UTF-8, trimmed, blank
// lines left out, each with its number for the place of what it holds) and their numbers; an
// entry is kept or refused with its place as every reader does (EntryReading.h).

#include <IR_Database/CodeFileEntries.h>
#include <IR_Database/CodeFiles/EntryReading.h>

#include <QByteArray>
#include <QList>
#include <QString>

namespace norva {

// How much of a file the tests of a format's shape look at.
inline constexpr qsizetype RecognisedBytes = qsizetype{64} * 1024;

struct TCodeFileLine {
  int Number = 0;  // from 1
  QString Text;
};

QList<TCodeFileLine> CodeFileLines(const QByteArray& bytes);

// "line 12".
QString LinePlace(int number);

// The decimal numbers of a text, separated by `separator` (a run of it counts as one). Raises
// ENorvaError for the first that is none ("duration \"x\" is no number", `what` first).
QList<double> DecimalNumbers(QStringView text, char separator, const char* what);

}  // namespace norva
