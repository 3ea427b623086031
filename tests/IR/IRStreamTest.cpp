// Infra-red streams as model objects: the real codes of remote controls read and written back
// within their tolerance, the native streams, the text forms and units, and the clipboard check.

#include "IRCorpus.h"

#include <IR/IR.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <OrbGlobal/Xml/XmlDocument.h>
#include <Testing/RecordingUIServices.h>
#include <support/QtPrinters.h>

#include <gtest/gtest.h>

#include <map>

using namespace norva;

namespace {

QList<int> Words(const QString& code) {
  QList<int> words;
  for (const QString& word : code.split(u' ')) words << word.toInt(nullptr, 16);
  return words;
}

}  // namespace

// Every real code either reads into a stream that is valid and writes back its pairs with every
// duration within 1/16 plus one carrier period (a word gap within its coarse unit more), or is
// refused with a message saying why.
TEST(IRStreamCorpus, RealCodesReadAndWriteBackWithinTheirTolerance) {
  const TUndoSuspended undoOff;
  const auto corpus = Corpus();
  ASSERT_EQ(corpus.size(), 320);
  std::map<QString, int> outcomes;
  for (const auto& [name, code] : corpus) {
    SCOPED_TRACE(name.toStdString() + ": " + code.toStdString());
    TIRStream stream;
    try {
      stream.SetHexCode(code);
    } catch (const ENorvaError& error) {
      ++outcomes[error.Message()];
      EXPECT_TRUE(stream.IsEmpty());  // nothing half-read
      continue;
    }
    ++outcomes[stream.Status()];
    if (stream.Status() != "OK") continue;
    if (code.startsWith(u"0100")) {
      // Unmodulated: the frequency word is only the time base, so the timing is that of the same
      // code with a carrier, and there is no carrier (and so no hex code to write back).
      const std::optional<TIRStreamData> modulated =
          ParseHexCode(QStringLiteral("0000") + code.mid(4));
      ASSERT_TRUE(modulated);
      EXPECT_EQ(stream.GetModulationPeriod(), 0);
      EXPECT_EQ(stream.GetFormat(), modulated->Format);
      EXPECT_EQ(stream.Data().Lengths, modulated->Lengths);
      EXPECT_EQ(stream.Data().Pairs, modulated->Pairs);
      ++outcomes["unmodulated"];
      continue;
    }
    const QList<int> in = Words(code);
    const QList<int> out = Words(stream.GetHexCode());
    ASSERT_EQ(out.size(), in.size());
    // A once-only code, like a repeat-only one, becomes a repeated stream: all pairs repeat.
    const bool both = in[2] != 0 && in[3] != 0;
    EXPECT_EQ(out[2], both ? in[2] : 0);
    EXPECT_EQ(out[3], both ? in[3] : in[2] + in[3]);
    EXPECT_NEAR(out[1], in[1], 1);
    const int wordEndSlack = 256 / 3 * 4 / qMax(1, in[1]) + 1;  // one coarse unit in periods
    for (qsizetype i = 4; i < in.size(); ++i) {
      const bool gap = i % 2 == 1;
      const int slack = in[i] / 16 + 1 + (gap ? wordEndSlack : 0);
      EXPECT_LE(std::abs(out[i] - in[i]), slack) << "word " << i;
    }
  }
  for (const auto& [outcome, count] : outcomes)
    std::printf("  %4d  %s\n", count, qPrintable(outcome));
  EXPECT_GE(outcomes["OK"], 300);
  EXPECT_EQ(outcomes["unmodulated"], 1);
}

