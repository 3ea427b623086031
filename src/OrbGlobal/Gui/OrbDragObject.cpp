#include <OrbGlobal/Gui/OrbDragObject.h>

namespace norva {

TOrbDragObject::TOrbDragObject(QWidget* source) : TOrbDragData(source, MimeType) {}

TOrbDragObject::~TOrbDragObject() {
  if (mOwnsObject) delete mOrbObject.data();
}

}  // namespace norva
