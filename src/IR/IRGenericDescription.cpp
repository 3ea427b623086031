#include <IR/IRGenericDescription.h>

#include <NorvaGlobal/HexDigits.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace norva {

namespace {

// A gap this long ends the frame described.
constexpr double FrameEndMicroseconds = 8000;
// Durations within this ratio of the next shorter one share its class; learnt jitter of 10% keeps
// a duration in its class, and the codings' 1:2 and 1:3 ratios keep classes apart.
constexpr double ClassRatio = 1.4;
// A first pair this many times the usual durations is a lead-in, not a bit.
constexpr double LeadInRatio = 2.5;

using TDurations = std::vector<double>;

// The lower bounds of the duration classes, shortest first.
TDurations ClassBounds(TDurations values) {
  std::sort(values.begin(), values.end());
  TDurations bounds;
  for (std::size_t i = 0; i < values.size(); ++i)
    if (i == 0 || values[i] > values[i - 1] * ClassRatio) bounds.push_back(values[i]);
  return bounds;
}

int ClassOf(const TDurations& bounds, double value) {
  int index = 0;
  while (index + 1 < static_cast<int>(bounds.size()) &&
         value >= bounds[static_cast<std::size_t>(index) + 1])
    ++index;
  return index;
}

double Median(TDurations values) {
  if (values.empty()) return 0;
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                   values.end());
  return values[values.size() / 2];
}

struct TFrame {
  TDurations Flashes;
  TDurations Gaps;  // the gap after each flash but the last
};

bool SameClass(double a, double b) { return a < b * ClassRatio && b < a * ClassRatio; }

// Whether the first flash opens each frame: far longer than the usual flash, and rare (a long bit
// of a pulse-width code is as common as a short one).
bool OpensWithLeadIn(const TDurations& flashes) {
  if (flashes.empty() || flashes[0] < LeadInRatio * Median(flashes)) return false;
  const auto alike = std::count_if(flashes.begin(), flashes.end(),
                                   [&](double flash) { return SameClass(flash, flashes[0]); });
  return static_cast<std::size_t>(alike) * 4 < flashes.size();
}

// The durations up to the first gap that ends a frame: one of 8 ms or more, or one followed by
// the lead-in flash again.
TFrame FirstFrame(std::span<const double> microseconds) {
  TDurations flashes;
  for (std::size_t i = 0; i < microseconds.size(); i += 2) flashes.push_back(microseconds[i]);
  const bool leadIn = OpensWithLeadIn(flashes);
  TFrame frame;
  for (std::size_t i = 0; i < microseconds.size(); ++i) {
    if (i % 2 == 0) {
      frame.Flashes.push_back(microseconds[i]);
      continue;
    }
    const bool last = i + 1 == microseconds.size();
    const bool ends = microseconds[i] >= FrameEndMicroseconds ||
                      (leadIn && !last && SameClass(microseconds[i + 1], microseconds[0]));
    if (ends || last) break;
    frame.Gaps.push_back(microseconds[i]);
  }
  return frame;
}

void DropLeadIn(TFrame& frame) {
  if (frame.Flashes.size() < 3 || frame.Gaps.empty()) return;
  if (frame.Flashes[0] < LeadInRatio * Median(frame.Flashes) &&
      frame.Gaps[0] < LeadInRatio * Median(frame.Gaps))
    return;
  frame.Flashes.erase(frame.Flashes.begin());
  frame.Gaps.erase(frame.Gaps.begin());
}

QString BitsText(const char* coding, const std::vector<bool>& bits) {
  QString hex;
  const std::size_t digits = (bits.size() + 3) / 4;
  const std::size_t padding = digits * 4 - bits.size();
  for (std::size_t d = 0; d < digits; ++d) {
    int value = 0;
    for (std::size_t b = 0; b < 4; ++b) {
      const std::size_t position = d * 4 + b;
      value = value << 1 | (position >= padding && bits[position - padding] ? 1 : 0);
    }
    hex += QLatin1Char(HexDigitChar(static_cast<unsigned>(value)));
  }
  return QStringLiteral("%1 %2 bits 0x%3").arg(QLatin1String(coding)).arg(bits.size()).arg(hex);
}

std::vector<bool> ClassBits(const TDurations& values, const TDurations& bounds) {
  std::vector<bool> bits;
  for (const double value : values) bits.push_back(ClassOf(bounds, value) == 1);
  return bits;
}

// Manchester halves of one unit: a gap then a flash is 1, a flash then a gap 0. Empty when the
// durations are not all one or two units.
std::vector<bool> BiPhaseBits(const TFrame& frame) {
  TDurations all = frame.Flashes;
  all.insert(all.end(), frame.Gaps.begin(), frame.Gaps.end());
  const TDurations bounds = ClassBounds(all);
  TDurations shortest;
  for (const double value : all)
    if (ClassOf(bounds, value) == 0) shortest.push_back(value);
  const double unit = Median(shortest);
  if (!(unit > 0)) return {};
  std::vector<bool> halves;  // true: flash
  for (std::size_t i = 0; i < frame.Flashes.size(); ++i) {
    for (int pass = 0; pass < 2; ++pass) {
      const bool flash = pass == 0;
      if (!flash && i >= frame.Gaps.size()) break;
      const double value = flash ? frame.Flashes[i] : frame.Gaps[i];
      const long units = std::lround(value / unit);
      if (units != 1 && units != 2) return {};
      halves.insert(halves.end(), static_cast<std::size_t>(units), flash);
    }
  }
  if (halves.empty()) return {};
  halves.insert(halves.begin(), false);  // the first bit's silent half
  if (halves.size() % 2 != 0) halves.push_back(false);
  std::vector<bool> bits;
  for (std::size_t i = 0; i < halves.size(); i += 2) {
    if (halves[i] == halves[i + 1]) return {};
    bits.push_back(halves[i + 1]);
  }
  return bits;
}

QString ClassPattern(const TDurations& values) {
  const TDurations bounds = ClassBounds(values);
  QString pattern;
  for (const double value : values)
    pattern +=
        QLatin1Char(HexDigitChar(static_cast<unsigned>(std::min(ClassOf(bounds, value), 15))));
  return pattern;
}

}  // namespace

QString GenericIRDescription(std::span<const double> microseconds) {
  TFrame frame = FirstFrame(microseconds);
  const TFrame whole = frame;
  DropLeadIn(frame);
  const TDurations flashBounds = ClassBounds(frame.Flashes);
  const TDurations gapBounds = ClassBounds(frame.Gaps);
  if (flashBounds.size() == 1 && gapBounds.size() == 2)
    return BitsText("pulse-distance", ClassBits(frame.Gaps, gapBounds));
  if (flashBounds.size() == 2 && gapBounds.size() == 1)
    return BitsText("pulse-width", ClassBits(frame.Flashes, flashBounds));
  if (const std::vector<bool> bits = BiPhaseBits(frame); !bits.empty())
    return BitsText("bi-phase", bits);
  return QStringLiteral("other %1 durations %2:%3")
      .arg(whole.Flashes.size() + whole.Gaps.size())
      .arg(ClassPattern(whole.Flashes), ClassPattern(whole.Gaps));
}

}  // namespace norva
