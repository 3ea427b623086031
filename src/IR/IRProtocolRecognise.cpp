// Recognition: the walk's sink that checks a capture against the durations a protocol would send,
// reading each bit field's symbols from it, then solves the parameters from the fields and checks
// every field again with them.
//
// The sink keeps the expected duration that is still open (a gap followed by a gap grows, as in
// rendering) and compares it with the capture only when a duration of the other kind closes it:
// bi-phase half-bits merged by the carrier need no special case.
#include <IR/IrpEngine.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace norva {

namespace {

// A learnt duration may be off by this share of the expected one, plus a slack that matters for
// short ones (a receiver lengthens flashes and shortens gaps by a few tens of microseconds).
constexpr double RelativeTolerance = 0.2;
constexpr double SlackMicroseconds = 60;
// Gaps this long only end a frame; a capture's may be longer, and a little shorter.
constexpr double LongGapMicroseconds = 10000;
constexpr double LongGapShare = 0.7;
// A frame with an extent lasts at least this share of it.
constexpr double ExtentShare = 0.85;
constexpr double NoFit = std::numeric_limits<double>::infinity();

double Tolerance(double expected) { return expected * RelativeTolerance + SlackMicroseconds; }

// How far a captured duration is from the expected one, in tolerances: at most 1 fits.
double Misfit(double expected, double actual) {
  return std::abs(actual - expected) / Tolerance(expected);
}

class TRecogniseSink {
 public:
  struct TState {
    int Pos = 0;         // the capture's duration the open expected one is compared with
    double Open = 0;     // the open expected duration
    double MinEnd = -1;  // for an extent: the time the gap must reach, else -1
    int Snapshot = -1;   // the assignments in force
    double Misfit = 0;   // the sum of the closed durations' misfits, to choose between codes
  };

  TRecogniseSink(const TIrpProtocol& protocol, std::span<const double> capture,
                 TIrpScratch& scratch)
      : mProtocol(protocol), mCapture(capture), mScratch(scratch) {}

  TState Save() const { return mState; }
  void Restore(const TState& state) { mState = state; }
  bool AtEnd() const { return mState.Pos >= Count() && mState.Open == 0; }
  int Pos() const { return mState.Pos; }

  double Mark() const { return Elapsed(mState.Pos) + mState.Open; }

  bool Duration(double signedMicroseconds) {
    const bool flash = signedMicroseconds > 0;
    if (mState.Open > 0 && flash != OpenIsFlash() && !Close()) return false;
    if (mState.Open == 0 && flash != OpenIsFlash()) return !flash;  // silence before a frame
    mState.Open += std::abs(signedMicroseconds);
    return true;
  }

  bool Extent(double microseconds, double mark) {
    if (mState.Open > 0 && OpenIsFlash() && !Close()) return false;
    if (OpenIsFlash()) return true;
    mState.Open = std::max(mState.Open, 1.0);
    mState.MinEnd = mark + ExtentShare * microseconds;
    return true;
  }

  bool BitField(int expr, int bitCoding) {
    if (bitCoding < 0) return false;
    const TIrpExpr& field = mProtocol.Exprs[static_cast<std::size_t>(expr)];
    const std::int64_t width = EvaluateIrp(mProtocol, field.Right, mNoValues);
    const TIrpBitCoding& coding = mProtocol.BitCodings[static_cast<std::size_t>(bitCoding)];
    const int perSymbol = coding.BitsPerSymbol;
    const std::int64_t size = std::min<std::int64_t>(width < 0 ? -width : width, 64);
    const int symbols = static_cast<int>((size + perSymbol - 1) / perSymbol);
    std::uint64_t bits = 0;
    for (int i = 0; i < symbols; ++i) {
      const int code = ReadSymbol(coding);
      if (code < 0) return false;
      const int shift = (mProtocol.MsbFirst ? symbols - 1 - i : i) * perSymbol;
      bits |= static_cast<std::uint64_t>(code) << shift;
    }
    // A fixed field (Kaseikyo's maker bytes) that does not hold its bits turns the protocol away
    // here, not after the whole frame.
    if (IsConstantIrp(mProtocol, expr) &&
        static_cast<std::uint64_t>(EvaluateIrp(mProtocol, expr, mNoValues)) != bits)
      return false;
    mScratch.Observations.push_back({expr, bits, mState.Snapshot});
    return true;
  }

