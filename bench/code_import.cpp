// The import of code files: 100,000 codes from a file of each format the import reads (target at
// most 2 s each, undo recording as in the tool), and, with NORVA_FLIPPER_CORPUS naming a folder of
// Flipper remote files, a measurement over them: entries, added, refused by reason; the share of
// learnt captures whose stream has status "OK"; for those a protocol explains, whether the stored
// stream decodes as the capture's first frame; and, for buttons a file holds both learnt and
// parsed, whether the two decode alike (toggle aside).
#include <IR/IR.h>
#include <IR/IRProtocols.h>
#include <IR_Database/IR_Database.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <support/Corpus.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>

namespace {

constexpr int CodeCount = 100000;

// Pulse and gap durations of a NEC-style frame sending `data`, in microseconds.
QList<int> NecDurations(std::uint32_t data) {
  QList<int> durations{9000, 4500};
  for (int bit = 0; bit < 32; ++bit) durations << 560 << ((data >> bit) & 1 ? 1690 : 560);
  durations << 560 << 40000;
  return durations;
}

QString Joined(const QList<int>& numbers) {
  QStringList texts;
  for (const int number : numbers) texts << QString::number(number);
  return texts.join(u' ');
}

QByteArray ProntoFile() {
  const auto corpus = norva::bench::InfraRedCorpus();
  QByteArray file = "name\tcode\n";
  for (int i = 0; i < CodeCount; ++i)
    file += QStringLiteral("Code %1\t%2\n").arg(i).arg(corpus[i % corpus.size()].second).toUtf8();
  return file;
}

QByteArray SendirFile() {
  QByteArray file;
  for (int i = 0; i < CodeCount; ++i) {
    QList<int> periods;
    for (const int microseconds : NecDurations(static_cast<std::uint32_t>(i)))
      periods << microseconds * 38 / 1000;
    file += QStringLiteral("Code %1\tsendir,1:1,%1,38000,1,1,").arg(i).toUtf8() +
            Joined(periods).replace(u' ', u',').toUtf8() + '\n';
  }
  return file;
}

// A Flipper remote file of one block a code.
QByteArray FlipperFile(QString (*block)(int code)) {
  QByteArray file = "Filetype: IR signals file\nVersion: 1\n";
  for (int i = 0; i < CodeCount; ++i) file += block(i).toUtf8();
  return file;
}

// A held button as a learning receiver records it: the frame and two ditto frames.
QString RawBlock(int code) {
  return QStringLiteral(
             "#\nname: Code %1\ntype: raw\nfrequency: 38000\nduty_cycle: 0.33\n"
             "data: %2 9000 2250 560 96000 9000 2250 560\n")
      .arg(code)
      .arg(Joined(NecDurations(static_cast<std::uint32_t>(code))));
}

QString ParsedBlock(int code) {
  return QStringLiteral(
             "#\nname: Code %1\ntype: parsed\nprotocol: NEC\naddress: %2 00 00 00\n"
             "command: %3 00 00 00\n")
      .arg(code)
      .arg(code % 256, 2, 16, QLatin1Char('0'))
      .arg(code / 256 % 256, 2, 16, QLatin1Char('0'));
}

QByteArray FlipperRawFile() { return FlipperFile(&RawBlock); }
QByteArray FlipperParsedFile() { return FlipperFile(&ParsedBlock); }

struct TGeneratedFile {
  const char* Name;
  QByteArray (*Make)();
};
const TGeneratedFile GeneratedFiles[] = {{"pronto.tsv", &ProntoFile},
                                         {"sendir.txt", &SendirFile},
                                         {"flipper-raw.ir", &FlipperRawFile},
                                         {"flipper-parsed.ir", &FlipperParsedFile}};

// Written once into this run's own folder, read back for every import.
QString GeneratedPath(const TGeneratedFile& generated) {
  static const QTemporaryDir folder;
  const QString path = folder.filePath(QLatin1String(generated.Name));
  if (!QFile::exists(path)) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(generated.Make()) < 0)
      throw std::runtime_error("cannot write a generated code file");
  }
  return path;
}

