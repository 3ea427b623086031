#pragma once
// The first window's size on the screen it opens on: the size the studio is designed for, made
// smaller when the screen (at its scale factor, in device-independent pixels) has less room, so
// that no part of the window lies off the screen.

#include <QRect>
#include <QSize>

namespace studio {

inline constexpr QSize PreferredWindowSize{1200, 800};

// `preferred` bounded by nine tenths of `available`, centred in it.
QRect FirstWindowGeometry(const QRect& available, QSize preferred = PreferredWindowSize);

}  // namespace studio