  // Assignments take effect for the fields that follow; their values come from what was
  // assigned before (parameters count as 0 here: assignments that depend on them, like a toggle
  // flipped after the press, come after the fields).
  void Assign(int variable, int expr) {
    if (variable >= MaxIrpVariables) return;
    TIrpSnapshot snapshot;
    if (mState.Snapshot >= 0)
      snapshot = mScratch.Snapshots[static_cast<std::size_t>(mState.Snapshot)];
    snapshot.Values[static_cast<std::size_t>(variable)] =
        EvaluateIrp(mProtocol, expr, snapshot.Values);
    snapshot.Assigned |= std::uint32_t{1} << variable;
    mScratch.Snapshots.push_back(snapshot);
    mState.Snapshot = static_cast<int>(mScratch.Snapshots.size()) - 1;
  }

  // Closes the frame's last duration; a frame whose definition ends on a flash leaves the gap
  // before the next frame free.
  bool EndFrame() {
    if (mState.Open > 0 && !Close()) return false;
    if (mState.Pos < Count() && !OpenIsFlash()) ++mState.Pos;
    return true;
  }

 private:
  int Count() const { return static_cast<int>(mCapture.size()); }
  bool OpenIsFlash() const { return mState.Pos % 2 == 0; }
  double Elapsed(int pos) const { return mScratch.Elapsed[static_cast<std::size_t>(pos)]; }

  bool Close() {
    const int pos = mState.Pos;
    const double open = mState.Open;
    const double minEnd = mState.MinEnd;
    mState.Open = 0;
    mState.MinEnd = -1;
    if (pos >= Count()) {
      // A capture may stop at the last flash, without the gap after it.
      mState.Pos = Count();
      return pos % 2 == 1;
    }
    mState.Pos = pos + 1;
    mScratch.Furthest = std::max(mScratch.Furthest, pos);
    const double actual = mCapture[static_cast<std::size_t>(pos)];
    if (minEnd >= 0) return Elapsed(pos + 1) >= minEnd;
    if (pos % 2 == 1 && open >= LongGapMicroseconds) return actual >= LongGapShare * open;
    const double misfit = Misfit(open, actual);
    mState.Misfit += misfit;
    return misfit <= 1;
  }

  // Whether the open expected duration can still grow into the capture's.
  bool OpenCanFit() const {
    if (mState.Open == 0 || mState.MinEnd >= 0) return true;
    if (mState.Pos >= Count()) return !OpenIsFlash();
    return mState.Open - mCapture[static_cast<std::size_t>(mState.Pos)] <= Tolerance(mState.Open);
  }

  // How far the open expected duration is from the capture's, in tolerances; NoFit when it
  // cannot grow into it.
  double Residual() const {
    if (!OpenCanFit()) return NoFit;
    if (mState.Open == 0 || mState.MinEnd >= 0 || mState.Pos >= Count()) return 0;
    return Misfit(mState.Open, mCapture[static_cast<std::size_t>(mState.Pos)]);
  }

  // How well a code takes the duration open before it: the length it closes it at, or leaves it
  // open at, against the capture's.
  double FirstMisfit(const TState& start, const std::vector<double>& code) const {
    if (start.Pos >= Count()) return 0;
    const bool flash = start.Pos % 2 == 0;
    double length = start.Open;
    for (const double duration : code) {
      if ((duration > 0) == flash)
        length += std::abs(duration);
      else if (length > 0)
        break;
    }
    return Misfit(length, mCapture[static_cast<std::size_t>(start.Pos)]);
  }

