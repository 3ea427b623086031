// The library side of the studio's window as an installer uses it: codes deleted, moved, copied
// and renamed in place, each one undo step, with the buttons bound to them following; pasted
// codes named by the same code or the same button, a duplicate only on request; the search box;
// the details pane and its stream picture; the built-in commands beside the installer's library.

#include "StudioFixture.h"

#include <OrbGlobal/Gui/OrbDragObject.h>
#include <ProtocolCodeDialog.h>

#include <QComboBox>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>

namespace studio {
namespace {

// A code as the NEC1 protocol sends it (device 4, function 8), in Pronto hex: a word sent once
// and a short word repeated while the key is held.
QString Nec1Code() {
  return norva::HexCodeOf(norva::EncodeIRStream(u"NEC1", {4, std::nullopt, 8, std::nullopt}));
}
// The same button captured again: the lead-in pulse came out 5 % longer.
QString Recaptured(const QString& code) {
  QStringList words = code.split(u' ');
  words[4] = QStringLiteral("%1")
                 .arg(words[4].toUInt(nullptr, 16) * 21 / 20, 4, 16, QLatin1Char('0'))
                 .toUpper();
  return words.join(u' ');
}

// A window on a library of the installer's own holding models Acme / TV and Acme / Amp, the
// volume-up code pasted into TV and bound to button 0.
class Library : public Studio {
 protected:
  void SetUp() override {
    Studio::SetUp();
    mWindow = OpenWindow();
    mAnswers = {"Acme", "Amp", "Acme", "TV"};
    mWindow->AddModel();
    mWindow->AddModel();
    mTV = Database().GetMakeByName("Acme")->GetModelByName("TV");
    mAmp = Database().GetMakeByName("Acme")->GetModelByName("Amp");
    mCode = Paste(Nec1Code());
    ASSERT_NE(mCode, nullptr);
    mWindow->KeypadView()->Bind(0, mCode->GetGUIDString(), mCode->GetName(), {});
    norva::Undo().Empty();
    mServices.ClearMessages();
  }

  norva::TIRDB& Database() const { return *mWindow->Library()->Database(); }
  TLibraryTree& Tree() const { return *mWindow->Library(); }
  // The code pasted into the model chosen in the tree (TV once set up); what was added.
  norva::TCommandObject* Paste(const QString& code) {
    mServices.SetClipboardText(code);
    if (mTV) Tree().setCurrentItem(Tree().ItemOf(mTV));
    const int before = mTV ? mTV->GetCommandCount() : 0;
    mWindow->PasteHexCode();
    return mTV && mTV->GetCommandCount() > before ? mTV->GetCommand(before) : nullptr;
  }
  QString Button0Command() const { return mWindow->KeypadView()->Tile(0)->CommandText(); }
  void Undo() {
    mWindow->EditUndo();
    QCoreApplication::processEvents();  // the tree follows once control is back in the event loop
  }

