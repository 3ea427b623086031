// The clipboard slot: clones for sub-components, references for top-level objects, and the
// system clipboard reached only through the UI services.
#include "ModelFixtures.h"
#include "ThrownMessage.h"

#include <OrbGlobal/Clipboard/OrbClipboard.h>
#include <OrbGlobal/Model/OrbErrors.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <Testing/RecordingUIServices.h>

#include <QPointer>

namespace fixture {

using namespace norva;

namespace {

class ClipboardTest : public TModelTest {
 protected:
  void SetUp() override {
    TModelTest::SetUp();
    document.AssignNewGUID();
    item = document.AddItem(QStringLiteral("Lamp"));
    item->SetCount(3);
    MaintainUndo();
  }
  void TearDown() override {
    ReleaseClipboardObject();
    TModelTest::TearDown();
  }

  TRecordingUIServices ui;
  TScopedUIServices scoped{ui};
  TDocument document;
  TItem* item = nullptr;
};

TEST_F(ClipboardTest, CopyingASubComponentHoldsAFreeStandingClone) {
  item->CopyToClipboard();
  auto* held = qobject_cast<TItem*>(GetClipboardObject());
  ASSERT_NE(held, nullptr);
  EXPECT_NE(held, item);
  EXPECT_EQ(held->GetOwner(), nullptr);
  EXPECT_EQ(held->GetCount(), 3);
  EXPECT_FALSE(CutClipboardObject());
  EXPECT_EQ(ui.ClipboardEmptied(), 1);
  EXPECT_TRUE(CheckOriginalClipboardObjectOwner(&document));
  EXPECT_FALSE(CheckOriginalClipboardObjectOwner(item));
  EXPECT_FALSE(CheckOriginalClipboardObjectOwner(nullptr));
}

TEST_F(ClipboardTest, CopyingAgainDestroysThePreviousCloneButNeverATopLevelObject) {
  item->CopyToClipboard();
  QPointer<TOrbObject> firstClone = GetClipboardObject();
  item->CopyToClipboard();
  EXPECT_FALSE(firstClone);

  TTarget top;
  top.CopyToClipboard();
  EXPECT_EQ(GetClipboardObject(), &top);
  top.CopyToClipboard();
  ReleaseClipboardObject();
  EXPECT_EQ(GetClipboardObject(), nullptr);
  EXPECT_EQ(top.GetName(), QString());                         // still alive and usable
  EXPECT_FALSE(CheckOriginalClipboardObjectOwner(&document));  // copied without owner

  // One destroyed elsewhere leaves the slot, and is not destroyed twice.
  auto gone = std::make_unique<TTarget>();
  gone->CopyToClipboard();
  gone.reset();
  EXPECT_EQ(GetClipboardObject(), nullptr);
  ReleaseClipboardObject();
}

TEST_F(ClipboardTest, OtherDataOnTheSystemClipboardHidesTheSlot) {
  item->CopyToClipboard();
  ui.SetClipboardText(QStringLiteral("from another program"));
  EXPECT_EQ(GetClipboardObject(), nullptr);
  ui.EmptyClipboard();
  EXPECT_NE(GetClipboardObject(), nullptr);
}

TEST_F(ClipboardTest, CutDeletesTheOriginalAndKeepsItUndoable) {
  QPointer<TItem> original = item;
  item->CutToClipboard();
  EXPECT_TRUE(CutClipboardObject());
  EXPECT_EQ(document.Items().Count(), 0);
  ASSERT_TRUE(original);  // held by the undo entry
  Undo().Revert();
  EXPECT_EQ(document.Item(0), original.data());
}

TEST_F(ClipboardTest, CuttingAReadOnlyObjectLeavesTheCopyAndRaises) {
  document.SetReadOnly(true);
  EXPECT_EQ(ThrownMessage<EUserError>([&] { item->CutToClipboard(); }), "Lamp cannot be deleted.");
  EXPECT_FALSE(CutClipboardObject());
  EXPECT_NE(GetClipboardObject(), nullptr);
  EXPECT_EQ(document.Items().Count(), 1);
}

}  // namespace
}  // namespace fixture
