#include <NorvaBusComms/Devices/UsbDeviceSearch.h>

#include <libraries/WINUSB.h>

namespace norva {

const std::vector<TUsbIdentity>& RecognisedUsbDevices() {
  static const std::vector<TUsbIdentity> table = {
      {NorvaAmp, "USB\\VID_1781&PID_07DA"},       {NorvaAmp, "USB\\VID_1781&PID_07DC"},
      {NorvaWk2, "USB\\VID_1781&PID_07DB"},       {IntegraAmp, "USB\\VID_0746&PID_4700"},
      {IntegraKey, "USB\\VID_0746&PID_4737"},     {NorvaWk3_legacy, "USB\\VID_1781&PID_07DD"},
      {VideoSwitch_V2, "USB\\VID_1781&PID_07DE"}, {Router_Q4, "USB\\VID_1781&PID_07E0"},
  };
  return table;
}

TCommsDeviceTypes RecognisedUsbDeviceTypes() {
  TCommsDeviceTypes types;
  for (const TUsbIdentity& identity : RecognisedUsbDevices()) types.Include(identity.DeviceType);
  return types;
}

TCommsDeviceType RecognisedDeviceType(const QString& hardwareId,
                                      const TCommsDeviceTypes& selected) {
  const QString prefix = hardwareId.left(HardwareIdPrefixLength);
  for (const TUsbIdentity& identity : RecognisedUsbDevices())
    if (selected.Contains(identity.DeviceType) &&
        prefix == QLatin1String(identity.HardwareIdPrefix))
      return identity.DeviceType;
  return NoCommsDevice;
}

TUsbDeviceSearch SearchUsbDevices(const TCommsDeviceTypes& selected) {
  TUsbDeviceSearch search;
  std::vector<TUsbDeviceEntry> present;
  search.Result = UsbBackend().EnumerateDevices(present);
  if (!search.Result.Ok()) return search;
  for (TUsbDeviceEntry& device : present) {
    const TCommsDeviceType type = RecognisedDeviceType(device.HardwareId, selected);
    if (type != NoCommsDevice)
      search.Devices.push_back({std::move(device.DevicePath), type, std::move(device.HardwareId)});
  }
  return search;
}

}  // namespace norva
