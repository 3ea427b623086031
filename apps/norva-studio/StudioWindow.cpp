#include "StudioWindow.h"

#include "ProtocolCodeDialog.h"
#include "Recovery.h"
#include "ScreenFit.h"
#include "StartPage.h"
#include "TextFieldKeys.h"

#include <IR/NorvaCodes.h>
#include <NorvaGlobal/EnumNames.h>
#include <NorvaGlobal/UIServices.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <OrbGraphics/OrbGraphics.h>
#include <Utils/Folders.h>

#include <QClipboard>
#include <QCloseEvent>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QInputDialog>
#include <QLabel>
#include <QMenuBar>
#include <QSaveFile>
#include <QScreen>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>

namespace studio {

namespace {

// When the studio last closed cleanly or offered the auto-saved copies: later copies are news.
const QString AutoSavesSeenKey = QStringLiteral("autoSavesSeenAt");

// Refusals listed after an import's summary; the rest are only counted.
constexpr int ShownRefusals = 20;

QString AbsolutePath(const QString& path) { return QFileInfo(path).absoluteFilePath(); }

// What a command becomes on the bus: only native codes have a packet.
std::optional<norva::TCommandPacket> BusPacketOf(const norva::TCommandObject* command) {
  const auto* stream = qobject_cast<const norva::TIRStream*>(command);
  return stream ? norva::NorvaFramePacket(stream->Data()) : std::nullopt;
}

}  // namespace

TStudioWindow::TStudioWindow(QWidget* parent)
    : QMainWindow(parent),
      mKeypad(std::make_unique<norva::TWallKeypad>()),
      mView(new TKeypadView),
      mPages(new QStackedWidget),
      mLibrary(new TLibraryTree),
      mBrowser(new TLibraryBrowser(mLibrary)),
      mBusView(new TBusView),
      mLink(std::make_unique<TStudioLink>(*mBusView)),
      mLibraryPanel(new norva::TCaptionedDockPanel(tr("IR library"), QStringLiteral("library"))),
      mBusPanel(new norva::TCaptionedDockPanel(tr("Bus"), QStringLiteral("busPanel"))),
      mLinkState(new QLabel) {
  setObjectName(QStringLiteral("studio"));
  mPages->addWidget(mView);
  setCentralWidget(mPages);
  mLibraryPanel->setWidget(mBrowser);
  addDockWidget(Qt::LeftDockWidgetArea, mLibraryPanel);
  mBusPanel->setWidget(mBusView);
  addDockWidget(Qt::BottomDockWidgetArea, mBusPanel);
  statusBar()->addPermanentWidget(mLinkState);
  mChooseFile = [this](TFileRole role) { return AskForFile(this, role); };
  mAskText = [this](const QString& question, const QString& proposal) {
    return QInputDialog::getText(this, windowTitle(), question, QLineEdit::Normal, proposal);
  };
  BuildMenus();
  mStart = new TStartPage(
      {mOpenLibrary, mOpenPublicLibrary, mOpenKeypad, mConnectSimulator, mConnectEthernet});
  mPages->addWidget(mStart);
  connect(mStart, &TStartPage::LibraryChosen, this, &TStudioWindow::OpenLibrary);
  connect(mStart, &TStartPage::KeypadChosen, this, &TStudioWindow::OpenKeypad);
  ShowRecent();
  mView->SetCommandNamer([this](const QString& guid) { return BoundCommandText(guid); });
  connect(mView, &TKeypadView::Edited, this, &TStudioWindow::ShowState);
  connect(mView, &TKeypadView::SelectionChanged, this, &TStudioWindow::ShowState);
  new TTextFieldKeys(this);
  connect(mLibrary, &TLibraryTree::Edited, this, &TStudioWindow::SaveLibrary);
  connect(mLibrary, &TLibraryTree::Refreshed, this, [this] {
    mView->Refresh();  // bound commands are named from the library
    ShowState();
  });
  connect(mLibrary, &QTreeWidget::currentItemChanged, this, &TStudioWindow::ShowCurrentCode);
  connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &TStudioWindow::ShowState);
  for (auto changed : {&TStudioWindow::ShowState, &TStudioWindow::LogLinkChange}) {
    connect(mLink.get(), &TStudioLink::StateChanged, this, changed);
    connect(mBusView, &TBusView::ConnectionChanged, this, changed);
  }
  connect(mBusView, &TBusView::ExportRequested, this, &TStudioWindow::ExportBusLog);
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
  setGeometry(FirstWindowGeometry(screen()->availableGeometry()));
  resizeDocks({mLibraryPanel}, {width() * 2 / 5}, Qt::Horizontal);
  resizeDocks({mBusPanel}, {height() * 3 / 10}, Qt::Vertical);
  QSettings settings = StudioSettings();
  mBindings.Load(settings);
  restoreGeometry(settings.value(QStringLiteral("geometry")).toByteArray());
  restoreState(settings.value(QStringLiteral("panels")).toByteArray());
  ShowState();
}

