#pragma once
// The base of every document object: name, GUID, owner, change flags, revision stamp and update
// counter, and the tie between property changes and the undo protocol.
//
// Every property that editing may change is a Q_PROPERTY, so the undo protocol can read and write
// it by name. A setter follows one contract: return at once when the value is unchanged; otherwise
// Updating("<property name>"), store, Updated(). Model objects are owned by exactly one owner
// (lists own their items); never give one a QObject parent.

#include <OrbGlobal/Model/OrbClass.h>
#include <OrbGlobal/Model/OrbTypes.h>
#include <OrbGlobal/Model/UpdateListeners.h>

#include <QObject>
#include <QString>
#include <QUuid>

#include <cstdint>
#include <memory>

namespace norva {

inline constexpr std::int32_t S_OK = 0;
inline constexpr std::int32_t E_NOINTERFACE = static_cast<std::int32_t>(0x80004002u);

class TOrbObjectList;

class TOrbObject : public QObject {
  Q_OBJECT
  // Snapshots restore the name through NameRaw, so that it comes back exactly as it was.
  Q_PROPERTY(QString Name READ GetName WRITE SetName STORED false)
  Q_PROPERTY(QString GUIDString READ GetGUIDString WRITE SetGUIDString)
  Q_PROPERTY(QString NameRaw READ GetNameRaw WRITE SetNameRaw)

 public:
  // The virtual constructor: binds change notification to the owner's Updated. Records nothing.
  Q_INVOKABLE explicit TOrbObject(norva::TOrbObject* owner = nullptr);
  // Clears the clipboard slot if it holds this object and purges both histories of its entries.
  ~TOrbObject() override;
  TOrbObject(const TOrbObject&) = delete;
  TOrbObject& operator=(const TOrbObject&) = delete;

  TOrbObject* GetOwner() const { return mOwner; }

  QUuid GetGUID() const { return mGUID; }
  // Records the change as "GUIDString" and clears the revision stamp.
  void SetGUID(const QUuid& guid);
  QString GetGUIDString() const;
  // Raises EConvertError for text that is not in the registry form; the GUID is then unchanged.
  void SetGUIDString(const QString& text);
  void AssignNewGUID();

  virtual QString GetName() const { return mName; }
  // Trims white space and control characters at both ends.
  virtual void SetName(const QString& name);
  const QString& GetNameRaw() const { return mName; }
  void SetNameRaw(const QString& name);
  virtual bool HasName() const { return !mName.isEmpty(); }

  // Notification: Updated climbs the owner chain with the first sender and stops at the first
  // object inside BeginUpdate or without a handler. A root object overrides Updated(sender) to
  // react to any change below it (and writes `using TOrbObject::Updated;`); a change starts with
  // Updated(), which also tells the listeners.
  void BeginUpdate() { ++mUpdateCount; }
  void EndUpdate(bool notify = true);
  void Updated() { TellUpdated(this); }
  virtual void Updated(TOrbObject* sender);
  int UpdateCount() const { return mUpdateCount; }
  // The update slot belongs to the owner: the constructor binds it to the owner's Updated, and that
  // binding is the only way a change reaches the document (its saving flags, a database's name
  // index). Replacing it on an owned object cuts the object off from its document; only an
  // object without owner may take it. Views and windows use AddUpdateListener instead.
  void SetOnUpdate(TUpdateEvent handler) { mOnUpdate = std::move(handler); }
  // Any number of listeners hear every change the update slot hears, in the order they were
  // added, once the object and its owners have taken the change in (after the outermost
  // EndUpdate). With a context, the listener goes when the context is destroyed; without one it
  // stays until RemoveUpdateListener. The object's destruction ends all its listeners. A listener
  // may add or remove listeners while it is called.
  TUpdateListenerId AddUpdateListener(const QObject* context, TUpdateEvent listener);
  // Nothing for an id that names no listener of this object (any more).
  void RemoveUpdateListener(TUpdateListenerId id);
  // Fired just before the object goes (and when an undoable deletion takes it out of its list);
  // the handler may use only the object's identity.
  void SetOnDestroy(TNotifyEvent handler) { mOnDestroy = std::move(handler); }

