// A client of the installed package that links only NorvaRuntime::Core: every chief header of the
// core modules compiles on its own, without the device links or widgets.
#include <ButtonClasses/ButtonClasses.h>
#include <IR/IR.h>
#include <IR_Database/IR_Database.h>
#include <KeypadDevice/KeypadDevice.h>
#include <MessageDigest_5/MessageDigest_5.h>
#include <NorvaBusComms/NorvaBusComms.h>
#include <NorvaGlobal/NorvaGlobal.h>
#include <OrbGlobal/OrbGlobal.h>
#include <Utils/Utils.h>

#include <cstdio>

int main() {
  const auto zoneByte = norva::EncodeZone(5, true, false);
  const QString name = norva::EnumName(norva::errEEPROMFull);
  norva::TButtonClass power;
  norva::TIRStream stream;
  stream.SetHexCode(QStringLiteral("0000 006D 0000 0001 0010 0020"));
  if (zoneByte != 0x45 || name != QStringLiteral("errEEPROMFull") ||
      norva::XMLTextToFloat(QStringLiteral("1.5")) != 1.5 ||
      !norva::FindButtonClass(u"Power", power) ||
      power.GetName() != QStringLiteral("System / Standby") ||
      stream.GetModulationPeriod() != 316 ||
      norva::AutoSavePath(QStringLiteral("/a"), QStringLiteral("/b/K.keycfg"), QTime(1, 2, 3)) !=
          QStringLiteral("/a/K_010203.keycfg")) {
    std::fprintf(stderr, "installed package behaves wrongly\n");
    return 1;
  }
  std::puts("installed package OK");
  return 0;
}
