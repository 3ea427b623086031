#pragma once
// The studio's main window: the keypad being designed in the middle, the IR library in a dock
// panel, the File and Edit menus, undo and redo on the library's global histories, a timed
// auto-save and the close prompt. It is the application's keypad client: it chooses file names.

#include "KeypadView.h"
#include "LibraryPanel.h"

#include <KeypadDevice/KeypadDevice.h>

#include <QMainWindow>
#include <QTimer>

#include <functional>
#include <memory>

namespace norva {
class TCaptionedDockPanel;
class TUndo;
}  // namespace norva

namespace studio {

class TStudioWindow : public QMainWindow, public norva::IKeypadClient {
  Q_OBJECT

 public:
  explicit TStudioWindow(QWidget* parent = nullptr);
  ~TStudioWindow() override;

  // How a file name is asked for (a file dialog; tests answer instead). "" means none chosen.
  using TFileChooser = std::function<QString(bool forSaving)>;
  void SetFileChooser(TFileChooser chooser) { mChooseFile = std::move(chooser); }
  void ChooseFileName(norva::TKeypadDevice& device) override;

  // The IR library: a database file (created when missing), public or the user's own.
  void OpenLibrary(const QString& path, bool isPublic);

  example::TWallKeypad& Keypad() const { return *mKeypad; }
  TKeypadView* KeypadView() const { return mView; }
  TLibraryTree* Library() const { return mLibrary; }
  norva::TCaptionedDockPanel* LibraryPanel() const { return mLibraryPanel; }
  QTimer& AutoSaveTimer() { return mAutoSave; }

  // The menu commands.
  void FileNew();
  bool FileOpen();
  bool FileSave();
  bool FileSaveAs();
  void EditUndo();
  void EditRedo();
  void PasteHexCode();

  // Shows the title, the modified mark and which commands are possible now.
  void ShowState();

  QAction* UndoAction() const { return mUndo; }
  QAction* RedoAction() const { return mRedo; }
  QAction* PasteAction() const { return mPaste; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void BuildMenus();
  void Watch(example::TWallKeypad& keypad);
  // One step back in `history` (the undo or the redo history).
  void Revert(norva::TUndo& history);
  void ShowError(const std::exception& error, const QString& caption);

  std::unique_ptr<example::TWallKeypad> mKeypad;
  std::unique_ptr<norva::TIRDB> mDatabase;
  TKeypadView* mView;
  TLibraryTree* mLibrary;
  norva::TCaptionedDockPanel* mLibraryPanel;
  QAction* mUndo = nullptr;
  QAction* mRedo = nullptr;
  QAction* mPaste = nullptr;
  QTimer mAutoSave;
  TFileChooser mChooseFile;
};

}  // namespace studio