TStudioWindow::~TStudioWindow() {
  // The link, the bus panel and the library go first, while this window can still hear of it.
  disconnect(mBusView, nullptr, this, nullptr);
  disconnect(mLink.get(), nullptr, this, nullptr);
  disconnect(mLibrary, nullptr, this, nullptr);
  mLink.reset();
  mLibrary->SetDatabase(nullptr);
  if (norva::KeypadClient() == this) norva::SetKeypadClient(nullptr);
  mView->SetKeypad(nullptr);
}

void TStudioWindow::BuildMenus() {
  QMenu* file = menuBar()->addMenu(tr("&File"));
  file->addAction(tr("&New"), QKeySequence::New, this, &TStudioWindow::FileNew);
  mOpenKeypad =
      file->addAction(tr("&Open keypad..."), QKeySequence::Open, this, [this] { FileOpen(); });
  file->addAction(tr("&Save"), QKeySequence::Save, this, [this] { FileSave(); });
  file->addAction(tr("Save &As..."), QKeySequence::SaveAs, this, [this] { FileSaveAs(); });
  file->addSeparator();
  file->addAction(tr("E&xit"), QKeySequence::Quit, this, &QWidget::close);

  QMenu* edit = menuBar()->addMenu(tr("&Edit"));
  connect(edit, &QMenu::aboutToShow, this, &TStudioWindow::ShowState);
  mUndo = edit->addAction(tr("&Undo"), QKeySequence::Undo, this, &TStudioWindow::EditUndo);
  mRedo = edit->addAction(tr("&Redo"), QKeySequence::Redo, this, &TStudioWindow::EditRedo);
  edit->addSeparator();
  mCut = edit->addAction(tr("Cu&t button"), QKeySequence::Cut, this, [this] {
    mView->CutToClipboard(mView->Selected());
    ShowState();
  });
  mCopy = edit->addAction(tr("&Copy button"), QKeySequence::Copy, this, [this] {
    mView->CopyToClipboard(mView->Selected());
    ShowState();
  });
  // A hex code on the system clipboard and a button in the library's slot never wait at once:
  // copying either hides the other.
  mPaste = edit->addAction(tr("&Paste (hex code into the library, button onto the keypad)"),
                           QKeySequence::Paste, this, &TStudioWindow::Paste);
  mClear = edit->addAction(tr("&Clear button"), QKeySequence::Delete, this,
                           [this] { mView->ClearButton(mView->Selected()); });
  edit->addSeparator();
  mSend = edit->addAction(tr("S&end button's command"), QKeySequence(Qt::Key_F5), this,
                          [this] { SendSelectedCommand(); });

  QMenu* library = menuBar()->addMenu(tr("&Library"));
  mOpenLibrary = library->addAction(tr("&Open or create library..."), this, [this] {
    if (const QString path = mChooseFile(TFileRole::OpenLibrary); !path.isEmpty())
      OpenLibrary(path, false);
  });
  mOpenPublicLibrary = library->addAction(tr("Open the &public library..."), this, [this] {
    if (const QString path = mChooseFile(TFileRole::OpenPublicLibrary); !path.isEmpty())
      OpenLibrary(path, true);
  });
  mOpenPublicLibrary->setToolTip(tr("Read-only, with the installation's built-in makes"));
  library->addAction(tr("&Save as..."), this, &TStudioWindow::SaveLibraryAs);
  library->addSeparator();
  library->addAction(tr("Add &model..."), this, &TStudioWindow::AddModel);
  library->addAction(tr("&Import codes..."), this, &TStudioWindow::ImportCodes);
  library->addAction(tr("New code from &protocol..."), this, &TStudioWindow::NewCodeFromProtocol);
  library->addAction(tr("&Export codes (selected, or the chosen model)..."), this,
                     &TStudioWindow::ExportCodes);
  library->addAction(tr("&Rename code..."), QKeySequence(Qt::Key_F2), this,
                     &TStudioWindow::RenameCode);
  library->addAction(tr("&Delete selected codes"), mLibrary, &TLibraryTree::DeleteSelected);

  BuildConnectionMenu();

  QMenu* view = menuBar()->addMenu(tr("&View"));
  view->addAction(mLibraryPanel->toggleViewAction());
  view->addAction(mBusPanel->toggleViewAction());
  view->addAction(tr("C&lear bus log"), this, [this] { mBusView->Log().Clear(); });
}

