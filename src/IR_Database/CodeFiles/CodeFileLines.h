#pragma once
// The lines of a text code file as its readers take them: UTF-8, trimmed, blank lines left out,
// each with its number for the place of what it holds.

#include <QByteArray>
#include <QList>
#include <QString>

namespace norva {

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