  norva::TModel* mTV = nullptr;
  norva::TModel* mAmp = nullptr;
  norva::TCommandObject* mCode = nullptr;
};

TEST_F(Library, ACodeMovedKeepsItsButtonsACopyIsANewCommandAndEachIsOneUndoStep) {
  const QString guid = mCode->GetGUIDString();
  norva::TCommandObject* moved = Tree().MoveTo(*mCode, *mAmp, false);
  EXPECT_EQ(mTV->GetCommandCount(), 0);
  ASSERT_EQ(mAmp->GetCommandCount(), 1);
  EXPECT_EQ(moved->GetGUIDString(), guid);
  EXPECT_EQ(Button0Command(), moved->GetName()) << "the button still finds its command";

  const norva::TCommandObject* copy = Tree().MoveTo(*moved, *mTV, true);
  EXPECT_EQ(mAmp->GetCommandCount(), 1);
  EXPECT_NE(copy->GetGUIDString(), guid);
  EXPECT_EQ(copy->GetName(), moved->GetName());

  Undo();
  EXPECT_EQ(mTV->GetCommandCount(), 0) << "the copy undone";
  Undo();
  EXPECT_EQ(mTV->GetCommandCount(), 1) << "the move undone";
  EXPECT_EQ(mAmp->GetCommandCount(), 0);
  EXPECT_EQ(mTV->GetCommand(0)->GetGUIDString(), guid);
}

TEST_F(Library, DeleteInTheTreeDeletesTheCodeNotTheButtonAndUndoBringsItBack) {
  Tree().setFocus();
  Tree().setCurrentItem(Tree().ItemOf(mCode));
  QTest::keyClick(&Tree(), Qt::Key_Delete);
  EXPECT_EQ(mTV->GetCommandCount(), 0);
  QCoreApplication::processEvents();
  EXPECT_TRUE(mWindow->Keypad().Button(0).GetCommandGUID().size() > 0) << "the button kept it";
  EXPECT_TRUE(Button0Command().contains("not in library IR"))
      << "says which library it looked in: " << Button0Command().toStdString();
  EXPECT_TRUE(Button0Command().contains("wanted Code 1 in library IR"))
      << "and what it wanted: " << Button0Command().toStdString();
  Undo();
  ASSERT_EQ(mTV->GetCommandCount(), 1);
  EXPECT_EQ(Button0Command(), mTV->GetCommand(0)->GetName());
}

TEST_F(Library, ACodeIsRenamedInPlaceAsOneUndoStepAndABuiltInOneIsNot) {
  QTreeWidgetItem* item = Tree().ItemOf(mCode);
  Tree().setFocus();
  Tree().setCurrentItem(item);
  QTest::keyClick(&Tree(), Qt::Key_F2);
  auto* editor = Tree().findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr) << "F2 edits in place";
  editor->selectAll();
  QTest::keyClicks(editor, "Louder");
  QTest::keyClick(editor, Qt::Key_Return);
  QCoreApplication::processEvents();
  EXPECT_EQ(mTV->GetCommand(0)->GetName(), "Louder");
  Undo();
  EXPECT_NE(mTV->GetCommand(0)->GetName(), "Louder");