void TStudioWindow::BuildConnectionMenu() {
  QMenu* connection = menuBar()->addMenu(tr("&Connection"));
  mConnectSimulator = connection->addAction(tr("Connect to the &simulator"), this,
                                            [this] { mLink->ConnectSimulator(); });
  QMenu* serial = connection->addMenu(tr("Se&rial port"));
  connect(serial, &QMenu::aboutToShow, this, [this, serial] {
    serial->clear();
    const QStringList ports = norva::TNorvaBusComms::GetComPorts();
    for (const QString& port : ports)
      serial->addAction(port, this, [this, port] { ConnectSerial(port); });
    if (ports.isEmpty()) serial->addAction(tr("(no serial ports found)"))->setEnabled(false);
    serial->addSeparator();
    for (const QString& line : mRecentSerialLines.Entries()) {
      if (!ports.contains(line))
        serial->addAction(line, this, [this, line] { ConnectSerial(line); });
    }
    serial->addAction(tr("&Other line (such as the simulator's /dev/pts/N)..."), this,
                      &TStudioWindow::ConnectSerialLine);
  });
  mConnectEthernet =
      connection->addAction(tr("Connect over &Ethernet..."), this, &TStudioWindow::ConnectEthernet);
  QMenu* usb = connection->addMenu(tr("&USB device"));
  connect(usb, &QMenu::aboutToShow, this, [this, usb] {
    usb->clear();
    usb->addAction(tr("&First recognised device"), this, [this] { mLink->ConnectUsb(); });
    usb->addSeparator();
    const norva::TUsbDeviceSearch search = TStudioLink::UsbDevices();
    for (const norva::TUSBDevice& device : search.Devices) {
      usb->addAction(QStringLiteral("%1 (%2)").arg(device.Path, norva::EnumName(device.DeviceType)),
                     this, [this, path = device.Path] { mLink->ConnectUsb(path); });
    }
    if (!search.Result.Ok())
      usb->addAction(tr("(%1)").arg(search.Result.Text))->setEnabled(false);
    else if (search.Devices.empty())
      usb->addAction(tr("(no recognised USB devices found)"))->setEnabled(false);
  });
  connection->addSeparator();
  connection->addAction(tr("&Disconnect"), this, [this] { mLink->Close(); });
}

void TStudioWindow::Watch(norva::TWallKeypad& keypad) {
  // The keypad is the root of its objects: every change arrives here once it is complete.
  keypad.AddUpdateListener(this, [this](norva::TOrbObject*) {
    mView->Refresh();
    ShowState();
  });
}

QString TStudioWindow::LinkStateText() const { return mLinkState->text(); }

