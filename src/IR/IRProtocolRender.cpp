// Rendering: the walk's sink that writes durations, merging a gap that follows a gap (and a flash
// that follows a flash) into one, as the carrier cannot show the seam.
#include <IR/IrpEngine.h>

#include <cmath>

namespace norva {

namespace {

class TRenderSink {
 public:
  TRenderSink(const TIrpProtocol& protocol, TIrpValues& values)
      : mProtocol(protocol), mValues(values) {}

  void Begin(std::vector<double>& out) { mOut = &out; }

  double Mark() const { return mElapsed; }

  bool Duration(double signedMicroseconds) {
    if (signedMicroseconds == 0) return true;
    const bool flash = signedMicroseconds > 0;
    std::vector<double>& out = *mOut;
    mElapsed += std::abs(signedMicroseconds);
    // A stream starts with a flash: silence before it is not sent.
    if (out.empty() && !flash) return true;
    if (!out.empty() && (out.size() % 2 == 1) == flash)
      out.back() += std::abs(signedMicroseconds);
    else
      out.push_back(std::abs(signedMicroseconds));
    return true;
  }

  bool Extent(double microseconds, double mark) {
    const double gap = microseconds - (mElapsed - mark);
    return gap <= 0 || Duration(-gap);
  }

  bool BitField(int expr, int bitCoding) {
    const TIrpExpr& field = mProtocol.Exprs[static_cast<std::size_t>(expr)];
    const std::int64_t width = EvaluateIrp(mProtocol, field.Right, mValues);
    const auto bits = static_cast<std::uint64_t>(EvaluateIrp(mProtocol, expr, mValues));
    if (bitCoding < 0) return false;
    const TIrpBitCoding& coding = mProtocol.BitCodings[static_cast<std::size_t>(bitCoding)];
    const int perSymbol = coding.BitsPerSymbol;
    const std::int64_t size = std::min<std::int64_t>(width < 0 ? -width : width, 64);
    const int symbols = static_cast<int>((size + perSymbol - 1) / perSymbol);
    const std::uint64_t symbolMask = IrpWidthMask(perSymbol);
    for (int i = 0; i < symbols; ++i) {
      const int shift = (mProtocol.MsbFirst ? symbols - 1 - i : i) * perSymbol;
      for (const double duration : coding.Codes[(bits >> shift) & symbolMask]) Duration(duration);
    }
    return true;
  }

  void Assign(int variable, int expr) {
    if (variable < MaxIrpVariables)
      mValues[static_cast<std::size_t>(variable)] = EvaluateIrp(mProtocol, expr, mValues);
  }

  // A frame's durations are whatever it sent; the next starts counting afresh.
  bool EndFrame() { return true; }

 private:
  const TIrpProtocol& mProtocol;
  TIrpValues& mValues;
  std::vector<double>* mOut = nullptr;
  double mElapsed = 0;
};

}  // namespace

TIrpRendering RenderIrp(const TIrpProtocol& protocol, TIrpValues values) {
  TIrpRendering rendering;
  TRenderSink sink(protocol, values);
  sink.Begin(rendering.Once);
  WalkIrpIntro(protocol, sink);
  sink.Begin(rendering.Repeat);
  WalkIrpRepeat(protocol, sink);
  return rendering;
}

}  // namespace norva