  // Days since 1899-12-30 (UTC); 0 = no revision yet.
  double GetRevision() const { return mRevision; }
  void NewRevision();

  virtual bool GetModified() const { return mModified; }
  bool GetAdded() const { return mAdded; }
  bool GetRemoved() const { return mRemoved; }
  void MarkModified() { mModified = true; }
  void ClearChangeFlags();

  // Records the current value of `propertyName` for undo and marks the object modified. With
  // `ownerProperty`, the change is recorded as a change of the owner's property of that name.
  void Updating(const char* propertyName, bool ownerProperty = false);
  bool UndoEnabled() const;

  // Class-level data (see OrbClass.h).
  TOrbObjectClass GetClass() const { return metaObject(); }
  bool IsSubComponent() const { return ClassIsSubComponent(metaObject()); }
  QString GetClassName() const { return ClassNameOf(metaObject()); }
  QUuid GetClassGUID() const { return ClassGUIDOf(metaObject()); }
  virtual QString GetFunctionName(unsigned index) const;

  virtual bool IsReadOnly() const;

  // The list that holds (or would hold) objects of the child's kind; none by default.
  virtual TOrbObjectList* GetChildList(const TOrbObject* child) const;
  int GetChildIndex(const TOrbObject* child) const;
  int GetIndex() const;
  TOrbObject* GetSibling(const TOrbObject* sibling, int index) const;
  int GetSiblingCount(const TOrbObject* sibling) const;
  virtual void DeleteChild(TOrbObject* child);
  virtual void MoveChild(TOrbObject* child, int newIndex);
  // Raise EUserError for read-only objects; nothing changes then.
  void Delete();
  void Move(int newIndex);

  // The base copies only the name; subclasses override Assign for their own fields and call the
  // inherited one. Assigning between unrelated classes raises EConvertError.
  virtual void Assign(const QObject* source);
  virtual void AssignTo(QObject* dest) const;
  // Assign, but only from an object with the same GUID, which is not NoGUID.
  virtual void Amend(const TOrbObject* source);
  // A new object of this class owned by `newOwner` (which does not yet hold it), with this
  // object's values as Assign copies them.
  std::unique_ptr<TOrbObject> GetClone(TOrbObject* newOwner) const;

  void CopyToClipboard();
  void CutToClipboard();

  // S_OK with `object` set when the object implements the interface (declared with
  // Q_DECLARE_INTERFACE under its GUID in registry form and listed with Q_INTERFACES), else
  // E_NOINTERFACE with `object` cleared. Objects live by ownership, never by interface references:
  // nothing is reference counted.
  std::int32_t QueryInterface(const QUuid& iid, void** object);

  // The pre-destruction hook: fires the destroy handler.
  void BeforeDestruction();

 protected:
  // The setter contract in one call: nothing when `value` equals `field`; otherwise
  // Updating(propertyName), store, Updated(). Returns whether the value changed.
  template <typename T>
  bool ChangeProperty(const char* propertyName, T& field, const T& value) {
    if (field == value) return false;
    Updating(propertyName);
    field = value;
    Updated();
    return true;
  }

 private:
  friend class TOrbObjectList;

  // The change at its start and at every owner up the chain: the object's own Updated (its slot
  // and its reaction to the change), then its listeners.
  void TellUpdated(TOrbObject* sender);

  // The count and the flags share one word, which leaves room for the listeners' pointer in the
  // size the object had without it.
  TUpdateEvent mOnUpdate;
  int mUpdateCount = 0;
  bool mAdded = false;
  bool mModified = false;
  bool mRemoved = false;
  QString mName;
  TOrbObject* mOwner;
  TNotifyEvent mOnDestroy;
  QUuid mGUID;
  double mRevision = 0;
  std::unique_ptr<TUpdateListeners> mListeners;  // made on the first listener
};

}  // namespace norva
