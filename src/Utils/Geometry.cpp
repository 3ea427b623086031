#include <Utils/Geometry.h>

#include <NorvaGlobal/Exceptions.h>

namespace norva {

namespace {

int Add(int a, int b) {
  int sum = 0;
  if (__builtin_add_overflow(a, b, &sum)) throw EIntOverflow();
  return sum;
}

// Both edges inclusive, so Outer's right and bottom edge count as inside.
bool PointInClosedRect(QPoint point, const TRect& rect) {
  return point.x() >= rect.Left && point.x() <= rect.Right && point.y() >= rect.Top &&
         point.y() <= rect.Bottom;
}

}  // namespace

TRect ToTRect(const QRect& rect) {
  return TRect{rect.left(), rect.top(), Add(rect.right(), 1), Add(rect.bottom(), 1)};
}

QRect ToQRect(const TRect& rect) {
  return QRect(QPoint(rect.Left, rect.Top), QPoint(Add(rect.Right, -1), Add(rect.Bottom, -1)));
}

int SqrInt(int x) {
  int square = 0;
  if (__builtin_mul_overflow(x, x, &square)) throw EIntOverflow();
  return square;
}

QPoint OffsetPoint(QPoint point, int dx, int dy) {
  return QPoint(Add(point.x(), dx), Add(point.y(), dy));
}

QPoint OffsetPoint(QPoint point, QPoint offset) {
  return OffsetPoint(point, offset.x(), offset.y());
}

bool EqualPoint(QPoint a, QPoint b) { return a.x() == b.x() && a.y() == b.y(); }

bool RectInRect(const TRect& inner, const TRect& outer) {
  return PointInClosedRect(inner.TopLeft(), outer) && PointInClosedRect(inner.BottomRight(), outer);
}

}  // namespace norva
