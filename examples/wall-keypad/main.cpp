// A wall keypad configuration as the designer handles it: buttons bound to commands, saved,
// changed, auto-saved, the change undone, loaded back, and the close prompt answered.
#include <KeypadDevice/WallKeypad.h>

#include <ButtonClasses/ButtonClasses.h>
#include <NorvaGlobal/NorvaGlobal.h>
#include <OrbGlobal/OrbGlobal.h>
#include <Utils/Folders.h>

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QUuid>

#include <cstdio>

namespace {

int Fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  return 1;
}

// The application's answer when a document has no file name yet: here always the same file.
class TFixedNameClient : public norva::IKeypadClient {
 public:
  explicit TFixedNameClient(QString path) : mPath(std::move(path)) {}
  void ChooseFileName(norva::TKeypadDevice& device) override { device.SetName(mPath); }

 private:
  QString mPath;
};

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  const QTemporaryDir folder;
  norva::SetAutoSaveDir(folder.filePath(QStringLiteral("autosave")));
  TFixedNameClient client(folder.filePath(QStringLiteral("Lounge.keycfg")));
  norva::SetKeypadClient(&client);

  // Bind three buttons to commands of the library (their GUIDs) with the classes they serve.
  norva::TWallKeypad keypad;
  const char* captions[] = {"Off", "Mute", "Radio"};
  const norva::TButtonClass classes[] = {
      norva::TButtonClass(norva::SystemClassGroup, norva::ButtonClass_Standby),
      norva::TButtonClass(norva::SystemClassGroup, norva::ButtonClass_Mute),
      norva::TButtonClass(norva::SystemClassGroup, norva::ButtonClass_SourceTuner)};
  for (int i = 0; i < 3; ++i) {
    keypad.Button(i).SetCaption(QString::fromLatin1(captions[i]));
    keypad.Button(i).SetButtonClass(classes[i]);
    keypad.Button(i).SetCommandGUID(QUuid::createUuid().toString());
  }
  norva::MaintainUndo();
  if (!keypad.GetNeedsSaving()) return Fail("editing did not mark the keypad changed");

  // No name yet: the client chooses one, and the save clears both flags.
  if (!keypad.FileSave() || keypad.GetNeedsSaving()) return Fail("the first save failed");
  std::printf("saved %s\n", qPrintable(QDir::toNativeSeparators(keypad.GetName())));

  // A change, an auto-save of it beside the document, and the change undone.
  keypad.Button(2).SetCaption(QStringLiteral("Tuner"));
  norva::MaintainUndo();
  if (!keypad.FileAutoSave()) return Fail("the auto-save failed");
  if (keypad.GetNeedsAutoSaving() || !keypad.GetNeedsSaving())
    return Fail("an auto-save clears only its own flag");
  norva::Undo().Revert();
  norva::MaintainUndo();
  if (keypad.Button(2).GetCaption() != QLatin1String("Radio") || keypad.GetNeedsSaving())
    return Fail("undoing back to the save point did not restore the saved state");
  std::printf("auto-saved into %s\n", qPrintable(norva::GetAutoSaveDir()));

  // A second document of the same type reads the file back.
  const std::unique_ptr<norva::TKeypadDevice> copy =
      norva::CreateKeypadDevice(&norva::TWallKeypad::staticMetaObject);
  if (!copy->LoadFile(keypad.GetName())) return Fail("the file is no keypad configuration");
  const auto& loaded = static_cast<const norva::TWallKeypad&>(*copy);
  for (int i = 0; i < norva::TWallKeypad::ButtonCount; ++i) {
    const norva::TWallKeypadButton& button = loaded.Button(i);
    if (button.GetCaption() != keypad.Button(i).GetCaption() ||
        button.GetCommandGUID() != keypad.Button(i).GetCommandGUID() ||
        !(button.GetButtonClass() == keypad.Button(i).GetButtonClass()))
      return Fail("the loaded keypad differs from the saved one");
    if (!button.IsBlank())
      std::printf("button %d: %s, %s\n", i + 1, qPrintable(button.GetCaption()),
                  qPrintable(button.GetButtonClass().GetName()));
  }

  // Closing with unsaved changes asks; without a person there, the headless answer is No.
  keypad.SetZoneType(norva::PreampZone);
  if (!keypad.CanClose(true) || keypad.GetNeedsSaving()) return Fail("the keypad would not close");
  norva::SetKeypadClient(nullptr);
  return 0;
}
