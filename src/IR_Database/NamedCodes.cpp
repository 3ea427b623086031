#include <IR_Database/NamedCodes.h>

#include <IR/IRStream.h>
#include <NorvaGlobal/Exceptions.h>

namespace norva {

namespace {

// The stream a line describes; raises ENorvaError with the reason it cannot be read.
void ReadLine(const QString& line, TIRStream& stream) {
  const QStringList fields = line.split(u'\t');
  if (fields.size() == 1) throw ENorvaError(QStringLiteral("no TAB between name and code"));
  if (fields.size() != 2)
    throw ENorvaError(QStringLiteral("expected NAME<TAB>CODE, found %1 fields").arg(fields.size()));
  stream.SetName(fields[0].trimmed());
  stream.SetHexCode(fields[1]);
  if (stream.IsEmpty()) throw ENorvaError(QStringLiteral("fewer than five words"));
}

// True when the model already holds a command of that name with the same stream.
bool Holds(const TModel& model, const TIRStream& stream) {
  for (int i = 0; i < model.GetCommandCount(); ++i) {
    const TCommandObject* command = model.GetCommand(i);
    if (command->GetName() == stream.GetName() && stream.Match(command)) return true;
  }
  return false;
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
    if (Holds(model, read)) {
      ++result.Skipped;
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
