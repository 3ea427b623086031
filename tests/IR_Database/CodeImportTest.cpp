// Code files of other tools: each reader gives every entry or says where and why not, Flipper's
// parsed signals become the engine's protocols by the documented byte conventions, and an import
// is one undo step that adds each code once.
#include "IRDatabaseTest.h"

#include <NorvaGlobal/EnumNames.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <support/QtPrinters.h>

using namespace norva;
using namespace norva::testing;

namespace {

const QByteArray Power = "0000 006D 0000 0002 0157 00AC 0015 05ED";
const QByteArray VolumeUp = "0000 006D 0000 0004 0016 0016 0016 0041 0016 0016 0016 0400";

QString ParametersText(const TIRProtocolParameters& p) {
  QString text;
  const std::pair<const char*, std::optional<std::int64_t>> named[] = {
      {"D", p.D}, {"S", p.S}, {"F", p.F}, {"T", p.T}};
  for (const auto& [name, value] : named)
    if (value) text += QStringLiteral(" %1=%2").arg(QLatin1String(name)).arg(*value);
  return text;
}

// "Power: stream RepeatWord1", "Vol: capture 38000 Hz 11", "Mute: NEC1 D=7 F=2".
QString Described(const TCodeFileEntry& entry) {
  const QString code = std::visit(
      [](const auto& c) -> QString {
        using T = std::decay_t<decltype(c)>;
        if constexpr (std::is_same_v<T, TIRStreamData>)
          return QStringLiteral("stream ") + EnumName(c.Format);
        else if constexpr (std::is_same_v<T, TRawCapture>)
          return QStringLiteral("capture %1 Hz %2").arg(c.FrequencyHz).arg(c.Microseconds.size());
        else
          return c.Protocol + ParametersText(c.Parameters);
      },
      entry.Code);
  return entry.Place + QStringLiteral(": ") + entry.Name + QStringLiteral(": ") + code;
}

QStringList Refusals(const QList<TCodeFileRefusal>& refusals) {
  QStringList texts;
  for (const TCodeFileRefusal& refusal : refusals) texts << refusal.Place + ": " + refusal.Reason;
  return texts;
}

QByteArray FlipperBlock(const char* name, const char* body) {
  return QByteArray("#\nname: ") + name + "\n" + body;
}

}  // namespace

