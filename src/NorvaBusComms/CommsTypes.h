#pragma once
// Kinds of link and of device at the other end; they decide how received bytes are read
// (bus text or raw data) and whether a device echoes what it is sent.

#include <QObject>

#include <NorvaGlobal/EnumSet.h>

#include <cstdint>

namespace norva {
inline namespace NorvaBusComms {
Q_NAMESPACE

// clang-format off
enum TCommsInterface : std::uint8_t {
  NoCommsInterface, RS232Interface, USBInterface, EthernetInterface
};
Q_ENUM_NS(TCommsInterface)

enum TCommsDeviceType : std::uint8_t {
  NoCommsDevice, RS232Device, NorvaAmp, NorvaWk2, IntegraAmp, IntegraKey, NorvaWk3_legacy,
  NorvaWk3, VideoSwitch_V2, NorvaAmp_Zr900, Router_Q4, NorvaWk4, NorvaAmp_Zr500, VantageAmp_Q8_DA
};
Q_ENUM_NS(TCommsDeviceType)
// clang-format on

}  // namespace NorvaBusComms

inline constexpr int CommsDeviceTypeCount = 14;
// The empty set selects no devices.
using TCommsDeviceTypes = TEnumSet<TCommsDeviceType, CommsDeviceTypeCount>;

// True for the devices whose main channel carries bus text; the others deliver raw data.
bool SpeaksTextForm(TCommsDeviceType type);
// True for the devices that echo over USB: every type before NorvaAmp_Zr900.
constexpr bool EchoesOverUSB(TCommsDeviceType type) { return type < NorvaAmp_Zr900; }

}  // namespace norva
