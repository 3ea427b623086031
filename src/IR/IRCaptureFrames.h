#pragma once
// Learnt captures kept whole: a learning receiver records several frames of a held button. The
// stream keeps what the remote sends, one frame repeated, or a frame sent once and a frame
// repeated, or two frames in turn, each followed by the gap the capture shows after it; so a
// capture of many frames fits the stream's 160 pairs, and its first frame says what it says.

#include <IR/IRStreamData.h>

#include <QList>

namespace norva {

// The frames of a capture (alternating pulse and gap durations in microseconds, starting with a
// pulse), cut at the gaps far longer than the code's own: at least 5 ms and four times the median
// gap. Each frame ends on its gap; a capture ending on a pulse closes its last frame so that it
// keeps the pace of the frame before (start to start), never closer than that frame's gap (the
// closing gap of raw signals when there is no frame before). Raises for an empty capture and for
// a duration that is not positive.
QList<QList<double>> CaptureFrames(const QList<double>& microseconds);

// The stream of a learnt capture: frames equal within the receiver's jitter count once, a lead
// frame followed by frames that repeat it in short ("ditto") becomes a word sent once and a word
// repeated, two frames in turn become both words repeated; a last frame that breaks the pattern
// (cut short, or sent when the key is let go) is left out. Frames that follow no such pattern are
// kept as the raw path keeps them: the first frame, then the rest. Raises as WordsStream does.
TIRStreamData CaptureStream(double frequencyHz, const QList<double>& microseconds);

}  // namespace norva
