// A stream replaced as a whole (hex code, raw signal, native code, assignment, new content, a
// file read) undoes to exactly the stream it was and redoes to exactly the new one, in one step,
// whatever it was.

#include "IRCorpus.h"

#include <IR/IR.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <OrbGlobal/Xml/XmlDocument.h>
#include <support/QtPrinters.h>

#include <gtest/gtest.h>

#include <functional>

using namespace norva;

namespace {

// Everything a stream is: its file form, its content and the native command it was built for.
struct TStreamState {
  QByteArray Saved;
  TIRStreamData Data;
  int Zone;
  TNorvaCommand Command;
  TNorvaCommandType Type;

  friend bool operator==(const TStreamState&, const TStreamState&) = default;
};

TStreamState StateOf(const TNorvaIRStream& stream) {
  pugi::xml_document document;
  stream.Save(document.append_child("ir_stream"));
  return {SaveXMLDocument(document), stream.Data(), stream.GetZone(), stream.GetCommand(),
          stream.GetCommandType()};
}

void PrintTo(const TStreamState& state, std::ostream* out) {
  QStringList lengths;
  for (const quint16 length : state.Data.Lengths) lengths << QString::number(length);
  int pairs = 0;
  for (const TPeriodIDPair& pair : state.Data.Pairs) pairs += !pair.Equal({});
  *out << state.Saved.toStdString() << " period " << state.Data.ModulationPeriod << " format "
       << int{state.Data.Format} << " lengths " << lengths.join(u',').toStdString() << ", " << pairs
       << " pairs not 0/0, zone " << state.Zone << " command " << int{state.Command} << " type "
       << int{state.Type};
}

using TEdit = std::function<void(TNorvaIRStream&)>;

class TIRStreamUndoTest : public ::testing::Test {
 protected:
  void SetUp() override {
    while (UndoDisabled()) EnableUndo();
    Undo().Empty();
    Redo().Empty();
  }
  void TearDown() override { SetUp(); }
};

}  // namespace

TEST_F(TIRStreamUndoTest, WholeStreamReplacementsUndoAndRedoExactlyInOneStep) {
  const QString oneWord = CorpusCode("Right");
  const QString twoWords = CorpusCode("up");
  ASSERT_FALSE(oneWord.isEmpty() || twoWords.isEmpty());
  const std::vector<std::pair<const char*, TEdit>> starts = {
      {"empty", [](TNorvaIRStream&) {}},
      {"one word", [&](TNorvaIRStream& s) { s.SetHexCode(oneWord); }},
      {"two words",
       [&](TNorvaIRStream& s) {
         s.SetHexCode(twoWords);
         s.SetRepeats(2);
       }},
      {"native", [](TNorvaIRStream& s) { s.SetNorva(-1, nvStandbyCmd, AmpCommand); }},
      {"raw",
       [](TNorvaIRStream& s) {
         s.SetRawSignal(38000, {9000, 4500, 560, 560, 560, 1690, 560});
         s.SetRepeats(3);
       }},
  };

  TIRStream learnt;
  learnt.SetHexCode(CorpusCode("Sleep"));
  learnt.SetRepeats(1);
  TNorvaIRStream mute;
  mute.SetNorva(5, nvMuteCmd, IntegraAmpCommand);
  TIRStream filed;
  filed.SetHexCode(CorpusCode("Search"));
  filed.SetRepeats(2);
  pugi::xml_document file;
  filed.Save(file.append_child("ir_stream"));
  const std::optional<TIRStreamData> onceOnly = ParseHexCode(CorpusCode("blue"));
  ASSERT_TRUE(onceOnly);
  const std::vector<std::pair<const char*, TEdit>> replacements = {
      {"hex code", [](TNorvaIRStream& s) { s.SetHexCode(CorpusCode("5")); }},
      {"two-word hex code", [](TNorvaIRStream& s) { s.SetHexCode(CorpusCode("*")); }},
      {"raw signal",
       [](TNorvaIRStream& s) {
         s.SetRawSignal(36000, {2400, 600, 1200, 600, 600, 600, 1200});
       }},
      {"native code", [](TNorvaIRStream& s) { s.SetNorva(3, nvSrc1Cmd, PreampCommand); }},
      {"relay code", [](TNorvaIRStream& s) { s.SetNorvaSw6(4, 'C'); }},
      {"learnt stream assigned", [&](TNorvaIRStream& s) { s.Assign(&learnt); }},
      {"native stream assigned", [&](TNorvaIRStream& s) { s.Assign(&mute); }},
      {"content", [&](TNorvaIRStream& s) { s.SetData(*onceOnly); }},
      {"read from a file", [&](TNorvaIRStream& s) { s.Load(file.document_element()); }},
  };

  for (const auto& [startName, start] : starts) {
    for (const auto& [replacementName, replace] : replacements) {
      SCOPED_TRACE(std::string(replacementName) + " over " + startName);
      TOrbObject document;
      TNorvaIRStream stream(&document);
      {
        const TUndoSuspended quiet(true);
        start(stream);
      }
      const TStreamState before = StateOf(stream);
      replace(stream);
      MaintainUndo();
      const TStreamState after = StateOf(stream);
      ASSERT_NE(before, after);
      EXPECT_EQ(Undo().NumSavePoints(), 1);

      Undo().Revert();
      MaintainUndo();
      EXPECT_EQ(StateOf(stream), before);
      EXPECT_FALSE(Undo().CanRevert());
      Redo().Revert();
      MaintainUndo();
      EXPECT_EQ(StateOf(stream), after);
      EXPECT_FALSE(Redo().CanRevert());
      // The same replacement again changes nothing and records nothing.
      const int recorded = Undo().Count();
      replace(stream);
      EXPECT_EQ(Undo().Count(), recorded);
      Undo().Empty();
    }
  }
}