QByteArray FileBytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void ImportGeneratedFile(benchmark::State& state) {
  const TGeneratedFile& generated = GeneratedFiles[state.range(0)];
  const QString path = GeneratedPath(generated);
  state.SetLabel(generated.Name);
  norva::TCodeImportResult result;
  for (auto _ : state) {
    // Reading the file and importing it is timed; making and dropping the library is not.
    state.PauseTiming();
    auto database = std::make_unique<norva::TIRDB>(path + QStringLiteral(".xml"), false);
    state.ResumeTiming();
    result = norva::ImportCodeFile(*database, FileBytes(path),
                                   {path, QStringLiteral("Acme"), QStringLiteral("TV"), {}});
    norva::MaintainUndo();
    state.PauseTiming();
    norva::Undo().Empty();
    database.reset();
    state.ResumeTiming();
  }
  state.counters["added"] = result.Added;
  state.counters["refused"] = static_cast<double>(result.Refusals.size());
}
BENCHMARK(ImportGeneratedFile)->DenseRange(0, 3)->Iterations(1)->Unit(benchmark::kMillisecond);

// The measurement over real Flipper files.
struct TCorpusFigures {
  int Files = 0, Entries = 0, Added = 0, Refused = 0;
  QMap<QString, int> RefusedByReason;  // digits masked, so that one failure counts as one reason
  int Captures = 0, CapturesOK = 0;
  int Explained = 0, ExplainedAlike = 0, ExplainedAmongDecodes = 0;
  int Pairs = 0, PairsAlike = 0;
  QStringList Differences;
};

// Protocol and parameters, the toggle aside; empty for a code no protocol explains.
QString DecodeKey(norva::TIRDecode decode) {
  if (!decode.IsKnown()) return {};
  decode.Parameters.T.reset();
  return norva::DecodeText(decode);
}

QStringList DecodeKeys(const QList<norva::TIRDecode>& decodes) {
  QStringList keys;
  for (const norva::TIRDecode& decode : decodes) keys << DecodeKey(decode);
  return keys;
}

// The most likely decode of a stream or signal, or empty.
QString FirstKey(const QList<norva::TIRDecode>& decodes) {
  return decodes.isEmpty() ? QString() : DecodeKey(decodes[0]);
}

// A capture's stream against its first frame: the first frame alone cannot tell a protocol that
// repeats its frame from one that sends it once, so a decode among the stream's others counts
// apart from the most likely one.
void CompareWithFirstFrame(const QString& button, const norva::TRawCapture& capture,
                           const norva::TIRStreamData& stream, TCorpusFigures& figures) {
  const QString first = FirstKey(
      norva::DecodeIRSignal(capture.FrequencyHz, norva::CaptureFrames(capture.Microseconds)[0]));
  if (first.isEmpty()) return;
  ++figures.Explained;
  const QStringList stored = DecodeKeys(norva::DecodeIRStream(stream));
  if (stored.value(0) == first)
    ++figures.ExplainedAlike;
  else if (stored.contains(first))
    ++figures.ExplainedAmongDecodes;
  else
    figures.Differences << button + ": first frame " + first + ", stored " + stored.value(0);
}

