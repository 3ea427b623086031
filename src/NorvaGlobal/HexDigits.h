#pragma once
// Hexadecimal digits as the bus, the files and identifiers use them: written in upper case, read
// in either case.

namespace norva {

// The upper-case digit of the low four bits of `value`.
constexpr char HexDigitChar(unsigned value) { return "0123456789ABCDEF"[value & 0xF]; }

// The value of a digit of either case, or -1 for any other character.
constexpr int HexDigitValue(char32_t c) {
  if (c >= U'0' && c <= U'9') return static_cast<int>(c - U'0');
  if (c >= U'A' && c <= U'F') return static_cast<int>(c - U'A' + 10);
  if (c >= U'a' && c <= U'f') return static_cast<int>(c - U'a' + 10);
  return -1;
}

// The byte two digits make, high digit first, or -1 when either is no digit.
constexpr int HexPairValue(char32_t high, char32_t low) {
  const int highValue = HexDigitValue(high);
  const int lowValue = HexDigitValue(low);
  return highValue < 0 || lowValue < 0 ? -1 : highValue << 4 | lowValue;
}

}  // namespace norva
