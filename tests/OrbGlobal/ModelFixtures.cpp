#include "ModelFixtures.h"

#include <OrbGlobal/Undo/PropertyKinds.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>

namespace fixture {

using norva::TOrbObject;

void TPart::AssignTo(QObject* dest) const {
  if (auto* part = qobject_cast<TPart*>(dest)) {
    part->SetSize(mSize);
    part->SetWeight(mWeight);
    part->SetAnchor(mAnchor);
  }
  TOrbObject::AssignTo(dest);
}

TItem::TItem(TOrbObject* owner) : TOrbObject(owner), mPart(std::make_unique<TPart>(this)) {}

void TItem::SetPart(TPart* part) {
  if (part == mPart.get()) return;
  Updating("Part");
  mPart->Assign(part);
  Updated();
}

void TItem::AssignTo(QObject* dest) const {
  if (auto* item = qobject_cast<TItem*>(dest)) {
    item->SetCount(mCount);
    item->SetTitle(mTitle);
    item->SetLink(mLink);
    item->SetPart(mPart.get());
  }
  TOrbObject::AssignTo(dest);
}

TDocument::TDocument(TOrbObject* owner) : TOrbObject(owner), mItems(true, this) {}

TItem* TDocument::AddItem(const QString& name) {
  auto* item = new TItem(this);
  item->SetName(name);
  mItems.Add(item);
  return item;
}

norva::TOrbObjectList* TDocument::GetChildList(const TOrbObject* child) const {
  return qobject_cast<const TItem*>(child) ? &mItems : nullptr;
}

void TDocument::Updated(TOrbObject* sender) {
  ++mUpdateCalls;
  mLastSender = sender;
  TOrbObject::Updated(sender);
}

void TModelTest::SetUp() {
  norva::RegisterOrdinalSetType<TFeature, 4>();
  while (norva::UndoDisabled()) norva::EnableUndo();
  norva::Undo().Empty();
  norva::Redo().Empty();
}

void TModelTest::TearDown() { SetUp(); }

}  // namespace fixture
