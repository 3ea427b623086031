#include <IR_Database/CodeImport.h>

#include <IR/IRCaptureFrames.h>
#include <IR/IRProtocols.h>
#include <IR/IRStream.h>
#include <IR_Database/Model.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <QHash>
#include <QMultiHash>

namespace norva {

namespace {

TIRStreamData StreamOf(const TIRStreamData& stream) { return stream; }
TIRStreamData StreamOf(const TRawCapture& capture) {
  return CaptureStream(capture.FrequencyHz, capture.Microseconds);
}
TIRStreamData StreamOf(const TProtocolCode& code) {
  return EncodeIRStream(code.Protocol, code.Parameters);
}

// The commands of the models an import adds to, by name: whether a code is there already is
// asked for every entry, and walking a large model each time would make an import quadratic.
class TModelContents {
 public:
  bool Holds(const TModel& model, const TIRStream& stream) {
    for (const TCommandObject* command : Commands(model).values(stream.GetName()))
      if (stream.Match(command)) return true;
    return false;
  }
  void Add(const TModel& model, const TCommandObject* command) {
    Commands(model).insert(command->GetName(), command);
  }

 private:
  QMultiHash<QString, const TCommandObject*>& Commands(const TModel& model) {
    const auto found = mByModel.find(&model);
    if (found != mByModel.end()) return *found;
    QMultiHash<QString, const TCommandObject*>& commands = mByModel[&model];
    for (int i = 0; i < model.GetCommandCount(); ++i)
      commands.insert(model.GetCommand(i)->GetName(), model.GetCommand(i));
    return commands;
  }

  QHash<const TModel*, QMultiHash<QString, const TCommandObject*>> mByModel;
};

// Every edit of the import in one undo step, and one change notification for the database.
class TOneImport {
 public:
  explicit TOneImport(TIRDB& database) : mDatabase(database) {
    mDatabase.BeginUpdate();
    DisableSavePoints();
  }
  ~TOneImport() {
    EnableSavePoints();
    mDatabase.EndUpdate();
  }
  TOneImport(const TOneImport&) = delete;
  TOneImport& operator=(const TOneImport&) = delete;

 private:
  TIRDB& mDatabase;
};

TModel& TargetModel(TIRDB& database, const TCodeFileEntry& entry, const TCodeImportSource& source) {
  const QString make = entry.Make.isEmpty() ? source.Make : entry.Make;
  const QString model = entry.Model.isEmpty() ? source.Model : entry.Model;
  if (make.isEmpty() || model.isEmpty())
    throw ENorvaError(QStringLiteral("neither the file nor the import names a make and model"));
  TModel* found = database.GetOrAddModel(make, model);
  if (!found) throw ENorvaError(QStringLiteral("%1 - %2 takes no codes").arg(make, model));
  return *found;
}

void ImportEntry(TIRDB& database, const TCodeFileEntry& entry, const TCodeImportSource& source,
                 TModelContents& contents, TStreamNameIndex& known, TCodeImportResult& result) {
  TIRStream stream;
  {
    // Only the copy the model takes is an edit: the prototype records nothing.
    const TUndoSuspended prototype;
    stream.SetName(entry.Name);
    stream.SetData(std::visit([](const auto& code) { return StreamOf(code); }, entry.Code));
  }
  TModel& model = TargetModel(database, entry, source);
  if (contents.Holds(model, stream)) {
    ++result.Skipped;
    return;
  }
  TCommandObject* added = model.AddNewCommandObject(&stream);
  added->UpdateGUID();  // keypad buttons refer to commands by GUID
  added->AutoAssignButtonClass();
  contents.Add(model, added);
  ++result.Added;
  if (const TStreamName* same = known.Find(stream.Data()))
    result.Duplicates << QStringLiteral("%1: %2 is the same code as %3: %4")
                             .arg(entry.Place, entry.Name, same->Category, same->Name);
  else
    known.Add(stream.Data(), {entry.Name, model.GetFullName()});
}

}  // namespace

const TCodeFileFormat* FindCodeFileFormat(const QByteArray& bytes, const QString& name) {
  for (const TCodeFileFormat& format : CodeFileFormats()) {
    const bool chosen = name.isEmpty() ? format.Recognises(bytes)
                                       : format.Name.compare(name, Qt::CaseInsensitive) == 0;
    if (chosen) return &format;
  }
  return nullptr;
}

QString CodeFileFormatNames() {
  QStringList names;
  for (const TCodeFileFormat& format : CodeFileFormats()) names << format.Name;
  return names.join(QStringLiteral(", "));
}

TCodeImportResult ImportCodeFile(TIRDB& database, const QByteArray& bytes,
                                 const TCodeImportSource& source) {
  TCodeImportResult result;
  const TCodeFileFormat* format = FindCodeFileFormat(bytes, source.Format);
  if (!format) {
    result.Refusals.append(
        {QStringLiteral("file"),
         QStringLiteral("not in a format the import reads (%1)").arg(CodeFileFormatNames())});
    return result;
  }
  const TCodeFileEntries read = format->Read(bytes, source.Path);
  // Taken before the import: the database's own index would be rebuilt after every addition.
  TStreamNameIndex known = database.ExactNameIndex();
  const TOneImport oneImport(database);
  TModelContents contents;
  QList<TCodeFileRefusal> refused = read.Refusals;
  for (const TCodeFileEntry& entry : read.Entries) {
    try {
      ImportEntry(database, entry, source, contents, known, result);
    } catch (const ENorvaError& error) {
      refused.append({entry.Place, error.Message()});
    }
  }
  result.Refusals = refused;
  return result;
}

}  // namespace norva
