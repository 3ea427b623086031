// Benchmarks of widgets run with a widget application on Qt's offscreen platform.
#include "RunBenchmarks.h"

#include <QApplication>

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  return RunBenchmarks(argc, argv);
}