  const QList<QTreeWidgetItem*> standby =
      Tree().findItems("Standby", Qt::MatchRecursive | Qt::MatchExactly);
  ASSERT_FALSE(standby.isEmpty()) << "the built-in commands are shown beside the library";
  EXPECT_FALSE(standby.first()->flags() & Qt::ItemIsEditable);
}

TEST_F(Library, APastedCodeIsNamedBySameCodeThenSameButtonAndADuplicateOnlyOnRequest) {
  Tree().Rename(*mCode, QStringLiteral("Volume up"));
  const struct {
    const char* What;
    QString Code;
    norva::TMessageResult Answer;  // to a duplicate's question
    bool Added;
    int Boxes;
    const char* Said;
  } cases[] = {
      {"the same code, declined", Nec1Code(), norva::TMessageResult::No, false, 1, ""},
      {"the same code, again", Nec1Code(), norva::TMessageResult::Yes, true, 1, "the same code"},
      {"the same button", Recaptured(Nec1Code()), norva::TMessageResult::Yes, true, 0,
       "the same button"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.What);
    mServices.ClearMessages();
    mServices.ScriptAnswers({c.Answer});
    mWindow->statusBar()->clearMessage();
    const norva::TCommandObject* added = Paste(c.Code);
    EXPECT_EQ(added != nullptr, c.Added);
    EXPECT_EQ(mServices.Messages().size(), c.Boxes);
    if (!added) continue;
    EXPECT_EQ(added->GetName(), "Volume up");
    EXPECT_TRUE(mWindow->statusBar()->currentMessage().contains(c.Said))
        << mWindow->statusBar()->currentMessage().toStdString();
  }
}

TEST_F(Library, TheSearchFindsByEveryWordAndAFoundCommandIsChosenAndDragged) {
  Tree().SetButtonClass(*mCode, norva::TButtonClass(norva::SystemClassGroup, 1));
  const QString className = mCode->GetButtonClasses().first().GetName();
  TLibraryBrowser& browser = *mWindow->Browser();
  const struct {
    QString Query;
    bool FindsCode;
  } cases[] = {
      {"code", true},
      {"ACME tv", true},
      {"acme amp", false},
      {className, true},
      {DecodeTextOf(*mCode), true},
      {"code nothing-like-it", false},
      {"ode", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Query.toStdString());
    QTest::keyClicks(browser.SearchField(), c.Query);
    const int rows = browser.Results().rowCount();
    bool found = false;
    for (int row = 0; row < rows; ++row) found |= browser.Results().CommandAt(row) == mCode;
    EXPECT_EQ(found, c.FindsCode);
    browser.SearchField()->clear();
  }
  QTest::keyClicks(browser.SearchField(), "acme");
  ASSERT_EQ(browser.Results().rowCount(), 1);
  browser.ResultsView()->setCurrentIndex(browser.Results().index(0, 0));
  EXPECT_EQ(Tree().CurrentCommand(), mCode) << "the found command is chosen in the tree";
  const std::unique_ptr<QMimeData> drag(
      browser.Results().mimeData({browser.Results().index(0, 0)}));
  const auto* object = qobject_cast<const norva::TOrbDragObject*>(drag.get());
  ASSERT_NE(object, nullptr);
  EXPECT_EQ(object->OrbObject(), mCode);
}

TEST_F(Library, TheDetailsShowTheChosenCodeAndSetAClassAsOneUndoStep) {
  Tree().setCurrentItem(Tree().ItemOf(mCode));
  const TCommandDetails& details = *mWindow->Browser()->Details();
  EXPECT_EQ(details.Text("status"), "OK");
  EXPECT_EQ(details.Text("carrier"), "38.3 kHz") << "38.4 kHz to the carrier clock's tick";
  EXPECT_TRUE(details.Text("format").startsWith("RepeatWord2: first word once"));
  EXPECT_EQ(details.Text("hexCode"),
            norva::HexCodeOf(qobject_cast<norva::TIRStream*>(mCode)->Data()));
  EXPECT_EQ(details.Text("decode"), "NEC1 D=4 F=8");
  const QList<TStreamPulse>& pulses = details.Picture()->Pulses();
  ASSERT_EQ(pulses.size(), 36) << "a lead-in, 32 bits and a stop pulse; a lead-in and a stop";
  EXPECT_FALSE(pulses[33].Repeated);
  EXPECT_TRUE(pulses[33].EndsWord);
  EXPECT_TRUE(pulses[34].Repeated);

  details.ClassChoice()->setCurrentText(QStringLiteral("System / Mute"));
  details.SetClassButton()->click();
  ASSERT_EQ(mCode->GetButtonClasses().size(), 1);
  EXPECT_EQ(mCode->GetButtonClasses().first().GetName(), "System / Mute");
  EXPECT_EQ(details.Text("classes"), "System / Mute");
  Undo();
  EXPECT_NE(details.Text("classes"), "System / Mute");
}

TEST_F(Library, ACodeFromAProtocolShowsItsHexCodeOrWhyNotBeforeItIsAdded) {
  TProtocolCodeDialog dialog;
  const struct {
    const char* Protocol;
    const char* D;
    const char* F;
    const char* Error;  // what the dialog says, in part; "" for a code made
  } cases[] = {
      {"NEC1", "4", "8", ""},    {"NEC1", "", "8", "D"}, {"NEC1", "4", "x", "F is no number"},
      {"NEC1", "4", "300", "F"}, {"RC5", "4", "8", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.Protocol) + " D=" + c.D + " F=" + c.F);
    dialog.Protocol()->setCurrentText(c.Protocol);
    dialog.Parameter('D')->setText(c.D);
    dialog.Parameter('F')->setText(c.F);
    const bool made = QString(c.Error).isEmpty();
    EXPECT_EQ(dialog.AddButton()->isEnabled(), made);
    EXPECT_EQ(dialog.HexCodeText().isEmpty(), !made);
    EXPECT_TRUE(dialog.ErrorText().contains(c.Error)) << dialog.ErrorText().toStdString();
    EXPECT_EQ(dialog.ErrorText().isEmpty(), made);
  }

  Tree().setCurrentItem(Tree().ItemOf(mAmp));
  QTimer::singleShot(0, [] {
    auto* shown = qobject_cast<TProtocolCodeDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(shown, nullptr);
    shown->Protocol()->setCurrentText("NEC1");
    shown->Parameter('D')->setText("4");
    shown->Parameter('F')->setText("8");
    shown->AddButton()->click();
  });
  mWindow->NewCodeFromProtocol();
  ASSERT_EQ(mAmp->GetCommandCount(), 1);
  const norva::TCommandObject* added = mAmp->GetCommand(0);
  EXPECT_EQ(added->GetName(), "NEC1 D=4 F=8");
  EXPECT_EQ(DecodeTextOf(*added), "NEC1 D=4 F=8") << "it decodes as it was made";
}

