#include "StudioWindow.h"

#include <NorvaGlobal/UIServices.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <OrbGraphics/OrbGraphics.h>

#include <QClipboard>
#include <QCloseEvent>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMenuBar>
#include <QSettings>

namespace studio {

namespace {

QSettings Settings() {
  return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Norva"),
                   QStringLiteral("Studio"));
}

const QString FileFilter = QStringLiteral("Keypad configurations (*.keycfg)");

}  // namespace

TStudioWindow::TStudioWindow(QWidget* parent)
    : QMainWindow(parent),
      mKeypad(std::make_unique<example::TWallKeypad>()),
      mView(new TKeypadView(this)),
      mLibrary(new TLibraryTree),
      mLibraryPanel(new norva::TCaptionedDockPanel(tr("IR library"), QStringLiteral("library"))) {
  setObjectName(QStringLiteral("studio"));
  setCentralWidget(mView);
  mLibraryPanel->setWidget(mLibrary);
  addDockWidget(Qt::LeftDockWidgetArea, mLibraryPanel);
  mChooseFile = [this](bool forSaving) {
    return forSaving
               ? QFileDialog::getSaveFileName(this, tr("Save configuration"), QString(), FileFilter)
               : QFileDialog::getOpenFileName(this, tr("Open configuration"), QString(),
                                              FileFilter);
  };
  BuildMenus();
  connect(mView, &TKeypadView::Edited, this, &TStudioWindow::ShowState);
  connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &TStudioWindow::ShowState);
  mAutoSave.setInterval(60 * 1000);
  connect(&mAutoSave, &QTimer::timeout, this, [this] {
    if (!mKeypad->GetNeedsAutoSaving()) return;
    try {
      mKeypad->FileAutoSave();
    } catch (const std::exception& error) {
      ShowError(error, tr("Auto-save"));
    }
  });
  mAutoSave.start();
  norva::SetKeypadClient(this);
  Watch(*mKeypad);
  mView->SetKeypad(mKeypad.get());
  resize(900, 600);
  QSettings settings = Settings();
  restoreGeometry(settings.value(QStringLiteral("geometry")).toByteArray());
  restoreState(settings.value(QStringLiteral("panels")).toByteArray());
  ShowState();
}

TStudioWindow::~TStudioWindow() {
  if (norva::KeypadClient() == this) norva::SetKeypadClient(nullptr);
  mView->SetKeypad(nullptr);
}

void TStudioWindow::BuildMenus() {
  QMenu* file = menuBar()->addMenu(tr("&File"));
  file->addAction(tr("&New"), QKeySequence::New, this, &TStudioWindow::FileNew);
  file->addAction(tr("&Open..."), QKeySequence::Open, this, [this] { FileOpen(); });
  file->addAction(tr("&Save"), QKeySequence::Save, this, [this] { FileSave(); });
  file->addAction(tr("Save &As..."), QKeySequence::SaveAs, this, [this] { FileSaveAs(); });
  file->addSeparator();
  file->addAction(tr("E&xit"), QKeySequence::Quit, this, &QWidget::close);
  QMenu* edit = menuBar()->addMenu(tr("&Edit"));
  connect(edit, &QMenu::aboutToShow, this, &TStudioWindow::ShowState);
  mUndo = edit->addAction(tr("&Undo"), QKeySequence::Undo, this, &TStudioWindow::EditUndo);
  mRedo = edit->addAction(tr("&Redo"), QKeySequence::Redo, this, &TStudioWindow::EditRedo);
  edit->addSeparator();
  mPaste = edit->addAction(tr("&Paste hex code"), QKeySequence::Paste, this,
                           &TStudioWindow::PasteHexCode);
  edit->addAction(tr("&Clear button"), QKeySequence::Delete, this,
                  [this] { mView->ClearButton(mView->Selected()); });
  QMenu* view = menuBar()->addMenu(tr("&View"));
  view->addAction(mLibraryPanel->toggleViewAction());
}

