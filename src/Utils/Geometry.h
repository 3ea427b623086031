#pragma once
// Point and rectangle arithmetic. Overflowing 32 bits raises EIntOverflow instead of wrapping.

#include <QPoint>
#include <QRect>

namespace norva {

// A rectangle by its edges, Right and Bottom lying just outside it (QRect's right() and bottom()
// are one less), so that Left + width == Right.
struct TRect {
  int Left = 0;
  int Top = 0;
  int Right = 0;
  int Bottom = 0;

  QPoint TopLeft() const { return QPoint(Left, Top); }
  QPoint BottomRight() const { return QPoint(Right, Bottom); }
  friend bool operator==(const TRect&, const TRect&) = default;
};

// Raise EIntOverflow when an edge does not fit.
TRect ToTRect(const QRect& rect);
QRect ToQRect(const TRect& rect);

int SqrInt(int x);
QPoint OffsetPoint(QPoint point, int dx, int dy);
QPoint OffsetPoint(QPoint point, QPoint offset);
bool EqualPoint(QPoint a, QPoint b);

// True when Inner's top-left and bottom-right corners both lie in Outer, Outer's right and bottom
// edges counted as inside.
bool RectInRect(const TRect& inner, const TRect& outer);

}  // namespace norva
