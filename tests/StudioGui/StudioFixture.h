#pragma once
// The studio's window as the widget tests open it: settings and auto-saves in a folder of the
// test's own, files and answers the test chooses, boxes recorded instead of shown.

#include <StudioWindow.h>

#include <ButtonTile.h>
#include <IR/IR.h>
#include <OrbGlobal/Clipboard/OrbClipboard.h>
#include <OrbGlobal/Undo/Undo.h>
#include <Testing/RecordingUIServices.h>
#include <Utils/Folders.h>
#include <support/QtPrinters.h>

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QMimeData>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace studio {

// A remote control's volume-up code, in Pronto hex.
inline const QString VolumeUp = QStringLiteral(
    "0000 006D 0000 0022 0157 00AC 0015 0016 0015 0016 0015 0041 0015 0016 0015 0016 "
    "0015 0016 0015 0016 0015 0016 0015 0041 0015 0041 0015 0016 0015 0041 0015 0041 "
    "0015 0041 0015 0041 0015 0041 0015 0016 0015 0016 0015 0016 0015 0041 0015 0016 "
    "0015 0016 0015 0016 0015 0016 0015 0041 0015 0041 0015 0041 0015 0016 0015 0041 "
    "0015 0041 0015 0041 0015 0041 0015 05ED");

// Drops `data` on the tile as the mouse delivers it; whether the tile accepted it.
inline bool DropOnTile(TButtonTile& tile, const QMimeData& data,
                       Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  const QPoint centre = tile.rect().center();
  QDragEnterEvent enter(centre, Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, modifiers);
  QApplication::sendEvent(&tile, &enter);
  if (!enter.isAccepted()) return false;
  QDropEvent drop(centre, Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, modifiers);
  QApplication::sendEvent(&tile, &drop);
  return true;
}

class Studio : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(mFolder.isValid());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, mFolder.filePath("settings"));
    mPreviousAutoSave = norva::SetAutoSaveDir(mFolder.filePath("autosave"));
  }
  void TearDown() override {
    mWindow.reset();
    norva::SetAutoSaveDir(mPreviousAutoSave);
    norva::Undo().Empty();
    norva::Redo().Empty();
    norva::ReleaseClipboardObject();  // no button copied by one test waits for the next
  }

  // The window on the library IR.xml, or with none open as the program starts.
  std::unique_ptr<TStudioWindow> OpenWindow(bool withLibrary = true) {
    auto window = std::make_unique<TStudioWindow>();
    window->SetFileChooser([this](TStudioWindow::TFileRole role) {
      switch (role) {
        case TStudioWindow::TFileRole::ImportCodes: return mFolder.filePath("remote.tsv");
        case TStudioWindow::TFileRole::OpenLibrary: return mFolder.filePath("IR.xml");
        default: return mFolder.filePath("Lounge.keycfg");
      }
    });
    window->SetTextAsker([this](const QString&, const QString&) {
      return mAnswers.isEmpty() ? QString() : mAnswers.takeFirst();
    });
    if (withLibrary) window->OpenLibrary(mFolder.filePath("IR.xml"), false);
    window->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    return window;
  }

  // The command's tree item dragged and dropped on button `index`, as the mouse delivers it.
  static void DropOnButton(TStudioWindow& window, const norva::TCommandObject& command, int index) {
    QTreeWidgetItem* item = window.Library()->ItemOf(&command);
    ASSERT_NE(item, nullptr);
    // The tree selects several codes at once: the drag carries this one alone.
    window.Library()->setCurrentItem(item, 0, QItemSelectionModel::ClearAndSelect);
    const std::unique_ptr<QMimeData> data(
        window.Library()->model()->mimeData(window.Library()->selectionModel()->selectedIndexes()));
    ASSERT_NE(data, nullptr);
    ASSERT_TRUE(DropOnTile(*window.KeypadView()->Tile(index), *data));
  }

  // The public library opened and its built-in Standby code chosen in the tree.
  const norva::TIRStream* ChooseBuiltInStandby(TStudioWindow& window) {
    window.OpenLibrary(mFolder.filePath("public.xml"), true);
    const QList<QTreeWidgetItem*> standby =
        window.Library()->findItems("Standby", Qt::MatchRecursive | Qt::MatchExactly);
    if (standby.isEmpty()) return nullptr;
    window.Library()->setCurrentItem(standby.first());
    return qobject_cast<norva::TIRStream*>(window.Library()->CurrentCommand());
  }

  // Typed into the caption field of button `index`, without Enter.
  static void TypeCaption(TStudioWindow& window, int index, const QString& caption) {
    window.KeypadView()->Select(index);
    QLineEdit* editor = window.KeypadView()->CaptionEditor();
    editor->setFocus();
    editor->selectAll();
    QTest::keyClicks(editor, caption);
  }

  // A file of the test's own folder holding `content`.
  void WriteFile(const QString& name, const QByteArray& content) {
    QFile file(mFolder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(content), content.size());
  }

  // Waits, letting events run, until `done` or five seconds passed.
  template <typename Predicate>
  static bool WaitFor(Predicate done) {
    QElapsedTimer waited;
    waited.start();
    while (!done() && waited.elapsed() < 5000) QTest::qWait(10);
    return done();
  }

  QTemporaryDir mFolder;
  std::unique_ptr<TStudioWindow> mWindow;  // for fixtures that open it in SetUp
  QStringList mAnswers;                    // what the installer types, in turn
  QString mPreviousAutoSave;
  norva::TRecordingUIServices mServices;
  norva::TScopedUIServices mInstalled{mServices};
};

}  // namespace studio
