#pragma once
// The one-byte wire encoding of zones: bits 0-4 the zone within its bank of 32, bit 5 the
// page-preset flag, bits 6-7 the bank (00 zones 0-31, 01 their preamp outputs, 10 zones 32-63,
// 11 zones 64-95); 0xFF is no zone.

#include <QString>

#include <cstdint>

namespace norva {

inline constexpr std::uint8_t NoZoneByte = 0xFF;
// The last zone of the first bank, and so the last one with a preamp output.
inline constexpr std::int8_t LastPreampZone = 31;

// Only zones 0-31 have a preamp form: the flag is ignored for the higher banks.
std::uint8_t EncodeZone(std::int8_t zone, bool preamp, bool pagePreset);
std::int8_t GetDecodedZone(std::uint8_t zoneByte);
bool IsPreampZone(std::uint8_t zoneByte);
bool IsPagePresetZone(std::uint8_t zoneByte);
// What a zone byte stands for, as traces and tools show it: "no zone", or "zone 5" followed by
// ", preamp output" and ", page preset" where they apply.
QString ZoneByteText(std::uint8_t zoneByte);

}  // namespace norva