  // The code whose durations fit the capture here; of several, the one that takes the duration
  // open before it closest to the capture's (a run of single-unit flashes ends at the length
  // nearest the capture's, not where the next duration happens to fit best), then the closest in
  // all (its closed durations, and the open one it leaves); -1 when none fits. Most symbols fit
  // one code only, and are taken without ranking.
  int ReadSymbol(const TIrpBitCoding& coding) {
    const TState start = mState;
    // The rank of the code just tried, from the state it left.
    const auto rankOf = [&](int code) {
      return std::pair{FirstMisfit(start, coding.Codes[static_cast<std::size_t>(code)]),
                       mState.Misfit - start.Misfit + Residual()};
    };
    TState best;
    int bestCode = -1;
    std::optional<std::pair<double, double>> bestRank;
    for (int code = 0; code < static_cast<int>(coding.Codes.size()); ++code) {
      mState = start;
      bool ok = true;
      for (const double duration : coding.Codes[static_cast<std::size_t>(code)]) {
        if (!Duration(duration)) {
          ok = false;
          break;
        }
      }
      if (!ok || !OpenCanFit()) continue;
      if (bestCode < 0) {
        best = mState;
        bestCode = code;
        continue;
      }
      if (!bestRank) {
        const TState current = std::exchange(mState, best);
        bestRank = rankOf(bestCode);
        mState = current;
      }
      if (const std::pair rank = rankOf(code); rank < *bestRank) {
        bestRank = rank;
        best = mState;
        bestCode = code;
      }
    }
    mState = bestCode >= 0 ? best : start;
    return bestCode;
  }

