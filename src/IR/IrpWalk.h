#pragma once
// The one walk over a compiled protocol that both rendering and recognition use: the sink turns
// each duration, extent and bit field into durations (rendering) or checks them against a capture
// (recognition). Also the expression arithmetic both share.

#include <IR/IrpNotation.h>

#include <array>
#include <cstdint>

namespace norva {

// At most this many names in one definition; values live in a fixed array, so recognising a
// candidate allocates nothing.
inline constexpr int MaxIrpVariables = 32;
using TIrpValues = std::array<std::int64_t, MaxIrpVariables>;

std::int64_t EvaluateIrp(const TIrpProtocol& protocol, int expr, const TIrpValues& values);
// Whether the expression names no variable (a fixed field such as 2:8); -1, no expression, is.
bool IsConstantIrp(const TIrpProtocol& protocol, int expr);
// The bits a bit field sends: `width` bits of `value` from `offset`, complemented first when
// asked, in reverse order for a negative width.
std::uint64_t IrpFieldBits(std::int64_t value, std::int64_t width, std::int64_t offset,
                           bool complemented);
std::uint64_t IrpWidthMask(std::int64_t width);

// The bit coding a stream works with: its own, else the one it inherits.
inline int IrpBitCodingOf(const TIrpProtocol& protocol, int stream, int inherited) {
  const int own = protocol.Streams[static_cast<std::size_t>(stream)].BitCoding;
  return own >= 0 ? own : inherited;
}

// Walks the items of one pass of `stream` in `part` of a press. A nested stream is walked
// MinRepeats times, except `stopAt`, after whose passes the walk ends (the rest of the outer
// stream is what follows the held key). A variation walks its alternative for `part`. Returns
// false as soon as the sink refuses.
template <class Sink>
bool WalkIrpStream(const TIrpProtocol& protocol, int stream, int bitCoding, Sink& sink,
                   TIrpPart part, int stopAt = -1) {
  const auto mark = sink.Mark();
  for (const TIrpItem& item : protocol.Streams[static_cast<std::size_t>(stream)].Items) {
    bool ok = true;
    switch (item.Kind) {
      case TIrpItemKind::Flash: ok = sink.Duration(item.Microseconds); break;
      case TIrpItemKind::Gap: ok = sink.Duration(-item.Microseconds); break;
      case TIrpItemKind::Extent: ok = sink.Extent(item.Microseconds, mark); break;
      case TIrpItemKind::BitField: ok = sink.BitField(item.Expr, bitCoding); break;
      case TIrpItemKind::Assignment: sink.Assign(item.Variable, item.Expr); break;
      case TIrpItemKind::Variation: {
        const int alternative = item.Alternatives[static_cast<std::size_t>(part)];
        if (alternative >= 0) ok = WalkIrpStream(protocol, alternative, bitCoding, sink, part);
        break;
      }
      case TIrpItemKind::Stream: {
        const int inner = IrpBitCodingOf(protocol, item.Stream, bitCoding);
        const int passes = protocol.Streams[static_cast<std::size_t>(item.Stream)].MinRepeats;
        for (int pass = 0; pass < passes && ok; ++pass)
          ok = WalkIrpStream(protocol, item.Stream, inner, sink, part, stopAt);
        if (item.Stream == stopAt) return ok;
        break;
      }
    }
    if (!ok) return false;
  }
  return true;
}

// The part sent once when the key is pressed, each pass followed by sink.EndFrame().
template <class Sink>
bool WalkIrpIntro(const TIrpProtocol& protocol, Sink& sink) {
  const int top = protocol.Top;
  const int bitCoding = protocol.Streams[static_cast<std::size_t>(top)].BitCoding;
  if (protocol.Repeated >= 0 && protocol.Repeated != top)
    return WalkIrpStream(protocol, top, bitCoding, sink, TIrpPart::Intro, protocol.Repeated) &&
           sink.EndFrame();
  const int passes = protocol.Streams[static_cast<std::size_t>(top)].MinRepeats;
  for (int pass = 0; pass < passes; ++pass)
    if (!WalkIrpStream(protocol, top, bitCoding, sink, TIrpPart::Intro) || !sink.EndFrame())
      return false;
  return true;
}

// One pass of the part sent again while the key is held; false when there is none.
template <class Sink>
bool WalkIrpRepeat(const TIrpProtocol& protocol, Sink& sink) {
  if (protocol.Repeated < 0) return false;
  const int bitCoding =
      IrpBitCodingOf(protocol, protocol.Repeated,
                     protocol.Streams[static_cast<std::size_t>(protocol.Top)].BitCoding);
  return WalkIrpStream(protocol, protocol.Repeated, bitCoding, sink, TIrpPart::Repeat) &&
         sink.EndFrame();
}

}  // namespace norva
