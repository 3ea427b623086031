// Test programs run with a Qt application, as the library's clients do: waits pump its events.
#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
