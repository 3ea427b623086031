#pragma once
// The keypad configuration document: the abstract base of every keypad type's document, with its
// change tracking, its files (save, auto-save, load) and the close prompt. A keypad type supplies
// its contents (save, load, assign) and its device transfer; see WallKeypad.h.
//
// The document's name is its file path, empty for a new document. Files are XML: the processing
// instruction "xml", then the root "keypad_configuration" holding what the keypad type writes.

#include <KeypadDevice/AutoSaveNames.h>
#include <KeypadDevice/KeypadClient.h>
#include <KeypadDevice/KeypadTypes.h>
#include <OrbGlobal/Model/OrbObject.h>

#include <pugixml.hpp>

#include <memory>

namespace norva {

class TKeypadDevice : public TOrbObject {
  Q_OBJECT
  Q_CLASSINFO("SubComponent", "false")
  // Both flags are published so that undoing the first change after a save restores them.
  Q_PROPERTY(bool NeedsSaving READ GetNeedsSaving WRITE SetNeedsSaving)
  Q_PROPERTY(bool NeedsAutoSaving READ GetNeedsAutoSaving WRITE SetNeedsAutoSaving)

 public:
  // Created clean: both flags false, no name, no event handlers.
  explicit TKeypadDevice(norva::TOrbObject* owner = nullptr);

  // --- Change tracking
  bool GetNeedsSaving() const { return mNeedsSaving; }
  // Sets both flags to `value`.
  void SetNeedsSaving(bool value);
  bool GetNeedsAutoSaving() const { return mNeedsAutoSaving; }
  void SetNeedsAutoSaving(bool value) { mNeedsAutoSaving = value; }
  // Marks the document changed (both flags), announcing each flag that was clear as a change of
  // its property; nothing while an undo step is being applied.
  void Changed();
  // Any change of the document or of anything it owns arrives here and marks it changed.
  using TOrbObject::Updated;
  void Updated(TOrbObject* sender) override;

  // --- Events, each fired with the document as sender
  const TNotifyEvent& GetOnClearing() const { return mOnClearing; }
  void SetOnClearing(TNotifyEvent handler) { mOnClearing = std::move(handler); }
  const TNotifyEvent& GetOnLoading() const { return mOnLoading; }
  void SetOnLoading(TNotifyEvent handler) { mOnLoading = std::move(handler); }
  const TNotifyEvent& GetOnClear() const { return mOnClear; }
  void SetOnClear(TNotifyEvent handler) { mOnClear = std::move(handler); }
  const TNotifyEvent& GetOnLoad() const { return mOnLoad; }
  void SetOnLoad(TNotifyEvent handler) { mOnLoad = std::move(handler); }

  // --- The keypad type's contents
  // Writes the configuration into the root element "keypad_configuration".
  virtual void SaveContents(pugi::xml_node root) const = 0;
  // Reads the configuration from the root element; raises ENorvaError for contents it cannot
  // take (the document is then cleared, see FileLoad).
  virtual void LoadContents(pugi::xml_node root) = 0;
  // Takes over the contents of `source`, a document of the same keypad type.
  virtual void AssignContents(const TKeypadDevice& source) = 0;

  // Empties the name, then Purge.
  virtual void Init();
  // Removes the keypad type's contents; nothing in the base.
  virtual void Purge();
  // OnClearing; Init with undo off (the histories are emptied); clean; OnClear.
  void Clear();

  // --- The device
  virtual bool Upload() = 0;
  virtual bool Download() = 0;
  virtual bool Verify() = 0;
  virtual bool Connect() = 0;
  virtual void Disconnect() = 0;
  // Another instance of the same configuration (another window, the device) changed.
  virtual void ExternalInstanceChange(TOrbObject* source) = 0;
  // Bytes of device memory the configuration needs.
  virtual int GetMemoryUsage() const = 0;

  // Firmware questions; each keypad type has its own version rules. False in the base.
  virtual bool IsFirmwareOld() const;
  virtual bool IsFirmwardIncompatible() const;
  virtual bool IsIncompatible() const;

  // --- Files
  // True when the name has a folder part and that folder exists (a bare file name has none).
  bool HasUsableName() const;
  // Saves under the document's name, first asking KeypadClient for one when the name is not
  // usable (the name it sets is not undoable); false, with nothing written, when there is still
  // none. Clears both flags. The file is
  // replaced only once the whole document was written. Failures, the keypad type's own included,
  // raise ENorvaError whose message ends with " while saving " and the path; the flags then stay
  // set.
  virtual bool FileSave();
  // Writes a copy into the auto-save folder (GetAutoSaveDir) under AutoSavePath's name at the
  // current time (CurrentDateTime), and clears NeedsAutoSaving only: the name and NeedsSaving stay.
  // False when the name holds no "." to stamp. Failures raise as FileSave's do.
  virtual bool FileAutoSave();
  // Reads `document` as the configuration in file `fileName`: OnLoading, the contents read with
  // undo off (the histories are emptied), clean, OnLoad. False, with nothing changed and no event,
  // when the document's root is not "keypad_configuration". Contents the keypad type cannot read
  // leave the document cleared, clean and named `fileName`; the error is raised after OnLoad.
  virtual bool FileLoad(const pugi::xml_document& document, const QString& fileName);
  // Reads the file and then FileLoad. A file that cannot be read or is no XML raises EXMLError
  // naming it, and the document is untouched.
  bool LoadFile(const QString& fileName);
  // Whether the document may close. When it needs saving, asks "Save configuration?" (Yes/No when
  // it must close, Yes/No/Cancel otherwise): Yes saves (false when that finds no name), No drops
  // the changes, Cancel keeps the document open. With `mustClose` only a failed save says false.
  virtual bool CanClose(bool mustClose);

 private:
  // Builds the document and writes it to `path`, extending a failure's message.
  void WriteFile(const QString& path) const;
  void Fire(const TNotifyEvent& handler);

  bool mNeedsSaving = false;
  bool mNeedsAutoSaving = false;
  TNotifyEvent mOnClearing;
  TNotifyEvent mOnLoading;
  TNotifyEvent mOnClear;
  TNotifyEvent mOnLoad;
};

// A new document of keypad type `cls`, owned by `owner`. Raises ENorvaError when `cls` is no
// keypad type that can be constructed.
std::unique_ptr<TKeypadDevice> CreateKeypadDevice(TKeypadDeviceClass cls,
                                                  TOrbObject* owner = nullptr);

}  // namespace norva
