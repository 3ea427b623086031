// The protocol engine over real codes: decoding the corpus's 320 codes as streams (codes per
// second, at least 100,000 on one core), encoding the labelled rows of the protocols the table
// knows (at least 500,000 per second), and how many learnt Flipper captures decode to a protocol
// (the counter `decoded`, a share) and how many labelled codes decode to their label (`agree`).
#include <IR/IR.h>
#include <NorvaGlobal/Exceptions.h>
#include <support/Corpus.h>

#include <QFile>

#include <benchmark/benchmark.h>

namespace {

QByteArrayList Lines(const char* path) {
  QFile file(QString::fromUtf8(path));
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error(path);
  return file.readAll().split('\n');
}

std::vector<norva::TIRStreamData> CorpusStreams() {
  std::vector<norva::TIRStreamData> streams;
  for (const auto& [name, code] : norva::bench::InfraRedCorpus()) {
    try {
      if (const auto stream = norva::ParseHexCode(code)) streams.push_back(*stream);
    } catch (const norva::ENorvaError&) {
    }
  }
  return streams;
}

struct TLabelled {
  QString Protocol;
  norva::TIRProtocolParameters Parameters;
  QString Code;
};

std::optional<std::int64_t> Field(const QByteArray& text) {
  if (text.isEmpty()) return std::nullopt;
  return text.toLongLong();
}

// The rows of tests/data/ir/girrlib-protocols.tsv whose protocol the table knows.
std::vector<TLabelled> LabelledCodes() {
  std::vector<TLabelled> rows;
  for (const QByteArray& line : Lines(NORVA_SOURCE_DIR "/tests/data/ir/girrlib-protocols.tsv")) {
    const QByteArrayList fields = line.split('\t');
    if (fields.size() < 7) continue;
    const QString protocol = norva::FindIRProtocol(QString::fromUtf8(fields[1]));
    if (protocol.isEmpty()) continue;
    rows.push_back({protocol,
                    {Field(fields[2]), Field(fields[3]), Field(fields[4]), Field(fields[5])},
                    QString::fromUtf8(fields[6])});
  }
  return rows;
}

struct TCapture {
  double Frequency = 0;
  QList<double> Microseconds;
};

std::vector<TCapture> FlipperCaptures() {
  std::vector<TCapture> captures;
  for (const QByteArray& line : Lines(NORVA_SOURCE_DIR "/tests/data/ir/flipper-raw.ir")) {
    if (line.startsWith("name:")) captures.emplace_back();
    if (line.startsWith("frequency:"))
      captures.back().Frequency = line.mid(10).trimmed().toDouble();
    if (line.startsWith("data:"))
      for (const QByteArray& duration : line.mid(5).trimmed().split(' '))
        captures.back().Microseconds << duration.toDouble();
  }
  return captures;
}

void DecodeCorpusStreams(benchmark::State& state) {
  const std::vector<norva::TIRStreamData> streams = CorpusStreams();
  for (auto _ : state)
    for (const norva::TIRStreamData& stream : streams)
      benchmark::DoNotOptimize(norva::DecodeIRStream(stream).size());
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(streams.size()));
}
BENCHMARK(DecodeCorpusStreams)->Unit(benchmark::kMicrosecond);

// The labelled rows whose stated parameters are enough to encode (a file may state a parameter
// once for the whole remote, and leave it out of its codes).
std::vector<TLabelled> EncodableRows() {
  std::vector<TLabelled> rows;
  for (const TLabelled& row : LabelledCodes()) {
    try {
      norva::EncodeIRStream(row.Protocol, row.Parameters);
      rows.push_back(row);
    } catch (const norva::ENorvaError&) {
    }
  }
  return rows;
}

void EncodeLabelledRows(benchmark::State& state) {
  const std::vector<TLabelled> rows = EncodableRows();
  for (auto _ : state)
    for (const TLabelled& row : rows)
      benchmark::DoNotOptimize(norva::EncodeIRStream(row.Protocol, row.Parameters).Format);
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(rows.size()));
}
BENCHMARK(EncodeLabelledRows)->Unit(benchmark::kMicrosecond);

// Runs `fits` over every item, and reports the share that fit as the counter `name`.
template <class Item, class Fits>
void MeasureShare(benchmark::State& state, const std::vector<Item>& items, const char* name,
                  Fits fits) {
  int count = 0;
  for (auto _ : state) {
    count = 0;
    for (const Item& item : items) count += fits(item) ? 1 : 0;
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(items.size()));
  state.counters[name] = static_cast<double>(count) / static_cast<double>(items.size());
}

void DecodeFlipperCaptures(benchmark::State& state) {
  MeasureShare(state, FlipperCaptures(), "decoded", [](const TCapture& capture) {
    return norva::DecodeIRSignal(capture.Frequency, capture.Microseconds).front().IsKnown();
  });
}
BENCHMARK(DecodeFlipperCaptures)->Unit(benchmark::kMillisecond);

// Whether `decoded` holds every parameter the label states (a file leaves out those it states once
// for the whole remote, or that have their default).
bool HoldsStated(const norva::TIRProtocolParameters& decoded,
                 const norva::TIRProtocolParameters& stated) {
  const auto holds = [](const std::optional<std::int64_t>& value,
                        const std::optional<std::int64_t>& label) {
    return !label || value == label;
  };
  return holds(decoded.D, stated.D) && holds(decoded.S, stated.S) && holds(decoded.F, stated.F) &&
         holds(decoded.T, stated.T);
}

void DecodeLabelledCodes(benchmark::State& state) {
  MeasureShare(state, LabelledCodes(), "agree", [](const TLabelled& row) {
    const norva::TIRDecode first = norva::DecodeIRStream(*norva::ParseHexCode(row.Code)).front();
    return first.Protocol == row.Protocol && HoldsStated(first.Parameters, row.Parameters);
  });
}
BENCHMARK(DecodeLabelledCodes)->Unit(benchmark::kMillisecond);

}  // namespace
