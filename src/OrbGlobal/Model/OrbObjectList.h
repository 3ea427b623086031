#pragma once
// The list that holds the children of a model object, owning them or not. Every insertion,
// removal and move is reported to the undo protocol, so list edits are undoable like properties.

#include <OrbGlobal/Model/OrbTypes.h>

#include <vector>

namespace norva {

class TOrbObject;
class TOrbObjectListEnumerator;

class TOrbObjectList {
 public:
  // The largest capacity and count a list accepts, plus one.
  static constexpr int MaxListSize = 0x8000000;

  TOrbObjectList(bool ownsObjects, TOrbObject* owner);
  // Forgets the owner first (so clearing records nothing and notifies nobody), destroys owned
  // items, then purges both histories of the entries that refer to this list.
  virtual ~TOrbObjectList();  // NOLINT(bugprone-exception-escape): see the definition
  TOrbObjectList(const TOrbObjectList&) = delete;
  TOrbObjectList& operator=(const TOrbObjectList&) = delete;

  // Index errors raise EListError naming the index; the list is then unchanged. Items may be none.
  int Add(TOrbObject* item);
  void Insert(int index, TOrbObject* item);
  void Delete(int index);
  int Remove(TOrbObject* item);
  void Clear();
  int IndexOf(const TOrbObject* item) const;
  TOrbObject* Get(int index) const;
  void Put(int index, TOrbObject* item);
  TOrbObject* operator[](int index) const { return Get(index); }
  // Moves without add/delete notifications; records one moved-item entry.
  void Move(int curIndex, int newIndex);
  // Without a comparison: by name, case-insensitive and locale-aware, ascending. Not stable.
  void Sort(const TOrbObjectCompare& compare = {});
  void QuickSort(int left, int right, const TOrbObjectCompare& compare);

  int Count() const { return mCount; }
  int Capacity() const { return static_cast<int>(mList.size()); }
  void SetCapacity(int capacity);
  // Shrinking deletes the items from the last down (with notification); growing adds none items.
  void SetCount(int count);
  // Copies the other list's items; no notification, no undo entry.
  void Assign(const TOrbObjectList& other);

  bool UndoEnabled() const;
  bool OwnsObjects() const { return mOwnsObjects; }
  TOrbObject* Owner() const { return mOwner; }
  // When set, every change of the list marks the owner modified and calls its Updated.
  bool UpdateOwner() const { return mUpdateOwner; }
  void SetUpdateOwner(bool update) { mUpdateOwner = update; }

  TOrbObjectListEnumerator GetEnumerator() const;
  TOrbObject* const* begin() const { return mList.data(); }
  TOrbObject* const* end() const { return mList.data() + mCount; }

 protected:
  // The list's only link to undo; called after every insertion and removal of an item.
  virtual void Notify(TOrbObject* item, TListNotification action, int index);

 private:
  void Grow();
  void CheckIndex(int index, int limit) const;
  void NotifyOwner();
  static void MarkOwnerOfItemModified(TOrbObject* item);

  bool mOwnsObjects;
  std::vector<TOrbObject*> mList;  // its size is the capacity; slots from mCount on are none
  int mCount = 0;
  TOrbObject* mOwner;
  bool mUpdateOwner = false;
};

class TOrbObjectListEnumerator {
 public:
  explicit TOrbObjectListEnumerator(const TOrbObjectList& list) : mList(list) {}
  TOrbObject* GetCurrent() const { return mList.Get(mIndex); }
  bool MoveNext() {
    if (mIndex >= mList.Count() - 1) return false;
    ++mIndex;
    return true;
  }

 private:
  int mIndex = -1;
  const TOrbObjectList& mList;
};

}  // namespace norva
