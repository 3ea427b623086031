#include "PseudoTerminal.h"

#include <QElapsedTimer>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <unistd.h>

namespace norva::testing {

TPseudoTerminal::TPseudoTerminal() {
  char name[256] = {};
  termios raw{};
  cfmakeraw(&raw);
  if (openpty(&mMaster, &mSlave, name, &raw, nullptr) == 0) mPath = QString::fromLocal8Bit(name);
  fcntl(mMaster, F_SETFL, fcntl(mMaster, F_GETFL) | O_NONBLOCK);
}

TPseudoTerminal::~TPseudoTerminal() { HangUp(); }

termios TPseudoTerminal::Settings() const {
  termios settings{};
  tcgetattr(mMaster, &settings);
  return settings;
}

void TPseudoTerminal::Write(const QByteArray& bytes) {
  qsizetype offset = 0;
  while (offset < bytes.size()) {
    const ssize_t written = write(mMaster, bytes.constData() + offset, bytes.size() - offset);
    if (written > 0)
      offset += written;
    else
      usleep(1000);
  }
}

QByteArray TPseudoTerminal::ReadAvailable(int ms) {
  QByteArray result;
  char buffer[65536];
  for (;;) {
    pollfd fd{mMaster, POLLIN, 0};
    if (poll(&fd, 1, ms) <= 0) return result;
    const ssize_t count = read(mMaster, buffer, sizeof buffer);
    if (count <= 0) return result;
    result.append(buffer, count);
  }
}

QByteArray TPseudoTerminal::ReadExactly(qsizetype count) {
  QByteArray result;
  QElapsedTimer timer;
  timer.start();
  while (result.size() < count && timer.elapsed() < 5000) result += ReadAvailable(20);
  return result;
}

void TPseudoTerminal::HangUp() {
  if (mSlave >= 0) close(mSlave);
  if (mMaster >= 0) close(mMaster);
  mSlave = mMaster = -1;
}

}  // namespace norva::testing
