#include <Utils/Folders.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace norva {
namespace {

// Every folder lies below a temporary root, so the real user's folders are never touched.
class Folders : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(mRoot.isValid());
    for (const char* name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_DATA_DIRS"}) {
      mSaved.emplace_back(name, qgetenv(name));
      qunsetenv(name);
    }
    qputenv("HOME", Home().toUtf8());
    qputenv("XDG_DATA_DIRS", (Shared() + ':' + mRoot.filePath("shared2")).toUtf8());
    QStandardPaths::setTestModeEnabled(true);
  }
  void TearDown() override {
    QStandardPaths::setTestModeEnabled(false);
    for (const auto& [name, value] : mSaved) {
      value.isNull() ? qunsetenv(name) : qputenv(name, value);
    }
  }

  QString Home() const { return mRoot.filePath("home"); }
  QString Documents() const { return Home() + "/Documents"; }
  QString Shared() const { return mRoot.filePath("shared1"); }

  QTemporaryDir mRoot;
  std::vector<std::pair<const char*, QByteArray>> mSaved;
};

TEST_F(Folders, DocumentFoldersAreCreatedWhereTheyMustBeAndUnknownOnesAreNone) {
  EXPECT_EQ(GetFolderPath(folderDocuments), Documents());
  EXPECT_EQ(GetFirmwarePath(), Documents() + "/Norva Firmwares/");
  EXPECT_FALSE(QFileInfo::exists(Documents())) << "asking for the firmware folder creates nothing";

  EXPECT_EQ(GetAutoSaveDir(), Documents() + "/Norva Keypad Manager/autosave");
  EXPECT_TRUE(QFileInfo(GetAutoSaveDir()).isDir()) << "created with all its parents";
  EXPECT_EQ(GetMyDocumentsPath(), Documents() + "/Norva Keypad Manager/");

  const QString chosen = mRoot.filePath("elsewhere/autosave");
  EXPECT_EQ(SetAutoSaveDir(chosen + '/'), QString());
  EXPECT_EQ(GetAutoSaveDir(), chosen);
  EXPECT_TRUE(QFileInfo(chosen).isDir());
  EXPECT_EQ(SetAutoSaveDir(QString()), chosen + '/');
  EXPECT_EQ(GetAutoSaveDir(), Documents() + "/Norva Keypad Manager/autosave");
  for (int id : {0, 6, 26, 36, -1}) EXPECT_EQ(GetFolderPath(static_cast<TFolderId>(id)), "") << id;
}

TEST_F(Folders, CommonAndRecentFoldersFollowTheDataFolders) {
  EXPECT_EQ(GetCommonAppDataPath(), Shared() + "/Norva Keypad Manager/");
  EXPECT_FALSE(QFileInfo::exists(Shared())) << "the shared folder belongs to the installation";
  const QString recent = GetRecentPath();
  EXPECT_TRUE(recent.startsWith(Home() + '/')) << recent.toStdString();
  EXPECT_FALSE(recent.endsWith('/'));
}

TEST(AppPath, IsTheExecutablesFolderWithATrailingSlash) {
  EXPECT_EQ(GetAppPath(), QCoreApplication::applicationDirPath() + '/');
  EXPECT_EQ(GetLongPathName(QStringLiteral("/tmp/PROGRA~1/a b")),
            QStringLiteral("/tmp/PROGRA~1/a b"));
}

}  // namespace
}  // namespace norva
