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

}  // namespace norva
