// Benchmarks run with a Qt application, as the library's clients do: waits pump its events.
#include "RunBenchmarks.h"

#include <QCoreApplication>

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  return RunBenchmarks(argc, argv);
}
