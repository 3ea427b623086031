// Received codes are named from an index; it must answer exactly as a walk through the database
// does, whatever changed below the database since it was built.

#include "IRDatabaseTest.h"

#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <support/QtPrinters.h>

#include <QRandomGenerator>

#include <functional>

using namespace norva;
using namespace norva::testing;

namespace {

class StreamNameIndex : public TIRDatabaseTest {};

// Names a stream both ways and expects the same answer.
void ExpectSameNames(const TIRDB& database, const TIRStreamData& code, int round) {
  TIRStream byIndex;
  TIRStream byWalk;
  byIndex.SetData(code);
  byWalk.SetData(code);
  const bool indexed = database.GetNames(byIndex);
  ASSERT_EQ(indexed, database.GetNamesByWalking(byWalk)) << round;
  EXPECT_EQ(byIndex.GetName(), byWalk.GetName()) << round;
  EXPECT_EQ(byIndex.GetCategory(), byWalk.GetCategory()) << round;
}

TIRStreamData CodeData(const QString& code) {
  TIRStream stream;
  stream.SetHexCode(code);
  return stream.Data();
}

}  // namespace

// Changes that record nothing for undo, and a stream's pairs cleared, still reach the index.
TEST_F(StreamNameIndex, EveryChangeBelowTheDatabaseReachesIt) {
  const struct {
    const char* Name;
    bool UndoOff;
    std::function<void(TIRDB&)> Change;
  } cases[] = {
      {"command deleted", true,
       [](TIRDB& database) { database.GetMake(0)->GetModel(0)->GetCommand(0)->Delete(); }},
      {"model cleared", true, [](TIRDB& database) { database.GetMake(0)->GetModel(0)->Clear(); }},
      {"model deleted", true, [](TIRDB& database) { database.GetMake(0)->GetModel(0)->Delete(); }},
      {"make cleared", true, [](TIRDB& database) { database.GetMake(0)->Clear(); }},
      {"make deleted", true, [](TIRDB& database) { database.GetMake(0)->Delete(); }},
      {"pairs cleared", false,
       [](TIRDB& database) {
         static_cast<TIRStream*>(database.GetMake(0)->GetModel(0)->GetCommand(0))->ClearIDPairs();
       }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Name);
    TIRDB database(Path("index.xml"), false);
    AddStream(database.GetOrAddModel("Acme", "TV"), "Power", codes[0]);
    AddStream(database.GetOrAddModel("Acme", "TV"), "Vol+", codes[1]);
    ExpectSameNames(database, CodeData(codes[0]), 0);  // the index is built
    if (c.UndoOff) DisableUndo();
    c.Change(database);
    if (c.UndoOff) EnableUndo();
    ExpectSameNames(database, CodeData(codes[0]), 1);
    ExpectSameNames(database, CodeData(codes[1]), 2);
  }
  Undo().Empty();
}

// Random edits of a database, each followed by naming random codes both ways.
TEST_F(StreamNameIndex, NamesCodesExactlyAsTheWalkDoesThroughRandomEdits) {
  const TUndoSuspended undoOff;
  QRandomGenerator random(1123);
  TIRDB database(Path("edited.xml"), false);
  database.AddNewMake()->SetName("Make 0");
  const auto randomModel = [&]() -> TModel* {
    TMake* make = database.GetMake(static_cast<int>(random.bounded(database.GetMakeCount())));
    if (make->GetModelCount() == 0) make->AddNewModel()->SetName("Model");
    return make->GetModel(static_cast<int>(random.bounded(make->GetModelCount())));
  };
  const auto randomCode = [&] { return codes[random.bounded(codes.size())]; };
  for (int round = 0; round < 400; ++round) {
    TModel* model = randomModel();
    switch (random.bounded(6)) {
      case 0: database.AddNewMake()->SetName(QStringLiteral("Make %1").arg(round)); break;
      case 1:
        static_cast<TMake*>(model->GetOwner())
            ->AddNewModel()
            ->SetName(QStringLiteral("New %1").arg(round));
        break;
      case 2: AddStream(model, QStringLiteral("Code %1").arg(round), randomCode()); break;
      case 3:
        if (model->GetCommandCount() > 0) model->GetCommand(0)->Delete();
        break;
      case 4:
        if (model->GetCommandCount() > 1) model->GetCommand(model->GetCommandCount() - 1)->Move(0);
        break;
      default:
        model->SetName(QStringLiteral("Model %1").arg(round));
        if (model->GetCommandCount() > 0)
          static_cast<TIRStream*>(model->GetCommand(0))->SetHexCode(randomCode());
        break;
    }
    for (int q = 0; q < 3; ++q) ExpectSameNames(database, CodeData(randomCode()), round);
  }
}

// A public database tries the native codes after its file's codes.
TEST_F(StreamNameIndex, NamesNativeCodesInAPublicDatabaseAsTheWalkDoes) {
  const TUndoSuspended undoOff;
  QRandomGenerator random(1123);
  {
    TIRDB database(Path("codes.xml"), false);
    TModel* model = database.GetOrAddModel("Acme", "TV");
    for (int i = 0; i < codes.size(); i += 3)
      AddStream(model, QStringLiteral("Code %1").arg(i), codes[i]);
    database.Save();
  }
  const TIRDB publicDatabase(Path("codes.xml"), true);
  TNorvaIRStream native;
  int named = 0;
  for (int round = 0; round < 150; ++round) {
    native.SetNorva(static_cast<int>(random.bounded(97)) - 1,
                    static_cast<TNorvaCommand>(random.bounded(90)),
                    static_cast<TNorvaCommandType>(random.bounded(6)));
    const TIRStreamData code =
        round % 2 == 0 ? native.Data() : CodeData(codes[random.bounded(codes.size())]);
    ExpectSameNames(publicDatabase, code, round);
    TIRStream stream;
    stream.SetData(code);
    named += publicDatabase.GetNames(stream) ? 1 : 0;
  }
  // Both answers came up often.
  EXPECT_GT(named, 50);
  EXPECT_GT(150 - named, 50);
}
