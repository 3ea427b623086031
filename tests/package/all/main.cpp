// A client of the installed package that includes the chief header of every module, the way the
// README tells applications to.
#include <ButtonClasses/ButtonClasses.h>
#include <IR/IR.h>
#include <IR_Database/Gui/NameWidths.h>
#include <IR_Database/IR_Database.h>
#include <KeypadDevice/KeypadDevice.h>
#include <MessageDigest_5/MessageDigest_5.h>
#include <NorvaBusComms/NorvaBusComms.h>
#include <NorvaGlobal/NorvaGlobal.h>
#include <OrbGlobal/OrbGlobal.h>
#include <OrbGraphics/OrbGraphics.h>
#include <Simulation/Simulation.h>
#include <Utils/Utils.h>

#include <cstdio>

int main() {
  std::puts("installed package OK");
  return 0;
}
