// The IR database as the application uses it: the built-in makes' shape, files written and read
// back (merging makes, keeping the old file and a backup when a save fails), bad files reported
// and never written over, the file kept out of undo and copies, and received codes named from the
// index exactly as a walk through the database names them.

#include <IR/IR.h>
#include <IR_Database/IR_Database.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Model/OrbGuid.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <Testing/RecordingUIServices.h>
#include <support/FileSizeLimit.h>
#include <support/QtPrinters.h>

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QSet>
#include <QTemporaryDir>

#include <functional>

#include <gtest/gtest.h>

using namespace norva;

namespace {

QStringList CorpusCodes() {
  QFile file(QStringLiteral(NORVA_SOURCE_DIR "/tests/data/ir/pronto-codes.tsv"));
  QStringList codes;
  if (file.open(QIODevice::ReadOnly))
    for (const QByteArray& line : file.readAll().split('\n'))
      if (!line.isEmpty()) codes << QString::fromUtf8(line).section(u'\t', 1);
  return codes;
}

TIRStream* AddStream(TModel* model, const QString& name, const QString& code) {
  auto* stream = static_cast<TIRStream*>(model->AddNewCommandObject(&TIRStream::staticMetaObject));
  stream->SetName(name);
  stream->SetHexCode(code);
  return stream;
}

// Every command below `group`, depth first.
void CollectCommands(const TNorvaGroup& group, QList<const TCommandObject*>& into) {
  for (int i = 0; i < group.GetChildObjectCount(); ++i)
    CollectCommands(*group.GetChildObject(i), into);
  for (int i = 0; i < group.GetCommandCount(); ++i) into << group.GetCommand(i);
}

QList<const TCommandObject*> BuiltInCommands(const TIRDB& database) {
  QList<const TCommandObject*> commands;
  for (int m = 0; m < database.GetMakeCount(); ++m) {
    if (const auto* make = qobject_cast<const TNorvaIntegraMake*>(database.GetMake(m)))
      for (int g = 0; g < make->GetNorvaCommandGroupCount(); ++g)
        CollectCommands(*make->GetNorvaCommandGroup(g), commands);
  }
  return commands;
}

QByteArray FileBytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class IRDatabase : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(folder.isValid()); }
  QString Path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }

  QTemporaryDir folder;
  TRecordingUIServices services;
  TScopedUIServices scoped{services};
};

}  // namespace

TEST_F(IRDatabase, BuiltInMakesHoldEveryUsefulNativeCodeInTheirOrder) {
  const TIRDB database(Path("public.xml"), true);
  ASSERT_EQ(database.GetMakeCount(), 2);
  const auto* norvaMake = qobject_cast<const TNorvaMake*>(database.GetMake(0));
  const auto* integra = qobject_cast<const TIntegraMake*>(database.GetMake(1));
  ASSERT_TRUE(norvaMake && integra);
  EXPECT_EQ(norvaMake->GetName(), "NORVA");
  EXPECT_EQ(integra->GetName(), "INTEGRA");
  ASSERT_EQ(norvaMake->GetNorvaCommandGroupCount(), 3);
  const TNorvaGroup* amplifier = norvaMake->GetNorvaCommandGroup(0);
  QStringList children;
  for (int i = 0; i < amplifier->GetChildObjectCount(); ++i)
    children << amplifier->GetChildObject(i)->GetName();
  EXPECT_EQ(children, (QStringList{"All zones", "Amp zones 0..31", "Preamp zones",
                                   "Amp zones 32..63", "Amp zones 64..95"}));
  EXPECT_EQ(norvaMake->GetNorvaCommandGroup(1)->GetChildObjectCount(), 96);
  const TNorvaGroup* relays = norvaMake->GetNorvaCommandGroup(2);
  ASSERT_EQ(relays->GetChildObjectCount(), 16);
  EXPECT_EQ(relays->GetChildObject(15)->GetName(), "Zone 15");
  EXPECT_EQ(relays->GetChildObject(15)->GetCommandCount(), 28);

  // All zones hold the commands useful for zone -1 only: no volume, but presets and alarms.
  const TNorvaGroup* allZones = amplifier->GetChildObject(0);
  int useful = 0;
  for (int c = nvStandbyCmd; c <= nvAlarmSleep; ++c)
    useful += NorvaFunctionUseful(static_cast<TNorvaCommand>(c), -1, AmpCommand) ? 1 : 0;
  EXPECT_EQ(allZones->GetCommandCount(), useful);
  EXPECT_EQ(allZones->GetCommand(0)->GetName(), "Standby");
  EXPECT_TRUE(allZones->GetCommand(0)->IsReadOnly());
  EXPECT_EQ(integra->GetNorvaCommandGroup(0)->GetChildObject(2)->GetChildObject(31)->GetName(),
            "Zone 31");
  EXPECT_FALSE(database.GetNeedsSaving());

  // Keypads refer to commands by GUID: every built-in code has its own, the same in every run.
  const QList<const TCommandObject*> commands = BuiltInCommands(database);
  QSet<QString> guids;
  for (const TCommandObject* command : commands) guids.insert(command->GetGUIDString());
  EXPECT_EQ(guids.size(), commands.size());
  EXPECT_FALSE(guids.contains(GUIDToString(QUuid())));
  const TIRDB other(Path("other.xml"), true);
  const QList<const TCommandObject*> again = BuiltInCommands(other);
  ASSERT_EQ(again.size(), commands.size());
  for (qsizetype i = 0; i < commands.size(); i += 97)
    EXPECT_EQ(again[i]->GetGUIDString(), commands[i]->GetGUIDString());
}

