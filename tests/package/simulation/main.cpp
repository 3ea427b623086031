// A client of the installed package that links only NorvaRuntime::Simulation: the simulated
// devices and the chief headers they build on compile without the widgets, and the simulated USB
// amplifier is listed as the installation's amplifier.
#include <NorvaBusComms/Devices/UsbDeviceSearch.h>
#include <NorvaBusComms/NorvaBusComms.h>
#include <NorvaGlobal/NorvaGlobal.h>
#include <Simulation/Simulation.h>

#include <cstdio>

int main() {
  norva::TSimulatedUsbBackend backend;
  const norva::sim::TUsbAmplifier amplifier(backend);
  std::vector<norva::TUsbDeviceEntry> devices;
  const bool listed = backend.EnumerateDevices(devices).Ok() && devices.size() == 1;
  if (!listed ||
      norva::RecognisedDeviceType(devices.front().HardwareId, norva::RecognisedUsbDeviceTypes()) !=
          norva::NorvaAmp ||
      norva::sim::TDeviceSimulator::staticMetaObject.className() !=
          QByteArrayView("norva::sim::TDeviceSimulator")) {
    std::fprintf(stderr, "installed package behaves wrongly\n");
    return 1;
  }
  std::puts("installed package OK");
  return 0;
}
