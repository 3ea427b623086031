#pragma once
// Widget suites need no display: gtest_discover_tests runs each suite right after linking, outside
// ctest's environment, so a suite that includes this header picks the offscreen platform itself
// (before main creates the QApplication) unless the environment names one.

#include <QtGlobal>

namespace norva::testing {

inline const bool OffscreenPlatformChosen = [] {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  return true;
}();

}  // namespace norva::testing
