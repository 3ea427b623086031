#pragma once
// Undo entries of list edits: an item added, deleted or moved. The affected object is the list.

#include <OrbGlobal/Undo/ChangeProtocolEntry.h>

#include <QPointer>

namespace norva {

class TOrbObject;
class TOrbObjectList;

class TChangedListItem : public TChangeProtocolEntry {
 public:
  TChangedListItem(TOrbObjectList* list, int listIndex)
      : TChangeProtocolEntry(list), mListIndex(listIndex) {}
  TOrbObjectList& List() const { return *static_cast<TOrbObjectList*>(AffectedObject()); }
  int ListIndex() const { return mListIndex; }

 protected:
  int mListIndex;
};

// Reverting deletes the item again.
class TAddedListItem : public TChangedListItem {
 public:
  using TChangedListItem::TChangedListItem;
  void Revert() override;
};

// Holds the removed item; from an owning list it owns the item until reverting puts it back.
class TDeletedListItem : public TChangedListItem {
 public:
  TDeletedListItem(TOrbObjectList* list, int listIndex, TOrbObject* deletedObject, bool ownsObject);
  ~TDeletedListItem() override;
  void Revert() override;
  TOrbObject* DeletedObject() const { return mDeletedObject; }

 private:
  // Guarded: an item of a list that does not own it may be destroyed by its real owner meanwhile,
  // and is then put back as none, which keeps the indexes of later entries right.
  QPointer<TOrbObject> mDeletedObject;
  bool mOwnsObject;
};

// Reverting moves the item from where it went back to where it was.
class TMovedListItem : public TChangedListItem {
 public:
  TMovedListItem(TOrbObjectList* list, int newIndex, int originalIndex)
      : TChangedListItem(list, newIndex), mOriginalIndex(originalIndex) {}
  void Revert() override;
  int OriginalIndex() const { return mOriginalIndex; }

 private:
  int mOriginalIndex;
};

}  // namespace norva
