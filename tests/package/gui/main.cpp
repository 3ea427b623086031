// A client of the installed package that links only NorvaRuntime::Gui: the widget pieces of every
// module and the chief headers they build on.
#include <IR_Database/Gui/NameWidths.h>
#include <NorvaBusComms/Gui/BusForm.h>
#include <NorvaBusComms/NorvaBusComms.h>
#include <NorvaGlobal/Gui/QtUIServices.h>
#include <NorvaGlobal/NorvaGlobal.h>
#include <OrbGlobal/Gui/OrbDragList.h>
#include <OrbGlobal/Gui/OrbDragObject.h>
#include <OrbGlobal/OrbGlobal.h>
#include <OrbGraphics/OrbGraphics.h>
#include <Utils/Utils.h>

#include <cstdio>

int main() {
  // The effects run in libvips, which the package brings along as a private dependency.
  QImage flat(8, 8, QImage::Format_RGB32);
  flat.fill(Qt::red);
  if (norva::TNorvaBusForm::staticMetaObject.className() !=
          QByteArrayView("norva::TNorvaBusForm") ||
      norva::Resample(flat, 4, 4, norva::TResampleFilter::Lanczos3).pixel(2, 2) !=
          qRgb(255, 0, 0)) {
    std::fprintf(stderr, "installed package behaves wrongly\n");
    return 1;
  }
  std::puts("installed package OK");
  return 0;
}
