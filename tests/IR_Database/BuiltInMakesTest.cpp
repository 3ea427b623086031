// The built-in makes of a public database: their groups in order, the native codes a zone holds,
// and the GUIDs keypads refer to them by.

#include "IRDatabaseTest.h"

#include <OrbGlobal/Model/OrbGuid.h>
#include <support/QtPrinters.h>

#include <QSet>

using namespace norva;
using namespace norva::testing;

namespace {

class BuiltInMakes : public TIRDatabaseTest {};

// Every command below `group`, depth first.
void CollectCommands(const TNorvaGroup& group, QList<const TCommandObject*>& into) {
  for (int i = 0; i < group.GetChildObjectCount(); ++i)
    CollectCommands(*group.GetChildObject(i), into);
  for (int i = 0; i < group.GetCommandCount(); ++i) into << group.GetCommand(i);
}

QList<const TCommandObject*> BuiltInCommands(const TIRDB& database) {
  QList<const TCommandObject*> commands;
  for (int m = 0; m < database.GetMakeCount(); ++m) {
    if (const auto* make = qobject_cast<const TNorvaIntegraMake*>(database.GetMake(m)))
      for (int g = 0; g < make->GetNorvaCommandGroupCount(); ++g)
        CollectCommands(*make->GetNorvaCommandGroup(g), commands);
  }
  return commands;
}

}  // namespace

TEST_F(BuiltInMakes, AreNorvaThenIntegraWithTheirGroupsInOrderAndReadOnlyCommands) {
  const TIRDB database(Path("public.xml"), true);
  ASSERT_EQ(database.GetMakeCount(), 2);
  const auto* norvaMake = qobject_cast<const TNorvaMake*>(database.GetMake(0));
  const auto* integra = qobject_cast<const TIntegraMake*>(database.GetMake(1));
  ASSERT_TRUE(norvaMake && integra);
  EXPECT_EQ(norvaMake->GetName(), "NORVA");
  EXPECT_EQ(integra->GetName(), "INTEGRA");
  ASSERT_EQ(norvaMake->GetNorvaCommandGroupCount(), 3);
  const TNorvaGroup* amplifier = norvaMake->GetNorvaCommandGroup(0);
  QStringList children;
  for (int i = 0; i < amplifier->GetChildObjectCount(); ++i)
    children << amplifier->GetChildObject(i)->GetName();
  EXPECT_EQ(children, (QStringList{"All zones", "Amp zones 0..31", "Preamp zones",
                                   "Amp zones 32..63", "Amp zones 64..95"}));
  EXPECT_EQ(norvaMake->GetNorvaCommandGroup(1)->GetChildObjectCount(), 96);
  const TNorvaGroup* relays = norvaMake->GetNorvaCommandGroup(2);
  ASSERT_EQ(relays->GetChildObjectCount(), 16);
  EXPECT_EQ(relays->GetChildObject(15)->GetName(), "Zone 15");
  EXPECT_EQ(relays->GetChildObject(15)->GetCommandCount(), 28);
  EXPECT_EQ(integra->GetNorvaCommandGroup(0)->GetChildObject(2)->GetChildObject(31)->GetName(),
            "Zone 31");
  EXPECT_FALSE(database.GetNeedsSaving());
  // All zones hold the commands useful for all zones only (no volume, but presets and alarms),
  // read-only.
  const TNorvaGroup* allZones = amplifier->GetChildObject(0);
  int useful = 0;
  for (int c = nvStandbyCmd; c <= nvAlarmSleep; ++c)
    useful += NorvaFunctionUseful(static_cast<TNorvaCommand>(c), -1, AmpCommand) ? 1 : 0;
  EXPECT_EQ(allZones->GetCommandCount(), useful);
  EXPECT_EQ(allZones->GetCommand(0)->GetName(), "Standby");
  EXPECT_TRUE(allZones->GetCommand(0)->IsReadOnly());
}

// Keypads refer to commands by GUID.
TEST_F(BuiltInMakes, EveryCodeHasItsOwnGUIDTheSameInEveryRun) {
  const TIRDB database(Path("public.xml"), true);
  const QList<const TCommandObject*> commands = BuiltInCommands(database);
  QSet<QString> guids;
  for (const TCommandObject* command : commands) guids.insert(command->GetGUIDString());
  EXPECT_EQ(guids.size(), commands.size());
  EXPECT_FALSE(guids.contains(GUIDToString(QUuid())));
  const TIRDB other(Path("other.xml"), true);
  const QList<const TCommandObject*> again = BuiltInCommands(other);
  ASSERT_EQ(again.size(), commands.size());
  for (qsizetype i = 0; i < commands.size(); i += 97)
    EXPECT_EQ(again[i]->GetGUIDString(), commands[i]->GetGUIDString());
}
