#include <OrbGlobal/Model/OrbObjectList.h>

#include <OrbGlobal/Model/OrbErrors.h>
#include <OrbGlobal/Model/OrbObject.h>
#include <OrbGlobal/Undo/ListEntries.h>
#include <OrbGlobal/Undo/Undo.h>

#include <utility>

namespace norva {

namespace {

constexpr int GrowthStep(int capacity) {
  if (capacity > 64) return capacity / 4;
  if (capacity > 8) return 16;
  return 4;
}

int CompareByName(TOrbObject* object1, TOrbObject* object2) {
  return QString::localeAwareCompare(object1->GetName().toCaseFolded(),
                                     object2->GetName().toCaseFolded());
}

}  // namespace

TOrbObjectList::TOrbObjectList(bool ownsObjects, TOrbObject* owner)
    : mOwnsObjects(ownsObjects), mOwner(owner) {}

// Clearing to zero items cannot fail, so nothing escapes. NOLINTNEXTLINE(bugprone-exception-escape)
TOrbObjectList::~TOrbObjectList() {
  mOwner = nullptr;
  Clear();
  Undo().RemoveChangesAffectingObject(this);
  Redo().RemoveChangesAffectingObject(this);
}

void TOrbObjectList::CheckIndex(int index, int limit) const {
  if (index < 0 || index >= limit) {
    throw EListError(QStringLiteral("List index out of bounds (%1)").arg(index));
  }
}

void TOrbObjectList::Grow() { SetCapacity(Capacity() + GrowthStep(Capacity())); }

int TOrbObjectList::Add(TOrbObject* item) {
  const int index = mCount;
  if (mCount == Capacity()) Grow();
  mList[index] = item;
  ++mCount;
  if (item) Notify(item, lnAdded, index);
  return index;
}

void TOrbObjectList::Insert(int index, TOrbObject* item) {
  CheckIndex(index, mCount + 1);
  if (mCount == Capacity()) Grow();
  std::move_backward(mList.begin() + index, mList.begin() + mCount, mList.begin() + mCount + 1);
  mList[index] = item;
  ++mCount;
  if (item) Notify(item, lnAdded, index);
}

void TOrbObjectList::Delete(int index) {
  CheckIndex(index, mCount);
  TOrbObject* item = mList[index];
  std::move(mList.begin() + index + 1, mList.begin() + mCount, mList.begin() + index);
  --mCount;
  mList[mCount] = nullptr;
  if (item) Notify(item, lnDeleted, index);
}

int TOrbObjectList::Remove(TOrbObject* item) {
  const int index = IndexOf(item);
  if (index >= 0) Delete(index);
  return index;
}

void TOrbObjectList::Clear() {
  SetCount(0);
  SetCapacity(0);
}

int TOrbObjectList::IndexOf(const TOrbObject* item) const {
  for (int i = 0; i < mCount; ++i) {
    if (mList[i] == item) return i;
  }
  return -1;
}

TOrbObject* TOrbObjectList::Get(int index) const {
  CheckIndex(index, mCount);
  return mList[index];
}

void TOrbObjectList::Put(int index, TOrbObject* item) {
  CheckIndex(index, mCount);
  TOrbObject* old = mList[index];
  if (item == old) return;
  mList[index] = item;
  if (old) Notify(old, lnDeleted, index);
  if (item) Notify(item, lnAdded, index);
}

void TOrbObjectList::Move(int curIndex, int newIndex) {
  if (curIndex == newIndex) return;
  CheckIndex(newIndex, mCount);
  TOrbObject* item = Get(curIndex);
  std::vector<TOrbObject*>::iterator from = mList.begin() + curIndex;
  std::vector<TOrbObject*>::iterator to = mList.begin() + newIndex;
  if (curIndex < newIndex) {
    std::move(from + 1, to + 1, from);
  } else {
    std::move_backward(to, from, from + 1);
  }
  *to = item;
  if (UndoEnabled()) RecordChange(std::make_unique<TMovedListItem>(this, newIndex, curIndex));
  if (item) MarkOwnerOfItemModified(item);
  NotifyOwner();
}

void TOrbObjectList::Sort(const TOrbObjectCompare& compare) {
  if (mCount > 0) QuickSort(0, mCount - 1, compare ? compare : TOrbObjectCompare(CompareByName));
}

void TOrbObjectList::QuickSort(int left, int right, const TOrbObjectCompare& compare) {
  if (left >= right) return;
  CheckIndex(left, mCount);
  CheckIndex(right, mCount);
  int l = left;
  do {
    int i = l;
    int j = right;
    TOrbObject* pivot = mList[(l + right) / 2];
    do {
      while (compare(mList[i], pivot) < 0) ++i;
      while (compare(mList[j], pivot) > 0) --j;
      if (i <= j) {
        std::swap(mList[i], mList[j]);
        ++i;
        --j;
      }
    } while (i <= j);
    if (l < j) QuickSort(l, j, compare);
    l = i;
  } while (l < right);
}

void TOrbObjectList::SetCapacity(int capacity) {
  if (capacity < mCount || capacity >= MaxListSize) {
    throw EListError(QStringLiteral("List capacity out of bounds (%1)").arg(capacity));
  }
  mList.resize(capacity, nullptr);
}

void TOrbObjectList::SetCount(int count) {
  if (count < 0 || count >= MaxListSize) {
    throw EListError(QStringLiteral("List count out of bounds (%1)").arg(count));
  }
  if (count > Capacity()) SetCapacity(count);
  while (mCount > count) Delete(mCount - 1);
  mCount = count;
}

void TOrbObjectList::Assign(const TOrbObjectList& other) {
  if (&other == this) return;
  mList = other.mList;
  mCount = other.mCount;
}

bool TOrbObjectList::UndoEnabled() const { return mOwner && mOwner->UndoEnabled(); }

TOrbObjectListEnumerator TOrbObjectList::GetEnumerator() const {
  return TOrbObjectListEnumerator(*this);
}

void TOrbObjectList::NotifyOwner() {
  if (!mUpdateOwner || !mOwner) return;
  mOwner->MarkModified();
  mOwner->Updated();
}

void TOrbObjectList::MarkOwnerOfItemModified(TOrbObject* item) {
  if (item->GetOwner()) item->GetOwner()->MarkModified();
}

// An owning list hands a deleted item to the undo entry, which keeps it alive until the history
// lets go of it; without undo the item is destroyed at once, and then deliberately neither flagged
// removed nor reported to the list's owner.
void TOrbObjectList::Notify(TOrbObject* item, TListNotification action, int index) {
  const bool undoable = UndoEnabled();
  if (action == lnAdded) {
    if (undoable) RecordChange(std::make_unique<TAddedListItem>(this, index));
    item->mAdded = true;
  } else {
    if (mOwnsObjects && !undoable) {
      MarkOwnerOfItemModified(item);
      delete item;
      return;
    }
    if (undoable) {
      if (mOwnsObjects) item->BeforeDestruction();
      RecordChange(std::make_unique<TDeletedListItem>(this, index, item, mOwnsObjects));
    }
    item->mRemoved = true;
  }
  MarkOwnerOfItemModified(item);
  NotifyOwner();
}

}  // namespace norva
