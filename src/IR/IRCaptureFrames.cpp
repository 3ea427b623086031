#include <IR/IRCaptureFrames.h>

#include <IR/IRRawSignal.h>
#include <NorvaGlobal/Exceptions.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>

namespace norva {

namespace {

using TFrames = QList<QList<double>>;

// A frame gap is far longer than the code's own gaps, and no header gap of a code.
constexpr double MinFrameGapMicroseconds = 5000;
constexpr double FrameGapPerMedianGap = 4;
// Two captures of one duration differ by a share of it and the receiver's own jitter.
constexpr double SameDurationShare = 0.25;
constexpr double JitterMicroseconds = 100;

double FrameGapThreshold(const QList<double>& microseconds) {
  QList<double> gaps;
  for (qsizetype i = 1; i + 1 < microseconds.size(); i += 2) gaps << microseconds[i];
  if (gaps.isEmpty()) return std::numeric_limits<double>::infinity();
  const auto middle = gaps.begin() + gaps.size() / 2;
  std::nth_element(gaps.begin(), middle, gaps.end());
  return std::max(MinFrameGapMicroseconds, FrameGapPerMedianGap * *middle);
}

double Sum(const QList<double>& durations) {
  return std::accumulate(durations.begin(), durations.end(), 0.0);
}

// The gap that closes a last frame ending on a pulse: frames follow each other at the pace the
// frame before shows (a short ditto frame after a long one waits longer), and never closer than
// that frame's gap.
double ClosingGap(const TFrames& frames) {
  if (frames.size() < 2) return RawClosingGapMicroseconds;
  const QList<double>& before = frames[frames.size() - 2];
  return std::max(Sum(before) - Sum(frames.last()), before.last());
}

bool SameDuration(double a, double b) {
  return std::abs(a - b) <= SameDurationShare * std::max(a, b) + JitterMicroseconds;
}

// Equal within the jitter, the gaps that close them aside.
bool SameFrame(const QList<double>& a, const QList<double>& b) {
  if (a.size() != b.size()) return false;
  for (qsizetype i = 0; i + 1 < a.size(); ++i)
    if (!SameDuration(a[i], b[i])) return false;
  return true;
}

// Whether every frame from `first + period` on repeats the frame `period` before it.
bool RepeatsFrom(const TFrames& frames, qsizetype first, qsizetype period) {
  for (qsizetype i = first + period; i < frames.size(); ++i)
    if (!SameFrame(frames[i], frames[i - period])) return false;
  return true;
}

// Both words sent in turn for as long as the key is held.
TIRStreamData BothWordsStream(double frequencyHz, const QList<double>& first,
                              const QList<double>& second) {
  TIRStreamData stream = WordsStream(frequencyHz, first, second);
  stream.Format = RepeatBothWords;
  return stream;
}

// The stream of frames that repeat: one frame again and again, a lead frame and then one
// repeated, or two frames in turn; none when they do not. Unless `repeatSeen` is asked for, one
// frame, or two (the second a shorter "ditto" frame or not), count as repeating.
std::optional<TIRStreamData> RepeatedStream(double frequencyHz, const TFrames& frames,
                                            bool repeatSeen) {
  const qsizetype count = frames.size();
  if (RepeatsFrom(frames, 0, 1) && (count > 1 || !repeatSeen))
    return WordsStream(frequencyHz, {}, frames[0]);
  const bool ditto = count == 2 && !repeatSeen && frames[1].size() < frames[0].size();
  if (count >= 2 && RepeatsFrom(frames, 1, 1) && (count > 2 || ditto))
    return WordsStream(frequencyHz, frames[0], frames[1]);
  if (count >= 2 && RepeatsFrom(frames, 0, 2) && (count > 2 || !repeatSeen))
    return BothWordsStream(frequencyHz, frames[0], frames[1]);
  return std::nullopt;
}

}  // namespace

TFrames CaptureFrames(const QList<double>& microseconds) {
  if (microseconds.isEmpty()) throw ENorvaError(QStringLiteral("Stream has zero length"));
  CheckRawDurations(microseconds);
  const double threshold = FrameGapThreshold(microseconds);
  TFrames frames{{}};
  for (qsizetype i = 0; i < microseconds.size(); ++i) {
    frames.last() << microseconds[i];
    if (i % 2 == 1 && i + 1 < microseconds.size() && microseconds[i] >= threshold)
      frames.append(QList<double>());
  }
  if (frames.last().size() % 2 != 0) frames.last() << ClosingGap(frames);
  return frames;
}

TIRStreamData CaptureStream(double frequencyHz, const QList<double>& microseconds) {
  const TFrames frames = CaptureFrames(microseconds);
  if (const auto stream = RepeatedStream(frequencyHz, frames, false)) return *stream;
  // The last frame may be cut short, or be one the remote sends when the key is let go.
  if (frames.size() > 2)
    if (const auto stream = RepeatedStream(frequencyHz, frames.first(frames.size() - 1), true))
      return *stream;
  QList<double> rest;
  for (qsizetype i = 1; i < frames.size(); ++i) rest << frames[i];
  return BothWordsStream(frequencyHz, frames[0], rest);
}

}  // namespace norva
