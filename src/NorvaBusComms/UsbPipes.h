#pragma once
// The bulk pipes of the installation's WinUSB-style devices, shared by the library and the
// simulated amplifier.

#include <cstdint>

namespace norva {

inline constexpr std::uint8_t DataInPipe = 0x82;      // raw data from the device
inline constexpr std::uint8_t NotifyInPipe = 0x83;    // notification frames from the device
inline constexpr std::uint8_t DataOutPipe = 0x01;     // raw data to the device
inline constexpr std::uint8_t CommandOutPipe = 0x04;  // bus text to the device

}  // namespace norva
