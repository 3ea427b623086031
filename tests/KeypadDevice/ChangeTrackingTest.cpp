// The flags of a keypad document through edits, saves, auto-saves, undo and redo, with real files.

#include "KeypadFixture.h"

#include <cstring>

namespace norva {
namespace {

using ChangeTracking = KeypadFixture;

TEST_F(ChangeTracking, ASaveWritesAFileThatReadsBackTheSameAndClearsBothFlags) {
  Bind(mKeypad);
  mKeypad.SetName(Path("Lounge.keycfg"));
  ASSERT_TRUE(mKeypad.FileSave());
  ExpectFlags(mKeypad, false, false);
  EXPECT_EQ(mServices.BusyDepth(), 0);
  EXPECT_TRUE(
      FileBytes(Path("Lounge.keycfg")).startsWith("<?xml version='1.0'?><keypad_configuration>"));

  norva::TWallKeypad reread;
  ASSERT_TRUE(reread.LoadFile(Path("Lounge.keycfg")));
  ExpectSameContents(reread, mKeypad);
  EXPECT_EQ(reread.GetName(), Path("Lounge.keycfg"));
}

// The flags say whether the document differs from its file and from its last auto-save; the
// changes an undo or redo makes mark nothing of their own.
TEST_F(ChangeTracking, TheFlagsFollowEditsSavesAutoSavesUndoAndRedo) {
  const struct {
    // On a document named Lounge.keycfg: b bind, s save, a auto-save, e rename button 2, u undo,
    // r redo; "" is a new document, unnamed.
    const char* Steps;
    bool NeedsSaving;
    bool NeedsAutoSaving;
    const char* Button2;
  } cases[] = {
      {"", false, false, ""},           {"b", true, true, "Radio"},
      {"bse", true, true, "Tuner"},     {"bseu", false, false, "Radio"},
      {"bseur", true, true, "Tuner"},   {"ba", true, false, "Radio"},
      {"bseaeu", true, false, "Tuner"}, {"bseaeuu", false, false, "Radio"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Steps);
    Undo().Empty();
    Redo().Empty();
    QFile::remove(Path("Lounge.keycfg"));
    norva::TWallKeypad keypad;
    if (*c.Steps) keypad.SetName(Path("Lounge.keycfg"));
    const char* names[] = {"Tuner", "Am"};
    int renames = 0;
    for (const char step : std::string_view(c.Steps)) {
      if (step == 'b') Bind(keypad);
      if (step == 's' && !keypad.FileSave()) ADD_FAILURE() << "not saved";
      if (step == 'a' && !keypad.FileAutoSave()) ADD_FAILURE() << "not auto-saved";
      if (step == 'e') keypad.Button(2).SetCaption(QString::fromLatin1(names[renames++]));
      if (step == 'u') Undo().Revert();
      if (step == 'r') Redo().Revert();
      if (std::strchr("eur", step)) MaintainUndo();
    }
    ExpectFlags(keypad, c.NeedsSaving, c.NeedsAutoSaving);
    EXPECT_EQ(keypad.Button(2).GetCaption(), c.Button2);
  }
}

// An auto-save leaves the document's name and file alone; auto-saves within one clock second
// share a file holding the later state, each second gets one of its own.
TEST_F(ChangeTracking, AutoSavesGoToAFileOfTheirOwnPerClockSecond) {
  mKeypad.SetName(Path("Lounge.keycfg"));
  Bind(mKeypad);
  ASSERT_TRUE(mKeypad.FileAutoSave());
  EXPECT_EQ(mKeypad.GetName(), Path("Lounge.keycfg"));
  EXPECT_FALSE(QFile::exists(Path("Lounge.keycfg")));
  mKeypad.Button(0).SetCaption("Standby");
  mClock.AdvanceMilliseconds(900);
  ASSERT_TRUE(mKeypad.FileAutoSave());
  EXPECT_EQ(FilesIn(Path("autosave")), QStringList{"Lounge_142530.keycfg"});
  norva::TWallKeypad autoSaved;
  ASSERT_TRUE(autoSaved.LoadFile(Path("autosave/Lounge_142530.keycfg")));
  EXPECT_EQ(autoSaved.Button(0).GetCaption(), "Standby");

  mClock.AdvanceMilliseconds(100);
  ASSERT_TRUE(mKeypad.FileAutoSave());
  norva::TWallKeypad unnamed;
  Bind(unnamed);
  ASSERT_TRUE(unnamed.FileAutoSave());
  EXPECT_EQ(FilesIn(Path("autosave")),
            (QStringList{"Lounge_142530.keycfg", "Lounge_142531.keycfg", "unnamed_142531.keycfg"}));
  EXPECT_FALSE(unnamed.HasName());
  ExpectFlags(unnamed, true, false);
}

TEST_F(ChangeTracking, AutoSaveNamesFollowTheLastDotOfTheWholePath) {
  const struct {
    const char* Folder;
    const char* Name;
    QTime Time;
    const char* Expected;
  } cases[] = {
      {"/auto", "", QTime(14, 25, 30), "/auto/unnamed_142530.keycfg"},
      {"/auto", "", QTime(0, 0, 5), "/auto/unnamed_000005.keycfg"},
      {"/auto", "/docs/Lounge.keycfg", QTime(14, 25, 30), "/auto/Lounge_142530.keycfg"},
      {"/auto", "/docs/My.Lounge.keycfg", QTime(14, 25, 30), "/auto/My.Lounge_142530.keycfg"},
      {"/auto", "Lounge.keycfg", QTime(14, 25, 30), "/auto/Lounge_142530.keycfg"},
      // No extension: the time lands in a dotted folder's name, or nothing is saved.
      {"/home/a.b/auto", "/docs/Lounge", QTime(14, 25, 30), "/home/a_142530.b/auto/Lounge"},
      {"/auto", "/docs.old/Lounge", QTime(14, 25, 30), ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(AutoSavePath(c.Folder, c.Name, c.Time), QString::fromUtf8(c.Expected))
        << c.Name << " at " << c.Time.toString().toStdString();
  }
}

// With no dot in its path an auto-save writes nothing; one that would stamp a dotted folder fails
// naming that path. Both keep the flags.
TEST_F(ChangeTracking, AnAutoSaveWithoutAnExtensionWritesNothingOrFailsNamingThePath) {
  ASSERT_FALSE(mFolder.path().contains(u'.')) << "needs a temporary folder without dots";
  mKeypad.SetName(Path("Lounge"));
  EXPECT_FALSE(mKeypad.FileAutoSave());
  ExpectFlags(mKeypad, true, true);

  SetAutoSaveDir(Path("auto.saves"));
  try {
    mKeypad.FileAutoSave();
    ADD_FAILURE() << "the auto-save into a missing folder did not fail";
  } catch (const ENorvaError& error) {
    EXPECT_TRUE(error.Message().endsWith(" while saving " + Path("auto_142530.saves/Lounge")))
        << error.what();
  }
  ExpectFlags(mKeypad, true, true);
  EXPECT_EQ(mServices.BusyDepth(), 0);
}

TEST_F(ChangeTracking, ClearEmptiesTheDocumentItsNameAndTheHistory) {
  std::vector<QString> events;
  mKeypad.SetOnClearing([&](TOrbObject*) { events.push_back("clearing"); });
  mKeypad.SetOnClear([&](TOrbObject* sender) {
    EXPECT_EQ(sender, &mKeypad);
    events.push_back("clear");
  });
  mKeypad.SetName(Path("Lounge.keycfg"));
  Bind(mKeypad);
  mKeypad.SetFirmwareVersion(2);
  ASSERT_GT(Undo().Count(), 0);

  mKeypad.Clear();
  EXPECT_EQ(events, (std::vector<QString>{"clearing", "clear"}));
  EXPECT_FALSE(mKeypad.HasName());
  ExpectSameContents(mKeypad, norva::TWallKeypad());
  ExpectFlags(mKeypad, false, false);
  EXPECT_EQ(Undo().Count(), 0);
}

TEST_F(ChangeTracking, OnlyKeypadTypesCanBeCreated) {
  TOrbObject owner;
  const std::unique_ptr<TKeypadDevice> keypad =
      CreateKeypadDevice(&norva::TWallKeypad::staticMetaObject, &owner);
  EXPECT_EQ(keypad->GetOwner(), &owner);
  EXPECT_FALSE(keypad->IsSubComponent());
  for (TKeypadDeviceClass cls : {&TOrbObject::staticMetaObject, &TKeypadDevice::staticMetaObject,
                                 static_cast<const QMetaObject*>(nullptr)}) {
    EXPECT_THROW(CreateKeypadDevice(cls), ENorvaError) << (cls ? cls->className() : "none");
  }
}

}  // namespace
}  // namespace norva
