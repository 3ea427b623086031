#pragma once
// Recognising the installation's USB devices by the first 21 characters of their hardware
// identifier ("USB\VID_1781&PID_07DA"); a revision suffix does not matter.

#include <NorvaBusComms/CommsTypes.h>

#include <QString>

#include <vector>

namespace norva {

struct TUSBDevice {
  QString Path;
  TCommsDeviceType DeviceType = NoCommsDevice;
};

inline constexpr int HardwareIdPrefixLength = 21;

// The selected device type a hardware identifier belongs to, or NoCommsDevice.
TCommsDeviceType RecognisedDeviceType(const QString& hardwareId, const TCommsDeviceTypes& selected);

// The vendor and product pairs of every recognised device (for udev rules and the tool).
struct TUsbIdentity {
  TCommsDeviceType DeviceType;
  const char* HardwareIdPrefix;
};
const std::vector<TUsbIdentity>& RecognisedUsbDevices();
// Every device type of that table: what a bus object that takes any of them selects.
TCommsDeviceTypes RecognisedUsbDeviceTypes();

}  // namespace norva
