#pragma once
// A small tree of selections: items are model objects or nested tree lists; GetText turns it into
// one line such as "A" => ("x", "y"). Nested tree lists always go with their parent; model objects
// only when the list owns its items.

#include <QList>
#include <QObject>
#include <QString>

namespace norva {

class TTreeList : public QObject {
  Q_OBJECT

 public:
  explicit TTreeList(bool ownsObjects = false);
  ~TTreeList() override;
  TTreeList(const TTreeList&) = delete;
  TTreeList& operator=(const TTreeList&) = delete;

  int Add(QObject* item);
  // A new tree list with the same owning setting, appended to this one.
  TTreeList* AddTreeNode();
  void Delete(int index);
  void Clear();
  int Count() const { return static_cast<int>(mItems.size()); }
  QObject* Item(int index) const { return mItems.at(index); }
  bool OwnsObjects() const { return mOwnsObjects; }

  QObject* AssociatedObject() const { return mAssociatedObject; }
  void SetAssociatedObject(QObject* object) { mAssociatedObject = object; }

  QString GetText() const;

 private:
  void Release(QObject* item) const;

  bool mOwnsObjects;
  QList<QObject*> mItems;
  QObject* mAssociatedObject = nullptr;
};

}  // namespace norva
