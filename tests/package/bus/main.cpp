// A client of the installed package that links only NorvaRuntime::Bus: the core chief headers and
// the public headers of the device links compile without the widgets.
#include <NorvaBusComms/Devices/BusClient.h>
#include <NorvaBusComms/Devices/BusComms.h>
#include <NorvaBusComms/Devices/UsbDeviceSearch.h>
#include <NorvaBusComms/NorvaBusComms.h>
#include <NorvaGlobal/NorvaGlobal.h>
#include <OrbGlobal/OrbGlobal.h>
#include <Utils/Utils.h>

#include <cstdio>

int main() {
  if (norva::RecognisedUsbDevices().empty() ||
      norva::TNorvaBusComms::staticMetaObject.className() !=
          QByteArrayView("norva::TNorvaBusComms")) {
    std::fprintf(stderr, "installed package behaves wrongly\n");
    return 1;
  }
  std::puts("installed package OK");
  return 0;
}