TEST(IRStream, UnitsNamesAndTextFormsFollowTheStream) {
  const TUndoSuspended undoOff;
  TIRStream stream;
  EXPECT_EQ(stream.GetName(), "Unknown IR-Command");
  stream.SetLearnt(true);
  EXPECT_EQ(stream.GetName(), "Learnt IR-Command");
  stream.SetModulationFrequency(38000);
  EXPECT_EQ(stream.GetModulationPeriod(), 316);
  EXPECT_NEAR(stream.GetModulationFrequency(), 37974.7, 0.1);
  stream.SetPeriodLengthDI(FirstWordEndID, 0.040);
  EXPECT_EQ(stream.GetPeriodLength(FirstWordEndID), 469);
  EXPECT_THROW(stream.SetPeriodLengthDI(0, 0.1), ENorvaError);
  stream.SetPeriodIDPair(0, {0x21, 0xFE});
  EXPECT_EQ(stream.GetPeriodIDPair(0), (TPeriodIDPair{1, 14}));

  // A copy carries only the lengths its pairs use, and matches; repeats do not count.
  stream.SetHexCode("0000 006D 0000 0004 0016 0016 0016 0041 0016 0016 0016 0400");
  stream.SetPeriodLength(9, 1234);
  stream.SetRepeats(4);
  TIRStream copy;
  copy.Assign(&stream);
  EXPECT_EQ(copy.GetPeriodLength(9), 0);
  EXPECT_TRUE(copy.Match(&stream));
  copy.SetRepeats(1);
  EXPECT_TRUE(copy.Match(&stream));
  copy.SetFormat(NoRepeat);
  EXPECT_FALSE(copy.Match(&stream));

  // A file without "repeat" means none; a format number that names none reads as the default.
  pugi::xml_document document;
  LoadXMLDocument(document,
                  "<ir_stream><modulation_period>316</modulation_period><format>9</format>"
                  "<period_lengths>1736,5128</period_lengths><period_id_pairs>00,01,00,1E"
                  "</period_id_pairs></ir_stream>");
  stream.Load(document.document_element());
  EXPECT_EQ(stream.GetRepeats(), 0);
  EXPECT_EQ(stream.GetFormat(), RepeatWord1);
  EXPECT_EQ(stream.Status(), "OK");
}

TEST(IRStream, NativeStreamsNameFileAndClassTheirCommands) {
  const TUndoSuspended undoOff;
  TNorvaIRStream native;
  native.SetNorva(-1, nvStandbyCmd, AmpCommand);
  EXPECT_EQ(native.GetName(), "Standby");
  EXPECT_EQ(native.GetCategory(), "Norva, all zones");
  EXPECT_EQ(native.GetNorvaStr(), "01 FF 04");
  EXPECT_EQ(native.GetButtonClasses(), TButtonClasses{TButtonClass(NorvaClassGroup, 1)});
  EXPECT_THROW(native.SetNorva(96, nvMuteCmd, AmpCommand), ENorvaError);
  native.SetNorvaSw6(4, 'C');
  EXPECT_EQ(native.GetName(), "Relay 3 off");
  EXPECT_EQ(native.GetCategory(), "Norva Sw6, zone 4");
  EXPECT_EQ(native.GetPeriodLength(FirstWordEndID), 973);

  // Saved as a plain stream, read back as one.
  RegisterCommandClasses();
  TCommandObjectList list;
  list.AddNewCommandObject(&native);
  pugi::xml_document document;
  list.Save(document.append_child("commands"), false);
  TCommandObjectList read;
  read.Load(document.document_element(), false);
  ASSERT_EQ(read.GetCommandCount(), 1);
  EXPECT_STREQ(read.GetCommand(0)->metaObject()->className(), "norva::TIRStream");
  EXPECT_TRUE(read.GetCommand(0)->Match(&native));
}

TEST(IRStream, TheClipboardIsCheckedForTheShapeOfAHexCode) {
  TRecordingUIServices services;
  TScopedUIServices scoped(services);
  for (const auto& [text, expected] : std::map<QString, bool>{{" 0000 006D \n", true},
                                                              {"  0000 00", true},
                                                              {"0000 006d 0000", true},
                                                              {"000", false},
                                                              {"0000-006D", false},
                                                              {"", false}}) {
    services.SetClipboardText(text);
    EXPECT_EQ(HexCodeInClipboard(), expected) << text.toStdString();
  }
}
