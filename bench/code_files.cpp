// Code files of other tools: reading 100,000 codes of each format and turning them into streams
// (target at most 2 s for each format), and, printed, what the readers make of real files:
// every remote definition of Debian's lirc-compat-remotes, and the labelled codes of
// tests/data/ir/girrlib-protocols.tsv written as Girr (Pronto hex, protocol parameters)
// and as protocol CSV (codes, streams, refusals by reason).
#include <IR/IR.h>
#include <IR/IRProtocols.h>
#include <IR_Database/CodeFiles/GirrFile.h>
#include <IR_Database/CodeFiles/LircdFile.h>
#include <IR_Database/CodeFiles/ProtocolCsvFile.h>
#include <NorvaGlobal/Exceptions.h>
#include <support/Corpus.h>

#include <QDirIterator>
#include <QFile>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>

namespace {

using namespace norva;

constexpr int CodeCount = 100'000;
const QString LircRemotes = QStringLiteral("/usr/share/lirc/remotes");
const QString GirrLibCodes =
    QStringLiteral(NORVA_SOURCE_DIR "/tests/data/ir/girrlib-protocols.tsv");

// The stream an entry stands for: as read, or built by the protocol engine. Raises the reason
// when there is none.
TIRStreamData StreamOf(const TCodeFileEntry& entry) {
  if (const auto* stream = std::get_if<TIRStreamData>(&entry.Code)) return *stream;
  if (const auto* code = std::get_if<TProtocolCode>(&entry.Code))
    return EncodeIRStream(code->Protocol, code->Parameters);
  const auto& raw = std::get<TRawCapture>(entry.Code);
  return RawSignalStream(raw.FrequencyHz, raw.Microseconds);
}

// Codes a file holds, streams made of them, and the reasons for the others.
struct TTally {
  int Codes = 0;
  int Streams = 0;
  std::map<QString, int> Refused;

  // Each stream made is handed to `made` with the entry's place.
  template <typename Made>
  void Add(const TCodeFileEntries& read, Made&& made) {
    Codes += static_cast<int>(read.Entries.size() + read.Refusals.size());
    for (const TCodeFileRefusal& refusal : read.Refusals) ++Refused[refusal.Reason];
    for (const TCodeFileEntry& entry : read.Entries) {
      try {
        made(entry.Place, StreamOf(entry));
        ++Streams;
      } catch (const ENorvaError& error) {
        ++Refused[error.Message()];
      }
    }
  }
  void Add(const TCodeFileEntries& read) {
    Add(read, [](const QString&, const TIRStreamData&) {});
  }

