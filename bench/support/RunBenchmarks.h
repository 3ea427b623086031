#pragma once
// What every benchmark program does once its Qt application exists.
#include <benchmark/benchmark.h>
#include <malloc.h>

inline int RunBenchmarks(int argc, char** argv) {
  // Freed memory stays with the process, so that a figure does not depend on which benchmark ran
  // before it: on a virtual machine, faulting in pages the allocator handed back costs more than
  // the work measured (pugixml parsing alone took 27 ms after another benchmark, 2.4 s first).
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  mallopt(M_MMAP_THRESHOLD, 32 << 20);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
