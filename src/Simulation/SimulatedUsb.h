#pragma once
// An in-process USB backend for tests and norva-sim: devices registered with a path and a hardware
// identifier, each with interface 0 and its pipes (by default bulk IN 0x82 and 0x83, bulk OUT 0x01
// and 0x04, 64-byte packets) and vendor control transfers.
//
// Two sides meet here. The host side is the TWinUsbInterface that Open returns; the bus's worker
// threads call it. The device side is TSimulatedUsbDevice's own API, called by a test or the
// simulator from any thread (usually the UI thread). Every call of either side is thread-safe.
// A blocked ReadPipe wakes as soon as data are pushed or the device is unplugged; nothing polls.

#include <libraries/WINUSB.h>

#include <QByteArray>
#include <QString>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace norva {

// One control transfer as the device received it.
struct TSimulatedControlTransfer {
  TWinUsbSetupPacket Setup;
  QByteArray Data;  // the data stage: the first Setup.Length bytes the host gave
};

// What the device has seen since it was created.
struct TSimulatedUsbCounters {
  int Opens = 0;              // interfaces opened
  int Closes = 0;             // interfaces freed
  int Reads = 0;              // host reads that returned data
  int Writes = 0;             // host writes that delivered data (not counting zero-length packets)
  int ZeroLengthPackets = 0;  // zero-length packets the host sent
  int ControlTransfers = 0;   // control transfers received (answered or stalled)
  int StallsCleared = 0;      // stalls cleared by the host's AutoClearStall policy
  int Flushes = 0;            // FlushPipe calls
  std::int64_t BytesIn = 0;   // bytes the host read
  std::int64_t BytesOut = 0;  // bytes the host wrote
};

class TSimulatedUsbDevice : public std::enable_shared_from_this<TSimulatedUsbDevice> {
 public:
  // Called on the host's thread (a bus worker) for each write to an OUT pipe, instead of queueing
  // the bytes. Handlers run without the device's lock held, so they may call PushIn; handlers for
  // writes on different pipes may run at the same time.
  using TWriteHandler = std::function<void(std::uint8_t pipeId, const QByteArray& bytes)>;
  // Called on the host's thread for each control transfer, instead of queueing it. Returning
  // false stalls the request: the host's ControlTransfer fails with EPIPE.
  using TControlHandler = std::function<bool(const TSimulatedControlTransfer& transfer)>;

  static std::shared_ptr<TSimulatedUsbDevice> Create(
      QString devicePath, QString hardwareId,
      std::vector<TWinUsbPipeInformation> pipes = DefaultPipes());
  // Bulk IN 0x82 and 0x83, bulk OUT 0x01 and 0x04, 64-byte packets.
  static std::vector<TWinUsbPipeInformation> DefaultPipes();

  TSimulatedUsbDevice(const TSimulatedUsbDevice&) = delete;
  TSimulatedUsbDevice& operator=(const TSimulatedUsbDevice&) = delete;
  ~TSimulatedUsbDevice();

  const QString& DevicePath() const { return mDevicePath; }
  const QString& HardwareId() const { return mHardwareId; }
  const std::vector<TWinUsbPipeInformation>& Pipes() const { return mPipes; }

  // Opens interface 0 as the backend does: ENODEV when unplugged, EBUSY while another interface
  // holds it, or the code given to SetOpenError; the text is the system's for the code.
  std::unique_ptr<TWinUsbInterface> Open(TPlatformResult& result);

  // --- Device side ---

  // Queues one device transfer on an IN pipe. A host read returns at most `length` bytes of the
  // first queued transfer and never joins two transfers; the rest of a longer one waits for the
  // next read. An empty `bytes` is a zero-length packet (that read returns 0). False when the
  // pipe is not an IN pipe or the device is unplugged.
  bool PushIn(std::uint8_t pipeId, const QByteArray& bytes);
  // What the host wrote to an OUT pipe (when no write handler is set), taken out of the queue:
  // all bytes joined, or one entry per write with an empty entry for each zero-length packet.
  QByteArray TakeWritten(std::uint8_t pipeId);
  std::vector<QByteArray> TakeWrites(std::uint8_t pipeId);
  // Waits until at least `bytes` bytes written to `pipeId` are queued; false on time-out.
  bool WaitForWritten(std::uint8_t pipeId, qsizetype bytes, int timeoutMs);
  // The control transfers received (when no control handler is set), taken out of the queue.
  std::vector<TSimulatedControlTransfer> TakeControlTransfers();
  bool WaitForControlTransfers(std::size_t count, int timeoutMs);
  // Waits until `count` host threads are blocked in ReadPipe on `pipeId`; false on time-out.
  bool WaitForReaders(std::uint8_t pipeId, int count, int timeoutMs);

  void SetWriteHandler(TWriteHandler handler);
  void SetControlHandler(TControlHandler handler);

  // Halts a pipe: host transfers on it fail with EPIPE until the host clears the stall, which
  // its AutoClearStall policy does (and then retries the transfer).
  void StallPipe(std::uint8_t pipeId);
  // While paused, the device takes nothing from an OUT pipe: host writes wait out their time-out
  // and return 0.
  void PauseOutPipe(std::uint8_t pipeId, bool paused);
  // Makes Open fail with `errorCode` (for example EACCES); 0 opens normally again.
  void SetOpenError(int errorCode);

