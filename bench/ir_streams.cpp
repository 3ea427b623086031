// Infra-red streams: reading the real codes of the corpus as hex codes (codes per second, at
// least 300,000 on one core), writing them back, and building every native stream of every zone
// (at most 1 us a stream, so that a public database's 14,000 are built well under 50 ms).
#include <IR/IR.h>
#include <NorvaGlobal/Exceptions.h>
#include <NorvaGlobal/Vocabulary.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <support/Corpus.h>

#include <benchmark/benchmark.h>

namespace {

QStringList Codes() {
  QStringList codes;
  for (const auto& [name, code] : norva::bench::InfraRedCorpus()) codes << code;
  return codes;
}

void SetHexCodeOverTheCorpus(benchmark::State& state) {
  norva::DisableUndo();
  const QStringList codes = Codes();
  norva::TIRStream stream;
  for (auto _ : state) {
    for (const QString& code : codes) {
      try {
        stream.SetHexCode(code);
      } catch (const norva::ENorvaError&) {
      }
    }
  }
  state.SetItemsProcessed(state.iterations() * codes.size());
  norva::EnableUndo();
}
BENCHMARK(SetHexCodeOverTheCorpus)->Unit(benchmark::kMicrosecond);

void GetHexCodeOverTheCorpus(benchmark::State& state) {
  norva::DisableUndo();
  std::vector<std::unique_ptr<norva::TIRStream>> streams;
  for (const QString& code : Codes()) {
    auto stream = std::make_unique<norva::TIRStream>();
    stream->SetHexCode(code);
    // An unmodulated code has no hex code to write.
    if (stream->GetModulationPeriod() != 0) streams.push_back(std::move(stream));
  }
  for (auto _ : state) {
    for (const auto& stream : streams) benchmark::DoNotOptimize(stream->GetHexCode().size());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(streams.size()));
  norva::EnableUndo();
}
BENCHMARK(GetHexCodeOverTheCorpus)->Unit(benchmark::kMicrosecond);

// Every command, for all zones and each of the 96, as an amplifier command: 90 x 97 streams.
void SetNorvaForEveryCommandAndZone(benchmark::State& state) {
  norva::DisableUndo();
  norva::TNorvaIRStream stream;
  std::int64_t built = 0;
  for (auto _ : state) {
    for (int command = norva::nvStandbyCmd; command <= norva::nvAlarmSleep; ++command) {
      for (int zone = -1; zone <= norva::MaxZone; ++zone) {
        stream.SetNorva(zone, static_cast<norva::TNorvaCommand>(command), norva::AmpCommand);
        ++built;
      }
    }
  }
  state.SetItemsProcessed(built);
  norva::EnableUndo();
}
BENCHMARK(SetNorvaForEveryCommandAndZone)->Unit(benchmark::kMillisecond);

}  // namespace
