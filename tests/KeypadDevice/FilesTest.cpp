// Keypad documents and their files as users meet them: the close prompt, saves without a usable
// name, a save that fails halfway, loads of good and damaged files, and the stand-in device.

#include "KeypadFixture.h"

#include <OrbGlobal/Xml/XmlErrors.h>
#include <support/FileSizeLimit.h>

namespace norva {
namespace {

class KeypadFiles : public KeypadFixture {
 protected:
  // How a load failed: raised at all, by the XML reader, and with what message.
  struct TFailure {
    bool Raised = false;
    bool FromReader = false;
    QString Message;
  };
  // A damaged file written as Damaged.keycfg and loaded into a bound document named Mine.keycfg,
  // which counts its loads.
  TFailure LoadDamaged(norva::TWallKeypad& keypad, const QByteArray& bytes) {
    WriteFile(Path("Damaged.keycfg"), bytes);
    keypad.SetName(Path("Mine.keycfg"));
    Bind(keypad);
    keypad.SetOnLoad([this](TOrbObject*) { ++mLoads; });
    try {
      keypad.LoadFile(Path("Damaged.keycfg"));
    } catch (const ENorvaError& error) {
      return {true, dynamic_cast<const EXMLError*>(&error) != nullptr, error.Message()};
    }
    return {};
  }