TEST(CodeFileFormats, ReadEachEntryOrSayWhereAndWhy) {
  const struct {
    const char* Format;
    QByteArray Bytes;
    QStringList Entries;
    QStringList Refusals;
  } cases[] = {
      {"pronto",
       "name\tbrand\tcode\nPower\tAcme\t" + Power + "\nno tab\r\nShort\t0000 006D\n\nVol\t" +
           VolumeUp,
       {"line 2: Power: stream RepeatWord1", "line 6: Vol: stream RepeatWord1"},
       {"line 3: no TAB between name and code", "line 4: fewer than five words"}},
      {"flipper",
       "Filetype: IR signals file\r\nVersion: 1\n" +
           FlipperBlock("Power",
                        "type: raw\nfrequency: 38000\nduty_cycle: 0.33\n"
                        "data: 9000 4500 560 560 560 1690 560 40000 9000 2250 560\n") +
           FlipperBlock("Mute",
                        "type: parsed\nprotocol: NEC\naddress: 07 00 00 00\r\n"
                        "command: 02 00 00 00\n") +
           FlipperBlock("Vol",
                        "type: parsed\nprotocol: NEC\naddress: 07 00 00\ncommand: 02 00 00 00\n") +
           FlipperBlock(
               "Ch", "type: parsed\nprotocol: XYZ\naddress: 07 00 00 00\ncommand: 02 00 00 00\n") +
           FlipperBlock("Eject", "type: raw\nfrequency: 38000\n") +
           FlipperBlock("Play", "type: raw\nfrequency: fast\ndata: 500 500\n"),
       {"line 4 (Power): Power: capture 38000 Hz 11", "line 10 (Mute): Mute: NEC1 D=7 F=2"},
       {"line 16 (Vol): address \"07 00 00\" is not four hexadecimal bytes",
        "line 22 (Ch): protocol \"XYZ\" is not one the import knows",
        "line 28 (Eject): no \"data:\"", "line 32 (Play): frequency \"fast\" is no number"}},
      {"sendir",
       "sendir,1:1,1,38000,1,1,342,171,21,21,21,64,21,1520\n"
       "Mute\tsendir,1:1,2,38000,3,5,342,171,21,1520,342,85,21,3000\n"
       "sendir,1:1,3,38000,1,1,342\n"
       "sendir,1:1,4,fast,1,1,342,171\n"
       "sendir,1:1,5,38000,1,9,342,171\n",
       {"line 1: Code 1: stream RepeatWord1", "line 2: Mute: stream RepeatWord2"},
       {"line 3: expected sendir,M:C,ID,FREQ,REPEAT,OFFSET,ON,OFF..., found 7 fields",
        "line 4: FREQ must be a positive number, not \"fast\"",
        "line 5: OFFSET 9 is no pulse of the 2 durations"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Format);
    const TCodeFileFormat* format = FindCodeFileFormat(c.Bytes);
    ASSERT_NE(format, nullptr);
    EXPECT_EQ(format->Name, c.Format) << "recognised by its content";
    const TCodeFileEntries read = format->Read(c.Bytes, QStringLiteral("remote"));
    QStringList entries;
    for (const TCodeFileEntry& entry : read.Entries) entries << Described(entry);
    EXPECT_EQ(entries, c.Entries);
    EXPECT_EQ(Refusals(read.Refusals), c.Refusals);
  }
  EXPECT_EQ(FindCodeFileFormat("Power, 0000 006D"), nullptr);
  EXPECT_EQ(FindCodeFileFormat("", QStringLiteral("FLIPPER"))->Name, "flipper");
}

// Address and command are four little-endian bytes; how their bits become the engine's
// parameters is told in docs/ir-database.md.
TEST(CodeFileFormats, FlipperProtocolsBecomeTheEnginesOwn) {
  const struct {
    const char* Protocol;
    const char* Address;
    const char* Command;
    const char* Code;  // or the refusal
  } cases[] = {
      {"NEC", "07 00 00 00", "02 00 00 00", "NEC1 D=7 F=2"},
      {"NECext", "8C C8 00 00", "81 7E 00 00", "NEC1 D=140 S=200 F=129"},
      {"NECext", "04 FB 00 00", "12 34 00 00", "NEC1-f16 D=4 S=251 F=13330"},
      {"Samsung32", "07 00 00 00", "02 00 00 00", "NECx1 D=7 S=7 F=2"},
      {"RC5", "01 00 00 00", "06 00 00 00", "RC5 D=1 F=6 T=0"},
      {"RC5X", "01 00 00 00", "06 00 00 00", "RC5 D=1 F=70 T=0"},
      {"RC6", "20 00 00 00", "0C 00 00 00", "RC6 D=32 F=12 T=0"},
      {"SIRC", "01 00 00 00", "15 00 00 00", "Sony12 D=1 F=21"},
      {"SIRC15", "97 00 00 00", "15 00 00 00", "Sony15 D=151 F=21"},
      {"SIRC20", "3A 07 00 00", "32 00 00 00", "Sony20 D=26 S=57 F=50"},
      {"Kaseikyo", "80 02 20 00", "D0 03 00 00", "Panasonic D=128 S=0 F=61"},
      {"Kaseikyo", "89 02 20 02", "70 00 00 00", "Panasonic D=128 S=9 F=135"},
      {"Kaseikyo", "52 54 32 00", "D0 03 00 00", "Denon-K D=5 S=2 F=976"},
      {"Kaseikyo", "80 34 12 00", "D0 03 00 00",
       "Kaseikyo maker code 0x1234 has no protocol here (Panasonic's 0x2002 and Denon's 0x3254 "
       "have)"},
      {"Kaseikyo", "80 02 20 04", "D0 03 00 00",
       "Kaseikyo address or command has bits beyond its fields"},
      {"Pioneer", "A5 00 00 00", "1C 00 00 00", "Pioneer D=165 F=28"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.Protocol) + " " + c.Address);
    const QByteArray file =
        QByteArray("Filetype: IR signals file\nname: X\ntype: parsed\nprotocol: ") + c.Protocol +
        "\naddress: " + c.Address + "\ncommand: " + c.Command;
    const TCodeFileEntries read = FindCodeFileFormat(file)->Read(file, {});
    const QStringList said = read.Entries.isEmpty()
                                 ? QStringList{read.Refusals.value(0).Reason}
                                 : QStringList{Described(read.Entries[0]).section(": ", 2)};
    EXPECT_EQ(said, QStringList{c.Code});
  }
}