void TStudioWindow::ShowState() {
  const QString name = mKeypad->HasName() ? mKeypad->GetName() : tr("untitled");
  setWindowTitle(tr("%1[*] - Norva Studio").arg(name));
  setWindowModified(mKeypad->GetNeedsSaving());
  mUndo->setEnabled(norva::Undo().CanRevert());
  mRedo->setEnabled(norva::Redo().CanRevert());
  mPaste->setEnabled(
      TKeypadView::ButtonInClipboard() ||
      (norva::HexCodeInClipboard() && mLibrary->Database() && !mLibrary->Database()->IsReadOnly()));
  const bool buttonUsed = !mKeypad->Button(mView->Selected()).IsBlank();
  for (QAction* action : {mCut, mCopy, mClear}) action->setEnabled(buttonUsed);
  const norva::TCommandObject* command = SelectedCommand();
  mSend->setEnabled(command && mLink->Bus() && mLink->Bus()->LinkUp());
  mLinkState->setText(mLink->State());
  mStart->ShowLinkState(mLink->State());
  mPages->setCurrentWidget(ShowsStartPage() ? static_cast<QWidget*>(mStart) : mView);
}

bool TStudioWindow::ShowsStartPage() const {
  return !mLibrary->Database() && !mKeypad->HasName() && !mKeypad->GetNeedsSaving();
}

void TStudioWindow::ShowRecent() {
  mStart->ShowRecent(mRecentLibraries.Entries(), mRecentPublicLibraries.Entries(),
                     mRecentKeypads.Entries());
}

void TStudioWindow::ShowError(const std::exception& error, const QString& caption) {
  Tell(QString::fromUtf8(error.what()), caption);
}

void TStudioWindow::Tell(const QString& text, const QString& caption) {
  norva::UIServices().MessageBox(text, caption, norva::TMessageIcon::Stop,
                                 norva::TMessageButtons::OK);
}

void TStudioWindow::ChooseFileName(norva::TKeypadDevice& device) {
  const QString path = WithKeypadExtension(mChooseFile(TFileRole::SaveKeypad));
  if (!path.isEmpty()) device.SetName(path);
}

void TStudioWindow::OpenLibrary(const QString& path, bool isPublic) {
  const norva::TBusyCursor busy;
  mLibrary->SetDatabase(nullptr);
  // A load failure is told once, below, with what the installer can do about it.
  const auto toldBelow = [](norva::TIRDB&, const QString&, bool& handled) { handled = true; };
  mDatabase = std::make_unique<norva::TIRDB>(path, isPublic, toldBelow);
  mLibrary->SetDatabase(mDatabase.get());
  (isPublic ? mRecentPublicLibraries : mRecentLibraries).Add(AbsolutePath(path));
  ShowRecent();
  ShowLibraryState();
  ShowState();
  const QString failure = mDatabase->GetLoadFailure();
  if (failure.isEmpty()) return;
  const norva::TMessageResult answer = norva::UIServices().MessageBox(
      tr("%1\n\nThe library is open read-only: nothing will be written over its file. Save the "
         "library under another name to go on editing it?")
          .arg(failure),
      tr("Open library"), norva::TMessageIcon::Exclamation, norva::TMessageButtons::YesNo);
  if (answer == norva::TMessageResult::Yes) SaveLibraryAs();
}

void TStudioWindow::SaveLibraryAs() {
  norva::TIRDB* database = mLibrary->Database();
  if (!database) return;
  const QString path = mChooseFile(TFileRole::SaveLibrary);
  if (path.isEmpty()) return;
  try {
    database->SaveAs(path);
  } catch (const std::exception& error) {
    ShowError(error, tr("Save library"));
  }
  mLibrary->Refresh();
  ShowLibraryState();
  ShowState();
}

void TStudioWindow::ShowLibraryState() {
  const norva::TIRDB* database = mLibrary->Database();
  QString caption = tr("IR library");
  if (database && !database->GetLoadFailure().isEmpty())
    caption = tr("IR library %1: read-only, it did not load").arg(database->GetShortName());
  else if (database && database->IsReadOnly())
    caption = tr("IR library %1: read-only").arg(database->GetShortName());
  else if (database)
    caption = tr("IR library %1").arg(database->GetShortName());
  mLibraryPanel->setWindowTitle(caption);
  mLibraryPanel->setToolTip(database ? database->GetLoadFailure() : QString());
}