  void Print(const char* title) const {
    std::printf("%s: %d codes, %d streams, %d refused\n", title, Codes, Streams, Codes - Streams);
    for (const auto& [reason, count] : Refused)
      std::printf("  %6d  %s\n", count, qPrintable(reason.left(100)));
  }
};

QByteArray FileBytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray XmlEscaped(const QString& text) { return text.toHtmlEscaped().toUtf8(); }

// 100,000 commands of the Pronto corpus, cycled, in one Girr remote.
QByteArray GirrOfCorpus() {
  const auto corpus = bench::InfraRedCorpus();
  QByteArray file = "<remotes><remote manufacturer=\"Acme\" model=\"TV\"><commandSet name=\"s\">\n";
  for (int i = 0; i < CodeCount; ++i) {
    const auto& [name, code] = corpus[i % corpus.size()];
    file +=
        "<command name=\"" + XmlEscaped(name) + "\"><ccf>" + code.toLatin1() + "</ccf></command>\n";
  }
  return file + "</commandSet></remote></remotes>\n";
}

// One remote sending like NEC1 with 100,000 codes.
QByteArray LircdOfNecCodes() {
  QByteArray file =
      "begin remote\n  name Acme\n  bits 16\n  flags SPACE_ENC|CONST_LENGTH\n"
      "  header 9000 4500\n  one 563 1687\n  zero 563 562\n  ptrail 563\n  repeat 9000 2250\n"
      "  pre_data_bits 16\n  pre_data 0x04FB\n  gap 108000\n  frequency 38000\n  begin codes\n";
  for (int i = 0; i < CodeCount; ++i)
    file += "    KEY_" + QByteArray::number(i) + " 0x" + QByteArray::number(i % 65536, 16) + '\n';
  return file + "  end codes\nend remote\n";
}

QByteArray CsvOfNecCodes() {
  QByteArray file = "functionname,protocol,device,subdevice,function\n";
  for (int i = 0; i < CodeCount; ++i)
    file += "F" + QByteArray::number(i) + ",NEC1," + QByteArray::number(i % 256) + ",-1," +
            QByteArray::number(i / 256 % 256) + '\n';
  return file;
}

void Import(benchmark::State& state, const QByteArray& file,
            TCodeFileEntries (*read)(const QByteArray&, const QString&)) {
  TTally tally;
  for (auto _ : state) {
    tally = {};
    tally.Add(read(file, QStringLiteral("codes/Acme/TV/4,-1.csv")));
  }
  state.SetItemsProcessed(state.iterations() * tally.Codes);
  state.counters["streams"] = tally.Streams;
}

void ImportGirr(benchmark::State& state) { Import(state, GirrOfCorpus(), ReadGirrFile); }
BENCHMARK(ImportGirr)->Unit(benchmark::kMillisecond);

void ImportLircd(benchmark::State& state) { Import(state, LircdOfNecCodes(), ReadLircdFile); }
BENCHMARK(ImportLircd)->Unit(benchmark::kMillisecond);

void ImportProtocolCsv(benchmark::State& state) {
  Import(state, CsvOfNecCodes(), ReadProtocolCsvFile);
}
BENCHMARK(ImportProtocolCsv)->Unit(benchmark::kMillisecond);

// Every remote definition, once: what is read and why the rest is not.
void ReadLircCompatRemotes(benchmark::State& state) {
  TTally tally;
  int files = 0;
  std::map<QString, int> protocols;  // of the streams, as the protocol engine names them
  for (auto _ : state) {
    for (QDirIterator it(LircRemotes, {"lircd.conf*"}, QDir::Files, QDirIterator::Subdirectories);
         it.hasNext();) {
      const QString path = it.next();
      tally.Add(ReadLircdFile(FileBytes(path), path), [&](const QString&, const TIRStreamData& s) {
        const QList<TIRDecode> decodes = DecodeIRStream(s);
        ++protocols[decodes.isEmpty() || !decodes[0].IsKnown() ? "none" : decodes[0].Protocol];
      });
      ++files;
    }
  }
  if (files == 0)
    state.SkipWithError("no lirc-compat-remotes: apt-get install lirc-compat-remotes");
  std::printf("%d remote definitions of %s\n", files, qPrintable(LircRemotes));
  tally.Print("lirc-compat-remotes");
  std::printf("  streams by the protocol that decodes them:");
  for (const auto& [protocol, count] : protocols)
    std::printf(" %s %d", qPrintable(protocol), count);
  std::printf("\n");
}
BENCHMARK(ReadLircCompatRemotes)->Iterations(1)->Unit(benchmark::kMillisecond);

// A labelled code: name, protocol, D, S, F, T (empty when absent), Pronto hex.
struct TLabelledCode {
  QStringList Fields;
  QString Field(int i) const { return Fields.value(i); }
};

QList<TLabelledCode> LabelledCodes() {
  QList<TLabelledCode> codes;
  for (const QByteArray& line : FileBytes(GirrLibCodes).split('\n'))
    if (!line.isEmpty()) codes.append({QString::fromUtf8(line).split(u'\t')});
  return codes;
}

QByteArray GirrCommands(const QList<TLabelledCode>& codes, bool parameters) {
  QByteArray file = "<remotes><remote manufacturer=\"GirrLib\" model=\"All\"><commandSet>\n";
  for (const TLabelledCode& code : codes) {
    file += "<command name=\"" + XmlEscaped(code.Field(0)) + "\">";
    if (!parameters) {
      file += "<ccf>" + code.Field(6).toLatin1() + "</ccf>";
    } else if (!code.Field(1).isEmpty()) {
      file += "<parameters protocol=\"" + XmlEscaped(code.Field(1)) + "\">";
      for (int i = 2; i <= 5; ++i)
        if (!code.Field(i).isEmpty())
          file += "<parameter name=\"" + QByteArray("DSFT").mid(i - 2, 1) + "\" value=\"" +
                  code.Field(i).toLatin1() + "\"/>";
      file += "</parameters>";
    }
    file += "</command>\n";
  }
  return file + "</commandSet></remote></remotes>\n";
}

// The CSV form has no toggle: T is not written.
QByteArray CsvCommands(const QList<TLabelledCode>& codes) {
  QByteArray file = "functionname,protocol,device,subdevice,function\n";
  for (const TLabelledCode& code : codes) {
    QString name = code.Field(0);
    file += '"' + name.replace(u'"', QStringLiteral("\"\"")).toUtf8() + "\"," +
            code.Field(1).toUtf8() + ',' + code.Field(2).toUtf8() + ',' +
            (code.Field(3).isEmpty() ? QByteArray("-1") : code.Field(3).toUtf8()) + ',' +
            code.Field(4).toUtf8() + '\n';
  }
  return file;
}

// The first number of a place: "command 12 (Power)" or "line 12".
int PlaceNumber(const QString& place) { return place.section(u' ', 1, 1).toInt(); }

// How a stream the engine built compares with the Pronto code of the same row.
struct TComparison {
  int Equal = 0;      // Match
  int SamePairs = 0;  // same format and pairs, lengths apart
  void Add(const TIRStreamData& built, const QString& pronto) {
    try {
      const std::optional<TIRStreamData> given = ParseHexCode(pronto);
      if (!given) return;
      TIRStream a, b;
      a.SetData(built);
      b.SetData(*given);
      Equal += a.Match(&b) ? 1 : 0;
      SamePairs += built.Format == given->Format &&
                           built.GetPeriodIDPairsString() == given->GetPeriodIDPairsString()
                       ? 1
                       : 0;
    } catch (const ENorvaError&) {
    }
  }
  void Print() const {
    std::printf("  streams equal to their Pronto code (Match): %d; same format and pairs: %d\n",
                Equal, SamePairs);
  }
};

void ReadGirrLibCodes(benchmark::State& state) {
  const QList<TLabelledCode> codes = LabelledCodes();
  if (codes.isEmpty()) state.SkipWithError("no girrlib-protocols.tsv");
  TTally ccf, parameters, csv;
  TComparison parametersMatch, csvMatch;
  for (auto _ : state) {
    ccf.Add(ReadGirrFile(GirrCommands(codes, false), QString()));
    parameters.Add(ReadGirrFile(GirrCommands(codes, true), QString()),
                   [&](const QString& place, const TIRStreamData& stream) {
                     parametersMatch.Add(stream, codes[PlaceNumber(place) - 1].Field(6));
                   });
    csv.Add(ReadProtocolCsvFile(CsvCommands(codes), QString()),
            [&](const QString& place, const TIRStreamData& stream) {
              csvMatch.Add(stream, codes[PlaceNumber(place) - 2].Field(6));
            });
  }
  ccf.Print("girrlib as Girr, Pronto hex");
  parameters.Print("girrlib as Girr, protocol parameters");
  parametersMatch.Print();
  csv.Print("girrlib as protocol CSV");
  csvMatch.Print();
}
BENCHMARK(ReadGirrLibCodes)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
