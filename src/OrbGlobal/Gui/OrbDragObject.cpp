#include <OrbGlobal/Gui/OrbDragObject.h>

#include <OrbGlobal/Model/OrbObject.h>

namespace norva {

TOrbDragObject::TOrbDragObject(QWidget* source) : TOrbDragData(source, MimeType) {}

TOrbDragObject::~TOrbDragObject() {
  if (mOwnsObject) delete mOrbObject;
}

}  // namespace norva
