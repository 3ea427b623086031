// A client of the installed package that links only NorvaRuntime::Core: every chief header of the
// core modules compiles on its own, without the device links or widgets.
#include <NorvaBusComms/NorvaBusComms.h>
#include <NorvaGlobal/NorvaGlobal.h>
#include <OrbGlobal/OrbGlobal.h>
#include <Utils/Utils.h>

#include <cstdio>

int main() {
  const auto zoneByte = norva::EncodeZone(5, true, false);
  const QString name = norva::EnumName(norva::errEEPROMFull);
  if (zoneByte != 0x45 || name != QStringLiteral("errEEPROMFull") ||
      norva::XMLTextToFloat(QStringLiteral("1.5")) != 1.5) {
    std::fprintf(stderr, "installed package behaves wrongly\n");
    return 1;
  }
  std::puts("installed package OK");
  return 0;
}
