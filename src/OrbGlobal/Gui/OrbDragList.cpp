#include <OrbGlobal/Gui/OrbDragList.h>

namespace norva {

TOrbDragList::TOrbDragList(QWidget* source, bool ownsObjects)
    : TOrbDragData(source, MimeType), mOrbObjects(ownsObjects, nullptr) {}

Qt::CursorShape TOrbDragList::GetDragCursor(bool accepted, int /*x*/, int /*y*/) const {
  if (!accepted) return NoDropCursor;
  return mOrbObjects.Count() < 2 ? DragCursor : MultiDragCursor;
}

}  // namespace norva
