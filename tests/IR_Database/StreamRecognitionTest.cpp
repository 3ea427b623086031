// Recognising the same button in a received code that is not exactly the stored one, from an index
// that follows every change of the database.

#include "IRDatabaseTest.h"

#include <IR/IRHexCode.h>
#include <IR/IRProtocols.h>
#include <IR/IRRawSignal.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <support/QtPrinters.h>

#include <QRandomGenerator>

#include <functional>

using namespace norva;
using namespace norva::testing;

namespace {

class StreamRecognition : public TIRDatabaseTest {};

// A code no protocol explains: durations that follow no bit coding.
const QString Unexplained = QStringLiteral(
    "0000 006D 0000 0006 0050 0030 0010 0060 0030 0020 0070 0010 0010 0045 0025 0400");

TIRStreamData Read(const QString& code) {
  TIRStream stream;
  stream.SetHexCode(code);
  return stream.Data();
}

// Every period length moved by up to `share` either way, as a second capture of a button would be.
TIRStreamData Jittered(TIRStreamData data, double share, quint32 seed) {
  QRandomGenerator random(seed);
  for (std::uint16_t& length : data.Lengths)
    length = static_cast<std::uint16_t>(length * (1 + share * (2 * random.generateDouble() - 1)));
  return data;
}

TIRStreamData WithCarrier(TIRStreamData data, double factor) {
  data.ModulationPeriod = static_cast<std::uint16_t>(data.ModulationPeriod / factor);
  return data;
}

TIRStreamData WithPairLengthened(TIRStreamData data, int pair, double factor) {
  // A length of its own, so that no other pair changes with it.
  data.Lengths[13] = static_cast<std::uint16_t>(data.Lengths[data.Pairs[pair].OnID] * factor);
  data.Pairs[pair].OnID = 13;
  return data;
}

// Pioneer's two-part command: the code D=170 F=90, 25 ms of silence, then D=175 F=`function`.
TIRStreamData TwoPartCode(int function) {
  QList<double> durations;
  for (const auto& [device, code] : {std::pair{170, 90}, std::pair{175, function}}) {
    const QStringList words =
        HexCodeOf(EncodeIRStream(u"Pioneer", {device, {}, code, {}})).split(u' ');
    for (qsizetype i = 4; i < words.size(); ++i) durations << words[i].toUInt(nullptr, 16) * 25.0;
    durations.back() = 25000;
  }
  return RawSignalStream(40000, durations);
}

QStringList Names(const QList<TStreamName>& names) {
  QStringList list;
  for (const TStreamName& name : names) list << name.Category + ": " + name.Name;
  return list;
}

}  // namespace

TEST_F(StreamRecognition, FindsTheSameButtonAndNoOther) {
  const TUndoSuspended undoOff;
  TIRDB database(Path("recognition.xml"), false);
  TModel* model = database.GetOrAddModel("Acme", "TV");
  AddStream(model, "Stop", CorpusCode("Stop"));
  AddStream(model, "Step Up", CorpusCode("Step Up"));
  AddStream(model, "Odd", Unexplained);
  AddStream(model, "Power", CorpusCode("Power"));  // RC5 D=1 F=12 T=1
  AddStream(model, "Input 1", HexCodeOf(TwoPartCode(122)));
  const struct {
    const char* What;
    TIRStreamData Code;
    QStringList Names;
  } cases[] = {
      {"the stored code", Read(Unexplained), {"Acme - TV: Odd"}},
      {"lengths 3% off", Jittered(Read(Unexplained), 0.03, 7), {"Acme - TV: Odd"}},
      {"carrier 4% off", WithCarrier(Read(Unexplained), 1.04), {"Acme - TV: Odd"}},
      {"carrier 10% off", WithCarrier(Read(Unexplained), 1.10), {}},
      {"one pulse 30% longer", WithPairLengthened(Read(Unexplained), 2, 1.3), {}},
      {"a remote's code, lengths 3% off",
       Jittered(Read(CorpusCode("Stop")), 0.03, 9),
       {"Acme - TV: Stop"}},
      {"another button of that remote", Read(CorpusCode("Step Down")), {}},
      {"the same RC5 button pressed again",
       EncodeIRStream(u"RC5", {1, {}, 12, 0}),
       {"Acme - TV: Power"}},
      {"another RC5 button", EncodeIRStream(u"RC5", {1, {}, 13, 1}), {}},
      {"a two-part command, lengths 3% off",
       Jittered(TwoPartCode(122), 0.03, 5),
       {"Acme - TV: Input 1"}},
      {"another with the same first part", TwoPartCode(123), {}},
      {"an empty stream", TIRStreamData{}, {}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Names(database.RecogniseNames(c.Code)), c.Names) << c.What;
  }
}

// Every change reaches the index, whether undo records it or not, and undo and redo too.
TEST_F(StreamRecognition, FollowsEditsUndoAndRedo) {
  TIRDB database(Path("edits.xml"), false);
  const TIRStreamData received = Jittered(Read(Unexplained), 0.03, 11);
  const auto command = [&database] { return database.GetMake(0)->GetModel(0)->GetCommand(0); };
  const auto edit = [](const std::function<void()>& change) {
    change();
    MaintainUndo();
  };
  const struct {
    const char* What;
    std::function<void()> Change;
    QStringList Names;
  } steps[] = {
      {"added",
       [&] { edit([&] { AddStream(database.GetOrAddModel("Acme", "TV"), "Odd", Unexplained); }); },
       {"Acme - TV: Odd"}},
      {"renamed", [&] { edit([&] { command()->SetName("Strange"); }); }, {"Acme - TV: Strange"}},
      {"code replaced",
       [&] { edit([&] { static_cast<TIRStream*>(command())->SetHexCode(CorpusCode("Power")); }); },
       {}},
      {"undone", [] { Undo().Revert(); }, {"Acme - TV: Strange"}},
      {"redone", [] { Redo().Revert(); }, {}},
      {"undone again", [] { Undo().Revert(); }, {"Acme - TV: Strange"}},
      {"model cleared without undo",
       [&] {
         const TUndoSuspended undoOff;
         database.GetMake(0)->GetModel(0)->Clear();
       },
       {}},
  };
  for (const auto& step : steps) {
    step.Change();
    EXPECT_EQ(Names(database.RecogniseNames(received)), step.Names) << step.What;
  }
  Undo().Empty();
  Redo().Empty();
}

// A public database recognises a native code from its hex code, read back as any received code is.
TEST_F(StreamRecognition, RecognisesANativeCodeFromItsHexCode) {
  const TIRDB database(Path("public.xml"), true);
  TNorvaIRStream native;
  native.SetNorva(3, nvVolUpCmd, AmpCommand);
  const QStringList names = Names(database.RecogniseNames(Read(native.GetHexCode())));
  EXPECT_TRUE(names.contains(native.GetCategory() + ": " + native.GetName()))
      << names.join('\n').toStdString();
}
