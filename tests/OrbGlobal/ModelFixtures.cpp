#include "ModelFixtures.h"

#include <OrbGlobal/PropertyKinds.h>
#include <OrbGlobal/Undo.h>
#include <OrbGlobal/UndoControl.h>

namespace fixture {

using norva::TOrbObject;

void TPart::SetSize(int size) {
  if (size == mSize) return;
  Updating("Size");
  mSize = size;
  Updated();
}

void TPart::SetWeight(double weight) {
  if (weight == mWeight) return;
  Updating("Weight");
  mWeight = weight;
  Updated();
}

void TPart::SetAnchor(TTarget* anchor) {
  if (anchor == mAnchor) return;
  Updating("Anchor");
  mAnchor = anchor;
  Updated();
}

void TPart::AssignTo(QObject* dest) const {
  if (auto* part = qobject_cast<TPart*>(dest)) {
    part->SetSize(mSize);
    part->SetWeight(mWeight);
    part->SetAnchor(mAnchor);
  }
  TOrbObject::AssignTo(dest);
}

TItem::TItem(TOrbObject* owner) : TOrbObject(owner), mPart(std::make_unique<TPart>(this)) {
  norva::RegisterOrdinalSetType<TFeature, 4>();
}

void TItem::SetCount(int count) {
  if (count == mCount) return;
  Updating("Count");
  mCount = count;
  Updated();
}

void TItem::SetShape(TShape shape) {
  if (shape == mShape) return;
  Updating("Shape");
  mShape = shape;
  Updated();
}

void TItem::SetFeatures(TFeatures features) {
  if (features == mFeatures) return;
  Updating("Features");
  mFeatures = features;
  Updated();
}

void TItem::SetCode(const QByteArray& code) {
  if (code == mCode) return;
  Updating("Code");
  mCode = code;
  Updated();
}

void TItem::SetTitle(const QString& title) {
  if (title == mTitle) return;
  Updating("Title");
  mTitle = title;
  Updated();
}

void TItem::SetLevel(double level) {
  if (level == mLevel) return;
  Updating("Level");
  mLevel = level;
  Updated();
}

void TItem::SetSerial(qint64 serial) {
  if (serial == mSerial) return;
  Updating("Serial");
  mSerial = serial;
  Updated();
}

void TItem::SetSteps(const QList<int>& steps) {
  if (steps == mSteps) return;
  Updating("Steps");
  mSteps = steps;
  Updated();
}

void TItem::SetLink(TTarget* link) {
  if (link == mLink) return;
  Updating("Link");
  mLink = link;
  Updated();
}

void TItem::SetPart(TPart* part) {
  if (part == mPart.get()) return;
  Updating("Part");
  mPart->Assign(part);
  Updated();
}

void TItem::SetSpot(TSpot spot) {
  if (spot == mSpot) return;
  Updating("Spot");
  mSpot = spot;
  Updated();
}

void TItem::SetHelper(QObject* helper) {
  if (helper == mHelper) return;
  Updating("Helper");
  mHelper = helper;
  Updated();
}

void TItem::AssignTo(QObject* dest) const {
  if (auto* item = qobject_cast<TItem*>(dest)) {
    item->SetCount(mCount);
    item->SetShape(mShape);
    item->SetFeatures(mFeatures);
    item->SetCode(mCode);
    item->SetTitle(mTitle);
    item->SetLevel(mLevel);
    item->SetSerial(mSerial);
    item->SetSteps(mSteps);
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
  while (norva::UndoDisabled()) norva::EnableUndo();
  norva::Undo().Empty();
  norva::Redo().Empty();
}

void TModelTest::TearDown() { SetUp(); }

}  // namespace fixture
