// What may change a database and its file: nothing in a read-only one; a file that exists but
// did not load is reported once and never written over, and saving elsewhere makes the copy a
// writable library of its own; undo and copies never change the file.

#include "IR/FailureOf.h"
#include "IRDatabaseTest.h"

#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <support/QtPrinters.h>

#include <QRegularExpression>

#include <functional>

using namespace norva;
using namespace norva::testing;

namespace {

class LibraryThatDidNotLoad : public TIRDatabaseTest {};

const struct TUnloadable {
  const char* Name;
  QByteArray File;
  // The box's text after "Error loading <path>\r\n\r\n", as a pattern.
  const char* Box;
  // What the one-line failure holds after "Error loading <path>: ".
  const char* Failure;
} Unloadable[] = {
    {"malformed XML", "<ir_database>\n<make name=\"A\"><model name=\"B\"></make>\n</ir_database>",
     ".+\r\nLine: 2, position: \\d+", "(line 2, position "},
    {"an unknown parity",
     "<ir_database><make name=\"A\"><model name=\"B\"><rs232_command name=\"x\">"
     "<parity>parity_purple</parity></rs232_command></model></make></ir_database>",
     "'parity_purple' is not a valid TParity value",
     "'parity_purple' is not a valid TParity value"},
    {"an unknown number of stop bits",
     "<ir_database><make name=\"A\"><model name=\"B\"><rs232_command name=\"x\">"
     "<stopbits>stop_bits_3</stopbits></rs232_command></model></make></ir_database>",
     "'stop_bits_3' is not a valid TNumStopbits value",
     "'stop_bits_3' is not a valid TNumStopbits value"},
};

// Undo starts empty, so that whatever a test finds there was recorded by it.
class TUndoWatched : public TIRDatabaseTest {
 protected:
  void SetUp() override {
    TIRDatabaseTest::SetUp();
    ASSERT_FALSE(UndoDisabled());
    Undo().Empty();
  }
  void TearDown() override { Undo().Empty(); }
  // A library file holding Acme's TV.
  void SaveAcme(const char* name = "IR.xml") {
    TIRDB database(Path(name), false);
    database.GetOrAddModel("Acme", "TV");
    database.Save();
    Undo().Empty();
  }
};

class ReadOnlyDatabase : public TUndoWatched {};
class DatabaseFile : public TUndoWatched {};

}  // namespace

// Read-only is what the file says, whoever runs the program (root may write any file).
TEST_F(ReadOnlyDatabase, AFileMarkedReadOnlyOpensReadOnlyAndNeverNeedsSaving) {
  SaveAcme("IR.xml");
  ASSERT_TRUE(QFile::setPermissions(
      Path("IR.xml"), QFileDevice::ReadOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther));
  TIRDB database(Path("IR.xml"), false);
  EXPECT_TRUE(database.IsReadOnly());
  database.Updated();
  EXPECT_FALSE(database.GetNeedsSaving());
}

