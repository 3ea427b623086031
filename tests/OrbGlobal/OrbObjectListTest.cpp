// The child list: growth and limits, ordering operations, and what it tells items, owner and undo.
#include "ModelFixtures.h"
#include "ThrownMessage.h"

#include <OrbGlobal/Model/OrbErrors.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <QPointer>

#include <vector>

namespace fixture {

using namespace norva;

namespace {

using OrbObjectListTest = TModelTest;

QStringList NamesOf(const TOrbObjectList& list) {
  QStringList names;
  for (TOrbObject* item : list) names.append(item ? item->GetName() : QStringLiteral("-"));
  return names;
}

TEST_F(OrbObjectListTest, CapacityGrowsInTheDesignedSteps) {
  TOrbObjectList list(false, nullptr);
  std::vector<int> capacities;
  for (int i = 0; i < 100; ++i) {
    list.Add(nullptr);
    if (capacities.empty() || capacities.back() != list.Capacity()) {
      capacities.push_back(list.Capacity());
    }
  }
  EXPECT_EQ(capacities, (std::vector<int>{4, 8, 12, 28, 44, 60, 76, 95, 118}));
  TOrbObjectList eighty(false, nullptr);
  eighty.SetCapacity(80);
  eighty.SetCount(80);
  eighty.Insert(0, nullptr);
  EXPECT_EQ(eighty.Capacity(), 100);
}

TEST_F(OrbObjectListTest, RangeErrorsLeaveTheListUnchanged) {
  TOrbObjectList list(false, nullptr);
  list.Add(nullptr);
  EXPECT_THROW(list.Get(1), EListError);
  EXPECT_THROW(list.Get(-1), EListError);
  EXPECT_THROW(list.Put(1, nullptr), EListError);
  EXPECT_THROW(list.Delete(1), EListError);
  EXPECT_THROW(list.Insert(2, nullptr), EListError);
  EXPECT_THROW(list.Move(0, 1), EListError);
  EXPECT_THROW(list.Move(3, 0), EListError);
  EXPECT_THROW(list.SetCapacity(0), EListError);
  EXPECT_THROW(list.SetCapacity(TOrbObjectList::MaxListSize), EListError);
  EXPECT_THROW(list.SetCount(-1), EListError);
  EXPECT_THROW(list.SetCount(TOrbObjectList::MaxListSize), EListError);
  EXPECT_THROW(list.QuickSort(0, 5, [](TOrbObject*, TOrbObject*) { return 0; }), EListError);
  EXPECT_EQ(list.Count(), 1);
  EXPECT_EQ(ThrownMessage<EListError>([&] { list.Get(7); }), "List index out of bounds (7)");
  list.Insert(1, nullptr);  // at Count is allowed
  EXPECT_EQ(list.Count(), 2);
}

TEST_F(OrbObjectListTest, MoveShiftsTheItemsBetween) {
  TDocument document;
  for (const char* name : {"a", "b", "c", "d"}) document.AddItem(QString::fromLatin1(name));
  document.Items().Move(0, 2);
  EXPECT_EQ(NamesOf(document.Items()), QStringList({"b", "c", "a", "d"}));
  document.Items().Move(3, 1);
  EXPECT_EQ(NamesOf(document.Items()), QStringList({"b", "d", "c", "a"}));
  Undo().Empty();
  document.Items().Move(2, 2);
  EXPECT_EQ(Undo().Count(), 0);
}

TEST_F(OrbObjectListTest, SetCountDeletesFromTheEndAndGrowsWithNone) {
  TDocument document;
  QPointer<TItem> a = document.AddItem(QStringLiteral("a"));
  QPointer<TItem> b = document.AddItem(QStringLiteral("b"));
  QPointer<TItem> c = document.AddItem(QStringLiteral("c"));
  DisableUndo();
  document.Items().SetCount(1);
  EnableUndo();
  EXPECT_TRUE(a);
  EXPECT_FALSE(b);
  EXPECT_FALSE(c);
  document.Items().SetCount(3);
  EXPECT_EQ(NamesOf(document.Items()), QStringList({"a", "-", "-"}));
}

TEST_F(OrbObjectListTest, SortOrdersByNameIgnoringCaseOrByTheGivenComparison) {
  TDocument document;
  for (const char* name : {"delta", "Alpha", "charlie", "Bravo", "echo"}) {
    document.AddItem(QString::fromLatin1(name));
  }
  document.Items().Sort();
  EXPECT_EQ(NamesOf(document.Items()), QStringList({"Alpha", "Bravo", "charlie", "delta", "echo"}));
  document.Items().Sort([](TOrbObject* x, TOrbObject* y) {
    return static_cast<int>(y->GetName().size()) - static_cast<int>(x->GetName().size());
  });
  EXPECT_EQ(NamesOf(document.Items()).first().size(), 7);
  EXPECT_EQ(NamesOf(document.Items()).last().size(), 4);
}

TEST_F(OrbObjectListTest, EnumeratorVisitsEveryItemOnce) {
  TDocument document;
  document.AddItem(QStringLiteral("a"));
  document.AddItem(QStringLiteral("b"));
  TOrbObjectListEnumerator enumerator = document.Items().GetEnumerator();
  QStringList seen;
  while (enumerator.MoveNext()) seen.append(enumerator.GetCurrent()->GetName());
  EXPECT_EQ(seen, QStringList({"a", "b"}));
  TOrbObjectList empty(false, nullptr);
  EXPECT_FALSE(empty.GetEnumerator().MoveNext());
}

// Deleted with undo on, the entry keeps the item and the owner is told; without undo the item is
// destroyed at once and nobody is told.
TEST_F(OrbObjectListTest, AddAndDeleteFlagTheItemsAndTheirOwner) {
  for (const bool undoable : {true, false}) {
    SCOPED_TRACE(undoable ? "undoable" : "undo off");
    TDocument document;
    QPointer<TItem> item = document.AddItem(QStringLiteral("a"));
    EXPECT_TRUE(item->GetAdded());
    EXPECT_TRUE(document.GetModified());
    document.ClearChangeFlags();
    document.Items().SetUpdateOwner(true);
    const int calls = document.UpdateCalls();
    if (!undoable) DisableUndo();
    document.Items().Delete(0);
    EnableUndo();
    EXPECT_TRUE(document.GetModified());
    EXPECT_EQ(document.UpdateCalls(), calls + (undoable ? 1 : 0));
    ASSERT_EQ(bool(item), undoable);
    if (undoable) {
      EXPECT_TRUE(item->GetRemoved());
    }
  }
}

TEST_F(OrbObjectListTest, PutReportsTheOldItemDeletedAndTheNewOneAdded) {
  TDocument document;
  TItem* first = document.AddItem(QStringLiteral("first"));
  Undo().Empty();
  auto* second = new TItem(&document);
  document.Items().Put(0, second);
  EXPECT_TRUE(first->GetRemoved());
  EXPECT_TRUE(second->GetAdded());
  EXPECT_EQ(Undo().Count(), 2);
  Undo().Revert();
  EXPECT_EQ(document.Item(0), first);
}

TEST_F(OrbObjectListTest, AssignAndListsWithoutOwnerRecordNothing) {
  TDocument document;
  document.AddItem(QStringLiteral("a"));
  Undo().Empty();
  TOrbObjectList view(false, &document);
  view.Assign(document.Items());
  EXPECT_EQ(NamesOf(view), QStringList({"a"}));

  TItem loose;
  TOrbObjectList list(false, nullptr);
  list.Add(&loose);
  list.Move(0, 0);
  list.Delete(0);
  EXPECT_EQ(Undo().Count(), 0);
  EXPECT_TRUE(loose.GetRemoved());
}

}  // namespace
}  // namespace fixture
