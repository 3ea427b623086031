#pragma once
// A separable resampler for any reconstruction kernel: the filters libvips lacks (box, Hermite,
// bell, B-spline) run here. It works on premultiplied RGBA, in floating point, one direction at a
// time: the kernel is widened when shrinking, so every source pixel counts.

#include <QImage>

#include <functional>

namespace norva {

struct TKernel {
  std::function<double(double)> Weight;  // of the distance from the sample's centre
  double Support;                        // Weight is 0 at and beyond this distance
};

// `image` must hold four premultiplied bands with alpha last (Format_ARGB32_Premultiplied on a
// little-endian machine, Format_RGBA8888_Premultiplied); the result has the same format.
QImage ResampleSeparable(const QImage& image, int width, int height, const TKernel& kernel);

}  // namespace norva
