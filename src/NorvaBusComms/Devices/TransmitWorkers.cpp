#include <NorvaBusComms/Devices/TransmitWorkers.h>
#include <NorvaGlobal/DebugOutput.h>

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdint>

namespace norva {

void TTXEventHandler::Send(const TTXItem& item) {
  {
    std::lock_guard lock(TransmitSync);
    TransmitQueue.push_back(item);
  }
  TXEvent.Set();
}

int TTXEventHandler::TXQueueLength() const {
  std::lock_guard lock(TransmitSync);
  return static_cast<int>(TransmitQueue.size());
}

void TTXEventHandler::Close() {
  RequestStop();
  TXEvent.Cancel();
  Join();
}

void TTXEventHandler::WaitForItems() {
  TXEvent.Wait();
  TXEvent.Reset();
}

bool TTXEventHandler::PopItem(TTXItem& item) {
  std::lock_guard lock(TransmitSync);
  if (TransmitQueue.empty()) return false;
  item = std::move(TransmitQueue.front());
  TransmitQueue.pop_front();
  return true;
}

std::chrono::milliseconds TComTXEventHandler::WriteTimeout(qsizetype bytes) {
  return std::chrono::milliseconds(WriteTimeoutPerByteMs * bytes + WriteTimeoutConstantMs);
}

TComTXEventHandler::TComTXEventHandler(QObject* window, int device, std::uint32_t generation)
    : TTXEventHandler(window, device, generation, "TComTXEventHandler") {
  Start();
}

void TComTXEventHandler::Execute() {
  while (!Terminated()) {
    WaitForItems();
    TTXItem item;
    while (!Terminated() && PopItem(item)) {
      if (item.USBCommand != usb_no_command) continue;  // a serial port has no command pipe
      if (!WriteAll(item.RawData)) return;
    }
  }
}

bool TComTXEventHandler::WriteAll(const QByteArray& bytes) {
  for (qsizetype offset = 0; offset < bytes.size(); offset += ChunkSize) {
    if (!WriteChunk(bytes.constData() + offset, std::min(ChunkSize, bytes.size() - offset)))
      return false;
  }
  return true;
}

bool TComTXEventHandler::WriteChunk(const char* data, qsizetype size) {
  const auto deadline = std::chrono::steady_clock::now() + WriteTimeout(size);
  while (size > 0) {
    if (Terminated()) return false;
    const ssize_t written = write(mDevice, data, static_cast<std::size_t>(size));
    if (written > 0) {
      data += written;
      size -= written;
      continue;
    }
    if (written < 0 && errno != EAGAIN && errno != EINTR) {
      PostError(errno);
      return false;
    }
    // The driver is full (or output is held by XOFF): wait until it takes more, until Close, or
    // until the port's write time-out has passed.
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0) {
      DebugOutput(BusLog(),
                  QStringLiteral("WriteFile: time-out with %1 bytes unwritten").arg(size));
      PostError(ETIMEDOUT);
      return false;
    }
    pollfd fds[2] = {{mDevice, POLLOUT, 0}, {mWake.Fd(), POLLIN, 0}};
    poll(fds, 2, static_cast<int>(std::min<std::int64_t>(left.count(), INT_MAX)));
    if (fds[0].revents & (POLLERR | POLLNVAL)) {
      PostError(EIO);
      return false;
    }
  }
  return true;
}

}  // namespace norva
