#pragma once
// Runs the norva tool from the build tree as an installer would: a real process, its standard
// input given, its exit code and both outputs kept.

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

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
