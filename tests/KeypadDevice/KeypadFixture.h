#pragma once
// A keypad document in a temporary folder of its own, with the clock fixed at 14:25:30 on a day in
// November, auto-saves kept in the folder, and every box recorded.

#include <KeypadDevice/KeypadDevice.h>
#include <KeypadDevice/WallKeypad.h>
#include <NorvaGlobal/Exceptions.h>
#include <NorvaGlobal/UIServices.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <Testing/RecordingUIServices.h>
#include <Utils/Folders.h>
#include <support/FakeClock.h>
#include <support/QtPrinters.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace norva {

class KeypadFixture : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(mFolder.isValid());
    mPreviousAutoSaveDir = SetAutoSaveDir(Path("autosave"));
  }
  void TearDown() override {
    SetAutoSaveDir(mPreviousAutoSaveDir);
    SetKeypadClient(nullptr);
    Undo().Empty();
    Redo().Empty();
  }

  QString Path(const QString& name) const { return mFolder.filePath(name); }
  static QByteArray FileBytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  static void WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(bytes);
  }
  static QStringList FilesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }

  // Three buttons bound to commands, as an installer leaves them, closed as one undo step.
  static void Bind(norva::TWallKeypad& keypad) {
    const char* captions[] = {"Off", "Mute", "Radio"};
    const std::uint8_t classes[] = {ButtonClass_Standby, ButtonClass_Mute, ButtonClass_SourceTuner};
    for (int i = 0; i < 3; ++i) {
      keypad.Button(i).SetCaption(QString::fromLatin1(captions[i]));
      keypad.Button(i).SetButtonClass(TButtonClass(SystemClassGroup, classes[i]));
      keypad.Button(i).SetCommandGUID(
          QStringLiteral("{11111111-2222-3333-4444-00000000000%1}").arg(i));
    }
    keypad.SetZoneType(PreampZone);
    MaintainUndo();
  }

  static void ExpectSameContents(const norva::TWallKeypad& a, const norva::TWallKeypad& b) {
    EXPECT_EQ(a.GetZoneType(), b.GetZoneType());
    EXPECT_EQ(a.GetFirmwareVersion(), b.GetFirmwareVersion());
    for (int i = 0; i < norva::TWallKeypad::ButtonCount; ++i) {
      EXPECT_EQ(a.Button(i).GetCaption(), b.Button(i).GetCaption()) << "button " << i;
      EXPECT_EQ(a.Button(i).GetCommandGUID(), b.Button(i).GetCommandGUID()) << "button " << i;
      EXPECT_TRUE(a.Button(i).GetButtonClass() == b.Button(i).GetButtonClass()) << "button " << i;
    }
  }

  static void ExpectFlags(const TKeypadDevice& keypad, bool needsSaving, bool needsAutoSaving) {
    EXPECT_EQ(keypad.GetNeedsSaving(), needsSaving);
    EXPECT_EQ(keypad.GetNeedsAutoSaving(), needsAutoSaving);
  }

  QTemporaryDir mFolder;
  QString mPreviousAutoSaveDir;
  TRecordingUIServices mServices;
  TScopedUIServices mInstalled{mServices};
  testing::TFakeDateTime mClock{QDateTime(QDate(2026, 11, 23), QTime(14, 25, 30))};
  norva::TWallKeypad mKeypad;
};

// Chooses the given path (or none) when a document asks for a name, and counts the requests.
class TChoosingClient : public IKeypadClient {
 public:
  explicit TChoosingClient(QString path) : mPath(std::move(path)) {}
  void ChooseFileName(TKeypadDevice& device) override {
    ++mRequests;
    if (!mPath.isEmpty()) device.SetName(mPath);
  }
  int Requests() const { return mRequests; }

 private:
  QString mPath;
  int mRequests = 0;
};

}  // namespace norva
