// The readers of other tools' code files, each on a hand-made file holding every form it reads and
// the ways an entry is refused: what each entry holds, where it is, and why the others are not
// read.

#include <IR/IRHexCode.h>
#include <IR/IRRawSignal.h>
#include <IR_Database/CodeFiles/GirrFile.h>
#include <IR_Database/CodeFiles/LircdFile.h>
#include <IR_Database/CodeFiles/ProtocolCsvFile.h>

#include <QFile>

#include <gtest/gtest.h>
#include <support/QtPrinters.h>

using namespace norva;

namespace {

QString DataPath(const char* name) {
  return QStringLiteral(NORVA_SOURCE_DIR "/tests/IR_Database/data/") + QString::fromUtf8(name);
}

QByteArray Data(const char* name) {
  QFile file(DataPath(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

using TExpectedCode = std::variant<TIRStreamData, TProtocolCode>;

struct TExpectedEntry {
  const char* Place;
  const char* Name;
  const char* Make;
  const char* Model;
  TExpectedCode Code;
};

struct TExpectedRefusal {
  const char* Place;
  const char* Reason;  // the start of the reason
};

struct TReaderCase {
  const char* File;
  TCodeFileEntries (*Read)(const QByteArray&, const QString&);
  std::vector<TExpectedEntry> Entries;
  std::vector<TExpectedRefusal> Refusals;
};

TIRStreamData Pronto(const char* code) { return *ParseHexCode(QString::fromLatin1(code)); }

TProtocolCode Nec1(std::int64_t d, std::optional<std::int64_t> s, std::int64_t f,
                   const char* spelling = "NEC1") {
  return {QString::fromLatin1(spelling), {d, s, f, std::nullopt}};
}

QList<double> Repeated(QList<double> durations, int times) {
  QList<double> all;
  for (int i = 0; i < times; ++i) all += durations;
  return all;
}

const std::vector<TReaderCase>& Cases() {
  // The lircd remote "Space": header, pre data 01 and code sent least significant bit first,
  // ptrail; the gap completes 108 ms from the start of the frame.
  const double frame = 9000 + 4500 + 2 * (560 + 1690) + 2 * (560 + 560) + 560;
  const double repeat = 9000 + 2250 + 560;
  static const std::vector<TReaderCase> cases = {
      {"remote.girr",
       ReadGirrFile,
       {{"command 1 (Power)", "Power", "Acme", "TV 1",
         Pronto("0000 006D 0000 0002 0157 00AC 0015 05ED")},
        {"command 2 (Vol+)", "Vol+", "Acme", "TV 1",
         WordsStream(40000, {9000, 4500, 560, 20000}, {9000, 2250, 560, 96000})},
        {"command 3 (Mute)", "Mute", "Acme", "TV 1",
         WordsStream(38000, {}, {500, 1500, 500, 40000})},
        {"command 4 (Input)", "Input", "Acme", "TV 1", Nec1(4, std::nullopt, 8, "nec1")}},
       {{"command 5 (Bad parameter)", "parameter 'X' is not one of D, S, F and T"},
        {"command 6 (Huge)", "F is no whole number"},
        {"command 7 (Ending)", "an ending sequence has no place in a stream"},
        {"command 8 (Unordered)", "flashes and gaps do not alternate"},
        {"command 9 (Empty)", "none of raw, ccf and parameters"},
        {"command 10 ()", "a command without name"},
        {"command 11 (Short)", "fewer than five words"}}},
      {"truncated.girr", ReadGirrFile, {}, {{"line 4, position", ""}}},
      {"remotes.lircd.conf",
       ReadLircdFile,
       {{"line 21", "KEY_POWER", "", "Space",
         WordsStream(40000,
                     {9000, 4500, 560, 1690, 560, 560, 560, 1690, 560, 560, 560, 108000 - frame},
                     {9000, 2250, 560, 108000 - repeat})},
        {"line 22", "KEY_MUTE", "", "Space",
         WordsStream(40000,
                     {9000, 4500, 560, 1690, 560, 560, 560, 560, 560, 1690, 560, 108000 - frame},
                     {9000, 2250, 560, 108000 - repeat})},
        {"line 39", "KEY_5", "", "Biphase5",
         WordsStream(38000, {}, {889, 889, 1778, 1778, 889, 90000})},
        {"line 53", "KEY_6", "", "Biphase6",
         WordsStream(38000, {}, {2666, 889, 888, 1332, 444, 80000})},
        {"line 63", "KEY_A", "", "Learnt",
         RawSignalStream(36000, {900, 450, 600, 1200, 600, 50000})},
        {"line 124", "KEY_U", "", "Unfinished", WordsStream(38000, {}, Repeated({500, 500}, 8))}},
       {{"line 23", "code 0x4 has more than 2 bits"},
        {"line 24", "several codes for one button are not read"},
        {"line 25", "no code"},
        {"line 26", "no code: '0xZZ'"},
        {"line 66", "a negative duration"},
        {"line 80", "no one and zero timings"},
        {"line 91", "flags: flag GRUNDIG is not read"},
        {"line 102", "more than 64 bits with pre and post data"},
        {"line 113", "Infra-red word gap of"},
        {"line 117", "outside every remote"},
        {"line 118", "the file ends inside remote Unfinished"}}},
      {"Acme/TV/4,-1.csv",
       ReadProtocolCsvFile,
       {{"line 2", "POWER", "Acme", "TV 4,-1", Nec1(4, std::nullopt, 8)},
        {"line 3", "VOL \"+\", loud", "Acme", "TV 4,-1", Nec1(4, std::nullopt, 2)},
        {"line 4", "INPUT", "Acme", "TV 4,-1", Nec1(4, 7, 3)}},
       {{"line 6", "expected 5 fields"},
        {"line 7", "the device is no whole number"},
        {"line 8", "no function name"},
        {"line 9", "the function is no whole number"}}},
  };
  return cases;
}

void ExpectCode(const TCodeFileEntry& entry, const TExpectedCode& expected) {
  if (const auto* stream = std::get_if<TIRStreamData>(&expected)) {
    const auto* read = std::get_if<TIRStreamData>(&entry.Code);
    ASSERT_NE(read, nullptr);
    EXPECT_TRUE(*read == *stream) << read->GetPeriodLengthsString().toStdString() << " / "
                                  << stream->GetPeriodLengthsString().toStdString();
  } else {
    const auto* read = std::get_if<TProtocolCode>(&entry.Code);
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->Protocol, std::get<TProtocolCode>(expected).Protocol);
    EXPECT_TRUE(read->Parameters == std::get<TProtocolCode>(expected).Parameters);
  }
}

}  // namespace

TEST(CodeFileReaders, ReadEveryFormTheirFileHoldsAndSayWhyTheyRefuseTheRest) {
  for (const TReaderCase& c : Cases()) {
    SCOPED_TRACE(c.File);
    const TCodeFileEntries read = c.Read(Data(c.File), DataPath(c.File));
    ASSERT_EQ(read.Entries.size(), static_cast<qsizetype>(c.Entries.size()));
    for (std::size_t i = 0; i < c.Entries.size(); ++i) {
      const TCodeFileEntry& entry = read.Entries[static_cast<qsizetype>(i)];
      const TExpectedEntry& expected = c.Entries[i];
      SCOPED_TRACE(expected.Place);
      EXPECT_EQ(entry.Place, expected.Place);
      EXPECT_EQ(entry.Name, expected.Name);
      EXPECT_EQ(entry.Make, expected.Make);
      EXPECT_EQ(entry.Model, expected.Model);
      ExpectCode(entry, expected.Code);
    }
    ASSERT_EQ(read.Refusals.size(), static_cast<qsizetype>(c.Refusals.size()));
    for (std::size_t i = 0; i < c.Refusals.size(); ++i) {
      const TCodeFileRefusal& refusal = read.Refusals[static_cast<qsizetype>(i)];
      EXPECT_TRUE(refusal.Place.startsWith(c.Refusals[i].Place)) << refusal.Place.toStdString();
      EXPECT_TRUE(refusal.Reason.startsWith(c.Refusals[i].Reason)) << refusal.Reason.toStdString();
      EXPECT_FALSE(refusal.Reason.isEmpty());
    }
  }
}

// Each format is recognised by its content alone, and no format takes another's file.
TEST(CodeFileReaders, RecogniseTheirOwnFilesOnly) {
  const struct {
    const char* Format;
    bool (*Recognises)(const QByteArray&);
    std::vector<const char*> Files;
  } formats[] = {
      {"girr", IsGirrFile, {"remote.girr", "truncated.girr"}},
      {"lircd", IsLircdFile, {"remotes.lircd.conf"}},
      {"csv", IsProtocolCsvFile, {"Acme/TV/4,-1.csv"}},
  };
  const char* others[] = {"remote.girr", "truncated.girr", "remotes.lircd.conf",
                          "Acme/TV/4,-1.csv"};
  for (const auto& format : formats) {
    for (const char* file : others) {
      const bool own = std::find_if(format.Files.begin(), format.Files.end(), [&](const char* f) {
                         return QByteArray(f) == file;
                       }) != format.Files.end();
      EXPECT_EQ(format.Recognises(Data(file)), own) << format.Format << " " << file;
    }
    EXPECT_FALSE(format.Recognises("Power\t0000 006D 0000 0002 0157 00AC 0015 05ED\n"))
        << format.Format;
    EXPECT_FALSE(format.Recognises(QByteArray())) << format.Format;
  }
}

// A path that does not end in Make/DeviceType/D,S.csv names neither make nor model.
TEST(CodeFileReaders, TakeMakeAndModelOnlyFromACsvFileNamedByDeviceAndSubdevice) {
  const QByteArray csv = "functionname,protocol,device,subdevice,function\nA,RC5,0,-1,12\n";
  for (const char* path : {"codes.csv", "TV/4,-1.csv", "Acme/TV/power.csv", ""}) {
    const TCodeFileEntries read = ReadProtocolCsvFile(csv, QString::fromUtf8(path));
    ASSERT_EQ(read.Entries.size(), 1) << path;
    EXPECT_TRUE(read.Entries[0].Make.isEmpty() && read.Entries[0].Model.isEmpty()) << path;
  }
  const TCodeFileEntries read = ReadProtocolCsvFile(csv, "/x/codes/Sony/Receiver/176,-1.csv");
  EXPECT_EQ(read.Entries[0].Make, "Sony");
  EXPECT_EQ(read.Entries[0].Model, "Receiver 176,-1");
}

// A file cut short keeps what was read before the cut: the raw code being read included.
TEST(CodeFileReaders, KeepWhatAFileCutShortHeld) {
  const TCodeFileEntries read =
      ReadLircdFile("begin remote\n name R\n begin raw_codes\n  name A\n   900 450 600", "r.conf");
  ASSERT_EQ(read.Entries.size(), 1);
  EXPECT_EQ(read.Entries[0].Place, "line 4");
  ASSERT_EQ(read.Refusals.size(), 1);
  EXPECT_EQ(read.Refusals[0].Reason, "the file ends inside remote R");
}
