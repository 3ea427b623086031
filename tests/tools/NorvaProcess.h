#pragma once
// Runs the built norva tool as an installer would: a real process, with its exit code and output.

#include <QProcess>
#include <QString>
#include <QStringList>

namespace norva::testing {

struct TRun {
  int ExitCode = -1;
  QString Out;
  QString Err;
};

inline TRun Norva(const QStringList& arguments, const QByteArray& input = {}) {
  QProcess process;
  process.start(QStringLiteral(NORVA_BINARY_DIR "/tools/norva/norva"), arguments);
  process.waitForStarted();
  process.write(input);
  process.closeWriteChannel();
  process.waitForFinished(30000);
  return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
          QString::fromUtf8(process.readAllStandardError())};
}

}  // namespace norva::testing
