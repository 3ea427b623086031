// Drag objects of the object model: what they carry, what they own and which cursor they show.
#include <NorvaGlobal/Gui/QtUIServices.h>
#include <OrbGlobal/Clipboard/OrbClipboard.h>
#include <OrbGlobal/Gui/OrbDragList.h>
#include <OrbGlobal/Gui/OrbDragObject.h>
#include <OrbGlobal/Model/OrbObject.h>
#include <support/gui/OffscreenPlatform.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>
#include <QWidget>

#include <gtest/gtest.h>

#include <memory>

namespace norva {
namespace {

TEST(OrbDragObject, StartsEmptyIsFoundByItsFormatAndMayOutliveItsSourceView) {
  auto view = std::make_unique<QWidget>();
  std::unique_ptr<QMimeData> data = std::make_unique<TOrbDragObject>(view.get());
  auto* drag = qobject_cast<TOrbDragObject*>(data.get());
  ASSERT_NE(drag, nullptr);
  EXPECT_EQ(drag->Source(), view.get());
  EXPECT_EQ(drag->OrbObject(), nullptr);
  EXPECT_FALSE(drag->DraggedItem().isValid());
  EXPECT_EQ(drag->ItemOffset(), QPoint());
  EXPECT_FALSE(drag->OwnsObject());
  EXPECT_FALSE(drag->RightButtonDrag());
  EXPECT_TRUE(data->hasFormat(TOrbDragObject::MimeType));
  EXPECT_FALSE(data->hasFormat(TOrbDragList::MimeType));
  EXPECT_FALSE(data->hasText());
  view.reset();
  EXPECT_EQ(drag->Source(), nullptr);
}

TEST(OrbDragObject, DestroysTheObjectOnlyWhenItOwnsIt) {
  QPointer<TOrbObject> owned = new TOrbObject;
  auto kept = std::make_unique<TOrbObject>();
  {
    TOrbDragObject owning(nullptr);
    owning.SetOrbObject(owned);
    owning.SetOwnsObject(true);
    TOrbDragObject borrowing(nullptr);
    borrowing.SetOrbObject(kept.get());
  }
  EXPECT_FALSE(owned);
  EXPECT_EQ(kept->GetOwner(), nullptr);  // still alive
}

TEST(OrbDragObject, CarriesNoneOnceItsObjectIsDestroyedElsewhere) {
  for (const bool owns : {false, true}) {
    TOrbDragObject drag(nullptr);
    auto object = std::make_unique<TOrbObject>();
    drag.SetOrbObject(object.get());
    drag.SetOwnsObject(owns);
    object.reset();
    EXPECT_EQ(drag.OrbObject(), nullptr) << "owns: " << owns;
  }  // an owning drag must not destroy it a second time
}

TEST(OrbDragList, CursorShowsOneOrSeveralObjectsOrNoDrop) {
  TOrbDragList drag(nullptr, true);
  EXPECT_EQ(drag.GetDragCursor(true, 0, 0), DragCursor);
  drag.OrbObjects().Add(new TOrbObject);
  EXPECT_EQ(drag.GetDragCursor(true, 5, 5), DragCursor);
  drag.OrbObjects().Add(new TOrbObject);
  EXPECT_EQ(drag.GetDragCursor(true, 5, 5), MultiDragCursor);
  EXPECT_EQ(drag.GetDragCursor(false, 5, 5), NoDropCursor);
  EXPECT_NE(DragCursor, MultiDragCursor);
}

TEST(OrbDragList, OwnsItsObjectsOnlyWhenAskedTo) {
  QPointer<TOrbObject> owned = new TOrbObject;
  auto kept = std::make_unique<TOrbObject>();
  {
    TOrbDragList owning(nullptr, true);
    owning.OrbObjects().Add(owned);
    TOrbDragList borrowing(nullptr, false);
    borrowing.OrbObjects().Add(kept.get());
    EXPECT_TRUE(owning.hasFormat(TOrbDragList::MimeType));
  }
  EXPECT_FALSE(owned);
  EXPECT_TRUE(kept->GetRemoved());  // alive, and told it left the list
}

// The clipboard slot through the real system clipboard: text from elsewhere hides the slot.
TEST(OrbClipboardWithQt, TextOnTheSystemClipboardHidesTheCopiedObject) {
  TQtUIServices services;
  TScopedUIServices scoped(services);
  auto clone = std::make_unique<TOrbObject>();
  clone->CopyToClipboard();  // a sub-component: the slot holds a clone
  ASSERT_NE(GetClipboardObject(), nullptr);
  EXPECT_NE(GetClipboardObject(), clone.get());
  QGuiApplication::clipboard()->setText(QStringLiteral("elsewhere"));
  EXPECT_EQ(GetClipboardObject(), nullptr);
  ReleaseClipboardObject();
}

}  // namespace
}  // namespace norva
