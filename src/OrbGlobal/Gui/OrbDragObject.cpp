#include <OrbGlobal/Gui/OrbDragObject.h>

#include <OrbGlobal/OrbObject.h>

namespace norva {

TOrbDragObject::TOrbDragObject(QWidget* source) : TOrbDragData(source, MimeType) {}

TOrbDragObject::~TOrbDragObject() {
  if (mOwnsObject) delete mOrbObject;
}

}  // namespace norva
