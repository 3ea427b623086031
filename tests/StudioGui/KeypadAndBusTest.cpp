// The keypad as an installer works it through the window: the selected button shown, the edit
// commands following the selection at once, the document's keys reaching the keypad wherever the
// keyboard is unless a text field has its own use for them, captions kept, the file dialogs.

#include "StudioFixture.h"

#include <FileDialogs.h>
#include <Simulation/Simulation.h>
#include <support/QtPrinters.h>

#include <QFileDialog>

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

TEST_F(Keypad, ACaptionIsKeptWhenTheKeyboardMovesElsewhere) {
  TypeCaption(*mWindow, 3, "Kitchen");
  mWindow->Library()->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(Button(3).GetCaption(), "Kitchen");
  EXPECT_EQ(View().Tile(3)->CaptionText(), "Kitchen");
}

TEST_F(Keypad, SaveAsAddsTheConfigurationExtension) {
  mWindow->SetFileChooser([this](TFileRole) { return mFolder.filePath("Den"); });
  ASSERT_TRUE(mWindow->FileSaveAs());
  EXPECT_TRUE(QFile::exists(mFolder.filePath("Den.keycfg")));
  EXPECT_EQ(mWindow->Keypad().GetName(), mFolder.filePath("Den.keycfg"));
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
