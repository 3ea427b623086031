// The tree list's one-line text and its ownership of nested lists.
#include "ModelFixtures.h"

#include <OrbGlobal/Clipboard/TreeList.h>

#include <QPointer>

namespace fixture {

using namespace norva;

namespace {

class TreeListTest : public TModelTest {
 protected:
  TTarget* Named(const char* name) {
    auto* object = new TTarget;
    object->SetName(QString::fromLatin1(name));
    mObjects.emplace_back(object);
    return object;
  }

 private:
  std::vector<std::unique_ptr<TTarget>> mObjects;
};

TEST_F(TreeListTest, OneObjectIsQuotedTwoAreParenthesisedAfterTheAssociatedObject) {
  TTreeList list;
  list.Add(Named("x"));
  EXPECT_EQ(list.GetText(), QStringLiteral("\"x\""));
  list.Add(Named("y"));
  EXPECT_EQ(list.GetText(), QStringLiteral("(\"x\", \"y\")"));
  list.SetAssociatedObject(Named("A"));
  EXPECT_EQ(list.GetText(), QStringLiteral("\"A\" => (\"x\", \"y\")"));
  TTreeList alone;
  alone.SetAssociatedObject(Named("A"));
  EXPECT_EQ(alone.GetText(), QStringLiteral("\"A\""));
}

TEST_F(TreeListTest, NestedListsJoinAndEmptyOnesOrStrangersAddOnlyTheirSeparator) {
  TTreeList list;
  QObject stranger;
  list.Add(&stranger);
  list.Add(Named("x"));
  list.AddTreeNode();  // empty
  TTreeList* node = list.AddTreeNode();
  node->SetAssociatedObject(Named("B"));
  node->Add(Named("z"));
  EXPECT_EQ(list.GetText(), QStringLiteral("(, \"x\", \"B\" => \"z\")"));
}

TEST_F(TreeListTest, NestedListsGoWithTheirParentModelObjectsOnlyWithAnOwningOne) {
  QPointer<TTreeList> node;
  QPointer<TTarget> kept = Named("kept");
  {
    TTreeList list;
    node = list.AddTreeNode();
    node->Add(kept);
  }
  EXPECT_FALSE(node);
  EXPECT_TRUE(kept);

  QPointer<TItem> owned = new TItem;
  {
    TTreeList owning(true);
    TTreeList* child = owning.AddTreeNode();
    EXPECT_TRUE(child->OwnsObjects());
    child->Add(owned);
  }
  EXPECT_FALSE(owned);
}

}  // namespace
}  // namespace fixture
