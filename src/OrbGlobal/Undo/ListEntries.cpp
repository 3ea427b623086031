#include <OrbGlobal/Undo/ListEntries.h>

#include <OrbGlobal/Model/OrbObject.h>
#include <OrbGlobal/Model/OrbObjectList.h>

namespace norva {

namespace {

TOrbObject* OwnerOfItem(const TOrbObjectList& list, int index) {
  const TOrbObject* item = list.Get(index);
  return item ? item->GetOwner() : nullptr;
}

void NotifyUpdated(TOrbObject* object) {
  if (object) object->Updated();
}

}  // namespace

void TAddedListItem::Revert() {
  TOrbObject* owner = OwnerOfItem(List(), mListIndex);
  List().Delete(mListIndex);
  NotifyUpdated(owner);
}

TDeletedListItem::TDeletedListItem(TOrbObjectList* list, int listIndex, TOrbObject* deletedObject,
                                   bool ownsObject)
    : TChangedListItem(list, listIndex), mDeletedObject(deletedObject), mOwnsObject(ownsObject) {}

TDeletedListItem::~TDeletedListItem() {
  if (mOwnsObject) delete mDeletedObject.data();
}

void TDeletedListItem::Revert() {
  TOrbObject* object = mDeletedObject.data();
  List().Insert(mListIndex, object);
  mDeletedObject.clear();
  NotifyUpdated(object ? object->GetOwner() : nullptr);
}

void TMovedListItem::Revert() {
  TOrbObject* owner = OwnerOfItem(List(), mListIndex);
  List().Move(mListIndex, mOriginalIndex);
  NotifyUpdated(owner);
}

}  // namespace norva
