// The cost of undoable editing: recording one property change, reverting a large step, and
// destroying a large document while the histories are full.
#include "support/BenchModel.h"

#include <OrbGlobal/Model/OrbObject.h>
#include <OrbGlobal/Model/OrbObjectList.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <benchmark/benchmark.h>

#include <memory>

namespace bench {

void EmptyHistories() {
  norva::Undo().Empty();
  norva::Redo().Empty();
}

// Updating + entry + store + Updated, climbing to the document. The history is emptied (outside
// the timing) every so often so that it does not grow without bound.
template <typename TEdit>
void MeasurePropertyChange(benchmark::State& state, TEdit edit) {
  TBenchDocument document;
  document.Fill(1);
  TBenchItem* item = document.Item(0);
  int value = 0;
  for (auto _ : state) {
    edit(*item, ++value);
    if ((value & 0xFFFF) == 0) {
      state.PauseTiming();
      EmptyHistories();
      state.ResumeTiming();
    }
  }
  EmptyHistories();
}

void BM_RecordOrdinalChange(benchmark::State& state) {
  MeasurePropertyChange(state, [](TBenchItem& item, int value) { item.SetCount(value); });
}
BENCHMARK(BM_RecordOrdinalChange);

void BM_RecordStringChange(benchmark::State& state) {
  const QString titles[] = {QStringLiteral("Kitchen"), QStringLiteral("Hall")};
  MeasurePropertyChange(state,
                        [&](TBenchItem& item, int value) { item.SetTitle(titles[value & 1]); });
}
BENCHMARK(BM_RecordStringChange);

// One undo step of 10,000 entries (changes of 10,000 items); the reverse entries go to Redo.
void BM_RevertStepOf10000Entries(benchmark::State& state) {
  constexpr int Entries = 10000;
  TBenchDocument document;
  document.Fill(Entries);
  int value = 0;
  for (auto _ : state) {
    state.PauseTiming();
    ++value;
    for (int i = 0; i < Entries; ++i) document.Item(i)->SetCount(value);
    norva::MaintainUndo();
    state.ResumeTiming();
    norva::Undo().Revert();
    state.PauseTiming();
    EmptyHistories();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_RevertStepOf10000Entries)->Unit(benchmark::kMillisecond);

// A document of 20,000 items destroyed while the histories hold 200,000 entries about them:
// every destroyed object purges its own entries from both histories.
void BM_DestroyTreeWithFullHistories(benchmark::State& state) {
  constexpr int Objects = 20000;
  constexpr int ChangesPerObject = 10;
  for (auto _ : state) {
    state.PauseTiming();
    auto document = std::make_unique<TBenchDocument>();
    document->Fill(Objects);
    for (int change = 1; change <= ChangesPerObject; ++change) {
      for (int i = 0; i < Objects; ++i) document->Item(i)->SetCount(change);
      norva::MaintainUndo();
    }
    // Half of it undone: both histories hold entries of the document's objects.
    for (int step = 0; step < ChangesPerObject / 2; ++step) norva::Undo().Revert();
    state.counters["entries"] = norva::Undo().Count() + norva::Redo().Count();
    state.ResumeTiming();
    document.reset();
    state.PauseTiming();
    if (norva::Undo().Count() + norva::Redo().Count() != 0) state.SkipWithError("entries left");
    state.ResumeTiming();
  }
}
BENCHMARK(BM_DestroyTreeWithFullHistories)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace bench
