#include <NorvaBusComms/Devices/SerialPort.h>

#include <QSerialPortInfo>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>

namespace norva {

namespace {
constexpr cc_t XonCharacter = 0x11;
constexpr cc_t XoffCharacter = 0x13;

TPlatformResult Fail(int& fd, const QString& message) {
  TPlatformResult failure = TPlatformResult::Failure(errno, message);
  if (fd >= 0) close(fd);
  fd = -1;
  return failure;
}

// Line settings: 9600 8N1 in raw binary mode, no parity checking, no hardware handshake.
bool SetLineState(int fd, bool softwareFlowControl) {
  termios settings{};
  if (tcgetattr(fd, &settings) != 0) return false;
  cfmakeraw(&settings);
  cfsetispeed(&settings, B9600);
  cfsetospeed(&settings, B9600);
  settings.c_cflag &= ~static_cast<tcflag_t>(CSIZE | PARENB | CSTOPB | CRTSCTS);
  settings.c_cflag |= CS8 | CREAD | CLOCAL;
  settings.c_iflag &= ~static_cast<tcflag_t>(IXON | IXOFF | IXANY | INPCK);
  if (softwareFlowControl) {
    settings.c_iflag |= IXON | IXOFF;
    settings.c_cc[VSTART] = XonCharacter;
    settings.c_cc[VSTOP] = XoffCharacter;
  }
  return tcsetattr(fd, TCSANOW, &settings) == 0;
}

// A read returns at once with what is buffered; waiting for the first byte is the worker's poll.
bool SetTimeouts(int fd) {
  termios settings{};
  if (tcgetattr(fd, &settings) != 0) return false;
  settings.c_cc[VMIN] = 0;
  settings.c_cc[VTIME] = 0;
  return tcsetattr(fd, TCSANOW, &settings) == 0;
}

// DTR and RTS off. Ports without modem lines (a pseudo-terminal) refuse this; that is no failure.
void DropModemLines(int fd) {
  const int lines = TIOCM_DTR | TIOCM_RTS;
  ioctl(fd, TIOCMBIC, &lines);
}
}  // namespace

TPlatformResult OpenSerialPort(const QString& path, bool softwareFlowControl, int& fd) {
  const QByteArray name = path.toLocal8Bit();
  fd = open(name.constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0 || !isatty(fd) || ioctl(fd, TIOCEXCL) != 0) {
    if (fd >= 0 && !isatty(fd)) errno = ENOTTY;
    return Fail(fd, QStringLiteral("Cannot open port ") + path);
  }
  if (!SetLineState(fd, softwareFlowControl))
    return Fail(fd, QStringLiteral("Error configuring serial port (SetCommState)"));
  if (!SetTimeouts(fd))
    return Fail(fd, QStringLiteral("Error configuring serial port (SetCommTimeouts)"));
  DropModemLines(fd);
  ioctl(fd, TIOCCBRK);
  tcflush(fd, TCIOFLUSH);
  return {};
}

QStringList SerialPortNames() {
  QStringList names;
  for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts())
    names << port.systemLocation();
  return names;
}

}  // namespace norva
