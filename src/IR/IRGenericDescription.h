#pragma once
// The description of a code no protocol explains: its coding, bit count and bits, read from its
// first frame with duration classes wide enough that two captures of the same button give the
// same text.

#include <QString>

#include <span>

namespace norva {

// "pulse-distance 32 bits 0x20DF10EF", "pulse-width 12 bits 0x0A9", "bi-phase 13 bits 0x0C0C",
// or for durations without such a structure "other 9 durations 01011:1021": the class of each
// flash, then of each gap, shortest first.
QString GenericIRDescription(std::span<const double> microseconds);

}  // namespace norva