TEST_F(Library, TheSelectedCodesOrElseTheChosenModelAreWrittenInTheFormatTheFileNameSays) {
  Tree().Rename(*Tree().MoveTo(*mCode, *mAmp, true), QStringLiteral("Amp code"));
  QString path;
  mWindow->SetFileChooser([&path](TStudioWindow::TFileRole) { return path; });
  const struct {
    const char* File;
    bool SelectTVCode;  // else the Amp model is chosen
    const char* Holds;
    const char* Lacks;
  } cases[] = {
      {"selected.txt", true, "Code 1\t0000 006C", "Amp code"},
      {"model.txt", false, "Amp code\t0000 006C", "Code 1"},
      {"selected.girr", true, "<remote", "Amp code"},
      {"model.ir", false, "name: Amp code\ntype: raw", "Code 1"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.File);
    Tree().clearSelection();
    Tree().setCurrentItem(
        Tree().ItemOf(c.SelectTVCode ? static_cast<norva::TOrbObject*>(mCode) : mAmp));
    path = mFolder.filePath(c.File);
    mWindow->ExportCodes();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray written = file.readAll();
    EXPECT_TRUE(written.contains(c.Holds)) << written.toStdString();
    EXPECT_FALSE(written.contains(c.Lacks));
  }
  Tree().setCurrentItem(nullptr);
  Tree().clearSelection();
  path = mFolder.filePath("nothing.txt");
  mWindow->ExportCodes();
  EXPECT_FALSE(QFile::exists(path));
  EXPECT_EQ(mServices.Messages().size(), 1) << "the installer is told to choose";
}

TEST_F(Library, AButtonBoundToABuiltInCommandResolvesWhicheverLibraryIsOpen) {
  const norva::TCommandObject* standby = ChooseBuiltInStandby(*mWindow);  // in public.xml
  ASSERT_NE(standby, nullptr);
  EXPECT_TRUE(Button0Command().contains("not in library public"));
  EXPECT_TRUE(Button0Command().contains("wanted Code 1 in library IR")) << "the library it was in";
  mWindow->KeypadView()->Bind(1, standby->GetGUIDString(), standby->GetName(), {});
  mWindow->OpenLibrary(mFolder.filePath("IR.xml"), false);
  EXPECT_EQ(mWindow->KeypadView()->Tile(1)->CommandText(), "Standby");
  EXPECT_EQ(Button0Command(), "Code 1") << "and the installer's own command too";
  mWindow->OpenLibrary(mFolder.filePath("other.xml"), false);
  EXPECT_EQ(mWindow->KeypadView()->Tile(1)->CommandText(), "Standby");
  EXPECT_TRUE(Button0Command().contains("wanted Code 1 in library IR"));
}

TEST(BindingMemory, KeepsWhatABindingWantedBetweenRuns) {
  QTemporaryDir folder;
  QSettings settings(folder.filePath("studio.ini"), QSettings::IniFormat);
  TBindingMemory before;
  before.Remember("{A}", "library Living", "Volume up");
  before.Save(settings);
  TBindingMemory after;
  after.Load(settings);
  EXPECT_EQ(after.Wanted("{A}"), "Volume up in library Living");
  EXPECT_EQ(after.Wanted("{B}"), "");
}

// Durations to one scale, word ends marked, the word sent once told from the repeated one.
TEST(StreamPulses, FollowTheStreamsWordsAndFormat) {
  const QList<double> once = {9000, 4500, 560, 20000};
  const QList<double> repeat = {9000, 2250, 560, 90000};
  const struct {
    const char* What;
    norva::TIRStreamData Stream;
    QList<bool> Repeated;
  } cases[] = {
      {"once, then repeated", norva::WordsStream(38000, once, repeat), {false, false, true, true}},
      {"sent once", norva::WordsStream(38000, once, {}), {false, false}},
      {"repeated", norva::WordsStream(38000, {}, repeat), {true, true}},
      {"empty", {}, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.What);
    const QList<TStreamPulse> pulses = StreamPulses(c.Stream);
    ASSERT_EQ(pulses.size(), c.Repeated.size());
    for (int i = 0; i < pulses.size(); ++i) {
      EXPECT_EQ(pulses[i].Repeated, c.Repeated[i]) << i;
      EXPECT_EQ(pulses[i].EndsWord, i % 2 == 1) << i;
    }
  }
  const QList<TStreamPulse> pulses = StreamPulses(norva::WordsStream(38000, once, repeat));
  EXPECT_NEAR(pulses[0].OnMicroseconds, 9000, 90);
  EXPECT_NEAR(pulses[0].OffMicroseconds, 4500, 45);
  EXPECT_NEAR(pulses[1].OffMicroseconds, 20000, 200) << "a word end in its coarser unit";
  EXPECT_NEAR(pulses[2].OffMicroseconds, 2250, 25);
}

}  // namespace
}  // namespace studio
