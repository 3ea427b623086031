// The keypad as an installer works it through the window: the selected button shown, the edit
// commands following the selection at once, the document's keys reaching the keypad wherever the
// keyboard is unless a text field has its own use for them, captions kept, the file dialogs.

#include "StudioFixture.h"

#include <FileDialogs.h>
#include <PacketLog.h>
#include <Simulation/Simulation.h>

#include <QFileDialog>
#include <QTcpServer>
#include <QToolButton>

namespace studio {
namespace {

class Keypad : public Studio {
 protected:
  void SetUp() override {
    Studio::SetUp();
    mWindow = OpenWindow();
    mWindow->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(mWindow.get()));
    mStandby = ChooseBuiltInStandby(*mWindow);
    ASSERT_NE(mStandby, nullptr);
    DropOnButton(*mWindow, *mStandby, 0);
    mWindow->KeypadView()->Select(1);
  }
  TKeypadView& View() const { return *mWindow->KeypadView(); }
  const norva::TWallKeypadButton& Button(int index) const {
    return mWindow->Keypad().Button(index);
  }

  const norva::TIRStream* mStandby = nullptr;
};

TEST_F(Keypad, TheSelectedButtonIsShownAndTheEditCommandsFollowItAtOnce) {
  ASSERT_TRUE(mWindow->Link().ConnectSimulator());
  ASSERT_TRUE(WaitFor([&] { return mWindow->Link().Bus()->LinkUp(); }));
  mWindow->ShowState();
  const auto commandsEnabled = [&] {
    return std::vector<bool>{mWindow->SendAction()->isEnabled(), mWindow->CutAction()->isEnabled(),
                             mWindow->CopyAction()->isEnabled(),
                             mWindow->ClearAction()->isEnabled()};
  };
  EXPECT_EQ(commandsEnabled(), std::vector<bool>(4, false)) << "a blank button is selected";

  QTest::mouseClick(View().Tile(0), Qt::LeftButton);
  EXPECT_EQ(commandsEnabled(), std::vector<bool>(4, true)) << "no menu opened in between";
  const auto background = [&](int index) {
    return View().Tile(index)->grab().toImage().pixelColor(6, 6);
  };
  EXPECT_TRUE(View().Tile(0)->IsShownSelected());
  EXPECT_EQ(background(0), View().palette().color(QPalette::Highlight));
  EXPECT_NE(background(1), background(0));

  QTest::keyClick(View().Tile(0), Qt::Key_F5);
  const norva::sim::TDeviceSimulator& simulator = *mWindow->Link().Simulator();
  EXPECT_TRUE(WaitFor([&] { return !simulator.Received().empty(); })) << "F5 sent it";
}

TEST_F(Keypad, DocumentKeysReachTheKeypadUnlessATextFieldHasItsOwnUseForThem) {
  QLineEdit* caption = View().CaptionEditor();
  QTest::mouseClick(View().Tile(0), Qt::LeftButton);
  caption->setFocus();
  ASSERT_TRUE(caption->hasFocus());
  ASSERT_EQ(Button(0).GetCaption(), "Standby");

  // Selected text is the field's to copy; without a selection the button is copied.
  caption->selectAll();
  QTest::keyClick(caption, Qt::Key_C, Qt::ControlModifier);
  EXPECT_FALSE(TKeypadView::ButtonInClipboard());
  caption->deselect();
  QTest::keyClick(caption, Qt::Key_C, Qt::ControlModifier);
  EXPECT_TRUE(TKeypadView::ButtonInClipboard());

  // Typing not yet taken is the field's to undo; after Enter, Undo undoes the document.
  QTest::keyClicks(caption, " all");
  QTest::keyClick(caption, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(caption->text(), "Standby");
  EXPECT_EQ(Button(0).GetCaption(), "Standby");
  caption->setFocus();
  QTest::keyClicks(caption, " all");
  QTest::keyClick(caption, Qt::Key_Return);
  ASSERT_EQ(Button(0).GetCaption(), "Standby all");
  EXPECT_TRUE(View().Tile(0)->hasFocus()) << "Enter hands the keyboard back to the keypad";
  caption->setFocus();
  QTest::keyClick(caption, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Button(0).GetCaption(), "Standby");

  // Delete takes text while there is some, then the button.
  caption->setFocus();
  caption->selectAll();
  QTest::keyClick(caption, Qt::Key_Delete);
  EXPECT_FALSE(Button(0).IsBlank());
  QTest::keyClick(caption, Qt::Key_Delete);
  EXPECT_TRUE(Button(0).IsBlank());

  // A button waiting in the clipboard is pasted onto the keypad, not as text into the filter.
  QLineEdit* filter = mWindow->BusView()->Filter();
  filter->setFocus();
  QTest::keyClick(filter, Qt::Key_V, Qt::ControlModifier);
  EXPECT_TRUE(filter->text().isEmpty());
  EXPECT_EQ(Button(0).GetCommandGUID(), mStandby->GetGUIDString());
}

TEST_F(Keypad, SaveAsAddsTheConfigurationExtension) {
  mWindow->SetFileChooser([this](TFileRole) { return mFolder.filePath("Den"); });
  ASSERT_TRUE(mWindow->FileSaveAs());
  EXPECT_TRUE(QFile::exists(mFolder.filePath("Den.keycfg")));
  EXPECT_EQ(mWindow->Keypad().GetName(), mFolder.filePath("Den.keycfg"));
}

// Rows of the bus log whose column `column` holds `text`.
int RowsWith(const TPacketLog& log, int column, const QString& text) {
  int rows = 0;
  for (int row = 0; row < log.rowCount(); ++row)
    rows += log.index(row, column).data().toString().startsWith(text) ? 1 : 0;
  return rows;
}

TEST_F(Keypad, TheBusLogNamesCommandsMarksTheLinkAndPausesClearsAndExports) {
  TPacketLog& log = mWindow->BusView()->Log();
  ASSERT_TRUE(mWindow->Link().ConnectSimulator());
  ASSERT_TRUE(WaitFor([&] { return mWindow->Link().Bus()->LinkUp(); }));
  View().Select(0);
  ASSERT_TRUE(mWindow->SendSelectedCommand());
  norva::sim::TDeviceSimulator& simulator = *mWindow->Link().Simulator();
  simulator.SendKeypress(5, 3, 1);
  const auto meaning = [&](const QString& text) {
    return RowsWith(log, TPacketLog::MeaningColumn, text);
  };
  // The keypress may overtake the acknowledgement on a slow machine: both are waited for.
  ASSERT_TRUE(WaitFor([&] {
    return meaning("key 3 pressed (repeat 1)") == 1 && meaning("acknowledges Standby") == 1;
  }));
  EXPECT_EQ(meaning("Standby"), 2) << "sent and echoed";
  EXPECT_EQ(meaning("Connected to the simulator"), 1);
  EXPECT_EQ(log.index(0, TPacketLog::EchoColumn).data(), "link");

  QTest::mouseClick(mWindow->BusView()->PauseButton(), Qt::LeftButton);
  const int shown = log.rowCount();
  simulator.SendStatus(5);
  QTest::qWait(3 * TPacketLog::FlushIntervalMs);
  EXPECT_EQ(log.rowCount(), shown) << "paused";
  QTest::mouseClick(mWindow->BusView()->PauseButton(), Qt::LeftButton);
  EXPECT_TRUE(WaitFor([&] { return meaning("status report") == 4; })) << "kept while paused";

  mWindow->SetFileChooser([this](TFileRole) { return mFolder.filePath("bus.tsv"); });
  QTest::mouseClick(mWindow->BusView()->ExportButton(), Qt::LeftButton);
  QFile exported(mFolder.filePath("bus.tsv"));
  ASSERT_TRUE(exported.open(QIODevice::ReadOnly));
  const QList<QByteArray> lines = exported.readAll().split('\n');
  EXPECT_EQ(lines.size(), log.rowCount() + 2) << "column names, rows, the last line's end";
  EXPECT_EQ(lines.first(), "Time\tCommand\tZone\tData\tEcho\tMeaning");

  QTest::mouseClick(mWindow->BusView()->ClearButton(), Qt::LeftButton);
  EXPECT_EQ(log.rowCount(), 0);
  simulator.HangUp();
  EXPECT_TRUE(WaitFor([&] { return meaning("Not connected to the simulator") == 1; }))
      << "the dropped link is in the log";
}

TEST_F(Studio, ARefusedLinkIsWrittenInTheBusLogWithItsReasonAndItsAddressIsProposedNextTime) {
  QTcpServer closed;  // a port nothing listens on any more
  ASSERT_TRUE(closed.listen(QHostAddress::LocalHost));
  const QString address = QStringLiteral("127.0.0.1:%1").arg(closed.serverPort());
  closed.close();
  auto window = OpenWindow();
  mAnswers = {address};
  window->ConnectEthernet();
  TPacketLog& log = window->BusView()->Log();
  EXPECT_TRUE(WaitFor([&] {
    return RowsWith(log, TPacketLog::MeaningColumn, "Not connected to " + address + ": ") > 0;
  })) << "with the reason after the colon";
  window.reset();

  window = OpenWindow();
  QString proposed;
  window->SetTextAsker([&](const QString&, const QString& proposal) {
    proposed = proposal;
    return QString();
  });
  window->ConnectEthernet();
  EXPECT_EQ(proposed, address);
}

TEST(StudioFileDialogs, SayWhatTheirButtonDoes) {
  const struct {
    TFileRole Role;
    QFileDialog::AcceptMode Mode;
    const char* Button;
  } cases[] = {
      {TFileRole::OpenLibrary, QFileDialog::AcceptSave, "Open or create"},
      {TFileRole::OpenPublicLibrary, QFileDialog::AcceptOpen, "Open read-only"},
      {TFileRole::SaveKeypad, QFileDialog::AcceptSave, "Save"},
      {TFileRole::ExportBusLog, QFileDialog::AcceptSave, "Export"},
  };
  for (const auto& c : cases) {
    const std::unique_ptr<QFileDialog> dialog = CreateFileDialog(nullptr, c.Role);
    EXPECT_EQ(dialog->acceptMode(), c.Mode) << c.Button;
    EXPECT_EQ(dialog->labelText(QFileDialog::Accept), c.Button);
  }
}

}  // namespace
}  // namespace studio
