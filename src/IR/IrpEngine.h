#pragma once
// Rendering and recognition of one compiled protocol, the two directions of the interpreter.

#include <IR/IrpWalk.h>

#include <span>
#include <vector>

namespace norva {

// Durations in microseconds, alternating flash and gap, starting with a flash.
struct TIrpRendering {
  std::vector<double> Once;
  std::vector<double> Repeat;
};

// The durations a protocol sends for these values of its variables: once when the key is
// pressed, then again while it is held.
TIrpRendering RenderIrp(const TIrpProtocol& protocol, TIrpValues values);

// A bit field seen in a capture: the field's expression and the bits it held.
struct TIrpObservation {
  int Expr = -1;
  std::uint64_t Bits = 0;
  int Snapshot = -1;  // the assignments in force when it was seen, -1 for none
};

// The variables assigned inside the streams (a variation's `[P=1]`) and their values, from the
// point of an assignment on.
struct TIrpSnapshot {
  std::uint32_t Assigned = 0;
  TIrpValues Values{};
};

// What a capture held for a protocol that explains it.
struct TIrpRecognition {
  TIrpValues Values{};
  int Repeats = 0;             // passes of the repeated part after the first frame
  int FramesBeyond = 0;        // the code sent again after its repeats
  bool MissingRepeat = false;  // a distinct repeat frame the capture does not hold
  int CheckedBits = 0;         // bits that follow from others (complements, constants, checksums)
};

// Working space reused from one candidate to the next.
struct TIrpScratch {
  std::vector<double> Elapsed;  // the capture's running sums
  std::vector<TIrpObservation> Observations;
  std::vector<TIrpSnapshot> Snapshots;
  // The furthest duration of the capture any walk compared; the caller resets it. A protocol
  // explains no leading part of the capture that ends beyond it.
  int Furthest = -1;
};

// False when the protocol opens every code with a fixed flash and a gap, and `first`, the
// capture's first duration, does not fit that flash: most protocols are turned away here before
// any walk.
bool MayOpenWith(const TIrpProtocol& protocol, double first);

// Whether the protocol explains the capture (durations in microseconds, alternating flash and
// gap, starting with a flash), with the values it solves for. `scratch.Elapsed` must hold the
// capture's running sums (element i: the time before duration i, one more than durations).
bool RecogniseIrp(const TIrpProtocol& protocol, std::span<const double> durations,
                  TIrpScratch& scratch, TIrpRecognition& result);

}  // namespace norva
