#include "ScreenFit.h"

namespace studio {

QRect FirstWindowGeometry(const QRect& available, QSize preferred) {
  const QSize size = preferred.boundedTo(available.size() * 9 / 10);
  QRect geometry(QPoint(), size);
  geometry.moveCenter(available.center());
  return geometry;
}

}  // namespace studio