  // The device disappears: pending and later host calls fail with ENODEV, queued IN data are
  // lost, it leaves the device list, and interfaces opened before stay dead after Replug.
  void Unplug();
  // The device comes back with the same path and identifier, ready to be opened again.
  void Replug();

  bool IsPlugged() const;
  bool IsOpen() const;  // an interface opened since the last plug-in is still alive
  std::size_t PendingIn(std::uint8_t pipeId) const;  // IN transfers queued and not yet read
  TSimulatedUsbCounters Counters() const;

 private:
  friend class TSimulatedUsbInterface;

  struct TPipeState {
    TWinUsbPipeInformation Info;
    std::deque<QByteArray> In;       // device transfers waiting for the host (IN pipes)
    std::deque<QByteArray> Written;  // what the host wrote (OUT pipes)
    bool Stalled = false;
    bool Paused = false;
    int WaitingReaders = 0;
  };
  using TClock = std::chrono::steady_clock;

  TSimulatedUsbDevice(QString devicePath, QString hardwareId,
                      std::vector<TWinUsbPipeInformation> pipes);

  // Host side, called by the interfaces. `generation` is the plug-in the interface was opened in.
  int HostRead(std::uint64_t generation, std::uint8_t pipeId, bool autoClearStall, char* buffer,
               int length, int timeoutMs, int& error);
  int HostWrite(std::uint64_t generation, std::uint8_t pipeId, bool autoClearStall,
                bool shortPacketTerminate, const char* data, int length, int timeoutMs, int& error);
  bool HostControl(std::uint64_t generation, const TWinUsbSetupPacket& setup,
                   const QByteArray& data, int& error);
  bool HostFlush(std::uint64_t generation, std::uint8_t pipeId, int& error);
  void HostClose(std::uint64_t generation);

  // Under mLock: the pipe for a transfer in the given direction, or nullptr.
  TPipeState* TransferPipe(std::uint8_t pipeId, bool in);
  bool Alive(std::uint64_t generation) const { return mPlugged && generation == mGeneration; }
  // Under mLock: clears a stall when allowed; false (error EPIPE) when the pipe stays halted.
  bool PassStall(TPipeState& pipe, bool autoClearStall, int& error);
  // Under mLock: the checks every bulk transfer starts with (arguments, device present, stall);
  // the pipe, or nullptr with `error` set.
  TPipeState* StartTransfer(std::uint64_t generation, std::uint8_t pipeId, bool in,
                            bool autoClearStall, const void* buffer, int length, int timeoutMs,
                            int& error);
  static TClock::time_point Deadline(int timeoutMs);
  bool WaitUntil(std::unique_lock<std::mutex>& lock, TClock::time_point deadline, bool unlimited,
                 const std::function<bool()>& ready);

  const QString mDevicePath;
  const QString mHardwareId;
  const std::vector<TWinUsbPipeInformation> mPipes;

  mutable std::mutex mLock;
  std::condition_variable mChanged;  // data pushed or taken, unplugged, readers waiting
  std::map<std::uint8_t, TPipeState> mPipeStates;
  std::deque<TSimulatedControlTransfer> mControlTransfers;
  TWriteHandler mWriteHandler;
  TControlHandler mControlHandler;
  bool mPlugged = true;
  std::uint64_t mGeneration = 1;
  bool mClaimed = false;  // by an interface of the current generation
  int mOpenError = 0;
  TSimulatedUsbCounters mCounters;
};

class TSimulatedUsbBackend final : public TUsbBackend {
 public:
  TSimulatedUsbBackend() = default;
  TSimulatedUsbBackend(const TSimulatedUsbBackend&) = delete;
  TSimulatedUsbBackend& operator=(const TSimulatedUsbBackend&) = delete;
  ~TSimulatedUsbBackend() override = default;

  // Registers a device; a device already registered under the same path is replaced (and
  // unplugged). Devices are listed in the order they were added.
  std::shared_ptr<TSimulatedUsbDevice> AddDevice(
      const QString& devicePath, const QString& hardwareId,
      std::vector<TWinUsbPipeInformation> pipes = TSimulatedUsbDevice::DefaultPipes());
  // Unplugs and forgets a device; false when none has that path.
  bool RemoveDevice(const QString& devicePath);
  std::shared_ptr<TSimulatedUsbDevice> Device(const QString& devicePath) const;

  // With false, the library "cannot be loaded": LoadWinUsb, EnumerateDevices and Open fail as
  // they do without libusb.
  void SetLoadable(bool loadable);
  // A non-empty reason makes EnumerateDevices fail (EIO) with "Error enumerating USB devices: "
  // + it.
  void SetEnumerationError(const QString& reason);

  TPlatformResult LoadWinUsb() override;
  TPlatformResult EnumerateDevices(std::vector<TUsbDeviceEntry>& devices) override;
  std::unique_ptr<TWinUsbInterface> Open(const QString& devicePath,
                                         TPlatformResult& result) override;

 private:
  mutable std::mutex mLock;
  std::vector<std::shared_ptr<TSimulatedUsbDevice>> mDevices;
  bool mLoadable = true;
  QString mEnumerationError;
};

}  // namespace norva