  const TIrpProtocol& mProtocol;
  std::span<const double> mCapture;
  TIrpScratch& mScratch;
  TState mState;
  const TIrpValues mNoValues{};
};

// Passes of the repeated part while they fit.
int CountRepeats(const TIrpProtocol& protocol, TRecogniseSink& sink) {
  int repeats = 0;
  while (!sink.AtEnd()) {
    const TRecogniseSink::TState saved = sink.Save();
    if (!WalkIrpRepeat(protocol, sink) || sink.Pos() == saved.Pos) {
      sink.Restore(saved);
      break;
    }
    ++repeats;
  }
  return repeats;
}

// Whether the repeated part differs from the frame sent first (a ditto), so that a capture
// without it lacks something.
bool HasDistinctRepeat(const TIrpProtocol& protocol) {
  if (protocol.Repeated < 0 || protocol.Repeated == protocol.Top) return false;
  for (const TIrpItem& item : protocol.Streams[static_cast<std::size_t>(protocol.Top)].Items)
    if (item.Kind != TIrpItemKind::Assignment && item.Stream != protocol.Repeated) return true;
  return false;
}

struct TFieldShape {
  int Variable = -1;  // the parameter the field shows directly, or -1
  std::int64_t Size = 0;
  std::int64_t Offset = 0;
};

TFieldShape ShapeOf(const TIrpProtocol& protocol, const TIrpExpr& field) {
  static const TIrpValues noValues{};
  TFieldShape shape;
  const std::int64_t width = EvaluateIrp(protocol, field.Right, noValues);
  shape.Size = std::min<std::int64_t>(width < 0 ? -width : width, 64);
  shape.Offset = EvaluateIrp(protocol, field.Offset, noValues);
  const TIrpExpr& value = protocol.Exprs[static_cast<std::size_t>(field.Left)];
  if (value.Op == TIrpOp::Variable && shape.Offset >= 0 && shape.Offset < 64 &&
      protocol.Variables[static_cast<std::size_t>(value.Variable)].Kind ==
          TIrpVariableKind::Parameter)
    shape.Variable = value.Variable;
  return shape;
}

// Sets the parameters' bits from the fields that show them, counting the bits that only repeat
// what is known; then the defaults of parameters no field showed.
bool SolveParameters(const TIrpProtocol& protocol, const std::vector<TIrpObservation>& seen,
                     TIrpRecognition& result) {
  std::array<std::uint64_t, MaxIrpVariables> known{};
  TIrpValues& values = result.Values;
  values.fill(0);
  for (const TIrpObservation& observation : seen) {
    const TIrpExpr& field = protocol.Exprs[static_cast<std::size_t>(observation.Expr)];
    const TFieldShape shape = ShapeOf(protocol, field);
    if (shape.Variable < 0) {
      result.CheckedBits += static_cast<int>(shape.Size);
      continue;
    }
    std::uint64_t bits = IrpFieldBits(static_cast<std::int64_t>(observation.Bits),
                                      EvaluateIrp(protocol, field.Right, values), 0, false);
    if (field.Complemented) bits = ~bits & IrpWidthMask(shape.Size);
    const auto index = static_cast<std::size_t>(shape.Variable);
    const std::uint64_t fresh = (IrpWidthMask(shape.Size) << shape.Offset) & ~known[index];
    values[index] |= static_cast<std::int64_t>((bits << shape.Offset) & fresh);
    known[index] |= fresh;
    result.CheckedBits += static_cast<int>(shape.Size) - std::popcount(fresh);
  }
  for (std::size_t v = 0; v < protocol.Variables.size(); ++v) {
    const TIrpVariable& variable = protocol.Variables[v];
    if (variable.Kind != TIrpVariableKind::Parameter || known[v] != 0) continue;
    if (variable.Default < 0) return false;
    values[v] = EvaluateIrp(protocol, variable.Default, values);
  }
  return true;
}

// Every field holds what the solved parameters give, and every parameter is in its range.
bool CheckParameters(const TIrpProtocol& protocol, const TIrpScratch& scratch,
                     const TIrpValues& values) {
  for (const TIrpObservation& observation : scratch.Observations) {
    const TIrpValues* used = &values;
    TIrpValues inForce;
    if (observation.Snapshot >= 0) {
      const TIrpSnapshot& snapshot =
          scratch.Snapshots[static_cast<std::size_t>(observation.Snapshot)];
      inForce = values;
      for (int v = 0; v < MaxIrpVariables; ++v)
        if (snapshot.Assigned >> v & 1)
          inForce[static_cast<std::size_t>(v)] = snapshot.Values[static_cast<std::size_t>(v)];
      used = &inForce;
    }
    if (static_cast<std::uint64_t>(EvaluateIrp(protocol, observation.Expr, *used)) !=
        observation.Bits)
      return false;
  }
  for (std::size_t v = 0; v < protocol.Variables.size(); ++v) {
    const TIrpVariable& variable = protocol.Variables[v];
    if (variable.Kind == TIrpVariableKind::Parameter &&
        (values[v] < variable.Min || values[v] > variable.Max))
      return false;
  }
  return true;
}

// The flash every code of the protocol opens with, when its first duration is a fixed flash
// followed by a gap: streams sent at least once are entered, assignments passed over.
std::optional<double> LeadFlash(const TIrpProtocol& protocol) {
  int stream = protocol.Top;
  while (stream >= 0) {
    const std::vector<TIrpItem>& items = protocol.Streams[static_cast<std::size_t>(stream)].Items;
    std::size_t i = 0;
    while (i < items.size() && items[i].Kind == TIrpItemKind::Assignment) ++i;
    if (i == items.size()) return std::nullopt;
    const TIrpItem& item = items[i];
    if (item.Kind == TIrpItemKind::Stream) {
      if (protocol.Streams[static_cast<std::size_t>(item.Stream)].MinRepeats < 1)
        return std::nullopt;
      stream = item.Stream;
      continue;
    }
    if (item.Kind != TIrpItemKind::Flash || i + 1 == items.size() ||
        items[i + 1].Kind != TIrpItemKind::Gap)
      return std::nullopt;
    return item.Microseconds;
  }
  return std::nullopt;
}

}  // namespace

bool MayOpenWith(const TIrpProtocol& protocol, double first) {
  const std::optional<double> lead = LeadFlash(protocol);
  return !lead || Misfit(*lead, first) <= 1;
}

bool RecogniseIrp(const TIrpProtocol& protocol, std::span<const double> durations,
                  TIrpScratch& scratch, TIrpRecognition& result) {
  result = TIrpRecognition();
  scratch.Observations.clear();
  scratch.Snapshots.clear();
  TRecogniseSink sink(protocol, durations, scratch);
  if (!WalkIrpIntro(protocol, sink)) return false;
  result.Repeats = CountRepeats(protocol, sink);
  while (!sink.AtEnd()) {
    const TRecogniseSink::TState saved = sink.Save();
    if (!WalkIrpIntro(protocol, sink) || sink.Pos() == saved.Pos) {
      sink.Restore(saved);
      break;
    }
    ++result.FramesBeyond;
    CountRepeats(protocol, sink);
  }
  if (!sink.AtEnd() || sink.Pos() == 0) return false;
  result.MissingRepeat = result.Repeats == 0 && HasDistinctRepeat(protocol);
  return SolveParameters(protocol, scratch.Observations, result) &&
         CheckParameters(protocol, scratch, result.Values);
}

}  // namespace norva
