#include <NorvaBusComms/Devices/TransmitWorkers.h>

#include <poll.h>
#include <unistd.h>

#include <cerrno>

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
  TXEvent.Set();
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
    // The driver is full (or output is held by XOFF): wait until it takes more, or until Close.
    pollfd fds[2] = {{mDevice, POLLOUT, 0}, {mWake.Fd(), POLLIN, 0}};
    poll(fds, 2, -1);
    if (fds[0].revents & (POLLERR | POLLNVAL)) {
      PostError(EIO);
      return false;
    }
  }
  return true;
}

}  // namespace norva
