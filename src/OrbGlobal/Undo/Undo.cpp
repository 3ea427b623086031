#include <OrbGlobal/Undo/Undo.h>

#include <NorvaGlobal/DebugOutput.h>
#include <NorvaGlobal/UIServices.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <QString>

#include <cxxabi.h>

#include <cstdlib>
#include <exception>
#include <memory>
#include <typeinfo>
#include <vector>

namespace norva {

namespace {

// Marks a history as reverting and shows the busy cursor for as long as the revert runs, however
// it ends.
class TRevertingScope {
 public:
  explicit TRevertingScope(bool& undoing) : mUndoing(undoing) {
    mUndoing = true;
    UIServices().SetBusyCursor(true);
  }
  ~TRevertingScope() {
    mUndoing = false;
    UIServices().SetBusyCursor(false);
  }
  TRevertingScope(const TRevertingScope&) = delete;
  TRevertingScope& operator=(const TRevertingScope&) = delete;

 private:
  bool& mUndoing;
};

// The exception's class name as the program spells it, without namespaces.
QString ClassNameOfException(const std::exception& error) {
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> demangled(
      abi::__cxa_demangle(typeid(error).name(), nullptr, nullptr, &status), &std::free);
  const QString name = QString::fromLatin1(status == 0 ? demangled.get() : typeid(error).name());
  return name.mid(name.lastIndexOf(u':') + 1);
}

// Objects owned by entries may themselves be destroyed after the histories' users (statics of the
// application), so the histories are never destroyed: only emptied when the process ends.
struct THistories {
  TUndo undo;
  TUndo redo;
};

void EmptyHistories();

THistories& Histories() {
  static THistories* const histories = [] {
    auto* created = new THistories;
    std::atexit(EmptyHistories);
    return created;
  }();
  return *histories;
}

void EmptyHistories() {
  Histories().undo.Empty();
  Histories().redo.Empty();
}

}  // namespace

TUndo& Undo() { return Histories().undo; }
TUndo& Redo() { return Histories().redo; }

void RecordEntry(std::unique_ptr<TChangeProtocolEntry> entry) {
  if (!Undo().Undoing()) {
    Undo().Add(std::move(entry));
    if (!Redo().Undoing()) Redo().Discard();
  } else {
    Redo().Add(std::move(entry));
  }
}

TChangeProtocolEntry* TUndo::GetChange(int index) const {
  if (index < 0 || index >= mCount) return nullptr;
  TChangeProtocolEntry* entry = nullptr;
  if (index < mCount / 2) {
    for (entry = mOldest; index > 0; --index) entry = entry->mNewer;
  } else {
    for (entry = mNewest; index < mCount - 1; ++index) entry = entry->mOlder;
  }
  return entry;
}

void TUndo::Add(std::unique_ptr<TChangeProtocolEntry> entry) {
  TChangeProtocolEntry* added = entry.release();
  added->mSavePoint = false;
  added->mOlder = mNewest;
  (mNewest ? mNewest->mNewer : mOldest) = added;
  mNewest = added;
  ++mCount;
  TChangeProtocolEntry*& newestOfObject = mNewestByObject[added->mAffectedObject];
  added->mOlderSame = newestOfObject;
  if (newestOfObject) newestOfObject->mNewerSame = added;
  newestOfObject = added;
}

void TUndo::Unlink(TChangeProtocolEntry* entry) {
  (entry->mOlder ? entry->mOlder->mNewer : mOldest) = entry->mNewer;
  (entry->mNewer ? entry->mNewer->mOlder : mNewest) = entry->mOlder;
  if (entry->mOlderSame) entry->mOlderSame->mNewerSame = entry->mNewerSame;
  if (entry->mNewerSame) {
    entry->mNewerSame->mOlderSame = entry->mOlderSame;
  } else if (entry->mOlderSame) {
    mNewestByObject[entry->mAffectedObject] = entry->mOlderSame;
  } else {
    mNewestByObject.erase(entry->mAffectedObject);
  }
  entry->mOlder = entry->mNewer = entry->mOlderSame = entry->mNewerSame = nullptr;
  --mCount;
  if (entry->mSavePoint) --mSavePointCount;
}

void TUndo::MarkSavePoint(TChangeProtocolEntry* entry) {
  if (entry->mSavePoint) return;
  entry->mSavePoint = true;
  ++mSavePointCount;
}

// Destroying an entry may destroy an object it owns, which purges that object's entries from
// both histories: each entry is unlinked before it is destroyed, and the loop rereads the front.
void TUndo::Empty() {
  while (TChangeProtocolEntry* oldest = mOldest) {
    Unlink(oldest);
    delete oldest;
  }
  DestroyDiscarded();
}

void TUndo::Discard() {
  if (!mOldest) return;
  if (!mDiscarded) mDiscarded = std::make_unique<TUndo>();
  while (TChangeProtocolEntry* oldest = mOldest) {
    Unlink(oldest);
    mDiscarded->Add(std::unique_ptr<TChangeProtocolEntry>(oldest));
  }
}

void TUndo::DestroyDiscarded() {
  if (mDiscarded) mDiscarded->Empty();
}

void TUndo::Revert() {
  if (!mNewest) return;
  TRevertingScope reverting(mUndoing);
  do {
    TChangeProtocolEntry* newest = mNewest;
    newest->Revert();
    Unlink(newest);
    delete newest;
  } while (mNewest && !mNewest->mSavePoint);
}

void TUndo::DropOldestStep() {
  while (TChangeProtocolEntry* oldest = mOldest) {
    const bool endOfStep = oldest->mSavePoint;
    Unlink(oldest);
    delete oldest;
    if (endOfStep) return;
  }
}

void TUndo::Maintain() {
  try {
    if (mNewest && SavePointsEnabled()) MarkSavePoint(mNewest);
    if (mSavePointCount > MaxSavePoints) DropOldestStep();
  } catch (const std::exception& error) {
    DebugOutput(OrbLog(), ClassNameOfException(error) + QStringLiteral(" in TUndo.Maintain: ") +
                              QString::fromUtf8(error.what()));
  }
}

void TUndo::RemoveChangesAffectingObject(const void* object) {
  const auto found = mNewestByObject.find(object);
  if (found != mNewestByObject.end()) {
    std::vector<TChangeProtocolEntry*> removed;
    for (TChangeProtocolEntry* entry = found->second; entry; entry = entry->mOlderSame) {
      removed.push_back(entry);
    }
    for (TChangeProtocolEntry* entry : removed) Unlink(entry);
    for (TChangeProtocolEntry* entry : removed) delete entry;
  }
  if (mDiscarded && mDiscarded->CanRevert()) mDiscarded->RemoveChangesAffectingObject(object);
}

}  // namespace norva