void TStudioWindow::Watch(example::TWallKeypad& keypad) {
  // The keypad is the root of its objects: every change arrives here once it is complete.
  keypad.SetOnUpdate([this](norva::TOrbObject*) {
    mView->Refresh();
    ShowState();
  });
}

void TStudioWindow::ShowState() {
  const QString name = mKeypad->HasName() ? mKeypad->GetName() : tr("untitled");
  setWindowTitle(tr("%1[*] - Norva Studio").arg(name));
  setWindowModified(mKeypad->GetNeedsSaving());
  mUndo->setEnabled(norva::Undo().CanRevert());
  mRedo->setEnabled(norva::Redo().CanRevert());
  mPaste->setEnabled(norva::HexCodeInClipboard() && mLibrary->Database() &&
                     !mLibrary->Database()->IsReadOnly());
}

void TStudioWindow::ShowError(const std::exception& error, const QString& caption) {
  norva::UIServices().MessageBox(QString::fromUtf8(error.what()), caption,
                                 norva::TMessageIcon::Stop, norva::TMessageButtons::OK);
}

void TStudioWindow::ChooseFileName(norva::TKeypadDevice& device) {
  const QString path = mChooseFile(true);
  if (!path.isEmpty()) device.SetName(path);
}

void TStudioWindow::OpenLibrary(const QString& path, bool isPublic) {
  mLibrary->SetDatabase(nullptr);
  mDatabase = std::make_unique<norva::TIRDB>(path, isPublic);
  mLibrary->SetDatabase(mDatabase.get());
  ShowState();
}

void TStudioWindow::FileNew() {
  if (!mKeypad->CanClose(false)) return;
  mKeypad->Clear();
  mView->Refresh();
  ShowState();
}

bool TStudioWindow::FileOpen() {
  if (!mKeypad->CanClose(false)) return false;
  const QString path = mChooseFile(false);
  if (path.isEmpty()) return false;
  try {
    if (!mKeypad->LoadFile(path)) {
      norva::UIServices().MessageBox(tr("%1 is no keypad configuration.").arg(path), tr("Open"),
                                     norva::TMessageIcon::Stop, norva::TMessageButtons::OK);
      return false;
    }
  } catch (const std::exception& error) {
    ShowError(error, tr("Open"));
  }
  mView->Refresh();
  ShowState();
  return true;
}

bool TStudioWindow::FileSave() {
  try {
    const bool saved = mKeypad->FileSave();
    ShowState();
    return saved;
  } catch (const std::exception& error) {
    ShowError(error, tr("Save"));
    return false;
  }
}

bool TStudioWindow::FileSaveAs() {
  const QString path = mChooseFile(true);
  if (path.isEmpty()) return false;
  {
    const norva::TUndoSuspended undoOff;  // where the file goes is no edit
    mKeypad->SetName(path);
  }
  return FileSave();
}

void TStudioWindow::EditUndo() { Revert(norva::Undo()); }

void TStudioWindow::EditRedo() { Revert(norva::Redo()); }

void TStudioWindow::Revert(norva::TUndo& history) {
  if (!history.CanRevert()) return;
  history.Revert();
  norva::MaintainUndo();
  mView->Refresh();
  ShowState();
}

void TStudioWindow::PasteHexCode() {
  mLibrary->PasteHexCode();
  ShowState();
}

void TStudioWindow::closeEvent(QCloseEvent* event) {
  bool closes = false;
  try {
    closes = mKeypad->CanClose(false);
  } catch (const std::exception& error) {
    ShowError(error, tr("Save"));
  }
  if (!closes) {
    event->ignore();
    return;
  }
  QSettings settings = Settings();
  settings.setValue(QStringLiteral("geometry"), saveGeometry());
  settings.setValue(QStringLiteral("panels"), saveState());
  event->accept();
}

}  // namespace studio
