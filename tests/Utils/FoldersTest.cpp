#include <Utils/Folders.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <optional>

namespace norva {
namespace {

// Sets an environment variable (or removes it) for one test, restoring it afterwards.
class TScopedEnvironment {
 public:
  TScopedEnvironment(const char* name, std::optional<QByteArray> value) : mName(name) {
    if (qEnvironmentVariableIsSet(name)) mPrevious = qgetenv(name);
    Set(value);
  }
  ~TScopedEnvironment() { Set(mPrevious); }

 private:
  void Set(const std::optional<QByteArray>& value) {
    if (value) {
      qputenv(mName, *value);
    } else {
      qunsetenv(mName);
    }
  }

  const char* mName;
  std::optional<QByteArray> mPrevious;
};

// Every folder lies below a temporary root, so the real user's folders are never touched.
class Folders : public testing::Test {
 protected:
  Folders() { QStandardPaths::setTestModeEnabled(true); }
  ~Folders() override { QStandardPaths::setTestModeEnabled(false); }

  QString Home() const { return mRoot.filePath("home"); }
  QString Documents() const { return Home() + "/Documents"; }
  QString SharedFirst() const { return mRoot.filePath("shared-first"); }

  QTemporaryDir mRoot;
  TScopedEnvironment mHome{"HOME", Home().toUtf8()};
  TScopedEnvironment mDataHome{"XDG_DATA_HOME", std::nullopt};
  TScopedEnvironment mConfigHome{"XDG_CONFIG_HOME", std::nullopt};
  TScopedEnvironment mDataDirs{"XDG_DATA_DIRS",
                               (SharedFirst() + ':' + mRoot.filePath("shared-second")).toUtf8()};
};

TEST_F(Folders, MyDocumentsIsCreatedWithItsParents) {
  ASSERT_FALSE(QFileInfo::exists(Documents()));
  const QString path = GetMyDocumentsPath();
  EXPECT_EQ(path, Documents() + "/Norva Keypad Manager/");
  EXPECT_TRUE(QFileInfo(path).isDir());
  EXPECT_EQ(GetFolderPath(folderDocuments), Documents());
}

TEST_F(Folders, AutoSaveDirHasNoTrailingSlashAndIsCreated) {
  const QString path = GetAutoSaveDir();
  EXPECT_EQ(path, Documents() + "/Norva Keypad Manager/autosave");
  EXPECT_TRUE(QFileInfo(path).isDir());
}

TEST_F(Folders, FirmwarePathIsNotCreated) {
  EXPECT_EQ(GetFirmwarePath(), Documents() + "/Norva Firmwares/");
  EXPECT_FALSE(QFileInfo::exists(GetFirmwarePath()));
}

TEST_F(Folders, CommonAppDataIsTheFirstSharedDataFolder) {
  EXPECT_EQ(GetFolderPath(folderCommonAppData), SharedFirst());
  EXPECT_EQ(GetCommonAppDataPath(), SharedFirst() + "/Norva Keypad Manager/");
  EXPECT_FALSE(QFileInfo::exists(SharedFirst())) << "the shared folder belongs to the installation";
}

TEST_F(Folders, RecentIsInTheUsersOwnDataFolder) {
  const QString recent = GetRecentPath();
  EXPECT_EQ(recent, GetFolderPath(folderRecent));
  EXPECT_TRUE(recent.startsWith(Home() + '/')) << recent.toStdString();
  EXPECT_FALSE(recent.endsWith('/'));
}

TEST_F(Folders, UnknownIdentifiersGiveNoFolder) {
  for (int id : {0, 6, 26, 36, -1}) {
    EXPECT_EQ(GetFolderPath(static_cast<TFolderId>(id)), QString()) << id;
  }
}

TEST(AppPath, IsTheExecutablesFolderWithATrailingSlash) {
  EXPECT_EQ(GetAppPath(), QCoreApplication::applicationDirPath() + '/');
}

TEST(LongPathName, LeavesPathsUnchanged) {
  for (const QString& path :
       {QStringLiteral("/tmp/PROGRA~1/x.keycfg"), QStringLiteral("rel/a b"), QString()}) {
    EXPECT_EQ(GetLongPathName(path), path);
  }
}

}  // namespace
}  // namespace norva
