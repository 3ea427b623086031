// Writing a library's codes as other tools' files: Pronto lines and Girr documents read back as
// the same streams, a Flipper file holds each signal's durations, and what a format cannot hold is
// reported.

#include "IRDatabaseTest.h"

#include <IR/RS232Command.h>
#include <IR_Database/CodeFiles/GirrFile.h>
#include <NorvaGlobal/Exceptions.h>

using namespace norva;
using namespace norva::testing;

namespace {

class CodeExport : public TIRDatabaseTest {
 protected:
  // The corpus's codes that read (a carrier or none) as "Code N", then three commands no format
  // holds; `written` gets the streams a file can hold, `unwritten` what the export must report.
  TModel* FillModel(TIRDB& database) {
    TModel* tv = database.GetOrAddModel("Acme", "TV 1");
    for (int i = 0; i < codes.size(); ++i) {
      TIRStream read;
      try {
        read.SetHexCode(codes[i]);
      } catch (const ENorvaError&) {
        continue;
      }
      TIRStream* stream = AddStream(tv, QStringLiteral("Code %1").arg(i), codes[i]);
      if (stream->GetModulationPeriod() != 0)
        written << stream;
      else
        unwritten << "Acme - TV 1: " + stream->GetName() + ": " + NoCarrier;
    }
    tv->AddNewCommandObject(&TRS232Command::staticMetaObject)->SetName("Serial");
    tv->AddNewCommandObject(&TIRStream::staticMetaObject)->SetName("Empty");
    TIRStream* bare = AddStream(tv, "Bare", codes[0]);
    bare->SetModulationPeriod(0);
    unwritten << "Acme - TV 1: Serial: not an infra-red stream"
              << "Acme - TV 1: Empty: an empty stream"
              << "Acme - TV 1: Bare: " + NoCarrier;
    return tv;
  }

  const QString NoCarrier = "a stream without carrier, which no file format holds";
  QList<const TIRStream*> written;
  QStringList unwritten;
};

// The same stream, but for the gaps that end words: a hex code writes a word-end length as its
// nearest hex word, which reads back into the unit below about half the time (reading truncates
// to the coarse unit), so those may come back one unit (256/3 us) shorter.
void ExpectSameStreams(const QList<const TIRStream*>& written, const QList<TIRStreamData>& read) {
  ASSERT_EQ(read.size(), written.size());
  for (qsizetype i = 0; i < read.size(); ++i) {
    TIRStreamData data = read[i];
    for (const TPeriodID id : {FirstWordEndID, SecondWordEndID}) {
      const int loss = written[i]->GetPeriodLength(id) - data.Lengths[id];
      EXPECT_TRUE(loss == 0 || loss == 1) << written[i]->GetName().toStdString();
      data.Lengths[id] = written[i]->GetPeriodLength(id);
    }
    TIRStream stream;
    stream.SetData(data);
    EXPECT_TRUE(stream.Match(written[i])) << written[i]->GetName().toStdString();
  }
}

}  // namespace

TEST_F(CodeExport, ProntoAndGirrFilesReadBackAsTheSameStreams) {
  TIRDB database(Path("IR.xml"), false);
  const TModel* tv = FillModel(database);
  ASSERT_GT(written.size(), 300);
  for (const TCodeExportFormat format : {TCodeExportFormat::Pronto, TCodeExportFormat::Girr}) {
    SCOPED_TRACE(static_cast<int>(format));
    const TCodeExport exported = ExportCodes({tv}, format);
    EXPECT_EQ(exported.Unwritten, unwritten);
    QList<TIRStreamData> read;
    if (format == TCodeExportFormat::Pronto) {
      TModel imported;
      const TNamedCodesImport result = ImportNamedCodes(imported, exported.Bytes);
      EXPECT_TRUE(result.Failures.isEmpty()) << result.Failures.join(u'\n').toStdString();
      for (int i = 0; i < imported.GetCommandCount(); ++i)
        read << static_cast<const TIRStream*>(imported.GetCommand(i))->Data();
    } else {
      const TCodeFileEntries entries = ReadGirrFile(exported.Bytes, Path("tv.girr"));
      EXPECT_TRUE(entries.Refusals.isEmpty());
      for (const TCodeFileEntry& entry : entries.Entries) {
        EXPECT_EQ(entry.Make, "Acme");
        EXPECT_EQ(entry.Model, "TV 1");
        read << std::get<TIRStreamData>(entry.Code);
      }
    }
    ExpectSameStreams(written, read);
  }
}

// Durations come out in whole microseconds as the stream's units give them: the 40 ms gap that
// ends the word is kept as 468 units of 256/3 us, 39,936 us.
TEST_F(CodeExport, FlipperBlocksHoldFrequencyDutyCycleAndDurations) {
  TIRDB database(Path("IR.xml"), false);
  TModel* tv = database.GetOrAddModel("Acme", "TV 1");
  auto* stream = static_cast<TIRStream*>(tv->AddNewCommandObject(&TIRStream::staticMetaObject));
  stream->SetName("Power\tOn");
  stream->SetRawSignal(40000, {9000, 4500, 600, 40000});
  const TCodeExport exported = ExportCodes({tv}, TCodeExportFormat::Flipper);
  EXPECT_TRUE(exported.Unwritten.isEmpty());
  EXPECT_EQ(QString::fromUtf8(exported.Bytes),
            "Filetype: IR signals file\nVersion: 1\n# Acme - TV 1\n#\nname: Power On\ntype: raw\n"
            "frequency: 40000\nduty_cycle: 0.330000\ndata: 9000 4500 600 39936\n");
}
