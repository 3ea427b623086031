// Memory of the object model: heap bytes per model object and per recorded undo entry, measured
// as the change of glibc's in-use heap (mallinfo2) over many of them, so that allocator overhead
// and Qt's private object data are included. Reported as counters; the times are incidental.
#include "support/BenchModel.h"

#include <OrbGlobal/Model/OrbObject.h>
#include <OrbGlobal/Model/OrbObjectList.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <memory>
#include <vector>

namespace bench {

constexpr int Count = 100000;

std::size_t HeapInUse() { return mallinfo2().uordblks; }

void Report(benchmark::State& state, std::size_t before, std::size_t after) {
  state.counters["heap_bytes_each"] = static_cast<double>(after - before) / Count;
}

void BM_BytesPerOrbObject(benchmark::State& state) {
  TBenchDocument document;
  for (auto _ : state) {
    std::vector<std::unique_ptr<norva::TOrbObject>> objects;
    objects.reserve(Count);
    const std::size_t before = HeapInUse();
    for (int i = 0; i < Count; ++i)
      objects.push_back(std::make_unique<norva::TOrbObject>(&document));
    Report(state, before, HeapInUse());
  }
  state.counters["sizeof_TOrbObject"] = sizeof(norva::TOrbObject);
}
BENCHMARK(BM_BytesPerOrbObject)->Unit(benchmark::kMillisecond)->Iterations(1);

// Entries of one object: the by-object index holds one node for all of them.
void BM_BytesPerOrdinalEntry(benchmark::State& state) {
  TBenchDocument document;
  auto* item = new TBenchItem(&document);
  document.Items().Add(item);
  for (auto _ : state) {
    norva::Undo().Empty();
    const std::size_t before = HeapInUse();
    for (int i = 1; i <= Count; ++i) item->SetCount(i);
    Report(state, before, HeapInUse());
  }
  norva::Undo().Empty();
}
BENCHMARK(BM_BytesPerOrdinalEntry)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_BytesPerStringEntry(benchmark::State& state) {
  TBenchDocument document;
  auto* item = new TBenchItem(&document);
  document.Items().Add(item);
  item->SetTitle(QStringLiteral("Kitchen ceiling speakers"));  // shared by every entry
  const QString other = QStringLiteral("Hall");
  for (auto _ : state) {
    norva::Undo().Empty();
    const std::size_t before = HeapInUse();
    for (int i = 0; i < Count / 2; ++i) {
      item->SetTitle(other);
      item->SetTitle(QStringLiteral("Kitchen ceiling speakers"));
    }
    Report(state, before, HeapInUse());
  }
  norva::Undo().Empty();
}
BENCHMARK(BM_BytesPerStringEntry)->Unit(benchmark::kMillisecond)->Iterations(1);

// One entry for each of many objects: each also costs a node of the by-object index.
void BM_BytesPerEntryOnDistinctObjects(benchmark::State& state) {
  TBenchDocument document;
  norva::DisableUndo();
  for (int i = 0; i < Count; ++i) document.Items().Add(new TBenchItem(&document));
  norva::EnableUndo(true);
  for (auto _ : state) {
    const std::size_t before = HeapInUse();
    for (int i = 0; i < Count; ++i) static_cast<TBenchItem*>(document.Items()[i])->SetCount(1);
    Report(state, before, HeapInUse());
  }
  norva::Undo().Empty();
}
BENCHMARK(BM_BytesPerEntryOnDistinctObjects)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace bench