  static inline const QByteArray Head = "<?xml version='1.0'?><keypad_configuration>";
  int mLoads = 0;
};

TEST_F(KeypadFiles, CanCloseAsksToSaveAChangedDocumentAndClosesAsAnswered) {
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
    SCOPED_TRACE(QStringLiteral("must close %1, answer %2, named %3")
                     .arg(c.MustClose)
                     .arg(static_cast<int>(c.Answer))
                     .arg(c.Named)
                     .toStdString());
    const QString path = Path("Lounge.keycfg");
    QFile::remove(path);
    norva::TWallKeypad keypad;
    if (c.Named) keypad.SetName(path);
    Bind(keypad);
    mServices.ClearMessages();
    mServices.ScriptAnswers({c.Answer});

    EXPECT_EQ(keypad.CanClose(c.MustClose), c.Closes);
    ASSERT_EQ(mServices.Messages().size(), 1);
    const TRecordingUIServices::TAskedMessage& box = mServices.Messages()[0];
    EXPECT_EQ(box.Text, "Save configuration?");
    EXPECT_EQ(box.Caption, "Save");
    EXPECT_EQ(box.Icon, TMessageIcon::Question);
    EXPECT_EQ(box.Buttons, c.MustClose ? TMessageButtons::YesNo : TMessageButtons::YesNoCancel);
    ExpectFlags(keypad, !c.Closes, !c.Closes);
    EXPECT_EQ(QFile::exists(path), c.Written);
  }
}

TEST_F(KeypadFiles, ASaveWithoutAUsableNameGoesWhereTheClientChoosesAndNowhereElse) {
  const struct {
    const char* What;
    bool HasClient;
    const char* Chosen;  // "": the user chose no name
    QStringList Files;
  } cases[] = {
      {"no client: nothing to ask", false, "", {}},
      {"the user chose no name", true, "", {}},
      {"a name chosen", true, "Chosen.keycfg", {"Chosen.keycfg"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.What);
    norva::TWallKeypad keypad;
    keypad.SetName(Path("gone/Lounge.keycfg"));
    Bind(keypad);
    EXPECT_FALSE(keypad.HasUsableName());
    const QString chosen = *c.Chosen ? Path(c.Chosen) : QString();
    TChoosingClient client(chosen);
    SetKeypadClient(c.HasClient ? &client : nullptr);
    const int changesBefore = Undo().Count();

    const bool saved = keypad.FileSave();
    SetKeypadClient(nullptr);
    EXPECT_EQ(saved, !chosen.isEmpty());
    EXPECT_EQ(client.Requests(), c.HasClient ? 1 : 0);
    EXPECT_EQ(FilesIn(mFolder.path()), c.Files);
    ExpectFlags(keypad, !saved, !saved);
    EXPECT_EQ(keypad.GetName(), saved ? chosen : Path("gone/Lounge.keycfg"));
    EXPECT_EQ(Undo().Count(), changesBefore) << "the name chosen is where the file is, not an edit";
  }
}

TEST_F(KeypadFiles, ASaveWithAUsableNameDoesNotAskTheClient) {
  TChoosingClient chooser(Path("Chosen.keycfg"));
  SetKeypadClient(&chooser);
  mKeypad.SetName(Path("Lounge.keycfg"));
  Bind(mKeypad);
  ASSERT_TRUE(mKeypad.FileSave());
  EXPECT_EQ(chooser.Requests(), 0);
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

TEST_F(KeypadFiles, AFileThatIsNoXMLIsReportedWithItsNameAndTheDocumentIsUntouched) {
  for (const QByteArray& bytes :
       {QByteArray("<keypad_configuration><button>"), Head + "\x01</keypad_configuration>"}) {
    SCOPED_TRACE(bytes.toStdString());
    norva::TWallKeypad keypad;
    const TFailure failure = LoadDamaged(keypad, bytes);
    ASSERT_TRUE(failure.Raised);
    EXPECT_TRUE(failure.FromReader) << failure.Message.toStdString();
    EXPECT_TRUE(failure.Message.contains(Path("Damaged.keycfg"))) << failure.Message.toStdString();
    EXPECT_EQ(keypad.GetName(), Path("Mine.keycfg"));
    EXPECT_EQ(keypad.Button(0).GetCaption(), "Off");
    ExpectFlags(keypad, true, true);
    EXPECT_EQ(mLoads, 0);
  }
}

TEST_F(KeypadFiles,
       ContentsTheKeypadCannotHoldAreRefusedAndLeaveItClearedCleanAndNamedAfterTheFile) {
  const struct {
    const char* What;
    QByteArray Bytes;
    const char* Reason;
  } cases[] = {
      {"unknown zone type", Head + "<zone_type>Kitchen</zone_type></keypad_configuration>",
       "Unknown zone type 'Kitchen'"},
      {"no firmware number",
       Head + "<zone_type>AmpZone</zone_type><firmware>x</firmware></keypad_configuration>",
       "The firmware version is not a number"},
      {"a button the keypad lacks",
       Head + "<zone_type>AmpZone</zone_type><firmware>3</firmware><button index='6'/>"
              "</keypad_configuration>",
       "No button 6 on this keypad"},
      {"a command that is no GUID",
       Head + "<zone_type>AmpZone</zone_type><firmware>3</firmware><button index='1'>"
              "<caption>On</caption><command>{nonsense}</command></button></keypad_configuration>",
       "'{nonsense}' is not a valid GUID value"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.What);
    mLoads = 0;
    norva::TWallKeypad keypad;
    const TFailure failure = LoadDamaged(keypad, c.Bytes);
    ASSERT_TRUE(failure.Raised);
    EXPECT_EQ(failure.Message, QString::fromUtf8(c.Reason));
    EXPECT_EQ(mLoads, 1);
    ExpectSameContents(keypad, norva::TWallKeypad());
    EXPECT_EQ(keypad.GetName(), Path("Damaged.keycfg"));
    ExpectFlags(keypad, false, false);
  }
}

TEST_F(KeypadFiles, ADocumentLeftByARefusedFileCanBeEditedAndSavedOverIt) {
  ASSERT_TRUE(
      LoadDamaged(mKeypad, Head + "<zone_type>Kitchen</zone_type></keypad_configuration>").Raised);
  mKeypad.Button(1).SetCaption("On");
  ExpectFlags(mKeypad, true, true);
  EXPECT_TRUE(mKeypad.FileSave());
  norva::TWallKeypad repaired;
  ASSERT_TRUE(repaired.LoadFile(Path("Damaged.keycfg")));
  EXPECT_EQ(repaired.Button(1).GetCaption(), "On");
}

TEST_F(KeypadFiles, AnotherKindOfXMLFileIsNotTaken) {
  WriteFile(Path("Other.xml"), "<ir_database/>");
  mKeypad.Button(0).SetCaption("Mine");
  EXPECT_FALSE(mKeypad.LoadFile(Path("Other.xml")));
  EXPECT_EQ(mKeypad.Button(0).GetCaption(), "Mine");
  ExpectFlags(mKeypad, true, true);
}

TEST_F(KeypadFiles, TheDeviceTakesAnUploadWhenConnectedAndADownloadGivesItBack) {
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
}

TEST_F(KeypadFiles, AnOlderFirmwareIsOldButStillCompatible) {
  mKeypad.SetFirmwareVersion(2);
  EXPECT_TRUE(mKeypad.IsFirmwareOld());
  EXPECT_FALSE(mKeypad.IsIncompatible());
  EXPECT_FALSE(mKeypad.IsFirmwardIncompatible());
}

TEST_F(KeypadFiles, AnExternalInstanceChangeCopiesTheOtherDocument) {
  Bind(mKeypad);
  norva::TWallKeypad other;
  other.ExternalInstanceChange(&mKeypad);
  ExpectSameContents(other, mKeypad);
}

}  // namespace
}  // namespace norva
