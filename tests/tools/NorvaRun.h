#pragma once
// The norva tool and the device simulator as the tool suites run them: real processes, their exit
// codes and their output.

#include "IR_Database/FileContents.h"

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QThread>

#include <gtest/gtest.h>

struct TRun {
  int ExitCode = -1;
  QString Out;
  QString Err;
};

inline TRun Norva(
    const QStringList& arguments, const QByteArray& input = {},
    const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment()) {
  QProcess process;
  process.setProcessEnvironment(environment);
  process.start(QStringLiteral(NORVA_BINARY_DIR "/tools/norva/norva"), arguments);
  process.waitForStarted();
  process.write(input);
  process.closeWriteChannel();
  process.waitForFinished(30000);
  return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
          QString::fromUtf8(process.readAllStandardError())};
}

// A simulator for the live commands, as the main job runs it: `pty` and `tcp` name its links.
class NorvaSimulatorTest : public ::testing::Test {
 protected:
  void SetUp() override {
    simulator.start(QStringLiteral(NORVA_BINARY_DIR "/tools/norva-sim/norva-sim"),
                    {"--seconds", "60"});
    ASSERT_TRUE(simulator.waitForStarted());
    QString announced;
    while (!announced.contains("tcp: ") && simulator.waitForReadyRead(5000))
      announced += QString::fromUtf8(simulator.readAll());
    for (const QString& line : announced.split(u'\n')) {
      if (line.startsWith("pty: ")) pty = line.mid(5).trimmed();
      if (line.startsWith("tcp: ")) tcp = QStringLiteral("127.0.0.1:") + line.mid(5).trimmed();
    }
    ASSERT_FALSE(pty.isEmpty());
    ASSERT_FALSE(tcp.isEmpty());
  }
  void TearDown() override {
    simulator.write("quit\n");
    simulator.waitForFinished(5000);
  }
  // A line to the simulator's console, given time to take effect.
  void Tell(const char* line) {
    simulator.write(line);
    simulator.waitForBytesWritten(5000);
    QThread::msleep(200);
  }

  QProcess simulator;
  QString pty;
  QString tcp;
};
