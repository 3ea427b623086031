#include <IR_Database/CodeFiles/LircdRemote.h>

namespace norva {

namespace {

// Pulses and spaces as they are sent: two of a kind in a row are one longer one, and a space
// before the first pulse is silence.
class TDurations {
 public:
  void Pulse(double microseconds) { Add(microseconds, true); }
  void Space(double microseconds) { Add(microseconds, false); }
  void Send(const TLircdPulseSpace& pair) {
    Pulse(pair.Pulse);
    Space(pair.Space);
  }
  double Length() const {
    double sum = 0;
    for (const double duration : mDurations) sum += duration;
    return sum;
  }
  const QList<double>& List() const { return mDurations; }

 private:
  void Add(double microseconds, bool pulse) {
    if (!(microseconds > 0)) return;
    const bool lastIsPulse = mDurations.size() % 2 == 1;
    if (mDurations.isEmpty() && !pulse) return;
    if (lastIsPulse == pulse)
      mDurations.last() += microseconds;
    else
      mDurations.append(microseconds);
  }

  QList<double> mDurations;
};

class TFrameWriter {
 public:
  explicit TFrameWriter(const TLircdRemote& remote) : mRemote(remote) {}

  QList<double> Frame(std::uint64_t code, double gap) {
    TDurations frame;
    frame.Send(mRemote.Header);
    frame.Pulse(mRemote.PLead);
    const int codeAndPost = mRemote.Bits + mRemote.PostDataBits;
    Field(frame, mRemote.PreData, mRemote.PreDataBits, codeAndPost);
    frame.Send(mRemote.Pre);
    Field(frame, code, mRemote.Bits, mRemote.PostDataBits);
    frame.Send(mRemote.Post);
    Field(frame, mRemote.PostData, mRemote.PostDataBits, 0);
    frame.Pulse(mRemote.PTrail);
    return Closed(frame, gap);
  }

  QList<double> RepeatFrame(double gap) {
    TDurations frame;
    frame.Pulse(mRemote.PLead);
    frame.Send(mRemote.Repeat);
    frame.Pulse(mRemote.PTrail);
    return Closed(frame, gap);
  }

 private:
  // `bits` bits of `value`, whose lowest bit is bit `offset` of the whole code.
  void Field(TDurations& frame, std::uint64_t value, int bits, int offset) const {
    for (int i = 0; i < bits; ++i) {
      const int bit = mRemote.Reverse ? i : bits - 1 - i;
      // The reader holds a whole code to 64 bits; anything beyond is no bit of it.
      const std::uint64_t wholeCodeBit = bit + offset < 64 ? std::uint64_t{1} << (bit + offset) : 0;
      Bit(frame, (value >> bit & 1) != 0, (mRemote.Rc6Mask & wholeCodeBit) != 0);
    }
  }

  void Bit(TDurations& frame, bool one, bool doubled) const {
    const TLircdPulseSpace& pair = one ? mRemote.One : mRemote.Zero;
    switch (mRemote.Coding) {
      case TLircdCoding::Space: frame.Send(pair); return;
      case TLircdCoding::RC5:
        if (one) {
          frame.Space(pair.Space);
          frame.Pulse(pair.Pulse);
        } else {
          frame.Send(pair);
        }
        return;
      case TLircdCoding::RC6: {
        const double factor = doubled ? 2 : 1;
        if (one) {
          frame.Send({pair.Pulse * factor, pair.Space * factor});
        } else {
          frame.Space(pair.Space * factor);
          frame.Pulse(pair.Pulse * factor);
        }
        return;
      }
    }
  }

  // The frame followed by its gap: with constant length the gap completes the frame to `gap`.
  QList<double> Closed(TDurations& frame, double gap) const {
    const double length = frame.Length();
    frame.Space(mRemote.ConstLength && gap > length ? gap - length : gap);
    return frame.List();
  }

  const TLircdRemote& mRemote;
};

}  // namespace

TLircdWords RenderLircdCode(const TLircdRemote& remote, std::uint64_t code) {
  TFrameWriter writer(remote);
  const double repeatGap = remote.RepeatGap > 0 ? remote.RepeatGap : remote.Gap;
  if (remote.Repeat.IsSet()) return {writer.Frame(code, remote.Gap), writer.RepeatFrame(repeatGap)};
  if (repeatGap != remote.Gap)
    return {writer.Frame(code, remote.Gap), writer.Frame(code, repeatGap)};
  return {{}, writer.Frame(code, remote.Gap)};
}

}  // namespace norva
