#pragma once
// A timing-based remote of a lircd.conf file, and what it sends for a code: the durations of the
// first frame and of the frame repeated while the button is held.

#include <QList>
#include <QString>

#include <cstdint>

namespace norva {

// A pulse and the space after it, in microseconds; 0 0 when the remote has none.
struct TLircdPulseSpace {
  double Pulse = 0;
  double Space = 0;
  bool IsSet() const { return Pulse > 0 || Space > 0; }
};

// How the bits are sent: pulse and space of "one" or "zero" (SPACE_ENC); bi-phase with a one
// sent as space then pulse (RC5, also named SHIFT_ENC); bi-phase with a one sent as pulse then
// space and the trailer bit twice as long (RC6).
enum class TLircdCoding { Space, RC5, RC6 };

struct TLircdRemote {
  QString Name;
  TLircdCoding Coding = TLircdCoding::Space;
  bool ConstLength = false;  // the gap is counted from the start of the frame
  bool Reverse = false;      // each field sent least significant bit first
  int Bits = 0;
  TLircdPulseSpace Header, One, Zero, Pre, Post, Repeat;
  double PLead = 0;
  double PTrail = 0;
  std::uint64_t PreData = 0;
  int PreDataBits = 0;
  std::uint64_t PostData = 0;
  int PostDataBits = 0;
  double Gap = 0;
  double RepeatGap = 0;       // between repeated frames, when it differs from Gap
  std::uint64_t Rc6Mask = 0;  // the bits of the whole code sent twice as long (RC6)
  double FrequencyHz = 38000;
};

struct TLircdWords {
  QList<double> Once;    // empty when the whole frame repeats
  QList<double> Repeat;  // alternating pulse and space durations, starting with a pulse
};

// The durations the remote sends for `code` (its `Bits` bits between pre and post data).
TLircdWords RenderLircdCode(const TLircdRemote& remote, std::uint64_t code);

}  // namespace norva
