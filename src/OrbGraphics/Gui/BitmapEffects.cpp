#include <OrbGraphics/Gui/BitmapEffects.h>

#include <NorvaGlobal/Exceptions.h>
#include <OrbGraphics/Gui/Resampler.h>

// GLib names a member "signals", which Qt defines as a keyword.
#pragma push_macro("signals")
#undef signals
#include <vips/vips.h>
#pragma pop_macro("signals")

#include <cmath>
#include <cstring>
#include <memory>
#include <mutex>
#include <numbers>

namespace norva {

namespace {

// Qt's own painting format. Its bytes lie blue, green, red, alpha on the little-endian machines
// the library is built for; every kernel here treats the bands alike, and only the grey weights
// and the background colour are given in that order.
constexpr auto Premultiplied = QImage::Format_ARGB32_Premultiplied;
static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "pixel bytes are taken as blue, green, red, alpha");

void StartVips() {
  static std::once_flag started;
  std::call_once(started, [] {
    if (VIPS_INIT("norva") != 0) vips_error_clear();
    // The pictures handed to libvips are borrowed memory that is gone after each call: a cache
    // of operations on them would answer later calls from freed memory.
    vips_cache_set_max(0);
  });
}

[[noreturn]] void RaiseVipsError(const char* operation) {
  const QString reason = QString::fromUtf8(vips_error_buffer()).trimmed();
  vips_error_clear();
  throw ENorvaError(QStringLiteral("The picture could not be processed (%1): %2")
                        .arg(QLatin1String(operation), reason));
}

// Owns one reference to a libvips image.
using TVipsImage = std::unique_ptr<VipsImage, decltype(&g_object_unref)>;

TVipsImage Owned(VipsImage* image) { return TVipsImage(image, &g_object_unref); }

// Runs one operation, `call(&out)`, and takes ownership of its output.
template <typename F>
TVipsImage Run(const char* operation, F call) {
  VipsImage* out = nullptr;
  if (call(&out) != 0) RaiseVipsError(operation);
  return Owned(out);
}

// The picture's premultiplied bytes as a libvips image (borrowing `rgba`, which must outlive it).
TVipsImage Borrowed(const QImage& rgba) {
  StartVips();
  VipsImage* image =
      vips_image_new_from_memory(rgba.constBits(), static_cast<std::size_t>(rgba.sizeInBytes()),
                                 rgba.width(), rgba.height(), 4, VIPS_FORMAT_UCHAR);
  if (!image) RaiseVipsError("reading");
  image->Type = VIPS_INTERPRETATION_sRGB;
  return Owned(image);
}

QImage ToQImage(VipsImage* image) {
  const TVipsImage cast =
      Run("converting", [&](VipsImage** out) { return vips_cast_uchar(image, out, nullptr); });
  std::size_t size = 0;
  void* memory = vips_image_write_to_memory(cast.get(), &size);
  if (!memory) RaiseVipsError("writing");
  QImage result(vips_image_get_width(cast.get()), vips_image_get_height(cast.get()), Premultiplied);
  std::memcpy(result.bits(), memory, std::min<std::size_t>(size, result.sizeInBytes()));
  g_free(memory);
  return result;
}

// The picture in the premultiplied format. An opaque RGB32 picture already is one, byte for byte
// (Qt keeps its alpha bytes at 255): it is read where it lies instead of being copied.
QImage AsPremultiplied(const QImage& image) {
  if (image.format() == QImage::Format_RGB32) {
    return QImage(image.constBits(), image.width(), image.height(),
                  static_cast<qsizetype>(image.bytesPerLine()), Premultiplied);
  }
  return image.convertToFormat(Premultiplied);
}

// Colour effects leave transparency as it was; a premultiplied colour never exceeds its alpha.
QImage WithAlphaOf(QImage result, const QImage& original) {
  for (int y = 0; y < result.height(); ++y) {
    std::uint8_t* line = result.scanLine(y);
    const std::uint8_t* source = original.constScanLine(y);
    for (int x = 0; x < result.width(); ++x) {
      const std::uint8_t alpha = source[x * 4 + 3];
      for (int band = 0; band < 3; ++band) line[x * 4 + band] = std::min(line[x * 4 + band], alpha);
      line[x * 4 + 3] = alpha;
    }
  }
  return result;
}

double KernelBox(double t) { return t >= -0.5 && t < 0.5 ? 1.0 : 0.0; }
double KernelHermite(double t) {
  t = std::abs(t);
  return t < 1 ? (2 * t - 3) * t * t + 1 : 0;
}
double KernelBell(double t) {
  t = std::abs(t);
  if (t < 0.5) return 0.75 - t * t;
  if (t < 1.5) return 0.5 * (t - 1.5) * (t - 1.5);
  return 0;
}
double KernelBSpline(double t) {
  t = std::abs(t);
  if (t < 1) return (0.5 * t - 1) * t * t + 2.0 / 3;
  if (t < 2) return (2 - t) * (2 - t) * (2 - t) / 6;
  return 0;
}

}  // namespace