TEST_F(IRDatabase, FilesReadBackMergingMakesAndKeepingThePreviousFileWhenASaveFails) {
  const QStringList codes = CorpusCodes();
  ASSERT_GT(codes.size(), 100);
  {
    TIRDB database(Path("IR.xml"), false);
    TMake* make = database.AddNewMake();
    make->SetName("Acme");
    TModel* tv = make->AddNewModel();
    tv->SetName("TV 1");
    AddStream(tv, "Power", codes[0]);
    AddStream(tv, "Vol+", codes[1]);
    TMake* other = database.AddNewMake();
    other->SetName("ACME");
    other->AddNewModel()->SetName("Tuner");
    TMake* norvaMake = database.AddNewMake();
    norvaMake->SetName("norva");
    norvaMake->AddNewModel()->SetName("Learnt keypad");
    EXPECT_TRUE(database.GetNeedsSaving());
    database.Save();
    EXPECT_FALSE(database.GetNeedsSaving());
    EXPECT_EQ(database.GetShortName(), "IR");
  }
  EXPECT_TRUE(FileBytes(Path("IR.xml"))
                  .startsWith("<?xml version='1.0'?><ir_database>\r\n\t<make name=\"Acme\">"));

  // Makes named alike in another case become one; a file make named like a built-in one adds to it.
  TIRDB read(Path("IR.xml"), true);
  ASSERT_EQ(read.GetMakeCount(), 3);
  EXPECT_EQ(read.GetMakeByName("norva")->GetModelByName("learnt keypad")->GetName(),
            "Learnt keypad");
  const TMake* acme = read.GetMakeByName("acme");
  ASSERT_EQ(acme->GetModelCount(), 2);
  EXPECT_EQ(acme->GetModel(0)->GetCommand(1)->GetCategory(), "Acme - TV 1");
  EXPECT_TRUE(read.IsReadOnly());

  // A save that cannot complete (here: the file may not grow beyond 64 bytes) keeps the old file.
  TIRDB writable(Path("IR.xml"), false);
  AddStream(writable.GetMake(0)->GetModel(0), "Mute", codes[2]);
  const QByteArray before = FileBytes(Path("IR.xml"));
  try {
    const norva::testing::TFileSizeLimit limit(64);
    writable.Save();
    ADD_FAILURE() << "the save did not fail";
  } catch (const ENorvaError& error) {
    EXPECT_TRUE(error.Message().endsWith(" while saving " + Path("IR.xml"))) << error.what();
  }
  EXPECT_EQ(FileBytes(Path("IR.xml")), before);
  EXPECT_TRUE(writable.GetNeedsSaving());

  // A folder that is gone: saved to the temporary folder instead, with a warning.
  TIRDB moved(folder.filePath("gone/IR.xml"), false);
  moved.AddNewMake()->SetName("Acme");
  moved.Save();
  ASSERT_EQ(services.Messages().size(), 1);
  EXPECT_EQ(services.Messages()[0].Caption, "Saving database");
  EXPECT_TRUE(services.Messages()[0].Text.startsWith(
      "Cannot save " + folder.filePath("gone/IR.xml") + ".\r\n\r\nSaving to "));
  EXPECT_TRUE(QFile::exists(moved.GetFilename()));
  QFile::remove(moved.GetFilename());
}

