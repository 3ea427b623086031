#include <OrbGraphics/Gui/Resampler.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace norva {

namespace {

// Which source pixels make one target pixel, and how much each weighs (the weights sum to 1).
struct TContribution {
  int First = 0;
  std::vector<float> Weights;
};

std::vector<TContribution> Contributions(int sourceSize, int targetSize, const TKernel& kernel) {
  const double scale = static_cast<double>(targetSize) / sourceSize;
  const double stretch = std::max(1.0, 1.0 / scale);  // shrinking widens the kernel
  const double support = kernel.Support * stretch;
  std::vector<TContribution> contributions(static_cast<std::size_t>(targetSize));
  for (int target = 0; target < targetSize; ++target) {
    const double centre = (target + 0.5) / scale - 0.5;
    const int first = std::max(0, static_cast<int>(std::floor(centre - support)));
    const int last = std::min(sourceSize - 1, static_cast<int>(std::ceil(centre + support)));
    TContribution& contribution = contributions[static_cast<std::size_t>(target)];
    contribution.First = first;
    double sum = 0;
    for (int source = first; source <= last; ++source) {
      const double weight = kernel.Weight((source - centre) / stretch);
      contribution.Weights.push_back(static_cast<float>(weight));
      sum += weight;
    }
    // Near the edges part of the kernel falls outside: the rest is made to weigh 1.
    if (sum != 0) {
      for (float& weight : contribution.Weights) weight = static_cast<float>(weight / sum);
    }
  }
  return contributions;
}

std::uint8_t Clamped(float value) {
  return static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L));
}

}  // namespace

QImage ResampleSeparable(const QImage& image, int width, int height, const TKernel& kernel) {
  const int sourceWidth = image.width();
  const int sourceHeight = image.height();
  const std::vector<TContribution> across = Contributions(sourceWidth, width, kernel);
  const std::vector<TContribution> down = Contributions(sourceHeight, height, kernel);

  // Across: every source row to `width` pixels of four floats.
  std::vector<float> rows(static_cast<std::size_t>(sourceHeight) * width * 4);
  for (int y = 0; y < sourceHeight; ++y) {
    const std::uint8_t* line = image.constScanLine(y);
    float* out = rows.data() + static_cast<std::size_t>(y) * width * 4;
    for (int x = 0; x < width; ++x) {
      const TContribution& c = across[static_cast<std::size_t>(x)];
      float sum[4] = {0, 0, 0, 0};
      for (std::size_t i = 0; i < c.Weights.size(); ++i) {
        const std::uint8_t* pixel = line + (static_cast<std::size_t>(c.First) + i) * 4;
        for (int band = 0; band < 4; ++band) sum[band] += c.Weights[i] * pixel[band];
      }
      std::copy(sum, sum + 4, out + static_cast<std::size_t>(x) * 4);
    }
  }

  // Down: every column of those rows to `height` pixels.
  QImage result(width, height, image.format());
  for (int y = 0; y < height; ++y) {
    const TContribution& c = down[static_cast<std::size_t>(y)];
    std::uint8_t* line = result.scanLine(y);
    for (int x = 0; x < width; ++x) {
      float sum[4] = {0, 0, 0, 0};
      for (std::size_t i = 0; i < c.Weights.size(); ++i) {
        const float* pixel =
            rows.data() + ((static_cast<std::size_t>(c.First) + i) * width + x) * 4;
        for (int band = 0; band < 4; ++band) sum[band] += c.Weights[i] * pixel[band];
      }
      // Alpha first: a premultiplied colour may not exceed it (ringing kernels overshoot).
      const std::uint8_t alpha = Clamped(sum[3]);
      for (int band = 0; band < 3; ++band) line[x * 4 + band] = std::min(Clamped(sum[band]), alpha);
      line[x * 4 + 3] = alpha;
    }
  }
  return result;
}

}  // namespace norva