void MeasureCaptures(const QString& file, const norva::TCodeFileEntries& read,
                     TCorpusFigures& figures) {
  QMap<QString, QString> rawDecodes, parsedDecodes;
  for (const norva::TCodeFileEntry& entry : read.Entries) {
    if (const auto* capture = std::get_if<norva::TRawCapture>(&entry.Code)) {
      ++figures.Captures;
      try {
        const norva::TIRStreamData stream =
            norva::CaptureStream(capture->FrequencyHz, capture->Microseconds);
        if (stream.Status() != QStringLiteral("OK")) continue;
        ++figures.CapturesOK;
        rawDecodes.insert(entry.Name, FirstKey(norva::DecodeIRStream(stream)));
        CompareWithFirstFrame(file + ": " + entry.Name, *capture, stream, figures);
      } catch (const norva::ENorvaError&) {
        // a capture that gives no stream does not load: it is counted among the captures only
      }
    } else if (const auto* code = std::get_if<norva::TProtocolCode>(&entry.Code)) {
      try {
        parsedDecodes.insert(entry.Name, FirstKey(norva::DecodeIRStream(norva::EncodeIRStream(
                                             code->Protocol, code->Parameters))));
      } catch (const norva::ENorvaError&) {
        // a code the engine does not build has no decode to compare
      }
    }
  }
  for (auto raw = rawDecodes.begin(); raw != rawDecodes.end(); ++raw) {
    if (!parsedDecodes.contains(raw.key())) continue;
    ++figures.Pairs;
    if (raw.value() == parsedDecodes.value(raw.key()))
      ++figures.PairsAlike;
    else
      figures.Differences << file + ": " + raw.key() + ": learnt " + raw.value() + ", parsed " +
                                 parsedDecodes.value(raw.key());
  }
}

void MeasureFile(const QString& path, TCorpusFigures& figures) {
  const QByteArray bytes = FileBytes(path);
  const norva::TCodeFileFormat* format = norva::FindCodeFileFormat(bytes);
  if (!format) return;
  ++figures.Files;
  const norva::TCodeFileEntries read = format->Read(bytes, path);
  figures.Entries += static_cast<int>(read.Entries.size() + read.Refusals.size());
  norva::TIRDB database(path + QStringLiteral(".xml"), false);
  const norva::TCodeImportResult result = norva::ImportCodeFile(
      database, bytes, {path, QStringLiteral("Make"), QFileInfo(path).baseName(), {}});
  figures.Added += result.Added;
  figures.Refused += static_cast<int>(result.Refusals.size());
  for (const norva::TCodeFileRefusal& refusal : result.Refusals)
    ++figures.RefusedByReason[QString(refusal.Reason).replace(QRegularExpression("\\d+"), "N")];
  MeasureCaptures(QFileInfo(path).fileName(), read, figures);
}

void Report(const TCorpusFigures& f) {
  std::printf("files %d, entries %d, added %d, refused %d\n", f.Files, f.Entries, f.Added,
              f.Refused);
  for (auto reason = f.RefusedByReason.begin(); reason != f.RefusedByReason.end(); ++reason)
    std::printf("  refused %d: %s\n", reason.value(), qPrintable(reason.key()));
  std::printf("learnt captures %d, status OK %d (%.1f %%)\n", f.Captures, f.CapturesOK,
              100.0 * f.CapturesOK / std::max(1, f.Captures));
  std::printf(
      "explained by a protocol %d: stored stream decodes first as the first frame %d, with that "
      "decode among its others %d\n",
      f.Explained, f.ExplainedAlike, f.ExplainedAmongDecodes);
  std::printf("buttons both learnt and parsed %d, decoding alike %d\n", f.Pairs, f.PairsAlike);
  for (const QString& difference : f.Differences)
    std::printf("  differs: %s\n", qPrintable(difference));
}

void MeasureFlipperCorpus(benchmark::State& state) {
  const QString folder = qEnvironmentVariable("NORVA_FLIPPER_CORPUS");
  if (folder.isEmpty() || !QDir(folder).exists()) {
    state.SkipWithError("NORVA_FLIPPER_CORPUS names no folder of Flipper remote files");
    return;
  }
  norva::DisableUndo();
  TCorpusFigures figures;
  for (auto _ : state) {
    figures = {};
    for (const QString& name : QDir(folder).entryList({QStringLiteral("*.ir")}, QDir::Files))
      MeasureFile(QDir(folder).filePath(name), figures);
  }
  norva::EnableUndo();
  Report(figures);
  state.counters["captures_ok_percent"] =
      100.0 * figures.CapturesOK / std::max(1, figures.Captures);
}
BENCHMARK(MeasureFlipperCorpus)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
