#include <NorvaBusComms/Devices/BusMessages.h>
#include <NorvaBusComms/Devices/ReceiveWorkers.h>
#include <NorvaGlobal/DebugOutput.h>

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace norva {

namespace {
QString SystemText(int code) { return QString::fromLocal8Bit(std::strerror(code)); }

}  // namespace

bool TRXEventHandler::SignalReceive(int kind) {
  if (rx_buf_len <= 0 || rx_buf_len >= OversizedRead || Terminated()) return false;
  BeforeHandOver();
  // Close() may come at any point from here on: it cancels the event, which no reset undoes, so the
  // wait below returns whenever the stop was asked for.
  rx_buf_sync.Reset();
  mBufferWaiting = true;
  Post(RXEventMessage, kind);
  return rx_buf_sync.Wait();
}

void TRXEventHandler::TakeBuffer(QByteArray& appendTo) {
  // Only a worker that posted and waits has a buffer to give; a late message finds none.
  if (!mBufferWaiting.exchange(false)) return;
  appendTo.append(rx_buf.data(), rx_buf_len);
  rx_buf_sync.Set();
}

void TRXEventHandler::Close() {
  RequestStop();
  rx_buf_sync.Cancel();
  Join();
}

TComRXEventHandle::TComRXEventHandle(QObject* window, int device, std::uint32_t generation)
    : TRXEventHandler(window, device, generation, "TComRXEventHandle") {
  Start();
}

void TComRXEventHandle::Execute() {
  while (!Terminated()) {
    pollfd fds[2] = {{mDevice, POLLIN, 0}, {mWake.Fd(), POLLIN, 0}};
    if (poll(fds, 2, -1) < 0) {
      if (errno == EINTR) continue;
      DebugOutput(BusLog(), QStringLiteral("WaitCommEvent: ") + SystemText(errno));
      PostError(errno);
      return;
    }
    if (Terminated() || fds[1].revents) return;
    if ((fds[0].revents & POLLIN) && !ReadAvailable()) return;
    // The other end hung up (what is left to read has been read above).
    if (fds[0].revents & (POLLHUP | POLLERR | POLLNVAL)) {
      PostError(ENODEV);
      return;
    }
  }
}

bool TComRXEventHandle::ReadAvailable() {
  while (!Terminated()) {
    rx_buf_len = 0;
    const ssize_t count = read(mDevice, rx_buf.data(), rx_buf.size());
    if (count > 0) {
      rx_buf_len = static_cast<int>(count);
      SignalReceive(0);
      continue;
    }
    // A raw tty read with nothing waiting returns 0, not EAGAIN; a hang-up shows in poll().
    if (count == 0) return true;
    if (errno == EAGAIN || errno == EINTR) return true;
    // On a tty every other read error is lasting (EIO, ENODEV: the adapter is gone); going on
    // would only spin on the same error.
    const int code = errno;
    DebugOutput(BusLog(), QStringLiteral("ReadFile: ") + SystemText(code));
    PostError(code);
    return false;
  }
  return false;
}

}  // namespace norva
