// Benchmarks run with a Qt application, as the library's clients do: waits pump its events.
#include <QCoreApplication>

#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