TEST_F(IRDatabase, ABadFileIsReportedOnceAndLoadsNothing) {
  QFile file(Path("bad.xml"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("<ir_database>\n<make name=\"A\"><model name=\"B\"></make>\n</ir_database>");
  file.close();
  const TIRDB database(Path("bad.xml"), true);
  EXPECT_EQ(database.GetMakeCount(), 2);  // the built-in makes only
  ASSERT_EQ(services.Messages().size(), 1);
  EXPECT_EQ(services.Messages()[0].Caption, "Error");
  EXPECT_TRUE(
      services.Messages()[0].Text.startsWith("Error loading " + Path("bad.xml") + "\r\n\r\n"));
  EXPECT_TRUE(services.Messages()[0].Text.contains("\r\nLine: 2, position: "))
      << services.Messages()[0].Text.toStdString();

  ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
  file.write(
      "<ir_database><make name=\"A\"><model name=\"B\"><rs232_command name=\"x\">"
      "<parity>parity_purple</parity></rs232_command></model></make></ir_database>");
  file.close();
  const TIRDB unreadable(Path("bad.xml"), false);
  EXPECT_EQ(unreadable.GetMakeCount(), 0);
  ASSERT_EQ(services.Messages().size(), 2);
  EXPECT_EQ(
      services.Messages()[1].Text,
      "Error loading " + Path("bad.xml") + "\r\n\r\n'parity_purple' is not a valid TParity value");

  const TIRDB missing(Path("none.xml"), false);
  EXPECT_EQ(missing.GetMakeCount(), 0);
  EXPECT_EQ(services.Messages().size(), 2);
  for (const auto& [path, shortName] : std::map<QString, QString>{{"/a/b/IR.xml", "IR"},
                                                                  {"/a/IR", "IR"},
                                                                  {"/a/x.XML.xml", "x.xml"},
                                                                  {"/a/Codes.Xml", "Codes"}})
    EXPECT_EQ(TIRDB(path, false).GetShortName(), shortName) << path.toStdString();
}

// Names a stream both ways and expects the same answer.
void ExpectSameNames(const TIRDB& database, const TIRStreamData& code, int round) {
  TIRStream byIndex;
  TIRStream byWalk;
  byIndex.SetData(code);
  byWalk.SetData(code);
  const bool indexed = database.GetNames(byIndex);
  ASSERT_EQ(indexed, database.GetNamesByWalking(byWalk)) << round;
  EXPECT_EQ(byIndex.GetName(), byWalk.GetName()) << round;
  EXPECT_EQ(byIndex.GetCategory(), byWalk.GetCategory()) << round;
}

TIRStreamData CodeData(const QString& code) {
  TIRStream stream;
  stream.SetHexCode(code);
  return stream.Data();
}

void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
  file.write(bytes);
}

// A file that exists but does not load is kept as it is: the database is read-only, the failure
// reaches the error handler (no box then) and stays readable on one line, a save refuses to write
// over it, and saving elsewhere makes the copy a writable library of its own.
TEST_F(IRDatabase, ALibraryThatDidNotLoadIsNeverWrittenOver) {
  const struct {
    const char* Name;
    QByteArray File;
    QString Failure;  // after "Error loading <path>: "
  } cases[] = {
      {"malformed XML", "<ir_database>\n<make name=\"A\"><model name=\"B\"></make>\n</ir_database>",
       "(line 2, position "},
      {"a value no command can hold",
       "<ir_database><make name=\"A\"><model name=\"B\"><rs232_command name=\"x\">"
       "<stopbits>stop_bits_3</stopbits></rs232_command></model></make></ir_database>",
       "'stop_bits_3' is not a valid TNumStopbits value"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Name);
    WriteFile(Path("bad.xml"), c.File);
    services.ClearMessages();
    QStringList reported;
    TIRDB database(Path("bad.xml"), false,
                   [&](TIRDB& sender, const QString& errorMsg, bool& handled) {
                     EXPECT_EQ(&sender, &database);
                     reported << errorMsg;
                     handled = true;
                   });
    ASSERT_EQ(reported.size(), 1);
    EXPECT_TRUE(reported[0].startsWith("Error loading " + Path("bad.xml") + "\r\n\r\n"));
    EXPECT_TRUE(services.Messages().isEmpty());
    const QString failure = database.GetLoadFailure();
    EXPECT_TRUE(failure.startsWith("Error loading " + Path("bad.xml") + ": "))
        << failure.toStdString();
    EXPECT_TRUE(failure.contains(c.Failure)) << failure.toStdString();
    EXPECT_FALSE(failure.contains(u'\r') || failure.contains(u'\n')) << failure.toStdString();
    EXPECT_TRUE(database.IsReadOnly());
    EXPECT_EQ(database.GetOrAddModel("Acme", "TV"), nullptr);

    try {
      database.Save();
      ADD_FAILURE() << "a library that did not load was saved over";
    } catch (const ENorvaError& error) {
      EXPECT_TRUE(error.Message().contains(failure)) << error.what();
    }
    EXPECT_EQ(FileBytes(Path("bad.xml")), c.File);
    // Not under its own name either, however it is spelled.
    EXPECT_THROW(database.SaveAs(folder.path() + "/./bad.xml"), ENorvaError);
    EXPECT_EQ(FileBytes(Path("bad.xml")), c.File);

    database.SaveAs(Path("rescued.xml"));
    EXPECT_EQ(database.GetFilename(), Path("rescued.xml"));
    EXPECT_TRUE(database.GetLoadFailure().isEmpty());
    EXPECT_FALSE(database.IsReadOnly());
    EXPECT_NE(database.GetOrAddModel("Acme", "TV"), nullptr);
    EXPECT_EQ(FileBytes(Path("bad.xml")), c.File);
  }

  // Without a handler that takes it, the failure is shown in the "Error" box; set later, the
  // handler hears of the next load.
  services.ClearMessages();
  TIRDB unhandled(Path("bad.xml"), true);
  ASSERT_EQ(services.Messages().size(), 1);
  EXPECT_EQ(services.Messages()[0].Caption, "Error");
  int heard = 0;
  unhandled.SetOnError([&](TIRDB&, const QString&, bool&) { ++heard; });
  unhandled.Load();
  EXPECT_EQ(heard, 1);
  EXPECT_EQ(services.Messages().size(), 2);
  // A public database saved elsewhere stays read-only.
  unhandled.SaveAs(Path("public.xml"));
  EXPECT_TRUE(unhandled.GetLoadFailure().isEmpty());
  EXPECT_TRUE(unhandled.IsReadOnly());
}

// Opening, copying and saving elsewhere leave no undo step: undoing right after them changes
// nothing, and a copy never takes the original's file.
TEST_F(IRDatabase, ItsFileChangesOnlyBySaveAsAndNeverByUndoOrCopy) {
  ASSERT_FALSE(UndoDisabled());
  Undo().Empty();
  TIRDB original(Path("IR.xml"), false);
  original.AddNewMake()->SetName("Acme");
  original.Save();
  const QByteArray saved = FileBytes(Path("IR.xml"));
  Undo().Empty();

  for (const bool isPublic : {false, true}) {
    TIRDB opened(Path("IR.xml"), isPublic);
    EXPECT_EQ(Undo().Count(), 0) << isPublic;
    Undo().Revert();
    EXPECT_EQ(opened.GetFilename(), Path("IR.xml")) << isPublic;
  }

  TIRDB copy(Path("copy.xml"), false);
  original.AssignTo(&copy);
  EXPECT_EQ(copy.GetFilename(), Path("copy.xml"));
  ASSERT_NE(copy.GetMakeByName("Acme"), nullptr);
  copy.GetMakeByName("Acme")->AddNewModel()->SetName("TV");
  copy.Save();
  EXPECT_EQ(FileBytes(Path("IR.xml")), saved);
  EXPECT_TRUE(QFile::exists(Path("copy.xml")));

  Undo().Empty();
  copy.SaveAs(Path("moved.xml"));
  EXPECT_EQ(Undo().Count(), 0);
  EXPECT_EQ(copy.GetFilename(), Path("moved.xml"));
  Undo().Empty();
}

// Read-only is what the file says, whoever runs the program (root may write any file).
TEST_F(IRDatabase, AFileMarkedReadOnlyOpensReadOnly) {
  {
    TIRDB database(Path("IR.xml"), false);
    database.AddNewMake()->SetName("Acme");
    database.Save();
  }
  ASSERT_TRUE(QFile::setPermissions(
      Path("IR.xml"), QFileDevice::ReadOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther));
  TIRDB database(Path("IR.xml"), false);
  EXPECT_TRUE(database.IsReadOnly());
  EXPECT_EQ(database.GetOrAddModel("Acme", "TV"), nullptr);
  database.Updated();
  EXPECT_FALSE(database.GetNeedsSaving());
}

// Each save keeps the file it replaces as "<file>.bak"; a save that fails halfway leaves both the
// file and its backup whole.
TEST_F(IRDatabase, EverySaveKeepsThePreviousFileAsItsBackup) {
  const QStringList codes = CorpusCodes();
  ASSERT_GT(codes.size(), 10);
  const QString backup = Path("IR.xml") + ".bak";
  TIRDB database(Path("IR.xml"), false);
  TModel* model = database.GetOrAddModel("Acme", "TV");
  AddStream(model, "Power", codes[0]);
  database.Save();
  EXPECT_FALSE(QFile::exists(backup));  // nothing was there before
  const QByteArray first = FileBytes(Path("IR.xml"));

  AddStream(model, "Vol+", codes[1]);
  database.Save();
  EXPECT_EQ(FileBytes(backup), first);
  const QByteArray second = FileBytes(Path("IR.xml"));
  EXPECT_NE(second, first);

  // Room for the backup of the current file, not for the larger new one.
  for (int i = 2; i < 10; ++i) AddStream(model, QStringLiteral("Code %1").arg(i), codes[i]);
  EXPECT_THROW(
      {
        const norva::testing::TFileSizeLimit limit(second.size() + 1);
        database.Save();
      },
      ENorvaError);
  EXPECT_EQ(FileBytes(Path("IR.xml")), second);
  const QByteArray kept = FileBytes(backup);
  EXPECT_TRUE(kept == first || kept == second);
  const TIRDB fromBackup(backup, false);
  EXPECT_TRUE(fromBackup.GetLoadFailure().isEmpty());
  EXPECT_EQ(fromBackup.GetMakeCount(), 1);
}

// Changes that record nothing for undo, and a stream's pairs cleared, still reach the index.
TEST_F(IRDatabase, EveryChangeBelowTheDatabaseReachesTheIndex) {
  const QStringList codes = CorpusCodes();
  ASSERT_GT(codes.size(), 2);
  const struct {
    const char* Name;
    bool UndoOff;
    std::function<void(TIRDB&)> Change;
  } cases[] = {
      {"command deleted", true,
       [](TIRDB& database) { database.GetMake(0)->GetModel(0)->GetCommand(0)->Delete(); }},
      {"model cleared", true, [](TIRDB& database) { database.GetMake(0)->GetModel(0)->Clear(); }},
      {"model deleted", true, [](TIRDB& database) { database.GetMake(0)->GetModel(0)->Delete(); }},
      {"make cleared", true, [](TIRDB& database) { database.GetMake(0)->Clear(); }},
      {"make deleted", true, [](TIRDB& database) { database.GetMake(0)->Delete(); }},
      {"pairs cleared", false,
       [](TIRDB& database) {
         static_cast<TIRStream*>(database.GetMake(0)->GetModel(0)->GetCommand(0))->ClearIDPairs();
       }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Name);
    TIRDB database(Path("index.xml"), false);
    AddStream(database.GetOrAddModel("Acme", "TV"), "Power", codes[0]);
    AddStream(database.GetOrAddModel("Acme", "TV"), "Vol+", codes[1]);
    ExpectSameNames(database, CodeData(codes[0]), 0);  // the index is built
    if (c.UndoOff) DisableUndo();
    c.Change(database);
    if (c.UndoOff) EnableUndo();
    ExpectSameNames(database, CodeData(codes[0]), 1);
    ExpectSameNames(database, CodeData(codes[1]), 2);
  }
  Undo().Empty();
}

// Random edits of a database, each followed by naming random codes both ways; then the same
// database opened as a public one, where the native codes take part.
TEST_F(IRDatabase, TheIndexNamesCodesExactlyAsTheWalkDoesThroughRandomEdits) {
  DisableUndo();
  const QStringList codes = CorpusCodes();
  QRandomGenerator random(1123);
  TIRDB database(Path("edited.xml"), false);
  database.AddNewMake()->SetName("Make 0");
  const auto randomModel = [&]() -> TModel* {
    TMake* make = database.GetMake(static_cast<int>(random.bounded(database.GetMakeCount())));
    if (make->GetModelCount() == 0) make->AddNewModel()->SetName("Model");
    return make->GetModel(static_cast<int>(random.bounded(make->GetModelCount())));
  };
  const auto randomCode = [&] { return codes[random.bounded(codes.size())]; };
  for (int round = 0; round < 400; ++round) {
    TModel* model = randomModel();
    switch (random.bounded(6)) {
      case 0: database.AddNewMake()->SetName(QStringLiteral("Make %1").arg(round)); break;
      case 1:
        static_cast<TMake*>(model->GetOwner())
            ->AddNewModel()
            ->SetName(QStringLiteral("New %1").arg(round));
        break;
      case 2: AddStream(model, QStringLiteral("Code %1").arg(round), randomCode()); break;
      case 3:
        if (model->GetCommandCount() > 0) model->GetCommand(0)->Delete();
        break;
      case 4:
        if (model->GetCommandCount() > 1) model->GetCommand(model->GetCommandCount() - 1)->Move(0);
        break;
      default:
        model->SetName(QStringLiteral("Model %1").arg(round));
        if (model->GetCommandCount() > 0)
          static_cast<TIRStream*>(model->GetCommand(0))->SetHexCode(randomCode());
        break;
    }
    for (int q = 0; q < 3; ++q) ExpectSameNames(database, CodeData(randomCode()), round);
  }
  database.Save();

  const TIRDB publicDatabase(Path("edited.xml"), true);
  TNorvaIRStream native;
  int named = 0;
  for (int round = 0; round < 150; ++round) {
    native.SetNorva(static_cast<int>(random.bounded(97)) - 1,
                    static_cast<TNorvaCommand>(random.bounded(90)),
                    static_cast<TNorvaCommandType>(random.bounded(6)));
    const TIRStreamData code = round % 2 == 0 ? native.Data() : CodeData(randomCode());
    ExpectSameNames(publicDatabase, code, round);
    TIRStream stream;
    stream.SetData(code);
    named += publicDatabase.GetNames(stream) ? 1 : 0;
  }
  EXPECT_GT(named, 50);  // both answers came up often
  EnableUndo();
}
