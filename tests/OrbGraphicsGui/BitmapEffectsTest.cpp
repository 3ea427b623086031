// Bitmap effects checked by what they must do to simple pictures: sizes exact, flat colours flat,
// transparency kept, light conserved by blurring, edges lifted by sharpening, turns that land
// where they should; and the hand-made resampler agreeing with libvips on the kernels both have.

#include <NorvaGlobal/Exceptions.h>
#include <OrbGraphics/Gui/Resampler.h>
#include <OrbGraphics/OrbGraphics.h>

#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>

namespace norva {
namespace {

constexpr TResampleFilter AllFilters[] = {TResampleFilter::Box,     TResampleFilter::Triangle,
                                          TResampleFilter::Hermite, TResampleFilter::Bell,
                                          TResampleFilter::BSpline, TResampleFilter::Lanczos3,
                                          TResampleFilter::Mitchell};

QImage Flat(int width, int height, QColor colour) {
  QImage image(width, height, QImage::Format_ARGB32);
  image.fill(colour);
  return image;
}

// Smooth in both directions, so that resamplers may differ only in their details.
QImage Gradient(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      image.setPixel(x, y, qRgb(x * 255 / (width - 1), y * 255 / (height - 1), 128));
  return image;
}

// The largest difference of any channel of any pixel.
int LargestDifference(const QImage& a, const QImage& b) {
  int largest = 0;
  const QImage x = a.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  const QImage y = b.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  for (int row = 0; row < x.height(); ++row)
    for (int i = 0; i < x.width() * 4; ++i)
      largest = std::max(largest, std::abs(x.constScanLine(row)[i] - y.constScanLine(row)[i]));
  return largest;
}

int Red(const QImage& image, int x, int y) { return qRed(image.pixel(x, y)); }

TEST(BitmapEffects, EveryFilterGivesTheSizeAskedAndKeepsFlatColoursFlat) {
  const QImage flat = Flat(40, 30, QColor(200, 100, 50, 255));
  const QImage clear = Flat(40, 30, Qt::transparent);
  for (const TResampleFilter filter : AllFilters) {
    for (const QSize size : {QSize(16, 12), QSize(57, 41), QSize(1, 1)}) {
      const QImage result = Resample(flat, size.width(), size.height(), filter);
      EXPECT_EQ(result.size(), size) << ResampleFilterName(filter);
      // libvips' fixed-point weights lose a few levels when forty pixels fold into one.
      const int tolerance = size == QSize(1, 1) ? 8 : 1;
      EXPECT_LE(
          LargestDifference(result, Flat(size.width(), size.height(), QColor(200, 100, 50, 255))),
          tolerance)
          << ResampleFilterName(filter) << " to " << size.width() << "x" << size.height();
      EXPECT_EQ(qAlpha(Resample(clear, size.width(), size.height(), filter).pixel(0, 0)), 0)
          << ResampleFilterName(filter);
    }
  }
  EXPECT_THROW(Resample(flat, 0, 5, TResampleFilter::Box), ENorvaError);
  EXPECT_TRUE(Resample(QImage(), 5, 5, TResampleFilter::Lanczos3).isNull());
}

TEST(BitmapEffects, TheHandMadeResamplerAgreesWithLibvipsWhereBothHaveTheKernel) {
  const TKernel triangle{[](double t) { return std::max(0.0, 1 - std::abs(t)); }, 1};
  const TKernel mitchell{
      [](double t) {
        t = std::abs(t);
        const double b = 1.0 / 3, c = 1.0 / 3;
        if (t < 1)
          return ((12 - 9 * b - 6 * c) * t * t * t + (-18 + 12 * b + 6 * c) * t * t + (6 - 2 * b)) /
                 6;
        if (t < 2)
          return ((-b - 6 * c) * t * t * t + (6 * b + 30 * c) * t * t + (-12 * b - 48 * c) * t +
                  (8 * b + 24 * c)) /
                 6;
        return 0.0;
      },
      2};
  const QImage source = Gradient(120, 90);
  const QImage rgba = source.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  for (const auto& [kernel, filter] : {std::pair{&triangle, TResampleFilter::Triangle},
                                       std::pair{&mitchell, TResampleFilter::Mitchell}}) {
    for (const QSize size : {QSize(48, 36), QSize(300, 225)}) {
      EXPECT_LE(LargestDifference(ResampleSeparable(rgba, size.width(), size.height(), *kernel),
                                  Resample(source, size.width(), size.height(), filter)),
                3)
          << ResampleFilterName(filter) << " to " << size.width();
    }
  }
}

TEST(BitmapEffects, BlurSpreadsLightWithoutLosingItAndSharpenLiftsEdges) {
  QImage dot = Flat(21, 21, Qt::black);
  dot.setPixel(10, 10, qRgb(255, 255, 255));
  const QImage blurred = Blur(dot, 4);
  EXPECT_LT(Red(blurred, 10, 10), 255);
  EXPECT_GT(Red(blurred, 12, 10), 0);
  EXPECT_EQ(Red(blurred, 12, 10), Red(blurred, 8, 10)) << "symmetric";
  int light = 0;
  for (int y = 0; y < 21; ++y)
    for (int x = 0; x < 21; ++x) light += Red(blurred, x, y);
  EXPECT_NEAR(light, 255, 30);
  EXPECT_EQ(LargestDifference(Blur(Flat(9, 9, Qt::darkCyan), 3), Flat(9, 9, Qt::darkCyan)), 0);

  // A step from grey 100 to grey 160: sharpening darkens the dark side and lightens the light.
  QImage step = Flat(20, 4, QColor(100, 100, 100));
  QPainter(&step).fillRect(10, 0, 10, 4, QColor(160, 160, 160));
  const QImage sharp = Sharpen(step, 2, 1.5);
  EXPECT_LT(Red(sharp, 9, 2), 100);
  EXPECT_GT(Red(sharp, 10, 2), 160);
  EXPECT_EQ(Red(sharp, 0, 2), 100) << "far from the edge nothing changes";
  EXPECT_EQ(qAlpha(Sharpen(Flat(5, 5, QColor(0, 0, 0, 90))).pixel(2, 2)), 90);
}

TEST(BitmapEffects, ReliefGreyAndInversion) {
  const QImage embossed = Emboss(Flat(9, 9, QColor(40, 90, 200)));
  EXPECT_EQ(embossed.pixel(4, 4), qRgb(128, 128, 128)) << "no edge: mid grey";
  const QImage grey = GreyScale(Flat(3, 3, QColor(255, 0, 0, 255)));
  EXPECT_EQ(grey.pixel(1, 1), qRgb(76, 76, 76));
  EXPECT_EQ(qAlpha(GreyScale(Flat(3, 3, QColor(255, 0, 0, 128))).pixel(1, 1)), 128);
  EXPECT_EQ(Invert(Flat(3, 3, Qt::red)).pixel(1, 1), qRgb(0, 255, 255));
}

TEST(BitmapEffects, TurnsGoCounterClockwiseAndGrowToHoldTheCorners) {
  QImage marked = Flat(40, 20, Qt::white);
  QPainter(&marked).fillRect(0, 0, 6, 6, Qt::red);  // the top-left corner
  const QImage quarter = Rotate(marked, 90);
  EXPECT_NEAR(quarter.width(), 20, 1);
  EXPECT_NEAR(quarter.height(), 40, 1);
  // A quarter turn counter-clockwise takes the top-left corner to the bottom left.
  EXPECT_EQ(quarter.pixel(2, quarter.height() - 3), qRgb(255, 0, 0));
  EXPECT_EQ(quarter.pixel(2, 2), qRgb(255, 255, 255));

  const QImage eighth = Rotate(Flat(40, 40, Qt::blue), 45, Qt::yellow);
  EXPECT_NEAR(eighth.width(), 40 * std::sqrt(2.0), 2);
  EXPECT_EQ(eighth.pixel(1, 1), qRgb(255, 255, 0)) << "the uncovered corner is the background";
  EXPECT_EQ(eighth.pixel(eighth.width() / 2, eighth.height() / 2), qRgb(0, 0, 255));
}

}  // namespace
}  // namespace norva
