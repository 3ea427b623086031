#include <OrbGlobal/Model/OrbObject.h>

#include <NorvaGlobal/Clock.h>
#include <OrbGlobal/Clipboard/OrbClipboard.h>
#include <OrbGlobal/Model/OrbErrors.h>
#include <OrbGlobal/Model/OrbGuid.h>
#include <OrbGlobal/Model/OrbObjectList.h>
#include <OrbGlobal/Undo/PropertyRecording.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <QDateTime>

namespace norva {

namespace {

// The date-time scale of revisions: day 0 is 1899-12-30, day 25569 is 1970-01-01.
constexpr double UnixEpochDay = 25569.0;
constexpr double MillisecondsPerDay = 86400000.0;

bool IsTrimmedAway(QChar c) { return c <= u' ' || c.isSpace(); }

QString TrimmedName(const QString& name) {
  qsizetype first = 0;
  qsizetype last = name.size();
  while (first < last && IsTrimmedAway(name.at(first))) ++first;
  while (last > first && IsTrimmedAway(name.at(last - 1))) --last;
  return name.mid(first, last - first);
}

}  // namespace

TOrbObject::TOrbObject(TOrbObject* owner) : mOwner(owner) {
  if (owner) mOnUpdate = [owner](TOrbObject* sender) { owner->TellUpdated(sender); };
}

TOrbObject::~TOrbObject() {
  BeforeDestruction();
  ForgetClipboardObject(this);
  Undo().RemoveChangesAffectingObject(this);
  Redo().RemoveChangesAffectingObject(this);
}

void TOrbObject::BeforeDestruction() {
  if (mOnDestroy) mOnDestroy(this);
}

void TOrbObject::SetGUID(const QUuid& guid) {
  if (guid == mGUID) return;
  Updating("GUIDString");
  mGUID = guid;
  mRevision = 0;
  Updated();
}

QString TOrbObject::GetGUIDString() const { return GUIDToString(mGUID); }

void TOrbObject::SetGUIDString(const QString& text) { SetGUID(StringToGUID(text)); }

void TOrbObject::AssignNewGUID() {
  SetGUID(QUuid::createUuid());
  mRevision = 0;
}

void TOrbObject::SetName(const QString& name) { SetNameRaw(TrimmedName(name)); }

void TOrbObject::SetNameRaw(const QString& name) { ChangeProperty("NameRaw", mName, name); }

void TOrbObject::EndUpdate(bool notify) {
  if (mUpdateCount > 0) --mUpdateCount;
  if (notify) Updated();
}

void TOrbObject::Updated(TOrbObject* sender) {
  if (mUpdateCount == 0 && mOnUpdate) mOnUpdate(sender);
}

void TOrbObject::TellUpdated(TOrbObject* sender) {
  Updated(sender);
  // The last step: a listener may destroy this object.
  if (mUpdateCount == 0 && mListeners) mListeners->Notify(sender);
}

TUpdateListenerId TOrbObject::AddUpdateListener(const QObject* context, TUpdateEvent listener) {
  if (!mListeners) mListeners = std::make_unique<TUpdateListeners>();
  const TUpdateListenerId id = mListeners->Add(std::move(listener));
  // This object as the receiver: the connection goes with it when it is destroyed first.
  if (context)
    connect(context, &QObject::destroyed, this, [this, id] { RemoveUpdateListener(id); });
  return id;
}

void TOrbObject::RemoveUpdateListener(TUpdateListenerId id) {
  if (mListeners) mListeners->Remove(id);
}

void TOrbObject::NewRevision() {
  if (mUpdateCount != 0) return;
  const auto now = static_cast<double>(CurrentDateTime().toMSecsSinceEpoch());
  mRevision = UnixEpochDay + now / MillisecondsPerDay;
}

void TOrbObject::ClearChangeFlags() {
  mAdded = false;
  mModified = false;
  mRemoved = false;
}

void TOrbObject::Updating(const char* propertyName, bool ownerProperty) {
  if (UndoEnabled() && !IsReadOnly()) {
    if (!ownerProperty) {
      RecordPropertyChange(*this, propertyName);
    } else if (mOwner) {
      mOwner->Updating(propertyName, false);
    }
  }
  mModified = true;
}

// A free-standing sub-component (a clone on the clipboard, an object under construction) has no
// place in the document, so its changes are not worth undoing.
bool TOrbObject::UndoEnabled() const {
  if (UndoDisabled()) return false;
  return !IsSubComponent() || mOwner;
}

QString TOrbObject::GetFunctionName(unsigned /*index*/) const { return QString(); }

bool TOrbObject::IsReadOnly() const { return mOwner && mOwner->IsReadOnly(); }

TOrbObjectList* TOrbObject::GetChildList(const TOrbObject* /*child*/) const { return nullptr; }

int TOrbObject::GetChildIndex(const TOrbObject* child) const {
  const TOrbObjectList* list = GetChildList(child);
  return list ? list->IndexOf(child) : -1;
}

int TOrbObject::GetIndex() const { return mOwner ? mOwner->GetChildIndex(this) : -1; }

TOrbObject* TOrbObject::GetSibling(const TOrbObject* sibling, int index) const {
  const TOrbObjectList* list = mOwner ? mOwner->GetChildList(sibling) : nullptr;
  return list ? list->Get(index) : nullptr;
}

int TOrbObject::GetSiblingCount(const TOrbObject* sibling) const {
  const TOrbObjectList* list = mOwner ? mOwner->GetChildList(sibling) : nullptr;
  return list ? list->Count() : 0;
}

void TOrbObject::DeleteChild(TOrbObject* child) {
  TOrbObjectList* list = GetChildList(child);
  if (!list) return;
  const int index = list->IndexOf(child);
  if (index < 0) return;
  BeginUpdate();
  list->Delete(index);
  EndUpdate();
}

void TOrbObject::MoveChild(TOrbObject* child, int newIndex) {
  TOrbObjectList* list = GetChildList(child);
  if (!list) return;
  const int index = list->IndexOf(child);
  if (index >= 0 && newIndex >= 0 && newIndex < list->Count()) list->Move(index, newIndex);
  Updated();
}

void TOrbObject::Delete() {
  if (IsReadOnly()) throw EUserError(GetName() + QStringLiteral(" cannot be deleted."));
  if (mOwner) mOwner->DeleteChild(this);
}

void TOrbObject::Move(int newIndex) {
  if (newIndex == GetIndex()) return;
  if (IsReadOnly()) throw EUserError(GetName() + QStringLiteral(" cannot be moved."));
  if (mOwner) mOwner->MoveChild(this, newIndex);
}

void TOrbObject::Assign(const QObject* source) {
  if (const auto* orbSource = qobject_cast<const TOrbObject*>(source)) {
    orbSource->AssignTo(this);
    return;
  }
  const QString sourceName = source ? ClassNameOf(source->metaObject()) : QStringLiteral("nil");
  throw EConvertError(QStringLiteral("Cannot assign a %1 to a %2").arg(sourceName, GetClassName()));
}

void TOrbObject::AssignTo(QObject* dest) const {
  if (dest == this) return;
  if (auto* orbDest = qobject_cast<TOrbObject*>(dest)) {
    if (HasName()) orbDest->SetName(GetName());
    return;
  }
  const QString destName = dest ? ClassNameOf(dest->metaObject()) : QStringLiteral("nil");
  throw EConvertError(QStringLiteral("Cannot assign a %1 to a %2").arg(GetClassName(), destName));
}

void TOrbObject::Amend(const TOrbObject* source) {
  if (source && source->GetGUID() == mGUID && mGUID != NoGUID) Assign(source);
}

std::unique_ptr<TOrbObject> TOrbObject::GetClone(TOrbObject* newOwner) const {
  std::unique_ptr<TOrbObject> clone(ConstructOrbObject(metaObject(), newOwner));
  clone->Assign(this);
  return clone;
}

std::int32_t TOrbObject::QueryInterface(const QUuid& iid, void** object) {
  *object = qt_metacast(GUIDToString(iid).toLatin1().constData());
  return *object ? S_OK : E_NOINTERFACE;
}

}  // namespace norva
