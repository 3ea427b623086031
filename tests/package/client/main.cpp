// A client of the installed package: includes chief headers the way applications do.
#include <NorvaGlobal/NorvaGlobal.h>

#include <cstdio>

int main() {
  const auto zoneByte = norva::EncodeZone(5, true, false);
  const QString name = norva::EnumName(norva::errEEPROMFull);
  if (zoneByte != 0x45 || name != QStringLiteral("errEEPROMFull")) {
    std::fprintf(stderr, "installed package behaves wrongly\n");
    return 1;
  }
  std::puts("installed package OK");
  return 0;
}
