#pragma once
// Recognising the installation's USB devices by the first 21 characters of their hardware
// identifier ("USB\VID_1781&PID_07DA"); a revision suffix does not matter. The one search for
// them: the bus object, the command-line tool and the studio all list devices through it.

#include <NorvaBusComms/CommsTypes.h>
#include <NorvaGlobal/PlatformResult.h>

#include <QString>

#include <vector>

namespace norva {

struct TUSBDevice {
  QString Path;
  TCommsDeviceType DeviceType = NoCommsDevice;
  QString HardwareId;  // as the USB layer gives it, revision included
};

struct TUsbDeviceSearch {
  TPlatformResult Result;
  std::vector<TUSBDevice> Devices;  // none when the search failed
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

// The connected USB devices of the selected types, in the order the USB layer lists them. A USB
// layer that cannot be loaded or cannot list its devices gives its failure (code and text) and no
// devices; telling the user is up to the caller.
TUsbDeviceSearch SearchUsbDevices(const TCommsDeviceTypes& selected);

}  // namespace norva
