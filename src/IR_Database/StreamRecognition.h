#pragma once
// Recognising a button whatever capture of it arrives: two streams are the same button when a
// protocol explains both with the same device, sub-device and function (the toggle flips with
// every press and is ignored), or, when no protocol explains either, when they have the same
// structure (format, where the words end, pair count, the part of the generic description that
// jitter does not change) and each duration and the carrier agree within a tolerance. Exact
// naming (StreamNames.h) stays as it is; this answers beside it (docs/ir-database.md).

#include <IR/IRStreamData.h>
#include <IR_Database/StreamNames.h>

#include <QByteArray>
#include <QHash>
#include <QList>

#include <map>
#include <vector>

namespace norva {

// Two durations agree when they differ by at most this share of the longer one, plus the slack
// below for short ones (a carrier period or two of rounding in a learnt code).
inline constexpr double RecognitionDurationTolerance = 0.12;
inline constexpr double RecognitionDurationSlackMicroseconds = 40;
// Two carriers agree when they differ by at most this share of the higher one; an unmodulated
// stream agrees only with another.
inline constexpr double RecognitionCarrierTolerance = 0.06;

// The carrier and durations of a stream no protocol explains.
struct TStreamTimings {
  double CarrierHz = 0;  // 0: unmodulated
  // The on and off durations of every pair up to the end, in microseconds.
  std::vector<float> Durations;
};

// What recognition compares of a stream, worked out once per stream.
struct TButtonPrint {
  // One key per decode a protocol explains: protocol, D, S and F.
  QList<QByteArray> DecodeKeys;
  // For a stream no protocol explains: format, word ends, pair count and the stable part of its
  // generic description.
  QByteArray Shape;
  TStreamTimings Timings;

  // A stream with nothing to recognise it by (empty, or without end).
  bool IsBlank() const { return DecodeKeys.isEmpty() && Shape.isEmpty(); }
};

TButtonPrint ButtonPrintOf(const TIRStreamData& stream);

// Whether the two prints are of the same button (see the top of this file).
bool SameButton(const TButtonPrint& a, const TButtonPrint& b);

class TStreamRecognitionIndex {
 public:
  // Streams are added in the order their names are to be answered.
  void Add(const TIRStreamData& data, const TStreamName& name);
  // Every added stream of the same button as `print`, in the order they were added.
  QList<TStreamName> Find(const TButtonPrint& print) const;

 private:
  struct TShaped {
    int Position;
    TStreamTimings Timings;
  };

  std::vector<TStreamName> mNames;
  QHash<QByteArray, std::vector<int>> mByDecode;
  // By structure key, then by the sum of the durations: durations that agree one by one have sums
  // that agree too, so only a range of sums is compared duration by duration.
  QHash<QByteArray, std::multimap<float, TShaped>> mByShape;
};

// The native codes (ForEachNativeCode) for recognition, in the order they are tried. Built once
// per process.
const TStreamRecognitionIndex& NativeStreamRecognition();

}  // namespace norva
