#pragma once
// The small document the model benchmarks edit: a document owning a list of items with an integer
// and a string property.

#include <OrbGlobal/Model/OrbObject.h>
#include <OrbGlobal/Model/OrbObjectList.h>
#include <OrbGlobal/Undo/UndoControl.h>

namespace bench {

class TBenchItem : public norva::TOrbObject {
  Q_OBJECT
  Q_PROPERTY(int Count READ GetCount WRITE SetCount)
  Q_PROPERTY(QString Title READ GetTitle WRITE SetTitle)

 public:
  Q_INVOKABLE explicit TBenchItem(norva::TOrbObject* owner = nullptr) : TOrbObject(owner) {}

  int GetCount() const { return mCount; }
  void SetCount(int count) { ChangeProperty("Count", mCount, count); }
  QString GetTitle() const { return mTitle; }
  void SetTitle(const QString& title) { ChangeProperty("Title", mTitle, title); }

 private:
  int mCount = 0;
  QString mTitle;
};

class TBenchDocument : public norva::TOrbObject {
  Q_OBJECT
  Q_CLASSINFO("SubComponent", "false")

 public:
  Q_INVOKABLE explicit TBenchDocument(norva::TOrbObject* owner = nullptr)
      : TOrbObject(owner), mItems(true, this) {}

  norva::TOrbObjectList& Items() { return mItems; }
  TBenchItem* Item(int index) const { return static_cast<TBenchItem*>(mItems.Get(index)); }

  // Items added without history, as loading a document does.
  void Fill(int count) {
    norva::DisableUndo();
    mItems.SetCapacity(count);
    for (int i = 0; i < count; ++i) mItems.Add(new TBenchItem(this));
    norva::EnableUndo(true);
  }

 private:
  norva::TOrbObjectList mItems;
};

}  // namespace bench
