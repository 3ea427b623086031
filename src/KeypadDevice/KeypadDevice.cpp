#include <KeypadDevice/KeypadDevice.h>

#include <NorvaGlobal/Clock.h>
#include <NorvaGlobal/Exceptions.h>
#include <NorvaGlobal/UIServices.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlDocument.h>
#include <Utils/Folders.h>

#include <QDir>
#include <QFileInfo>

namespace norva {

namespace {

constexpr char RootElement[] = "keypad_configuration";

}  // namespace

TKeypadDevice::TKeypadDevice(TOrbObject* owner) : TOrbObject(owner) {}

void TKeypadDevice::SetNeedsSaving(bool value) {
  mNeedsSaving = value;
  mNeedsAutoSaving = value;
}

void TKeypadDevice::Changed() {
  // Undoing restores the flags as they were before the change; marking it again would undo that.
  if (Undo().Undoing()) return;
  if (!mNeedsSaving) {
    Updating("NeedsSaving");
    SetNeedsSaving(true);
  }
  if (!mNeedsAutoSaving) {
    Updating("NeedsAutoSaving");
    mNeedsAutoSaving = true;
  }
}

void TKeypadDevice::Updated(TOrbObject* sender) {
  TOrbObject::Updated(sender);
  Changed();
}

void TKeypadDevice::Init() {
  SetNameRaw(QString());
  Purge();
}

void TKeypadDevice::Purge() {}

void TKeypadDevice::Clear() {
  Fire(mOnClearing);
  {
    const TUndoSuspended undoOff(true);
    BeginUpdate();
    try {
      Init();
    } catch (...) {
      EndUpdate();
      throw;
    }
    EndUpdate();
  }
  SetNeedsSaving(false);
  Fire(mOnClear);
}

bool TKeypadDevice::IsFirmwareOld() const { return false; }
bool TKeypadDevice::IsFirmwardIncompatible() const { return false; }
bool TKeypadDevice::IsIncompatible() const { return false; }

// A bare file name names no folder: saving it would land wherever the process happens to run.
bool TKeypadDevice::HasUsableName() const {
  const QString name = GetName();
  return name.contains(u'/') && QFileInfo(name).dir().exists();
}

void TKeypadDevice::WriteFile(const QString& path) const {
  const auto whileSaving = [&path](const QString& message) {
    return ENorvaError(message + QStringLiteral(" while saving ") + path);
  };
  try {
    pugi::xml_document document;
    SaveContents(StartXMLDocument(document, RootElement));
    SaveXMLDocumentToFile(document, path);
  } catch (const ENorvaError& error) {
    throw whileSaving(error.Message());
  } catch (const std::exception& error) {
    // A keypad type's own save code may fail in its own way; the user still learns the path.
    throw whileSaving(QString::fromUtf8(error.what()));
  }
}

bool TKeypadDevice::FileSave() {
  if (!HasUsableName()) {
    if (IKeypadClient* client = KeypadClient()) {
      // Where the file goes is no edit of the configuration: an undo must not take it back.
      const TUndoSuspended undoOff;
      client->ChooseFileName(*this);
    }
    if (!HasUsableName()) return false;
  }
  {
    const TBusyCursor busy;
    WriteFile(GetName());
  }
  SetNeedsSaving(false);
  return true;
}

bool TKeypadDevice::FileAutoSave() {
  const QString path =
      AutoSavePath(GetAutoSaveDir(), HasName() ? GetName() : QString(), CurrentDateTime().time());
  if (path.isEmpty()) return false;
  {
    const TBusyCursor busy;
    WriteFile(path);
  }
  mNeedsAutoSaving = false;
  return true;
}

bool TKeypadDevice::FileLoad(const pugi::xml_document& document, const QString& fileName) {
  const pugi::xml_node root = document.child(RootElement);
  if (!root) return false;
  Fire(mOnLoading);
  std::exception_ptr failure;
  {
    const TUndoSuspended undoOff(true);
    BeginUpdate();
    try {
      Init();
      SetNameRaw(fileName);
      LoadContents(root);
    } catch (...) {
      // Half a configuration is worse than none: what was read goes, the file's name stays.
      failure = std::current_exception();
      Init();
      SetNameRaw(fileName);
    }
    EndUpdate();
  }
  SetNeedsSaving(false);
  Fire(mOnLoad);
  if (failure) std::rethrow_exception(failure);
  return true;
}

bool TKeypadDevice::LoadFile(const QString& fileName) {
  pugi::xml_document document;
  LoadXMLDocumentFromFile(document, fileName);
  return FileLoad(document, fileName);
}

bool TKeypadDevice::CanClose(bool mustClose) {
  if (!mNeedsSaving) return true;
  const TMessageResult answer = UIServices().MessageBox(
      QStringLiteral("Save configuration?"), QStringLiteral("Save"), TMessageIcon::Question,
      mustClose ? TMessageButtons::YesNo : TMessageButtons::YesNoCancel);
  if (answer == TMessageResult::Yes) {
    if (!FileSave()) return false;
  } else if (answer == TMessageResult::Cancel && !mustClose) {
    return false;
  }
  SetNeedsSaving(false);
  return true;
}

void TKeypadDevice::Fire(const TNotifyEvent& handler) {
  if (handler) handler(this);
}

std::unique_ptr<TKeypadDevice> CreateKeypadDevice(TKeypadDeviceClass cls, TOrbObject* owner) {
  if (!cls || !cls->inherits(&TKeypadDevice::staticMetaObject)) {
    throw ENorvaError(QStringLiteral("Not a keypad type: ") +
                      (cls ? ClassNameOf(cls) : QStringLiteral("none")));
  }
  return std::unique_ptr<TKeypadDevice>(
      static_cast<TKeypadDevice*>(ConstructOrbObject(cls, owner)));
}

}  // namespace norva
