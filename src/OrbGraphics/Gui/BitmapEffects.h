#pragma once
// Bitmap effects: pure functions from one picture to a new one, for button faces and previews.
// The heavy kernels run in libvips (docs/graphics.md says why); pictures of any QImage format go
// in, and pictures in Format_ARGB32_Premultiplied, Qt's painting format, come out (filtering
// premultiplied colours keeps transparent edges from bleeding). A null picture gives a null one.

#include <QColor>
#include <QImage>

#include <cstdint>

namespace norva {

// The classic named reconstruction filters, from the sharpest step to the smoothest.
enum class TResampleFilter : std::uint8_t {
  Box,
  Triangle,
  Hermite,
  Bell,
  BSpline,
  Lanczos3,
  Mitchell
};

// The filter's name as written in the user interface ("Box", "Triangle", "Hermite", "Bell",
// "B-spline", "Lanczos 3", "Mitchell").
const char* ResampleFilterName(TResampleFilter filter);

// `image` resampled to `width` x `height` (each at least 1; raises ENorvaError otherwise).
QImage Resample(const QImage& image, int width, int height, TResampleFilter filter);
// A Gaussian blur reaching `radius` pixels (sigma = radius / 2); a radius below 0.5 copies.
QImage Blur(const QImage& image, double radius);
// Unsharp masking: the difference from a blur of `radius` pixels added back `amount` times.
QImage Sharpen(const QImage& image, double radius = 1.0, double amount = 1.0);
// Relief lit from the top left, on mid grey.
QImage Emboss(const QImage& image);
// Turned by `degrees` counter-clockwise about the centre; the picture grows to hold every corner
// and the uncovered area is `background`.
QImage Rotate(const QImage& image, double degrees, const QColor& background = Qt::transparent);
// Luminance (Rec. 601 weights) in all three colours; alpha kept.
QImage GreyScale(const QImage& image);
// Every colour inverted; alpha kept.
QImage Invert(const QImage& image);

}  // namespace norva
