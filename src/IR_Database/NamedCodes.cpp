#include <IR_Database/NamedCodes.h>

#include <IR/IRStream.h>
#include <NorvaGlobal/Exceptions.h>

namespace norva {

namespace {

// The stream a line describes; raises ENorvaError with the reason it cannot be read.
void ReadLine(const QString& line, TIRStream& stream) {
  const qsizetype tab = line.indexOf(u'\t');
  if (tab < 0) throw ENorvaError(QStringLiteral("no TAB between name and code"));
  stream.SetName(line.left(tab).trimmed());
  stream.SetHexCode(line.mid(tab + 1));
  if (stream.IsEmpty()) throw ENorvaError(QStringLiteral("fewer than five words"));
}

}  // namespace

TNamedCodesImport ImportNamedCodes(TModel& model, const QByteArray& text) {
  TNamedCodesImport result;
  int lineNumber = 0;
  for (const QByteArray& bytes : text.split('\n')) {
    ++lineNumber;
    const QString line = QString::fromUtf8(bytes).trimmed();
    if (line.isEmpty()) continue;
    TIRStream read;
    try {
      ReadLine(line, read);
    } catch (const ENorvaError& error) {
      result.Failures << QStringLiteral("line %1: %2").arg(lineNumber).arg(error.Message());
      continue;
    }
    TCommandObject* added = model.AddNewCommandObject(&read);
    added->UpdateGUID();  // keypad buttons refer to commands by GUID
    added->AutoAssignButtonClass();
    ++result.Added;
  }
  return result;
}

}  // namespace norva