// Asked for a model where the library cannot change (a learnt code filed into it, an import),
// the database adds no make or model, needs no saving and records nothing for undo.
TEST_F(ReadOnlyDatabase, GetOrAddModelAddsNothingWhereTheLibraryCannotChange) {
  SaveAcme("IR.xml");
  SaveAcme("locked.xml");
  ASSERT_TRUE(QFile::setPermissions(Path("locked.xml"), QFileDevice::ReadOwner));
  WriteFile(Path("bad.xml"), Unloadable[0].File);
  WriteFile(Path("unknown.xml"), Unloadable[2].File);
  const struct {
    const char* Name;
    const char* File;
    bool Public;
    const char* Make;
    std::function<void(TIRDB&)> Prepare;
  } cases[] = {
      {"a public database, new make", "IR.xml", true, "Sony", {}},
      {"a public database, its file's make", "IR.xml", true, "Acme", {}},
      {"a public database, a built-in make", "IR.xml", true, "Norva", {}},
      {"a built-in make in a writable database", "IR.xml", false, "integra",
       [](TIRDB& database) {
         database.GetChildList(database.GetMake(0))->Add(new TIntegraMake(&database));
       }},
      {"a malformed file", "bad.xml", false, "A", {}},
      {"a file holding a value no command can hold", "unknown.xml", false, "A", {}},
      {"a file marked read-only, new make", "locked.xml", false, "Sony", {}},
      {"a file marked read-only, its make", "locked.xml", false, "Acme", {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Name);
    TIRDB database(Path(c.File), c.Public);
    if (c.Prepare) c.Prepare(database);
    const TMake* make = database.GetMakeByName(c.Make);
    const int makes = database.GetMakeCount();
    const int models = make ? make->GetModelCount() : 0;
    const bool needsSaving = database.GetNeedsSaving();
    Undo().Empty();
    for (const char* model : {"TV", "Radio"})
      EXPECT_EQ(database.GetOrAddModel(c.Make, model), nullptr) << model;
    EXPECT_EQ(database.GetMakeCount(), makes);
    EXPECT_EQ(database.GetMakeByName(c.Make), make);
    EXPECT_EQ(make ? make->GetModelCount() : 0, models);
    EXPECT_EQ(database.GetNeedsSaving(), needsSaving);
    MaintainUndo();
    EXPECT_EQ(Undo().Count(), 0);
  }
}

// Opening, public or not, and saving under another name record nothing for undo.
TEST_F(DatabaseFile, OpeningAndSaveAsRecordNothingForUndo) {
  SaveAcme();
  for (const bool isPublic : {false, true}) {
    SCOPED_TRACE(isPublic ? "public" : "writable");
    TIRDB opened(Path("IR.xml"), isPublic);
    EXPECT_EQ(Undo().Count(), 0);
    Undo().Revert();
    EXPECT_EQ(opened.GetFilename(), Path("IR.xml"));
  }
  TIRDB database(Path("IR.xml"), false);
  database.SaveAs(Path("moved.xml"));
  EXPECT_EQ(Undo().Count(), 0);
  EXPECT_EQ(database.GetFilename(), Path("moved.xml"));
}

TEST_F(DatabaseFile, ACopyKeepsItsOwnFile) {
  SaveAcme();
  const TIRDB original(Path("IR.xml"), false);
  const QByteArray saved = FileBytes(Path("IR.xml"));
  TIRDB copy(Path("copy.xml"), false);
  original.AssignTo(&copy);
  EXPECT_EQ(copy.GetFilename(), Path("copy.xml"));
  ASSERT_NE(copy.GetMakeByName("Acme"), nullptr);
  copy.GetMakeByName("Acme")->AddNewModel()->SetName("TV");
  copy.Save();
  EXPECT_EQ(FileBytes(Path("IR.xml")), saved);
  EXPECT_TRUE(QFile::exists(Path("copy.xml")));
}

// Without a handler that takes it, the failure is shown in one "Error" box; a handler takes it
// instead of the box, and the failure stays as one line. Nothing of the file is loaded.
TEST_F(LibraryThatDidNotLoad, IsReportedInOneBoxOrToTheHandlerAndLoadsNothingOfTheFile) {
  const QString loading = "Error loading " + Path("bad.xml");
  for (const TUnloadable& c : Unloadable) {
    SCOPED_TRACE(c.Name);
    WriteFile(Path("bad.xml"), c.File);
    for (const bool isPublic : {false, true}) {
      services.ClearMessages();
      const TIRDB database(Path("bad.xml"), isPublic);
      EXPECT_EQ(database.GetMakeCount(), isPublic ? 2 : 0);  // the built-in makes only
      ASSERT_EQ(services.Messages().size(), 1);
      EXPECT_EQ(services.Messages()[0].Caption, "Error");
      const QString box = services.Messages()[0].Text;
      const QRegularExpression expected(QRegularExpression::anchoredPattern(
          QRegularExpression::escape(loading + "\r\n\r\n") + c.Box));
      EXPECT_TRUE(expected.match(box).hasMatch()) << box.toStdString();
    }
    services.ClearMessages();
    QStringList reported;
    TIRDB database(Path("bad.xml"), false,
                   [&](TIRDB& sender, const QString& errorMsg, bool& handled) {
                     EXPECT_EQ(&sender, &database);
                     reported << errorMsg;
                     handled = true;
                   });
    ASSERT_EQ(reported.size(), 1);
    EXPECT_TRUE(reported[0].startsWith(loading + "\r\n\r\n"));
    EXPECT_TRUE(services.Messages().isEmpty());
    const QString failure = database.GetLoadFailure();
    EXPECT_TRUE(failure.startsWith(loading + ": ")) << failure.toStdString();
    EXPECT_TRUE(failure.contains(c.Failure)) << failure.toStdString();
    EXPECT_FALSE(failure.contains(u'\r') || failure.contains(u'\n')) << failure.toStdString();
    EXPECT_TRUE(database.IsReadOnly());
  }
}

// It is never written over under any spelling of its name; saved elsewhere, the copy becomes a
// writable library of its own.
TEST_F(LibraryThatDidNotLoad, IsNeverWrittenOverButSavedElsewhereBecomesALibraryOfItsOwn) {
  for (const TUnloadable& c : Unloadable) {
    SCOPED_TRACE(c.Name);
    WriteFile(Path("bad.xml"), c.File);
    TIRDB database(Path("bad.xml"), false);
    const QString failure = database.GetLoadFailure();
    ASSERT_FALSE(failure.isEmpty());
    EXPECT_TRUE(FailureOf([&] { database.Save(); }).contains(failure));
    EXPECT_EQ(FileBytes(Path("bad.xml")), c.File);
    EXPECT_THROW(database.SaveAs(folder.path() + "/./bad.xml"), ENorvaError);
    EXPECT_EQ(FileBytes(Path("bad.xml")), c.File);
    database.SaveAs(Path("rescued.xml"));
    EXPECT_EQ(database.GetFilename(), Path("rescued.xml"));
    EXPECT_TRUE(database.GetLoadFailure().isEmpty());
    EXPECT_FALSE(database.IsReadOnly());
    EXPECT_NE(database.GetOrAddModel("Acme", "TV"), nullptr);
    EXPECT_EQ(FileBytes(Path("bad.xml")), c.File);
  }
}

// A handler set after a public database was opened hears of the next load; not taking the failure
// leaves it to the box. Saved elsewhere, the public database stays read-only.
TEST_F(LibraryThatDidNotLoad, APublicOnesLaterHandlerHearsOfTheNextLoadAndItStaysReadOnly) {
  WriteFile(Path("bad.xml"), Unloadable[0].File);
  TIRDB database(Path("bad.xml"), true);
  ASSERT_EQ(services.Messages().size(), 1);
  int heard = 0;
  database.SetOnError([&](TIRDB&, const QString&, bool&) { ++heard; });
  database.Load();
  EXPECT_EQ(heard, 1);
  EXPECT_EQ(services.Messages().size(), 2);
  database.SaveAs(Path("public.xml"));
  EXPECT_TRUE(database.GetLoadFailure().isEmpty());
  EXPECT_TRUE(database.IsReadOnly());
}
