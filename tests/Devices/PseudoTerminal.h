#pragma once
// A bare pseudo-terminal pair for tests that play the device side by hand. The test holds the
// master; the library opens the slave by path. Settings are only ever read on the master.

#include <QByteArray>
#include <QString>

#include <termios.h>

namespace norva::testing {

class TPseudoTerminal {
 public:
  TPseudoTerminal();
  ~TPseudoTerminal();
  TPseudoTerminal(const TPseudoTerminal&) = delete;
  TPseudoTerminal& operator=(const TPseudoTerminal&) = delete;

  const QString& Path() const { return mPath; }
  // The line settings as the slave side has them.
  termios Settings() const;
  void Write(const QByteArray& bytes);
  // Reads what arrived within `ms` milliseconds of quiet.
  QByteArray ReadAvailable(int ms = 50);
  // Reads until `count` bytes arrived (or 5 s passed).
  QByteArray ReadExactly(qsizetype count);
  // Closes the master: the slave's device node disappears, as an unplugged adapter's does.
  void HangUp();

 private:
  int mMaster = -1;
  int mSlave = -1;
  QString mPath;
};

}  // namespace norva::testing
