#include <IR_Database/IRDatabase.h>

#include <IR/CommandClasses.h>
#include <IR/NorvaIRStream.h>
#include <IR_Database/BuiltInMakes.h>
#include <NorvaGlobal/ErrorMessages.h>
#include <NorvaGlobal/Exceptions.h>
#include <NorvaGlobal/UIServices.h>
#include <OrbGlobal/Model/AssignTarget.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlDocument.h>
#include <OrbGlobal/Xml/XmlErrors.h>
#include <OrbGlobal/Xml/XmlLookup.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include <filesystem>
#include <system_error>

namespace norva {

namespace {

// Walks every IR stream of the models of the database, in order, with its model.
template <typename Visit>
bool ForEachStream(const TIRDB& database, Visit visit) {
  for (int m = 0; m < database.GetMakeCount(); ++m) {
    const TMake* make = database.GetMake(m);
    for (int i = 0; i < make->GetModelCount(); ++i) {
      const TModel* model = make->GetModel(i);
      for (int c = 0; c < model->GetCommandCount(); ++c) {
        const auto* stream = qobject_cast<const TIRStream*>(model->GetCommand(c));
        if (stream && visit(*stream, *model)) return true;
      }
    }
  }
  return false;
}

// A reason as one line of text: XML errors may carry line breaks.
QString OneLine(const QString& text) {
  return text.split(QRegularExpression(QStringLiteral("[\\r\\n]+")), Qt::SkipEmptyParts).join(u' ');
}

// A file marked read-only in the file system: its owner may not write it. Judged by the bits, as
// root may write any file; a file this user may not write is read-only as well.
bool IsMarkedReadOnly(const QFileInfo& file) {
  const QFileDevice::Permissions permissions = file.permissions();
  return !(permissions & QFileDevice::WriteOwner) || !(permissions & QFileDevice::WriteUser);
}

// Copies the file a save is about to replace to its backup: first beside it, then renamed over
// the old backup, so that a failure leaves the old backup whole.
void KeepBackup(const QString& path) {
  namespace fs = std::filesystem;
  const fs::path previous(QFile::encodeName(path).toStdString());
  if (!fs::exists(previous)) return;
  const QString backupPath = TIRDB::BackupPath(path);
  const fs::path backup(QFile::encodeName(backupPath).toStdString());
  fs::path linking = backup;
  linking += ".part";
  std::error_code error;
  fs::remove(linking, error);
  // A second name for the previous file costs nothing, and the save's rename leaves that file to
  // the backup alone; where the file system has no such names, the file is copied.
  fs::create_hard_link(previous, linking, error);
  if (error) fs::copy_file(previous, linking, fs::copy_options::overwrite_existing, error);
  if (!error) fs::rename(linking, backup, error);
  if (!error) return;
  const QString reason = QString::fromLocal8Bit(error.message());
  fs::remove(linking, error);
  throw ENorvaError(QStringLiteral("Cannot write %1: %2").arg(backupPath, reason));
}

void Name(TIRStream& stream, const TStreamName& name) {
  stream.BeginUpdate();
  stream.SetName(name.Name);
  stream.SetCategory(name.Category);
  stream.EndUpdate();
}

}  // namespace

TIRDB::TIRDB(const QString& filename, bool isPublic, TDatabaseError onError)
    : mMakes(true, this), mPublic(isPublic), mReadOnly(isPublic), mOnError(std::move(onError)) {
  mMakes.SetUpdateOwner(true);
  SetFilename(filename);
  Load();
  mNeedsSaving = false;
}

// The streams outlive the index as the makes go after this body: their watches must go first.
TIRDB::~TIRDB() { DropIndexes(); }

QString TIRDB::BackupPath(const QString& path) { return path + QStringLiteral(".bak"); }

void TIRDB::SetFilename(const QString& path) {
  const TUndoSuspended undoOff;
  SetNameRaw(path);
}

QString TIRDB::GetShortName() const {
  const QFileInfo file(GetFilename());
  QString name = file.fileName();
  const QString extension = file.suffix();
  if (extension.isEmpty()) return name;
  const qsizetype at = name.indexOf(u'.' + extension, 0, Qt::CaseInsensitive);
  return name.remove(at, extension.size() + 1);
}

void TIRDB::AddBuiltInMakes() {
  mMakes.Add(new TNorvaMake(this));
  mMakes.Add(new TIntegraMake(this));
}

void TIRDB::Clear() {
  mMakes.Clear();
  if (mPublic) AddBuiltInMakes();
  Updated();
}

TMake* TIRDB::AddNewMake() {
  auto* make = new TMake(this);
  mMakes.Add(make);
  return make;
}

TMake* TIRDB::GetMakeByName(const QString& name) const {
  for (TOrbObject* make : mMakes)
    if (make->GetName().compare(name, Qt::CaseInsensitive) == 0) return static_cast<TMake*>(make);
  return nullptr;
}

TModel* TIRDB::GetOrAddModel(const QString& makeName, const QString& modelName) {
  if (IsReadOnly()) return nullptr;
  TMake* make = GetMakeByName(makeName);
  if (!make) {
    make = AddNewMake();
    make->SetName(makeName);
  }
  if (make->IsReadOnly()) return nullptr;
  TModel* model = make->GetModelByName(modelName);
  if (!model) {
    model = make->AddNewModel();
    model->SetName(modelName);
  }
  return model;
}

TOrbObjectList* TIRDB::GetChildList(const TOrbObject* child) const {
  return qobject_cast<const TMake*>(child) ? &mMakes : nullptr;
}

void TIRDB::Updated(TOrbObject* sender) {
  TOrbObject::Updated(sender);
  DropIndexes();
  mNeedsSaving = !IsReadOnly();
}

void TIRDB::AssignTo(QObject* dest) const {
  const TAssignTarget<TIRDB> database(this, dest);
  if (!database) {
    TOrbObject::AssignTo(dest);  // itself, or what a database does not convert to
    return;
  }
  database->mMakes.Clear();
  for (int i = 0; i < GetMakeCount(); ++i) database->AddNewMake()->Assign(GetMake(i));
}

void TIRDB::Load() {
  const TUndoSuspended undoOff;
  BeginUpdate();
  try {
    mLoadFailure.clear();
    Clear();
    LoadFile(GetFilename());
  } catch (...) {
    EndUpdate();
    throw;
  }
  EndUpdate();
}

void TIRDB::LoadFile(const QString& path) {
  if (!QFileInfo::exists(path)) return;
  pugi::xml_document document;
  try {
    LoadXMLDocumentFromFile(document, path);
  } catch (const EXMLParseError& error) {
    ReportLoadFailure(QStringLiteral("Error loading %1\r\n\r\n%2\r\nLine: %3, position: %4")
                          .arg(path, error.Reason())
                          .arg(error.Line())
                          .arg(error.Column()),
                      QStringLiteral("Error loading %1: %2 (line %3, position %4)")
                          .arg(path, OneLine(error.Reason()))
                          .arg(error.Line())
                          .arg(error.Column()));
    return;
  } catch (const EXMLError& error) {
    ReportLoadFailure(
        QStringLiteral("Unknown error loading %1").arg(path),
        QStringLiteral("Unknown error loading %1: %2").arg(path, OneLine(error.Message())));
    return;
  }
  if (IsMarkedReadOnly(QFileInfo(path))) mReadOnly = true;
  RegisterCommandClasses();
  try {
    for (pugi::xml_node element : document.document_element().children("make")) {
      const QString name = NameAttribute(element);
      TMake* make = GetMakeByName(name);
      if (!make) {
        make = AddNewMake();
        make->SetName(name);
      }
      make->Load(element);
    }
  } catch (const ENorvaError& error) {
    // A value no command can hold: reported like a malformed file, and nothing is kept of it.
    Clear();
    ReportLoadFailure(QStringLiteral("Error loading %1\r\n\r\n%2").arg(path, error.Message()),
                      QStringLiteral("Error loading %1: %2").arg(path, OneLine(error.Message())));
  }
}

void TIRDB::ReportLoadFailure(const QString& errorMsg, const QString& failure) {
  mLoadFailure = failure;
  bool handled = false;
  if (mOnError) mOnError(*this, errorMsg, handled);
  if (!handled) CommError(errorMsg);
}

void TIRDB::Save() {
  const TBusyCursor busy;
  QString path = GetFilename();
  if (!mLoadFailure.isEmpty())
    throw ENorvaError(QStringLiteral("Not written over a library that did not load: %1 while "
                                     "saving %2")
                          .arg(mLoadFailure, path));
  try {
    pugi::xml_document document;
    const pugi::xml_node root = StartXMLDocument(document, "ir_database");
    for (int i = 0; i < GetMakeCount(); ++i) GetMake(i)->Save(root);

    const QString folder = QFileInfo(path).absolutePath();
    if (!QDir(folder).exists()) {
      const QString temporary = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
      if (temporary.isEmpty()) return;  // nowhere to go: nothing written, still needs saving
      const QString moved = QDir(temporary).filePath(QFileInfo(path).fileName());
      SetFilename(moved);
      UIServices().MessageBox(
          QStringLiteral("Cannot save %1.\r\n\r\nSaving to %2 instead.").arg(path, moved),
          QStringLiteral("Saving database"), TMessageIcon::Exclamation, TMessageButtons::OK);
      path = moved;
    }
    KeepBackup(path);
    SaveXMLDocumentToFile(document, path);
  } catch (const ENorvaError& error) {
    throw ENorvaError(error.Message() + QStringLiteral(" while saving ") + path);
  }
  mNeedsSaving = false;
}

void TIRDB::SaveAs(const QString& path) {
  // The file that did not load stays refused under any spelling of its name.
  if (QFileInfo(path) != QFileInfo(GetFilename()))
    mLoadFailure.clear();  // first, so that the new name makes the database need saving
  SetFilename(path);
  Save();
}

template <typename TIndex>
const TIndex& TIRDB::BuiltIndex(std::unique_ptr<TIndex>& index) const {
  if (!index) {
    WatchIndexedStreams();
    index = std::make_unique<TIndex>();
    ForEachStream(*this, [&index](const TIRStream& stream, const TModel& model) {
      index->Add(stream.Data(), {stream.GetName(), model.GetFullName()});
      return false;
    });
  }
  return *index;
}

void TIRDB::WatchIndexedStreams() const {
  if (mWatchingStreams) return;
  mWatchingStreams = true;
  ForEachStream(*this, [this](const TIRStream& stream, const TModel&) {
    mIndexWatches.push_back(
        QObject::connect(&stream, &QObject::destroyed, this, [this] { DropIndexes(); }));
    return false;
  });
}

void TIRDB::DropIndexes() const {
  for (const QMetaObject::Connection& watch : mIndexWatches) QObject::disconnect(watch);
  mIndexWatches.clear();
  mWatchingStreams = false;
  mNameIndex.reset();
  mRecognitionIndex.reset();
}

TStreamNameIndex TIRDB::ExactNameIndex() const { return BuiltIndex(mNameIndex); }

bool TIRDB::GetNames(TIRStream& stream) const {
  const TStreamName* name = BuiltIndex(mNameIndex).Find(stream.Data());
  if (!name && mPublic) name = NativeStreamNames().Find(stream.Data());
  if (!name) return false;
  Name(stream, *name);
  return true;
}

bool TIRDB::GetNamesByWalking(TIRStream& stream) const {
  TStreamName found;
  const bool known = ForEachStream(*this, [&](const TIRStream& command, const TModel& model) {
    if (!stream.Match(&command)) return false;
    found = {command.GetName(), model.GetFullName()};
    return true;
  });
  if (known) {
    Name(stream, found);
    return true;
  }
  if (!mPublic) return false;
  const bool native = ForEachNativeCode([&](const TNorvaIRStream& code) {
    if (!stream.Match(&code)) return false;
    found = {code.GetName(), code.GetCategory()};
    return true;
  });
  if (native) Name(stream, found);
  return native;
}

QList<TStreamName> TIRDB::RecogniseNames(const TIRStreamData& stream) const {
  const TButtonPrint print = ButtonPrintOf(stream);
  QList<TStreamName> names = BuiltIndex(mRecognitionIndex).Find(print);
  if (mPublic) names += NativeStreamRecognition().Find(print);
  return names;
}

}  // namespace norva
