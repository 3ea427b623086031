// The studio's main window as an installer uses it, on the offscreen platform: a code pasted into
// the library, a command dropped on a button, the binding undone and redone, the keypad saved,
// the window closed with and without saving, the file opened again, the panels remembered.

#include <StudioWindow.h>

#include <ButtonTile.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGraphics/OrbGraphics.h>
#include <Testing/RecordingUIServices.h>
#include <Utils/Folders.h>
#include <support/QtPrinters.h>

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace studio {
namespace {

// A remote control's volume-up code, in Pronto hex.
const QString VolumeUp = QStringLiteral(
    "0000 006D 0000 0022 0157 00AC 0015 0016 0015 0016 0015 0041 0015 0016 0015 0016 "
    "0015 0016 0015 0016 0015 0016 0015 0041 0015 0041 0015 0016 0015 0041 0015 0041 "
    "0015 0041 0015 0041 0015 0041 0015 0016 0015 0016 0015 0016 0015 0041 0015 0016 "
    "0015 0016 0015 0016 0015 0016 0015 0041 0015 0041 0015 0041 0015 0016 0015 0041 "
    "0015 0041 0015 0041 0015 0041 0015 05ED");

class Studio : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(mFolder.isValid());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, mFolder.filePath("settings"));
    mPreviousAutoSave = norva::SetAutoSaveDir(mFolder.filePath("autosave"));
  }
  void TearDown() override {
    norva::SetAutoSaveDir(mPreviousAutoSave);
    norva::Undo().Empty();
    norva::Redo().Empty();
  }

  std::unique_ptr<TStudioWindow> OpenWindow() {
    auto window = std::make_unique<TStudioWindow>();
    window->SetFileChooser([this](bool) { return mFolder.filePath("Lounge.keycfg"); });
    window->OpenLibrary(mFolder.filePath("IR.xml"), false);
    window->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    return window;
  }

  // The command's tree item dragged and dropped on button `index`, as the mouse delivers it.
  static void DropOnButton(TStudioWindow& window, const norva::TCommandObject& command, int index) {
    QTreeWidgetItem* item = window.Library()->ItemOf(&command);
    ASSERT_NE(item, nullptr);
    window.Library()->setCurrentItem(item);
    const std::unique_ptr<QMimeData> data(
        window.Library()->model()->mimeData(window.Library()->selectionModel()->selectedIndexes()));
    ASSERT_NE(data, nullptr);
    TButtonTile* tile = window.KeypadView()->Tile(index);
    const QPoint centre = tile->rect().center();
    QDragEnterEvent enter(centre, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tile, &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(centre, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tile, &drop);
  }

  QTemporaryDir mFolder;
  QString mPreviousAutoSave;
  norva::TRecordingUIServices mServices;
  norva::TScopedUIServices mInstalled{mServices};
};

TEST_F(Studio, APastedCodeIsBoundUndoneRedoneSavedAndFoundAgain) {
  auto window = OpenWindow();
  window->ShowState();
  EXPECT_FALSE(window->PasteAction()->isEnabled()) << "nothing to paste yet";
  mServices.SetClipboardText(VolumeUp);
  window->ShowState();
  ASSERT_TRUE(window->PasteAction()->isEnabled());
  window->PasteAction()->trigger();
  ASSERT_EQ(window->Library()->findItems("Learnt codes", Qt::MatchRecursive).size(), 1);
  const norva::TModel* learnt =
      window->Library()->Database()->GetMakeByName("User")->GetModelByName("Learnt codes");
  ASSERT_EQ(learnt->GetCommandCount(), 1);
  norva::TCommandObject* code = learnt->GetCommand(0);
  EXPECT_NE(window->Library()->ItemOf(code), nullptr) << "the new code shows in the tree";

  DropOnButton(*window, *code, 2);
  const example::TWallKeypadButton& button = window->Keypad().Button(2);
  EXPECT_EQ(button.GetCommandGUID(), code->GetGUIDString());
  EXPECT_EQ(window->KeypadView()->Tile(2)->CommandText(), code->GetGUIDString());
  EXPECT_TRUE(window->isWindowModified());

  window->UndoAction()->trigger();
  EXPECT_TRUE(button.GetCommandGUID().isEmpty());
  EXPECT_EQ(window->KeypadView()->Tile(2)->CommandText(), "no command");
  window->RedoAction()->trigger();
  EXPECT_EQ(button.GetCommandGUID(), code->GetGUIDString());

  // Saved under the name the chooser gives; then changed and closed without saving.
  ASSERT_TRUE(window->FileSave());
  EXPECT_FALSE(window->isWindowModified());
  window->KeypadView()->SetCaption(2, "Louder");
  mServices.ScriptAnswers({norva::TMessageResult::Cancel});
  EXPECT_FALSE(window->close()) << "Cancel keeps the window open";
  mServices.ScriptAnswers({norva::TMessageResult::No});
  EXPECT_TRUE(window->close());
  window.reset();

  auto reopened = OpenWindow();
  ASSERT_TRUE(reopened->FileOpen());
  EXPECT_EQ(reopened->Keypad().Button(2).GetCommandGUID(), code->GetGUIDString());
  EXPECT_NE(reopened->Keypad().Button(2).GetCaption(), "Louder") << "the change was dropped";

  // Changed again and saved on closing.
  reopened->KeypadView()->SetCaption(2, "Louder");
  mServices.ScriptAnswers({norva::TMessageResult::Yes});
  EXPECT_TRUE(reopened->close());
  reopened.reset();
  auto third = OpenWindow();
  ASSERT_TRUE(third->FileOpen());
  EXPECT_EQ(third->Keypad().Button(2).GetCaption(), "Louder");
}

TEST_F(Studio, ThePanelLayoutIsRememberedBetweenRuns) {
  {
    auto window = OpenWindow();
    QTest::mouseClick(window->LibraryPanel()->PinButton(), Qt::LeftButton);
    ASSERT_FALSE(window->LibraryPanel()->IsPinned());
    EXPECT_TRUE(window->close());
  }
  auto window = OpenWindow();
  EXPECT_FALSE(window->LibraryPanel()->IsPinned());
}

}  // namespace
}  // namespace studio
