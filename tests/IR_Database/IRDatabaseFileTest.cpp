// The database's file: what a save writes and keeps, how a file reads back, and the names it goes
// by.

#include "IR/FailureOf.h"
#include "IRDatabaseTest.h"

#include <NorvaGlobal/Exceptions.h>
#include <support/FileSizeLimit.h>
#include <support/QtPrinters.h>

#include <map>

using namespace norva;
using namespace norva::testing;

namespace {

class IRDatabaseFile : public TIRDatabaseTest {
 protected:
  // Acme's TV with two codes, a second make "ACME" with a tuner, and "norva" with a learnt keypad.
  void SaveSample() {
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
  }
};

}  // namespace

// The makes are written in order; read back, makes named alike in another case are one, and in a
// public database a file make named like a built-in one adds its models to it.
TEST_F(IRDatabaseFile, ASavedFileReadsBackWithMakesNamedAlikeAsOne) {
  SaveSample();
  EXPECT_TRUE(FileBytes(Path("IR.xml"))
                  .startsWith("<?xml version='1.0'?><ir_database>\r\n\t<make name=\"Acme\">"));
  const TIRDB read(Path("IR.xml"), false);
  ASSERT_EQ(read.GetMakeCount(), 2);
  const TMake* acme = read.GetMakeByName("acme");
  ASSERT_EQ(acme->GetModelCount(), 2);
  EXPECT_EQ(acme->GetModel(0)->GetCommand(1)->GetCategory(), "Acme - TV 1");
  const TIRDB withBuiltIns(Path("IR.xml"), true);
  ASSERT_EQ(withBuiltIns.GetMakeCount(), 3);
  EXPECT_EQ(withBuiltIns.GetMakeByName("norva")->GetModelByName("learnt keypad")->GetName(),
            "Learnt keypad");
  EXPECT_TRUE(qobject_cast<const TNorvaMake*>(withBuiltIns.GetMakeByName("norva")));
  EXPECT_TRUE(withBuiltIns.IsReadOnly());
}

TEST_F(IRDatabaseFile, AMissingFileLoadsEmptyWithoutAMessage) {
  const TIRDB missing(Path("none.xml"), false);
  EXPECT_EQ(missing.GetMakeCount(), 0);
  EXPECT_TRUE(missing.GetLoadFailure().isEmpty());
  EXPECT_TRUE(services.Messages().isEmpty());
}

// Here the save cannot complete because the file may not grow beyond 64 bytes.
TEST_F(IRDatabaseFile, ASaveThatFailsKeepsThePreviousFileAndStillNeedsSaving) {
  SaveSample();
  TIRDB writable(Path("IR.xml"), false);
  AddStream(writable.GetMake(0)->GetModel(0), "Mute", codes[2]);
  const QByteArray before = FileBytes(Path("IR.xml"));
  const QString failure = FailureOf([&] {
    const TFileSizeLimit limit(64);
    writable.Save();
  });
  EXPECT_TRUE(failure.endsWith(" while saving " + Path("IR.xml"))) << failure.toStdString();
  EXPECT_EQ(FileBytes(Path("IR.xml")), before);
  EXPECT_TRUE(writable.GetNeedsSaving());
}

TEST_F(IRDatabaseFile, AFolderThatIsGoneSavesToTheTemporaryFolderWithAWarning) {
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

// A save that fails halfway leaves both the file and its backup whole.
TEST_F(IRDatabaseFile, EverySaveKeepsThePreviousFileAsItsBackup) {
  const QString backup = TIRDB::BackupPath(Path("IR.xml"));
  EXPECT_EQ(backup, Path("IR.xml") + ".bak");
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
        const TFileSizeLimit limit(second.size() + 1);
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

TEST_F(IRDatabaseFile, TheShortNameDropsTheFolderAndTheFirstExtension) {
  for (const auto& [path, shortName] : std::map<QString, QString>{{"/a/b/IR.xml", "IR"},
                                                                  {"/a/IR", "IR"},
                                                                  {"/a/x.XML.xml", "x.xml"},
                                                                  {"/a/Codes.Xml", "Codes"}})
    EXPECT_EQ(TIRDB(path, false).GetShortName(), shortName) << path.toStdString();
}
