// Keypad documents and their files as users meet them: the close prompt, saves without a usable
// name, a save that fails halfway, loads of good and damaged files, and the stand-in device.

#include "KeypadFixture.h"

#include <OrbGlobal/Xml/XmlErrors.h>
#include <support/FileSizeLimit.h>

namespace norva {
namespace {

using KeypadFiles = KeypadFixture;

TEST_F(KeypadFiles, CanCloseAsksOnlyWhenThereIsSomethingToSave) {
  EXPECT_TRUE(mKeypad.CanClose(false));
  EXPECT_TRUE(mServices.Messages().isEmpty()) << "a clean document closes without a question";

  const struct {
    bool MustClose;
    TMessageResult Answer;
    bool Named;
    bool Closes;
    bool Written;
  } cases[] = {
      {false, TMessageResult::Cancel, true, false, false},
      {false, TMessageResult::No, true, true, false},
      {false, TMessageResult::Yes, true, true, true},
      {true, TMessageResult::No, true, true, false},
      {true, TMessageResult::Yes, true, true, true},
      // Yes with nowhere to save (no name, no client) is the one way a forced close fails.
      {true, TMessageResult::Yes, false, false, false},
      {false, TMessageResult::Yes, false, false, false},
      // Services that answer a Yes/No box with Cancel cannot stop a forced close.
      {true, TMessageResult::Cancel, true, true, false},
  };
  for (const auto& c : cases) {
    const QString path = Path("Lounge.keycfg");
    QFile::remove(path);
    norva::TWallKeypad keypad;
    if (c.Named) keypad.SetName(path);
    Bind(keypad);
    mServices.ClearMessages();
    mServices.ScriptAnswers({c.Answer});
    const QString label = QStringLiteral("must close %1, answer %2, named %3")
                              .arg(c.MustClose)
                              .arg(static_cast<int>(c.Answer))
                              .arg(c.Named);

    EXPECT_EQ(keypad.CanClose(c.MustClose), c.Closes) << label.toStdString();
    ASSERT_EQ(mServices.Messages().size(), 1) << label.toStdString();
    const TRecordingUIServices::TAskedMessage& box = mServices.Messages()[0];
    EXPECT_EQ(box.Text, "Save configuration?");
    EXPECT_EQ(box.Caption, "Save");
    EXPECT_EQ(box.Icon, TMessageIcon::Question);
    EXPECT_EQ(box.Buttons, c.MustClose ? TMessageButtons::YesNo : TMessageButtons::YesNoCancel);
    ExpectFlags(keypad, !c.Closes, !c.Closes);
    EXPECT_EQ(QFile::exists(path), c.Written) << label.toStdString();
  }
}

TEST_F(KeypadFiles, ASaveWithoutAUsableNameAsksTheClientForOne) {
  const QString missing = Path("gone/Lounge.keycfg");
  mKeypad.SetName(missing);
  Bind(mKeypad);
  EXPECT_FALSE(mKeypad.HasUsableName());

  EXPECT_FALSE(mKeypad.FileSave()) << "no client: nothing to ask";
  TChoosingClient undecided{QString()};
  SetKeypadClient(&undecided);
  EXPECT_FALSE(mKeypad.FileSave()) << "the user chose no name";
  EXPECT_EQ(undecided.Requests(), 1);
  ExpectFlags(mKeypad, true, true);
  EXPECT_EQ(FilesIn(mFolder.path()), QStringList());

  TChoosingClient chooser(Path("Chosen.keycfg"));
  SetKeypadClient(&chooser);
  const int changesBefore = Undo().Count();
  ASSERT_TRUE(mKeypad.FileSave());
  EXPECT_EQ(mKeypad.GetName(), Path("Chosen.keycfg"));
  EXPECT_EQ(FilesIn(mFolder.path()), QStringList{"Chosen.keycfg"});
  ExpectFlags(mKeypad, false, false);
  EXPECT_EQ(Undo().Count(), changesBefore) << "the name chosen is where the file is, not an edit";
  // A usable name is used as it is.
  Bind(mKeypad);
  ASSERT_TRUE(mKeypad.FileSave());
  EXPECT_EQ(chooser.Requests(), 1);
}

TEST_F(KeypadFiles, ASaveThatFailsHalfwayKeepsThePreviousFileAndTheFlags) {
  const QString path = Path("Lounge.keycfg");
  mKeypad.SetName(path);
  Bind(mKeypad);
  ASSERT_TRUE(mKeypad.FileSave());
  const QByteArray saved = FileBytes(path);
  ASSERT_GT(saved.size(), 64);

  mKeypad.Button(5).SetCaption("Lights");
  try {
    const norva::testing::TFileSizeLimit limit(64);
    mKeypad.FileSave();
    ADD_FAILURE() << "the save did not fail";
  } catch (const ENorvaError& error) {
    EXPECT_TRUE(error.Message().endsWith(" while saving " + path)) << error.what();
  }
  EXPECT_EQ(FileBytes(path), saved);
  EXPECT_EQ(FilesIn(mFolder.path()), QStringList{"Lounge.keycfg"}) << "no temporary file is left";
  ExpectFlags(mKeypad, true, true);
  EXPECT_EQ(mServices.BusyDepth(), 0);
}

TEST_F(KeypadFiles, LoadingReadsTheFileCleanAndLeavesNoHistory) {
  norva::TWallKeypad saved;
  saved.SetName(Path("Lounge.keycfg"));
  Bind(saved);
  saved.Button(4).SetCaption(QString::fromUtf8("Küche & Bad"));
  ASSERT_TRUE(saved.FileSave());

  std::vector<QString> events;
  mKeypad.SetOnLoading([&](TOrbObject*) { events.push_back("loading"); });
  mKeypad.SetOnLoad(
      [&](TOrbObject*) { events.push_back(mKeypad.GetNeedsSaving() ? "load (dirty)" : "load"); });
  mKeypad.Button(0).SetCaption("Unsaved");
  MaintainUndo();
  ASSERT_TRUE(mKeypad.LoadFile(Path("Lounge.keycfg")));
  EXPECT_EQ(events, (std::vector<QString>{"loading", "load"}));
  ExpectSameContents(mKeypad, saved);
  EXPECT_EQ(mKeypad.GetName(), Path("Lounge.keycfg"));
  ExpectFlags(mKeypad, false, false);
  EXPECT_EQ(Undo().Count(), 0);
}

TEST_F(KeypadFiles, ADamagedFileIsReportedAndTheDocumentStaysUsable) {
  const QByteArray head = "<?xml version='1.0'?><keypad_configuration>";
  const struct {
    const char* What;
    QByteArray Bytes;
    const char* Reason;  // nullptr: not XML, reported by the reader with the file's name
  } cases[] = {
      {"no XML", "<keypad_configuration><button>", nullptr},
      {"bytes XML cannot hold", head + "\x01</keypad_configuration>", nullptr},
      {"unknown zone type", head + "<zone_type>Kitchen</zone_type></keypad_configuration>",
       "Unknown zone type 'Kitchen'"},
      {"no firmware number",
       head + "<zone_type>AmpZone</zone_type><firmware>x</firmware></keypad_configuration>",
       "The firmware version is not a number"},
      {"a button the keypad lacks",
       head + "<zone_type>AmpZone</zone_type><firmware>3</firmware><button index='6'/>"
              "</keypad_configuration>",
       "No button 6 on this keypad"},
      {"a command that is no GUID",
       head + "<zone_type>AmpZone</zone_type><firmware>3</firmware><button index='1'>"
              "<caption>On</caption><command>{nonsense}</command></button></keypad_configuration>",
       "'{nonsense}' is not a valid GUID value"},
  };
  for (const auto& c : cases) {
    const QString path = Path("Damaged.keycfg");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(c.Bytes);
    file.close();
    norva::TWallKeypad keypad;
    keypad.SetName(Path("Mine.keycfg"));
    Bind(keypad);
    int loads = 0;
    keypad.SetOnLoad([&](TOrbObject*) { ++loads; });

    try {
      keypad.LoadFile(path);
      ADD_FAILURE() << c.What << ": no failure";
    } catch (const ENorvaError& error) {
      if (!c.Reason) {
        EXPECT_NE(dynamic_cast<const EXMLError*>(&error), nullptr) << c.What;
        EXPECT_TRUE(error.Message().contains(path)) << c.What << ": " << error.what();
        // Untouched: still the user's unsaved document.
        EXPECT_EQ(keypad.GetName(), Path("Mine.keycfg")) << c.What;
        EXPECT_EQ(keypad.Button(0).GetCaption(), "Off") << c.What;
        ExpectFlags(keypad, true, true);
        EXPECT_EQ(loads, 0) << c.What;
        continue;
      }
      EXPECT_EQ(error.Message(), QString::fromUtf8(c.Reason)) << c.What;
    }
    // Read but refused: cleared, clean, named after the file, and still editable and savable.
    EXPECT_EQ(loads, 1) << c.What;
    ExpectSameContents(keypad, norva::TWallKeypad());
    EXPECT_EQ(keypad.GetName(), path) << c.What;
    ExpectFlags(keypad, false, false);
    keypad.Button(1).SetCaption("On");
    ExpectFlags(keypad, true, true);
    EXPECT_TRUE(keypad.FileSave()) << c.What;
    norva::TWallKeypad repaired;
    ASSERT_TRUE(repaired.LoadFile(path)) << c.What;
    EXPECT_EQ(repaired.Button(1).GetCaption(), "On") << c.What;
  }

  // Another kind of XML file is not taken at all.
  QFile other(Path("Other.xml"));
  ASSERT_TRUE(other.open(QIODevice::WriteOnly));
  other.write("<ir_database/>");
  other.close();
  mKeypad.Button(0).SetCaption("Mine");
  EXPECT_FALSE(mKeypad.LoadFile(Path("Other.xml")));
  EXPECT_EQ(mKeypad.Button(0).GetCaption(), "Mine");
  ExpectFlags(mKeypad, true, true);
}

TEST_F(KeypadFiles, TheExampleDeviceTakesUploadsAndGivesThemBack) {
  Bind(mKeypad);
  EXPECT_FALSE(mKeypad.Upload()) << "not connected";
  ASSERT_TRUE(mKeypad.Connect());
  ASSERT_TRUE(mKeypad.Upload());
  EXPECT_TRUE(mKeypad.Verify());
  EXPECT_EQ(mKeypad.GetMemoryUsage(), mKeypad.DeviceImage().size());

  mKeypad.Button(0).SetCaption("Changed");
  EXPECT_FALSE(mKeypad.Verify());
  ASSERT_TRUE(mKeypad.Download());
  EXPECT_EQ(mKeypad.Button(0).GetCaption(), "Off");
  EXPECT_TRUE(mKeypad.Verify());

  mKeypad.SetFirmwareVersion(2);
  EXPECT_TRUE(mKeypad.IsFirmwareOld());
  EXPECT_FALSE(mKeypad.IsIncompatible());
  EXPECT_FALSE(mKeypad.IsFirmwardIncompatible());

  norva::TWallKeypad other;
  other.ExternalInstanceChange(&mKeypad);
  ExpectSameContents(other, mKeypad);
}

}  // namespace
}  // namespace norva