const char* ResampleFilterName(TResampleFilter filter) {
  switch (filter) {
    case TResampleFilter::Box: return "Box";
    case TResampleFilter::Triangle: return "Triangle";
    case TResampleFilter::Hermite: return "Hermite";
    case TResampleFilter::Bell: return "Bell";
    case TResampleFilter::BSpline: return "B-spline";
    case TResampleFilter::Lanczos3: return "Lanczos 3";
    case TResampleFilter::Mitchell: return "Mitchell";
  }
  return "";
}

QImage Resample(const QImage& image, int width, int height, TResampleFilter filter) {
  if (width < 1 || height < 1) {
    throw ENorvaError(QStringLiteral("Cannot resample to %1 x %2 pixels").arg(width).arg(height));
  }
  if (image.isNull()) return QImage();
  const QImage rgba = AsPremultiplied(image);
  VipsKernel kernel = VIPS_KERNEL_LINEAR;
  switch (filter) {
    case TResampleFilter::Box: return ResampleSeparable(rgba, width, height, {KernelBox, 0.5});
    case TResampleFilter::Hermite:
      return ResampleSeparable(rgba, width, height, {KernelHermite, 1});
    case TResampleFilter::Bell: return ResampleSeparable(rgba, width, height, {KernelBell, 1.5});
    case TResampleFilter::BSpline:
      return ResampleSeparable(rgba, width, height, {KernelBSpline, 2});
    case TResampleFilter::Triangle: kernel = VIPS_KERNEL_LINEAR; break;
    case TResampleFilter::Lanczos3: kernel = VIPS_KERNEL_LANCZOS3; break;
    case TResampleFilter::Mitchell: kernel = VIPS_KERNEL_MITCHELL; break;
  }
  const TVipsImage in = Borrowed(rgba);
  // No box pre-shrink ("gap" 0): the named kernel does all the work, as its name promises.
  const TVipsImage resized = Run("resampling", [&](VipsImage** out) {
    return vips_resize(in.get(), out, static_cast<double>(width) / rgba.width(), "vscale",
                       static_cast<double>(height) / rgba.height(), "kernel", kernel, "gap", 0.0,
                       nullptr);
  });
  QImage result = ToQImage(resized.get());
  // libvips rounds the scaled size; the caller asked for an exact one.
  if (result.width() != width || result.height() != height)
    result = result.copy(0, 0, width, height);
  return result;
}

QImage Blur(const QImage& image, double radius) {
  if (image.isNull()) return QImage();
  const QImage rgba = AsPremultiplied(image);
  if (radius < 0.5) return rgba.copy();  // never the caller's own pixels
  const TVipsImage in = Borrowed(rgba);
  const TVipsImage blurred = Run("blurring", [&](VipsImage** out) {
    return vips_gaussblur(in.get(), out, radius / 2, nullptr);
  });
  return ToQImage(blurred.get());
}

