#pragma once
// A drag of one model object. The view that starts the drag fills in the dragged view item (a
// list row or tree node) and the mouse offset within it; drop targets take the drag object from
// the drop event with qobject_cast. A drag runs its own event loop, in which the object may be
// destroyed elsewhere (an undo, a reload): the drag then carries none.

#include <OrbGlobal/Gui/OrbDragData.h>
#include <OrbGlobal/Model/OrbObject.h>

#include <QPoint>
#include <QPointer>
#include <QVariant>

namespace norva {

class TOrbDragObject : public TOrbDragData {
  Q_OBJECT

 public:
  static inline const QString MimeType = QStringLiteral("application/x-norva-orb-object");

  explicit TOrbDragObject(QWidget* source);
  // Destroys the model object when the drag owns it.
  ~TOrbDragObject() override;

  TOrbObject* OrbObject() const { return mOrbObject.data(); }
  void SetOrbObject(TOrbObject* object) { mOrbObject = object; }
  const QVariant& DraggedItem() const { return mDraggedItem; }
  void SetDraggedItem(const QVariant& item) { mDraggedItem = item; }
  QPoint ItemOffset() const { return mItemOffset; }
  void SetItemOffset(QPoint offset) { mItemOffset = offset; }
  bool OwnsObject() const { return mOwnsObject; }
  void SetOwnsObject(bool owns) { mOwnsObject = owns; }
  bool RightButtonDrag() const { return mRightButtonDrag; }
  void SetRightButtonDrag(bool right) { mRightButtonDrag = right; }

 private:
  QPointer<TOrbObject> mOrbObject;
  QVariant mDraggedItem;
  QPoint mItemOffset;
  bool mOwnsObject = false;
  bool mRightButtonDrag = false;
};

}  // namespace norva
