#include <OrbGlobal/Gui/OrbDragData.h>

namespace norva {

TOrbDragData::TOrbDragData(QWidget* source, QString format)
    : mSource(source), mFormat(std::move(format)) {}

}  // namespace norva
