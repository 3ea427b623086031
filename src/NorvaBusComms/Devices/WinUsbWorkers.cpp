#include <NorvaBusComms/Devices/WinUsbWorkers.h>
#include <NorvaGlobal/DebugOutput.h>

#include <QElapsedTimer>

namespace norva {

namespace {
// Reads and writes wait in short slices so that Close() never waits long for a worker.
constexpr int SliceMs = 50;
}  // namespace

TWinUSBRXEventHandler::TWinUSBRXEventHandler(QObject* window, TWinUsbInterface& usb,
                                             std::uint16_t pipeId, std::uint32_t generation)
    : TRXEventHandler(window, -1, generation, "TWinUSBRXEventHandler"),
      mWinUSBHandle(usb),
      mPipeID(pipeId) {
  Start();
}

void TWinUSBRXEventHandler::Execute() {
  while (!Terminated()) {
    rx_buf_len = 0;
    const int count = mWinUSBHandle.ReadPipe(static_cast<std::uint8_t>(mPipeID), rx_buf.data(),
                                             BufferSize, SliceMs);
    if (count < 0) {
      if (!Terminated()) PostError(mWinUSBHandle.LastError());
      return;
    }
    rx_buf_len = count;
    SignalReceive(mPipeID);  // nothing is posted for an empty read
  }
}

TWinUSBTXEventHandler::TWinUSBTXEventHandler(QObject* window, TWinUsbInterface& usb,
                                             std::uint16_t pipeId, std::uint32_t generation)
    : TTXEventHandler(window, -1, generation, "TWinUSBTXEventHandler"),
      mWinUSBHandle(usb),
      mPipeID(pipeId) {
  Start();
}

void TWinUSBTXEventHandler::Execute() {
  while (!Terminated()) {
    WaitForItems();
    TTXItem item;
    while (!Terminated() && PopItem(item)) {
      bool ok = true;
      if (item.USBCommand != usb_no_command) {
        ok = SendControl(item);
      } else {
        for (qsizetype offset = 0; ok && offset < item.RawData.size(); offset += ChunkSize)
          ok = WriteChunk(item.RawData.constData() + offset,
                          static_cast<int>(std::min(ChunkSize, item.RawData.size() - offset)));
      }
      if (!ok) break;
    }
  }
  // The device learns that the host has let go.
  mWinUSBHandle.ControlTransfer({VendorRequestType, usb_closing, 0, 0, 0}, QByteArray());
}

bool TWinUSBTXEventHandler::SendControl(const TTXItem& item) {
  const QByteArray data = item.RawData.left(ControlDataLimit);
  const TWinUsbSetupPacket setup{VendorRequestType, static_cast<std::uint8_t>(item.USBCommand),
                                 item.wValue, item.wIndex, static_cast<std::uint16_t>(data.size())};
  if (mWinUSBHandle.ControlTransfer(setup, data)) return true;
  PostError(mWinUSBHandle.LastError());
  return false;
}

bool TWinUSBTXEventHandler::WriteChunk(const char* data, int size) {
  QElapsedTimer timer;
  timer.start();
  while (size > 0 && !Terminated()) {
    if (timer.elapsed() >= ChunkTimeoutMs) {
      DebugOutput(BusLog(), QStringLiteral("Write to pipe %1 abandoned after %2 ms")
                                .arg(mPipeID, 2, 16, QLatin1Char('0'))
                                .arg(ChunkTimeoutMs));
      return true;
    }
    const int written =
        mWinUSBHandle.WritePipe(static_cast<std::uint8_t>(mPipeID), data, size, SliceMs);
    if (written < 0) {
      PostError(mWinUSBHandle.LastError());
      return false;
    }
    data += written;
    size -= written;
  }
  return !Terminated();
}

}  // namespace norva
