#pragma once
// What the readers of text code files share: the lines as they take them (UTF-8, trimmed, blank
// lines left out, each with its number for the place of what it holds), their numbers, and an
// entry kept or refused with its place.

#include <IR_Database/CodeFileEntries.h>

#include <QByteArray>
#include <QList>
#include <QString>

#include <NorvaGlobal/Exceptions.h>

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

// The entry `read` gives, placed at `place`, or a refusal there with the reason it raises.
template <typename TRead>
void AddEntry(TCodeFileEntries& entries, const QString& place, TRead read) {
  try {
    TCodeFileEntry entry = read();
    entry.Place = place;
    entries.Entries.append(std::move(entry));
  } catch (const ENorvaError& error) {
    entries.Refusals.append({place, error.Message()});
  }
}

}  // namespace norva
