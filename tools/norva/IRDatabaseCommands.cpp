// norva irdb FILE [--public] list | name | import | export: the IR database from the command line.
#include "Subcommands.h"

#include <IR/IR.h>
#include <IR/IRProtocols.h>
#include <IR_Database/IR_Database.h>
#include <NorvaGlobal/Exceptions.h>

#include <QFile>
#include <QFileInfo>

#include <memory>

namespace norva::cli {

namespace {

// Only a command that writes may start a new file. A file that did not load is neither read nor
// written: the failure is the command's answer (exit 1), on one line instead of in a box.
std::unique_ptr<TIRDB> OpenDatabase(const QString& path, bool isPublic, bool writes) {
  if (!writes && !QFileInfo::exists(path))
    throw ENorvaError(QStringLiteral("no IR database at ") + Escaped(path));
  auto database = std::make_unique<TIRDB>(
      path, isPublic, [](TIRDB&, const QString&, bool& handled) { handled = true; });
  if (!database->GetLoadFailure().isEmpty()) throw ENorvaError(Escaped(database->GetLoadFailure()));
  return database;
}

TMake* FindMake(const TIRDB& database, const QString& name) {
  TMake* make = database.GetMakeByName(name);
  if (!make) throw EUsage(QStringLiteral("no make %1 in the database").arg(Quoted(name)));
  return make;
}

const TModel* FindModel(const TMake& make, const QString& name) {
  const TModel* model = make.GetModelByName(name);
  if (!model) throw EUsage(QStringLiteral("no model %1 in %2").arg(Quoted(name), make.GetName()));
  return model;
}

QString ClassNames(const TCommandObject& command) {
  QStringList names;
  for (const TButtonClass& c : command.GetButtonClasses()) names << c.GetName();
  return names.join(QStringLiteral(", "));
}

// The most likely decode of an IR stream; nothing for other commands.
QString DecodeColumn(const TCommandObject& command) {
  const auto* stream = qobject_cast<const TIRStream*>(&command);
  if (!stream) return {};
  const QList<TIRDecode> decodes = DecodeIRStream(stream->Data());
  return decodes.isEmpty() ? QStringLiteral("no decode") : DecodeText(decodes.front());
}

void List(const TIRDB& database, const QStringList& names, QTextStream& out) {
  if (names.isEmpty()) {
    for (int i = 0; i < database.GetMakeCount(); ++i) {
      const TMake* make = database.GetMake(i);
      out << make->GetName() << '\t' << make->GetModelCount() << " models";
      if (const auto* builtIn = qobject_cast<const TNorvaIntegraMake*>(make))
        out << ", built in with " << builtIn->GetNorvaCommandGroupCount() << " command groups";
      out << '\n';
    }
    return;
  }
  const TMake* make = FindMake(database, names[0]);
  if (names.size() == 1) {
    for (int i = 0; i < make->GetModelCount(); ++i)
      out << make->GetModel(i)->GetName() << '\t' << make->GetModel(i)->GetCommandCount()
          << " commands\n";
    return;
  }
  const TModel* model = FindModel(*make, names[1]);
  for (int i = 0; i < model->GetCommandCount(); ++i) {
    const TCommandObject* command = model->GetCommand(i);
    out << command->GetName() << '\t' << CommandElementName(command->GetClass()) << '\t'
        << command->Status() << '\t' << ClassNames(*command) << '\t' << DecodeColumn(*command)
        << '\n';
  }
}

// The received code of irdb name, checked before the database is opened.
TIRStreamData ReadCode(const QStringList& words) {
  if (words.isEmpty()) throw EUsage(QStringLiteral("irdb name needs a CODE"));
  TIRStream stream;
  try {
    stream.SetHexCode(words.join(u' '));
  } catch (const ENorvaError& error) {
    throw EUsage(QStringLiteral("CODE: %1").arg(error.Message()));
  }
  if (stream.IsEmpty()) throw EUsage(QStringLiteral("CODE has fewer than five words"));
  return stream.Data();
}

// The command holding exactly that code, else every command that is the same button.
int Name(const TIRDB& database, const TIRStreamData& code, QTextStream& out) {
  TIRStream stream;
  stream.SetData(code);
  if (database.GetNames(stream)) {
    out << "exact\t" << stream.GetCategory() << ": " << stream.GetName() << '\n';
    return 0;
  }
  const QList<TStreamName> similar = database.RecogniseNames(code);
  for (const TStreamName& name : similar)
    out << "similar\t" << name.Category << ": " << name.Name << '\n';
  if (similar.isEmpty()) out << "unknown\n";
  return similar.isEmpty() ? 1 : 0;
}

int Import(TIRDB& database, const QStringList& values, const QString& makeName,
           const QString& modelName, QTextStream& out) {
  if (values.size() != 1) throw EUsage(QStringLiteral("irdb import needs one TSV file"));
  // Nothing is saved unless the file is read, so a model added here for nothing is not kept.
  TModel* model = database.GetOrAddModel(makeName, modelName);
  if (!model)
    throw EUsage(QStringLiteral("irdb import needs a writable database (without --public)"));
  QFile file(values[0]);
  if (!file.open(QIODevice::ReadOnly))
    throw EUsage(QStringLiteral("cannot read %1: %2").arg(Quoted(values[0]), file.errorString()));
  const TNamedCodesImport imported = ImportNamedCodes(*model, file.readAll());
  for (const QString& failure : imported.Failures) out << failure << '\n';
  database.Save();
  out << "added " << imported.Added << " commands to " << model->GetFullName() << ", ";
  if (imported.Skipped > 0) out << "skipped " << imported.Skipped << " already there, ";
  out << imported.Failures.size() << " lines failed\n";
  return imported.Failures.isEmpty() ? 0 : 1;
}

// The models of the database, of one make, or the one named.
QList<const TModel*> ModelsNamed(const TIRDB& database, const QStringList& names) {
  if (names.size() == 2) return {FindModel(*FindMake(database, names[0]), names[1])};
  QList<const TMake*> makes;
  if (!names.isEmpty()) makes << FindMake(database, names[0]);
  for (int i = 0; names.isEmpty() && i < database.GetMakeCount(); ++i) makes << database.GetMake(i);
  QList<const TModel*> models;
  for (const TMake* make : makes)
    for (int i = 0; i < make->GetModelCount(); ++i) models << make->GetModel(i);
  return models;
}

TCodeExportFormat ExportFormat(const std::optional<QString>& name) {
  if (!name) return TCodeExportFormat::Pronto;
  const std::optional<TCodeExportFormat> format = CodeExportFormatNamed(*name);
  if (!format)
    throw EUsage(QStringLiteral("unknown format %1 (pronto, girr or flipper)").arg(Quoted(*name)));
  return *format;
}

// The file goes to standard output; every command it could not hold is said on standard error.
int Export(const TIRDB& database, const QStringList& names, TCodeExportFormat format,
           QTextStream& out) {
  if (names.size() > 2) throw EUsage(QStringLiteral("irdb export takes at most MAKE and MODEL"));
  const TCodeExport exported = ExportCodes(ModelsNamed(database, names), format);
  out << QString::fromUtf8(exported.Bytes);
  out.flush();
  QTextStream errors(stderr);
  for (const QString& unwritten : exported.Unwritten)
    errors << "norva: not written: " << Escaped(unwritten) << '\n';
  return exported.Unwritten.isEmpty() ? 0 : 1;
}

}  // namespace

int RunIRDatabase(TArguments& arguments, QTextStream& out) {
  const bool isPublic = arguments.TakeFlag(QStringLiteral("--public"));
  const std::optional<QString> make = arguments.TakeOption(QStringLiteral("--make"));
  const std::optional<QString> model = arguments.TakeOption(QStringLiteral("--model"));
  const std::optional<QString> format = arguments.TakeOption(QStringLiteral("--format"));
  const QStringList values = arguments.Positional();
  if (values.size() < 2)
    throw EUsage(QStringLiteral("irdb needs FILE and list, name, import or export"));
  const QString& action = values[1];
  const QStringList rest = values.mid(2);
  if (action != QStringLiteral("import") && (make || model))
    throw EUsage(QStringLiteral("--make and --model belong to irdb import"));
  if (action != QStringLiteral("export") && format)
    throw EUsage(QStringLiteral("--format belongs to irdb export"));
  if (action != QStringLiteral("list") && action != QStringLiteral("name") &&
      action != QStringLiteral("import") && action != QStringLiteral("export"))
    throw EUsage(QStringLiteral("unknown irdb action %1 (list, name, import or export)")
                     .arg(Quoted(action)));
  if (action == QStringLiteral("list")) {
    if (rest.size() > 2) throw EUsage(QStringLiteral("irdb list takes at most MAKE and MODEL"));
    List(*OpenDatabase(values[0], isPublic, false), rest, out);
    return 0;
  }
  if (action == QStringLiteral("export")) {
    const TCodeExportFormat exportFormat = ExportFormat(format);
    return Export(*OpenDatabase(values[0], isPublic, false), rest, exportFormat, out);
  }
  if (action == QStringLiteral("import")) {
    if (!make || !model) throw EUsage(QStringLiteral("irdb import needs --make M --model N"));
    return Import(*OpenDatabase(values[0], isPublic, true), rest, *make, *model, out);
  }
  const TIRStreamData code = ReadCode(rest);
  return Name(*OpenDatabase(values[0], isPublic, false), code, out);
}

}  // namespace norva::cli
