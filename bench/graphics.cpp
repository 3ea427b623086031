// Pictures: resampling a 4000 x 3000 photo-sized picture to 800 x 600 with the named filters and
// blurring it by 10 pixels, each beside Qt's own smooth scaling in the same run; and a 1 MB PNG
// through the data string that documents store pictures in.
#include <OrbGraphics/OrbGraphics.h>

#include <QRandomGenerator>

#include <benchmark/benchmark.h>

namespace {

// Smooth shapes with fine noise on top, so that neither compression nor filtering has it easy.
QImage Photo(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  QRandomGenerator random(42);
  for (int y = 0; y < height; ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < width; ++x) {
      const int noise = static_cast<int>(random.bounded(32));
      line[x] = qRgb((x / 7 + noise) & 255, (y / 5 + noise) & 255, ((x + y) / 11 + noise) & 255);
    }
  }
  return image;
}

const QImage& Large() {
  static const QImage image = Photo(4000, 3000);
  return image;
}

void ResampleLarge(benchmark::State& state, norva::TResampleFilter filter) {
  const QImage& image = Large();
  for (auto _ : state) benchmark::DoNotOptimize(norva::Resample(image, 800, 600, filter).bits());
  state.SetItemsProcessed(state.iterations() * image.width() * image.height());
}
BENCHMARK_CAPTURE(ResampleLarge, Lanczos3, norva::TResampleFilter::Lanczos3)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ResampleLarge, Mitchell, norva::TResampleFilter::Mitchell)
    ->Unit(benchmark::kMillisecond);
// The filters libvips lacks, in the library's own resampler.
BENCHMARK_CAPTURE(ResampleLarge, BSpline, norva::TResampleFilter::BSpline)
    ->Unit(benchmark::kMillisecond);

void QtSmoothScaling(benchmark::State& state) {
  const QImage& image = Large();
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        image.scaled(800, 600, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).bits());
  }
  state.SetItemsProcessed(state.iterations() * image.width() * image.height());
}
BENCHMARK(QtSmoothScaling)->Unit(benchmark::kMillisecond);

void BlurLarge(benchmark::State& state) {
  const QImage& image = Large();
  for (auto _ : state) benchmark::DoNotOptimize(norva::Blur(image, 10).bits());
  state.SetItemsProcessed(state.iterations() * image.width() * image.height());
}
BENCHMARK(BlurLarge)->Unit(benchmark::kMillisecond);

// A PNG of about 1 MB.
const norva::TGraphic& MegabytePng() {
  static const norva::TGraphic picture(norva::TGraphicClass::PNG, Photo(1000, 720));
  return picture;
}

void GetDataString(benchmark::State& state) {
  norva::TGraphicContainer container;
  container.SetGraphic(&MegabytePng());
  container.Dormant();  // the bytes are kept, as in a document read from its file
  const QByteArray text = container.GetDataString();
  for (auto _ : state) benchmark::DoNotOptimize(container.GetDataString().size());
  state.SetBytesProcessed(state.iterations() * text.size());
  state.counters["png_bytes"] = static_cast<double>(text.size()) * 3 / 4;
}
BENCHMARK(GetDataString)->Unit(benchmark::kMillisecond);

void SetDataString(benchmark::State& state) {
  norva::TGraphicContainer source;
  source.SetGraphic(&MegabytePng());
  const QByteArray text = source.GetDataString();
  for (auto _ : state) {
    norva::TGraphicContainer container;
    container.SetDataString(text);
    benchmark::DoNotOptimize(container.GetGraphicAssigned());
  }
  state.SetBytesProcessed(state.iterations() * text.size());
}
BENCHMARK(SetDataString)->Unit(benchmark::kMillisecond);

}  // namespace
