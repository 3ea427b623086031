// What a keypad document must never do on its own: take a bare file name for a place to save,
// let a keypad type's failure while saving lose the path, forget which applet names a button's
// class, or record an undo step for anything but an edit.

#include "KeypadFixture.h"

#include <OrbGlobal/Model/OrbClassRegistry.h>

#include <stdexcept>

namespace norva {
namespace {

using KeypadIntegrity = KeypadFixture;

// An applet whose classes buttons may hold: a model class the registry knows.
class TLightingApplet : public TOrbObject {
  Q_OBJECT
  Q_CLASSINFO("ClassGUID", "{5B0C7E21-9D4A-4F3B-8E6D-2A1C0B9F8E7D}")

 public:
  Q_INVOKABLE explicit TLightingApplet(TOrbObject* owner = nullptr) : TOrbObject(owner) {}
};

// A wall keypad whose own save code fails with the given failure.
class TFailingKeypad : public norva::TWallKeypad {
 public:
  explicit TFailingKeypad(std::function<void()> fail) : mFail(std::move(fail)) {}
  void SaveContents(pugi::xml_node root) const override {
    norva::TWallKeypad::SaveContents(root);
    mFail();
  }

 private:
  std::function<void()> mFail;
};

// Runs `run` with `folder` as the working folder, where a bare name would land.
template <typename F>
void InFolder(const QString& folder, F run) {
  const QString previous = QDir::currentPath();
  QDir::setCurrent(folder);
  run();
  QDir::setCurrent(previous);
}

TEST_F(KeypadIntegrity, ANameIsUsableOnlyWhenItsFolderPartExists) {
  const struct {
    QString Name;
    bool Usable;
  } cases[] = {
      {QString(), false},
      {QStringLiteral("Lounge.keycfg"), false},  // no folder part at all
      {Path("gone/Lounge.keycfg"), false},
      {Path("Lounge.keycfg"), true},
      {QStringLiteral("./Lounge.keycfg"), true},
  };
  InFolder(mFolder.path(), [&] {
    for (const auto& c : cases) {
      norva::TWallKeypad keypad;
      keypad.SetName(c.Name);
      Bind(keypad);
      EXPECT_EQ(keypad.HasUsableName(), c.Usable) << c.Name.toStdString();
      EXPECT_EQ(keypad.FileSave(), c.Usable) << c.Name.toStdString() << ": no client to ask";
      EXPECT_EQ(FilesIn(mFolder.path()).size(), c.Usable ? 1 : 0) << c.Name.toStdString();
      for (const QString& file : FilesIn(mFolder.path())) QFile::remove(Path(file));
    }
  });
}

TEST_F(KeypadIntegrity, AKeypadTypesOwnSaveFailureNamesThePath) {
  const QString path = Path("Lounge.keycfg");
  const struct {
    const char* What;
    std::function<void()> Fail;
    QString Reason;
  } cases[] = {
      {"library failure", [] { throw ENorvaError(QStringLiteral("Button 3 has no caption")); },
       QStringLiteral("Button 3 has no caption")},
      {"standard failure", [] { throw std::runtime_error("no memory for the image"); },
       QStringLiteral("no memory for the image")},
  };
  for (const auto& c : cases) {
    TFailingKeypad keypad(c.Fail);
    keypad.SetName(path);
    Bind(keypad);
    for (const auto& save : {std::function<bool()>([&] { return keypad.FileSave(); }),
                             std::function<bool()>([&] { return keypad.FileAutoSave(); })}) {
      try {
        save();
        ADD_FAILURE() << c.What << ": saved";
      } catch (const ENorvaError& error) {
        EXPECT_TRUE(error.Message().startsWith(c.Reason + QStringLiteral(" while saving ")))
            << c.What << ": " << error.what();
        EXPECT_TRUE(error.Message().contains(mFolder.path())) << c.What << ": " << error.what();
      } catch (const std::exception& error) {
        ADD_FAILURE() << c.What << ": reached the user as " << error.what();
      }
      ExpectFlags(keypad, true, true);
    }
  }
}

TEST_F(KeypadIntegrity, AnAppletButtonClassKeepsItsClientClass) {
  RegisterOrbObjectClass(&TLightingApplet::staticMetaObject);
  const TButtonClass applet(&TLightingApplet::staticMetaObject, 4);
  norva::TWallKeypadButton& button = mKeypad.Button(1);
  mKeypad.SetName(Path("Lounge.keycfg"));
  button.SetButtonClass(applet);
  MaintainUndo();
  EXPECT_TRUE(button.GetButtonClass() == applet) << button.GetButtonClass().GetName().toStdString();

  Undo().Revert();
  MaintainUndo();
  EXPECT_TRUE(button.GetButtonClass().IsNone());
  Redo().Revert();
  MaintainUndo();
  EXPECT_TRUE(button.GetButtonClass() == applet) << "redone";

  norva::TWallKeypad copy;
  copy.AssignContents(mKeypad);
  EXPECT_TRUE(copy.Button(1).GetButtonClass() == applet) << "copied";
  ASSERT_TRUE(mKeypad.FileSave());
  norva::TWallKeypad loaded;
  ASSERT_TRUE(loaded.LoadFile(Path("Lounge.keycfg")));
  EXPECT_TRUE(loaded.Button(1).GetButtonClass() == applet) << "saved and loaded";
}

TEST_F(KeypadIntegrity, ConstructingLoadingAndAutoSavingRecordNothing) {
  mKeypad.SetName(Path("Lounge.keycfg"));
  ASSERT_TRUE(mKeypad.FileSave());
  Undo().Empty();

  norva::TWallKeypad constructed;
  const std::unique_ptr<TKeypadDevice> created =
      CreateKeypadDevice(&norva::TWallKeypad::staticMetaObject);
  ASSERT_TRUE(mKeypad.LoadFile(Path("Lounge.keycfg")));
  ASSERT_TRUE(constructed.LoadFile(Path("Lounge.keycfg")));
  ASSERT_TRUE(mKeypad.FileAutoSave());
  EXPECT_EQ(Undo().Count(), 0);
  EXPECT_EQ(Redo().Count(), 0);

  // With the user's edits in the history, another document's construction and an auto-save add
  // nothing to it.
  Bind(mKeypad);
  const int edits = Undo().Count();
  ASSERT_GT(edits, 0);
  norva::TWallKeypad another;
  ASSERT_TRUE(mKeypad.FileAutoSave());
  EXPECT_EQ(Undo().Count(), edits);
  ExpectFlags(another, false, false);
}

}  // namespace
}  // namespace norva

#include "DocumentIntegrityTest.moc"