void TStudioWindow::SaveLibrary() {
  norva::TIRDB* database = mLibrary->Database();
  if (!database || !database->GetNeedsSaving()) return;
  try {
    database->Save();
  } catch (const std::exception& error) {
    ShowError(error, tr("Save library"));
  }
}

void TStudioWindow::FileNew() {
  if (!mKeypad->CanClose(false)) return;
  mKeypad->Clear();
  mView->Refresh();
  ShowState();
}

bool TStudioWindow::FileOpen() {
  if (!mKeypad->CanClose(false)) return false;
  const QString path = mChooseFile(TFileRole::OpenKeypad);
  return !path.isEmpty() && LoadKeypad(path);
}

bool TStudioWindow::OpenKeypad(const QString& path) {
  return mKeypad->CanClose(false) && LoadKeypad(path);
}

bool TStudioWindow::LoadKeypad(const QString& path) {
  try {
    if (!mKeypad->LoadFile(path)) {
      Tell(tr("%1 is no keypad configuration.").arg(path), tr("Open"));
      return false;
    }
  } catch (const std::exception& error) {
    ShowError(error, tr("Open"));
  }
  mRecentKeypads.Add(AbsolutePath(path));
  ShowRecent();
  mView->Refresh();
  ShowState();
  return true;
}

void TStudioWindow::OfferRecovery() {
  QSettings settings = StudioSettings();
  const QDateTime seen = settings.value(AutoSavesSeenKey).toDateTime();
  settings.setValue(AutoSavesSeenKey, QDateTime::currentDateTime());
  for (const TRecoverable& copy :
       FindRecoverable(norva::GetAutoSaveDir(), mRecentKeypads.Entries(), seen)) {
    const QString document = copy.Keypad.isEmpty() ? tr("a configuration that was never saved")
                                                   : QFileInfo(copy.Keypad).fileName();
    const norva::TMessageResult answer = norva::UIServices().MessageBox(
        tr("The studio did not close cleanly. A copy of %1 was auto-saved at %2, after the file "
           "was last saved. Open the auto-saved copy?")
            .arg(document, QLocale().toString(copy.SavedAt, QLocale::ShortFormat)),
        tr("Recover"), norva::TMessageIcon::Question, norva::TMessageButtons::YesNo);
    if (answer == norva::TMessageResult::Yes) {
      Recover(copy);
      return;
    }
  }
}

void TStudioWindow::Recover(const TRecoverable& copy) {
  try {
    if (!mKeypad->LoadFile(copy.AutoSave)) return;
  } catch (const std::exception& error) {
    ShowError(error, tr("Recover"));
    return;
  }
  {
    const norva::TUndoSuspended undoOff;  // the copy stands for its file, changed
    mKeypad->SetName(copy.Keypad);
    mKeypad->SetNeedsSaving(true);
  }
  mView->Refresh();
  ShowState();
}

bool TStudioWindow::FileSave() {
  mView->CommitCaption();
  try {
    const bool saved = mKeypad->FileSave();
    if (saved) mRecentKeypads.Add(AbsolutePath(mKeypad->GetName()));
    ShowRecent();
    ShowState();
    return saved;
  } catch (const std::exception& error) {
    ShowError(error, tr("Save"));
    return false;
  }
}

bool TStudioWindow::FileSaveAs() {
  const QString path = WithKeypadExtension(mChooseFile(TFileRole::SaveKeypad));
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
  SaveLibrary();  // an undone library edit is kept as the edit was
  mView->Refresh();
  ShowState();
}

void TStudioWindow::Paste() {
  if (!mView->PasteFromClipboard(mView->Selected())) PasteHexCode();
}

void TStudioWindow::PasteHexCode() {
  try {
    ShowPasted(mLibrary->PasteHexCode());
  } catch (const std::exception& error) {
    ShowError(error, tr("Paste hex code"));
  }
  ShowState();
}

