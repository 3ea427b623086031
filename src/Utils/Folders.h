#pragma once
// Where the application keeps its files. Paths are joined with '/'; a folder that cannot be
// determined gives the empty string, and so does every folder built on it (never a path at the
// file-system root).
//
// Counterparts of the desktop folders:
//   documents             the user's documents folder (QStandardPaths::DocumentsLocation)
//   recent                the user's data folder where the desktop keeps its list of recently
//                         used files (QStandardPaths::GenericDataLocation)
//   common app data       the first shared (not per-user) data folder of the system, that is the
//                         first entry of QStandardPaths::standardLocations(GenericDataLocation)
//                         after the user's own, usually /usr/local/share (from XDG_DATA_DIRS)

#include <QString>

namespace norva {

enum TFolderId : int {
  folderDocuments = 5,
  folderRecent = 8,
  folderCommonAppData = 35,
};

// The folder of the running executable, with a trailing '/'.
QString GetAppPath();
// The folder for `id`, without a trailing '/'; "" for an unknown id or a failed query.
QString GetFolderPath(TFolderId id);
// Common application data + "/Norva Keypad Manager/". Not created: it belongs to the installation.
QString GetCommonAppDataPath();
// Documents + "/Norva Keypad Manager/", created with its parents when absent.
QString GetMyDocumentsPath();
// Documents + "/Norva Firmwares/"; not created.
QString GetFirmwarePath();
// GetMyDocumentsPath() + "autosave" (no trailing '/'), or the folder SetAutoSaveDir chose; created
// when absent.
QString GetAutoSaveDir();
// Keeps auto-saves in `folder` instead (an application's own choice, a test's temporary folder);
// an empty string restores the folder below the documents. Returns the previous choice.
QString SetAutoSaveDir(const QString& folder);
QString GetRecentPath();
// File systems here have no short (8.3) names, so every path is already in its long form: the path
// is returned unchanged.
QString GetLongPathName(const QString& path);

}  // namespace norva
