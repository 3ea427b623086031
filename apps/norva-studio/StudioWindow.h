#pragma once
// The studio's main window: the keypad being designed in the middle, the IR library and the bus
// in dock panels, the File, Edit, Library, Connection and View menus, undo and redo on the
// library's global histories, a timed auto-save and the close prompt. It is the application's
// keypad client: it chooses file names.

#include "BindingMemory.h"
#include "BusView.h"
#include "FileDialogs.h"
#include "KeypadView.h"
#include "LibraryBrowser.h"
#include "LibraryPanel.h"
#include "RecentList.h"
#include "StudioLink.h"

#include <KeypadDevice/KeypadDevice.h>

#include <QMainWindow>
#include <QTimer>

#include <functional>
#include <memory>

class QLabel;
class QStackedWidget;

namespace norva {
class TCaptionedDockPanel;
class TUndo;
}  // namespace norva

namespace studio {

class TStartPage;
struct TRecoverable;

class TStudioWindow : public QMainWindow, public norva::IKeypadClient {
  Q_OBJECT

 public:
  explicit TStudioWindow(QWidget* parent = nullptr);
  ~TStudioWindow() override;

  // What the installer is asked for: a file (by a file dialog) or a line of text (by an input
  // box). Tests answer instead. "" means cancelled.
  using TFileRole = studio::TFileRole;
  using TFileChooser = std::function<QString(TFileRole role)>;
  using TTextAsker = std::function<QString(const QString& question, const QString& proposal)>;
  void SetFileChooser(TFileChooser chooser) { mChooseFile = std::move(chooser); }
  void SetTextAsker(TTextAsker asker) { mAskText = std::move(asker); }
  void ChooseFileName(norva::TKeypadDevice& device) override;

  // The IR library: a database file (created when missing), public or the user's own. A file
  // that exists but did not load is opened read-only, so that nothing is written over it; the
  // installer is told why and offered to save the library under another name.
  void OpenLibrary(const QString& path, bool isPublic);
  // Opens the keypad configuration in `path`, after the close prompt; false when it did not open.
  bool OpenKeypad(const QString& path);
  // When auto-saved copies of configurations are newer than their files and were written since
  // the studio last closed cleanly, offers the newest that the installer takes, under its file's
  // name and unsaved. Each copy is offered once.
  void OfferRecovery();

  norva::TWallKeypad& Keypad() const { return *mKeypad; }
  TKeypadView* KeypadView() const { return mView; }
  TLibraryTree* Library() const { return mLibrary; }
  TLibraryBrowser* Browser() const { return mBrowser; }
  TBusView* BusView() const { return mBusView; }
  // Shown instead of the keypad while no library is open and no configuration was opened or begun.
  TStartPage* StartPage() const { return mStart; }
  bool ShowsStartPage() const;
  TStudioLink& Link() { return *mLink; }
  norva::TCaptionedDockPanel* LibraryPanel() const { return mLibraryPanel; }
  QTimer& AutoSaveTimer() { return mAutoSave; }
  QString LinkStateText() const;

  // The menu commands.
  void FileNew();
  bool FileOpen();
  bool FileSave();
  bool FileSaveAs();
  void EditUndo();
  void EditRedo();
  void PasteHexCode();
  // A button onto the selected one when the library's clipboard slot holds one, else a hex code.
  void Paste();
  // Sends the command bound to the selected button; false (and a box saying why) when it cannot.
  bool SendSelectedCommand();
  void AddModel();
  void ImportCodes();
  // The selected commands, or else the chosen model, written to a file in the format its name
  // says (".girr" Girr, ".ir" Flipper, otherwise Pronto lines); what could not be written is told.
  void ExportCodes();
  // A code made from a protocol and its parameters, added to the chosen model.
  void NewCodeFromProtocol();
  void RenameCode();
  // Writes the library when it has changes; a failure is told in a box.
  void SaveLibrary();
  // Writes the library to a file the installer chooses, which becomes the library's file.
  void SaveLibraryAs();
  // Asks for an address, proposing the last one; connects and remembers it.
  void ConnectEthernet();
  // Asks for a serial line by its path (a simulator's pseudo-terminal, a port not listed).
  void ConnectSerialLine();
  // Writes the bus log's shown rows to a file the installer chooses.
  void ExportBusLog();

  // Shows the title, the modified mark and which commands are possible now.
  void ShowState();

  QAction* UndoAction() const { return mUndo; }
  QAction* RedoAction() const { return mRedo; }
  QAction* CutAction() const { return mCut; }
  QAction* CopyAction() const { return mCopy; }
  QAction* PasteAction() const { return mPaste; }
  QAction* SendAction() const { return mSend; }
  QAction* ClearAction() const { return mClear; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void BuildMenus();
  void BuildConnectionMenu();
  void ShowRecent();
  // Reads the configuration in `path` into the document, the close prompt already answered.
  bool LoadKeypad(const QString& path);
  // The link's state, written in the bus log when it changed.
  void LogLinkChange();
  void ConnectSerial(const QString& line);
  void Recover(const TRecoverable& copy);
  void Watch(norva::TWallKeypad& keypad);
  // One step back in `history` (the undo or the redo history).
  void Revert(norva::TUndo& history);
  void ShowError(const std::exception& error, const QString& caption);
  void Tell(const QString& text, const QString& caption);
  // The command bound to the selected button, when the library holds it.
  norva::TCommandObject* SelectedCommand() const;
  // The name of a bound command, or which library it is not in and what it wanted.
  QString BoundCommandText(const QString& guid);
  static QString LibraryOf(const norva::TCommandObject& command);
  // The status line says how a pasted code was named.
  void ShowPasted(const TPastedCode& pasted);
  // What the status line says about the library's current item (a native code's frame).
  void ShowCurrentCode();
  // The library panel's caption: the library's name, and why it is read-only when it is.
  void ShowLibraryState();

  std::unique_ptr<norva::TWallKeypad> mKeypad;
  std::unique_ptr<norva::TIRDB> mDatabase;
  TKeypadView* mView;
  QStackedWidget* mPages;
  TStartPage* mStart = nullptr;
  TLibraryTree* mLibrary;
  TLibraryBrowser* mBrowser;
  TBusView* mBusView;
  std::unique_ptr<TStudioLink> mLink;
  norva::TCaptionedDockPanel* mLibraryPanel;
  norva::TCaptionedDockPanel* mBusPanel;
  QLabel* mLinkState;
  QAction* mUndo = nullptr;
  QAction* mRedo = nullptr;
  QAction* mCut = nullptr;
  QAction* mCopy = nullptr;
  QAction* mPaste = nullptr;
  QAction* mSend = nullptr;
  QAction* mClear = nullptr;
  QAction* mOpenKeypad = nullptr;
  QAction* mOpenLibrary = nullptr;
  QAction* mOpenPublicLibrary = nullptr;
  QAction* mConnectSimulator = nullptr;
  QAction* mConnectEthernet = nullptr;
  const TRecentList mRecentLibraries{QStringLiteral("recent/libraries")};
  const TRecentList mRecentPublicLibraries{QStringLiteral("recent/publicLibraries")};
  const TRecentList mRecentKeypads{QStringLiteral("recent/keypads")};
  const TRecentList mRecentAddresses{QStringLiteral("recent/addresses")};
  const TRecentList mRecentSerialLines{QStringLiteral("recent/serialLines")};
  QString mLoggedLinkState;
  QTimer mAutoSave;
  TBindingMemory mBindings;
  TFileChooser mChooseFile;
  TTextAsker mAskText;
};

}  // namespace studio