void TStudioWindow::ShowPasted(const TPastedCode& pasted) {
  if (!pasted.Command) return;
  const QString name = pasted.Command->GetName();
  switch (pasted.Naming) {
    case TPastedCode::TNaming::SameCode:
      statusBar()->showMessage(
          tr("%1 added, named after the same code: %2").arg(name, pasted.NamedAfter));
      break;
    case TPastedCode::TNaming::SameButton:
      statusBar()->showMessage(tr("%1 added, named after the same button (a similar code): %2")
                                   .arg(name, pasted.NamedAfter));
      break;
    case TPastedCode::TNaming::Numbered:
      statusBar()->showMessage(tr("%1 added: the library knows no code like it").arg(name));
      break;
  }
}

QString TStudioWindow::BoundCommandText(const QString& guid) {
  if (guid.isEmpty()) return {};
  if (const norva::TCommandObject* command = mLibrary->FindCommand(guid)) {
    mBindings.Remember(guid, LibraryOf(*command), command->GetName());
    return command->GetName();
  }
  const norva::TIRDB* database = mLibrary->Database();
  const QString wanted = mBindings.Wanted(guid);
  return tr("not in library %1 nor the built-in commands: %2")
      .arg(database ? database->GetShortName() : tr("(none open)"),
           wanted.isEmpty() ? guid : tr("wanted %1").arg(wanted));
}

QString TStudioWindow::LibraryOf(const norva::TCommandObject& command) {
  const norva::TOrbObject* owner = command.GetOwner();
  while (owner && !qobject_cast<const norva::TIRDB*>(owner)) owner = owner->GetOwner();
  const auto* database = qobject_cast<const norva::TIRDB*>(owner);
  return database && !database->GetFilename().isEmpty()
             ? tr("library %1").arg(database->GetShortName())
             : tr("the built-in commands");
}

norva::TCommandObject* TStudioWindow::SelectedCommand() const {
  return mLibrary->FindCommand(mKeypad->Button(mView->Selected()).GetCommandGUID());
}

bool TStudioWindow::SendSelectedCommand() {
  const norva::TCommandObject* command = SelectedCommand();
  if (!command) {
    Tell(tr("The selected button has no command from the library."), tr("Send"));
    return false;
  }
  const std::optional<norva::TCommandPacket> packet = BusPacketOf(command);
  if (!packet) {
    Tell(tr("%1 is no native code: only the amplifiers' own codes go over the bus.")
             .arg(command->GetName()),
         tr("Send"));
    return false;
  }
  if (!mBusView->Send(*packet)) {
    Tell(tr("%1: nothing was sent.").arg(mLink->State()), tr("Send"));
    return false;
  }
  return true;
}

void TStudioWindow::AddModel() {
  const QString make = mAskText(tr("Make:"), QStringLiteral("User"));
  if (make.isEmpty()) return;
  const QString model = mAskText(tr("Model of %1:").arg(make), QString());
  if (model.isEmpty()) return;
  if (!mLibrary->AddModel(make, model))
    Tell(tr("%1 takes no models here: the library is read-only or the make built in.").arg(make),
         tr("Add model"));
}

void TStudioWindow::ImportCodes() {
  const QString path = mChooseFile(TFileRole::ImportCodes);
  if (path.isEmpty()) return;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    Tell(tr("Cannot read %1: %2").arg(path, file.errorString()), tr("Import"));
    return;
  }
  const norva::TCodeImportResult imported = mLibrary->ImportCodes(path, file.readAll());
  QStringList lines{tr("added %1, skipped %2, refused %3")
                        .arg(imported.Added)
                        .arg(imported.Skipped)
                        .arg(imported.Refusals.size())};
  for (const norva::TCodeFileRefusal& refusal : imported.Refusals.mid(0, ShownRefusals))
    lines << refusal.Place + QStringLiteral(": ") + refusal.Reason;
  if (!imported.Duplicates.isEmpty())
    lines << tr("%n code(s) added under a second name:", nullptr,
                static_cast<int>(imported.Duplicates.size()))
          << imported.Duplicates.mid(0, ShownRefusals);
  Tell(lines.join(QLatin1Char('\n')), tr("Import"));
  ShowState();
}