class CodeImport : public TIRDatabaseTest {
 protected:
  void SetUp() override {
    TIRDatabaseTest::SetUp();
    Undo().Empty();
  }
  void TearDown() override { Undo().Empty(); }
  TCodeImportResult Import(const QByteArray& bytes, const QString& make = "Acme") {
    const TCodeImportResult result =
        ImportCodeFile(database, bytes, {QStringLiteral("codes.tsv"), make, "TV", {}});
    MaintainUndo();
    return result;
  }
  int Commands() {
    const TMake* make = database.GetMakeByName("Acme");
    const TModel* model = make ? make->GetModelByName("TV") : nullptr;
    return model ? model->GetCommandCount() : 0;
  }

  TIRDB database{Path("IR.xml"), false};
};

TEST_F(CodeImport, AddsEachCodeOnceInOneUndoStep) {
  const QByteArray file = "Power\t" + Power + "\nVol+\t" + VolumeUp + "\nbad line\n";
  const TCodeImportResult first = Import(file);
  EXPECT_EQ(first.Added, 2);
  EXPECT_EQ(Refusals(first.Refusals), QStringList{"line 3: no TAB between name and code"});
  EXPECT_EQ(Commands(), 2);
  const TCommandObject* volume =
      database.GetMakeByName("Acme")->GetModelByName("TV")->GetCommand(1);
  EXPECT_FALSE(volume->GetGUIDString().isEmpty());
  EXPECT_FALSE(volume->GetButtonClasses().isEmpty()) << "a volume code gets its class";

  const TCodeImportResult again = Import(file + "Power\t" + VolumeUp + "\n");
  EXPECT_EQ(again.Added, 1) << "a name with another code is another command";
  EXPECT_EQ(again.Skipped, 2);
  EXPECT_TRUE(first.Duplicates.isEmpty());
  EXPECT_EQ(again.Duplicates, QStringList{"line 4: Power is the same code as Acme - TV: Vol+"});
  EXPECT_EQ(Commands(), 3);

  EXPECT_EQ(Undo().NumSavePoints(), 2);
  Undo().Revert();
  EXPECT_EQ(Commands(), 2) << "one undo takes back one import";
  Undo().Revert();
  EXPECT_EQ(Commands(), 0);
}

TEST_F(CodeImport, RefusesWhatHasNowhereToGoOrNoFormat) {
  const TCodeImportResult nowhere = Import("Power\t" + Power + "\n", {});
  EXPECT_EQ(Refusals(nowhere.Refusals),
            QStringList{"line 1: neither the file nor the import names a make and model"});
  const TCodeImportResult unknown = Import("Power, 0000 006D\n");
  EXPECT_EQ(
      Refusals(unknown.Refusals),
      QStringList{
          "file: not in a format the import reads (flipper, girr, lircd, csv, sendir, pronto)"});
  EXPECT_EQ(database.GetMakeCount(), 0);
}
