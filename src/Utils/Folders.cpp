#include <Utils/Folders.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <utility>

namespace norva {

namespace {

const QString KeypadManagerFolder = QStringLiteral("/Norva Keypad Manager/");
const QString FirmwareFolder = QStringLiteral("/Norva Firmwares/");

QString RunningExecutable() {
  QString executable = QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
  if (!executable.isEmpty()) return executable;
  return QCoreApplication::instance() ? QCoreApplication::applicationFilePath() : QString();
}

QString FirstSharedDataFolder() {
  const QString userFolder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  const QStringList folders =
      QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
  for (const QString& folder : folders) {
    if (folder != userFolder) return folder;
  }
  return QString();
}

QString WithoutTrailingSlash(QString path) {
  while (path.size() > 1 && path.endsWith(u'/')) path.chop(1);
  return path;
}

// `base` + `tail`, or "" when the base folder is unknown.
QString Below(const QString& base, const QString& tail) {
  return base.isEmpty() ? QString() : base + tail;
}

QString Created(const QString& path) {
  if (!path.isEmpty()) QDir().mkpath(path);
  return path;
}

QString& AutoSaveChoice() {
  static QString folder;
  return folder;
}

}  // namespace

QString GetAppPath() {
  const QString executable = RunningExecutable();
  if (executable.isEmpty()) return QString();
  const QString folder = QFileInfo(executable).absolutePath();
  return folder.endsWith(u'/') ? folder : folder + u'/';
}

QString GetFolderPath(TFolderId id) {
  switch (id) {
    case folderDocuments:
      return WithoutTrailingSlash(
          QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    case folderRecent:
      return WithoutTrailingSlash(
          QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    case folderCommonAppData: return WithoutTrailingSlash(FirstSharedDataFolder());
  }
  return QString();
}

QString GetCommonAppDataPath() {
  return Below(GetFolderPath(folderCommonAppData), KeypadManagerFolder);
}

QString GetMyDocumentsPath() {
  return Created(Below(GetFolderPath(folderDocuments), KeypadManagerFolder));
}

QString GetFirmwarePath() { return Below(GetFolderPath(folderDocuments), FirmwareFolder); }

QString GetAutoSaveDir() {
  if (!AutoSaveChoice().isEmpty()) return Created(WithoutTrailingSlash(AutoSaveChoice()));
  return Created(Below(GetMyDocumentsPath(), QStringLiteral("autosave")));
}

QString SetAutoSaveDir(const QString& folder) { return std::exchange(AutoSaveChoice(), folder); }

QString GetRecentPath() { return GetFolderPath(folderRecent); }

QString GetLongPathName(const QString& path) { return path; }

}  // namespace norva