void TStudioWindow::ExportCodes() {
  const QString path = mChooseFile(TFileRole::ExportCodes);
  if (path.isEmpty()) return;
  const QString suffix = QFileInfo(path).suffix().toLower();
  const norva::TCodeExportFormat format =
      suffix == QStringLiteral("girr") ? norva::TCodeExportFormat::Girr
      : suffix == QStringLiteral("ir") ? norva::TCodeExportFormat::Flipper
                                       : norva::TCodeExportFormat::Pronto;
  const std::optional<norva::TCodeExport> exported = mLibrary->ExportChosen(format);
  if (!exported) {
    Tell(tr("Choose a model or the commands to export in the library first."), tr("Export"));
    return;
  }
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(exported->Bytes) != exported->Bytes.size()) {
    Tell(tr("Cannot write %1: %2").arg(path, file.errorString()), tr("Export"));
    return;
  }
  if (!exported->Unwritten.isEmpty())
    Tell(tr("These commands could not be written:") + QLatin1Char('\n') +
             exported->Unwritten.mid(0, 20).join(QLatin1Char('\n')),
         tr("Export"));
}

void TStudioWindow::NewCodeFromProtocol() {
  TProtocolCodeDialog dialog(this);
  if (dialog.exec() != QDialog::Accepted || !dialog.Stream()) return;
  if (!mLibrary->AddStream(*dialog.Stream(), dialog.CodeName()))
    Tell(tr("The library is read-only: open or create one of your own."), tr("New code"));
}

void TStudioWindow::RenameCode() {
  norva::TCommandObject* command = mLibrary->CurrentCommand();
  if (!command || command->IsReadOnly()) return;
  const QString name = mAskText(tr("Name of the code:"), command->GetName());
  if (name.isEmpty()) return;
  mLibrary->Rename(*command, name);
}

void TStudioWindow::ConnectEthernet() {
  const QStringList recent = mRecentAddresses.Entries();
  const QString address = mAskText(tr("Address of the device (host:port):"),
                                   recent.isEmpty() ? QString() : recent.first());
  if (address.isEmpty()) return;
  mRecentAddresses.Add(address);
  mLink->ConnectEthernet(address);
}

void TStudioWindow::ConnectSerialLine() {
  const QStringList recent = mRecentSerialLines.Entries();
  const QString line =
      mAskText(tr("Path of the serial line (norva-sim prints its own, \"pty: /dev/pts/N\"):"),
               recent.isEmpty() ? QStringLiteral("/dev/pts/") : recent.first());
  if (!line.isEmpty()) ConnectSerial(line);
}

void TStudioWindow::ConnectSerial(const QString& line) {
  mRecentSerialLines.Add(line);
  mLink->ConnectSerial(line);
}

void TStudioWindow::LogLinkChange() {
  const QString state = mLink->State();
  if (state == mLoggedLinkState) return;
  mLoggedLinkState = state;
  mBusView->Log().AppendLinkChange(state);
}

void TStudioWindow::ExportBusLog() {
  const QString path = mChooseFile(TFileRole::ExportBusLog);
  if (path.isEmpty()) return;
  mBusView->Log().Flush();
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || !mBusView->WriteShownRows(file) || !file.commit())
    Tell(tr("Cannot write %1: %2").arg(path, file.errorString()), tr("Export the bus log"));
}

void TStudioWindow::ShowCurrentCode() {
  const auto* stream = qobject_cast<const norva::TIRStream*>(mLibrary->CurrentCommand());
  const std::optional<norva::TCommandPacket> packet = BusPacketOf(stream);
  if (packet)
    statusBar()->showMessage(tr("%1: native frame %2, sent on the bus as %3")
                                 .arg(stream->GetName(), norva::NorvaFrameText(stream->Data()),
                                      QString::fromLatin1(norva::PacketText(*packet).trimmed())));
  else
    statusBar()->clearMessage();
}

void TStudioWindow::closeEvent(QCloseEvent* event) {
  mView->CommitCaption();
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
  SaveLibrary();
  QSettings settings = StudioSettings();
  settings.setValue(QStringLiteral("geometry"), saveGeometry());
  settings.setValue(QStringLiteral("panels"), saveState());
  mBindings.Save(settings);
  settings.setValue(AutoSavesSeenKey, QDateTime::currentDateTime());
  event->accept();
}

}  // namespace studio
