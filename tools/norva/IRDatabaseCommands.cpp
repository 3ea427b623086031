// norva irdb FILE [--public] list | name | import: the IR database from the command line.
#include "Subcommands.h"

#include <IR/IR.h>
#include <IR_Database/IR_Database.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Xml/XmlDocument.h>
#include <OrbGlobal/Xml/XmlErrors.h>

#include <QFile>
#include <QFileInfo>

#include <memory>

namespace norva::cli {

namespace {

// A file that exists must read as XML; the database would only report it in a box.
std::unique_ptr<TIRDB> OpenDatabase(const QString& path, bool isPublic) {
  if (QFileInfo::exists(path)) {
    pugi::xml_document document;
    try {
      LoadXMLDocumentFromFile(document, path);
    } catch (const EXMLError& error) {
      throw EUsage(Escaped(error.Message()));
    }
  }
  return std::make_unique<TIRDB>(path, isPublic);
}

TMake* FindMake(const TIRDB& database, const QString& name) {
  TMake* make = database.GetMakeByName(name);
  if (!make) throw EUsage(QStringLiteral("no make %1 in the database").arg(Quoted(name)));
  return make;
}

QString ClassNames(const TCommandObject& command) {
  QStringList names;
  for (const TButtonClass& c : command.GetButtonClasses()) names << c.GetName();
  return names.join(QStringLiteral(", "));
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
  const TModel* model = make->GetModelByName(names[1]);
  if (!model)
    throw EUsage(QStringLiteral("no model %1 in %2").arg(Quoted(names[1]), make->GetName()));
  for (int i = 0; i < model->GetCommandCount(); ++i) {
    const TCommandObject* command = model->GetCommand(i);
    out << command->GetName() << '\t' << CommandElementName(command->GetClass()) << '\t'
        << command->Status() << '\t' << ClassNames(*command) << '\n';
  }
}

int Name(const TIRDB& database, const QStringList& words, QTextStream& out) {
  if (words.isEmpty()) throw EUsage(QStringLiteral("irdb name needs a CODE"));
  TIRStream stream;
  try {
    stream.SetHexCode(words.join(u' '));
  } catch (const ENorvaError& error) {
    throw EUsage(QStringLiteral("CODE: %1").arg(error.Message()));
  }
  if (stream.IsEmpty()) throw EUsage(QStringLiteral("CODE has fewer than five words"));
  if (!database.GetNames(stream)) {
    out << "unknown\n";
    return 1;
  }
  out << stream.GetCategory() << ": " << stream.GetName() << '\n';
  return 0;
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
  out << "added " << imported.Added << " commands to " << model->GetFullName() << ", "
      << imported.Failures.size() << " lines failed\n";
  return imported.Failures.isEmpty() ? 0 : 1;
}

}  // namespace

int RunIRDatabase(TArguments& arguments, QTextStream& out) {
  const bool isPublic = arguments.TakeFlag(QStringLiteral("--public"));
  const std::optional<QString> make = arguments.TakeOption(QStringLiteral("--make"));
  const std::optional<QString> model = arguments.TakeOption(QStringLiteral("--model"));
  const QStringList values = arguments.Positional();
  if (values.size() < 2) throw EUsage(QStringLiteral("irdb needs FILE and list, name or import"));
  const QString& action = values[1];
  const QStringList rest = values.mid(2);
  if (action != QStringLiteral("import") && (make || model))
    throw EUsage(QStringLiteral("--make and --model belong to irdb import"));
  if (action != QStringLiteral("list") && action != QStringLiteral("name") &&
      action != QStringLiteral("import"))
    throw EUsage(
        QStringLiteral("unknown irdb action %1 (list, name or import)").arg(Quoted(action)));
  const std::unique_ptr<TIRDB> database = OpenDatabase(values[0], isPublic);
  if (action == QStringLiteral("list")) {
    if (rest.size() > 2) throw EUsage(QStringLiteral("irdb list takes at most MAKE and MODEL"));
    List(*database, rest, out);
    return 0;
  }
  if (action == QStringLiteral("import")) {
    if (!make || !model) throw EUsage(QStringLiteral("irdb import needs --make M --model N"));
    return Import(*database, rest, *make, *model, out);
  }
  return Name(*database, rest, out);
}

}  // namespace norva::cli