QImage Sharpen(const QImage& image, double radius, double amount) {
  if (image.isNull()) return QImage();
  const QImage rgba = AsPremultiplied(image);
  const TVipsImage in = Borrowed(rgba);
  const TVipsImage blurred = Run("sharpening", [&](VipsImage** out) {
    return vips_gaussblur(in.get(), out, std::max(radius, 0.5) / 2, nullptr);
  });
  const TVipsImage detail = Run("sharpening", [&](VipsImage** out) {
    return vips_subtract(in.get(), blurred.get(), out, nullptr);
  });
  const TVipsImage scaled = Run("sharpening", [&](VipsImage** out) {
    return vips_linear1(detail.get(), out, amount, 0.0, nullptr);
  });
  const TVipsImage sharpened = Run("sharpening", [&](VipsImage** out) {
    return vips_add(in.get(), scaled.get(), out, nullptr);
  });
  return WithAlphaOf(ToQImage(sharpened.get()), rgba);
}

QImage Emboss(const QImage& image) {
  if (image.isNull()) return QImage();
  const QImage rgba = AsPremultiplied(image);
  const TVipsImage in = Borrowed(rgba);
  const TVipsImage mask = Owned(vips_image_new_matrixv(3, 3, -1.0, -1.0, 0.0,  //
                                                       -1.0, 0.0, 1.0,         //
                                                       0.0, 1.0, 1.0));
  vips_image_set_double(mask.get(), "scale", 1.0);
  vips_image_set_double(mask.get(), "offset", 128.0);
  const TVipsImage embossed = Run("embossing", [&](VipsImage** out) {
    return vips_conv(in.get(), out, mask.get(), "precision", VIPS_PRECISION_INTEGER, nullptr);
  });
  return WithAlphaOf(ToQImage(embossed.get()), rgba);
}

QImage Rotate(const QImage& image, double degrees, const QColor& background) {
  if (image.isNull()) return QImage();
  const QImage rgba = AsPremultiplied(image);
  const TVipsImage in = Borrowed(rgba);
  const QColor fill = background.toRgb();
  const double alpha = fill.alphaF();
  double ink[] = {fill.blue() * alpha, fill.green() * alpha, fill.red() * alpha, 255 * alpha};
  VipsArrayDouble* backgroundArray = vips_array_double_new(ink, 4);
  VipsImage* out = nullptr;
  // libvips turns clockwise for positive angles; screens count counter-clockwise.
  const int status = vips_rotate(in.get(), &out, -degrees, "background", backgroundArray,
                                 "interpolate", vips_interpolate_bilinear_static(), nullptr);
  vips_area_unref(VIPS_AREA(backgroundArray));
  if (status != 0) RaiseVipsError("rotating");
  const TVipsImage rotated = Owned(out);
  return ToQImage(rotated.get());
}

QImage GreyScale(const QImage& image) {
  if (image.isNull()) return QImage();
  const QImage rgba = AsPremultiplied(image);
  const TVipsImage in = Borrowed(rgba);
  const TVipsImage matrix = Owned(vips_image_new_matrixv(4, 4,                      //
                                                         0.114, 0.587, 0.299, 0.0,  //
                                                         0.114, 0.587, 0.299, 0.0,  //
                                                         0.114, 0.587, 0.299, 0.0,  //
                                                         0.0, 0.0, 0.0, 1.0));
  const TVipsImage grey = Run("turning grey", [&](VipsImage** out) {
    return vips_recomb(in.get(), out, matrix.get(), nullptr);
  });
  return ToQImage(grey.get());
}

QImage Invert(const QImage& image) {
  if (image.isNull()) return QImage();
  QImage straight = image.convertToFormat(QImage::Format_ARGB32);
  straight.invertPixels(QImage::InvertRgb);
  return straight.convertToFormat(Premultiplied);
}

}  // namespace norva
