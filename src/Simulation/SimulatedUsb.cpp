#include <NorvaBusComms/UsbPipes.h>
#include <Simulation/SimulatedUsb.h>
#include <libraries/PipePolicies.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>

namespace norva {

namespace {

thread_local int tLastError = 0;

bool IsInPipe(std::uint8_t pipeId) { return (pipeId & 0x80) != 0; }

bool Fail(int code) {
  tLastError = code;
  return false;
}

TPlatformResult SystemFailure(int code) {
  return TPlatformResult::Failure(code, QString::fromLocal8Bit(std::strerror(code)));
}

}  // namespace

// The host's handle on interface 0 of a simulated device. It keeps the device alive, remembers
// the plug-in it was opened in (so that it stays dead after an unplug) and holds its own pipe
// policies, as a WinUSB handle does.
class TSimulatedUsbInterface final : public TWinUsbInterface {
 public:
  TSimulatedUsbInterface(std::shared_ptr<TSimulatedUsbDevice> device, std::uint64_t generation)
      : mDevice(std::move(device)), mGeneration(generation) {}
  TSimulatedUsbInterface(const TSimulatedUsbInterface&) = delete;
  TSimulatedUsbInterface& operator=(const TSimulatedUsbInterface&) = delete;
  ~TSimulatedUsbInterface() override { mDevice->HostClose(mGeneration); }

  bool QueryInterfaceSettings(std::uint8_t alternateSetting,
                              TUsbInterfaceDescriptor& descriptor) override {
    if (alternateSetting != 0) return Fail(ENOENT);
    descriptor = TUsbInterfaceDescriptor{};
    descriptor.NumEndpoints = static_cast<std::uint8_t>(mDevice->Pipes().size());
    descriptor.InterfaceClass = 0xFF;  // vendor specific, as the devices present themselves
    return true;
  }

  bool QueryPipe(std::uint8_t alternateSetting, std::uint8_t pipeIndex,
                 TWinUsbPipeInformation& pipe) override {
    if (alternateSetting != 0 || pipeIndex >= mDevice->Pipes().size()) return Fail(ENOENT);
    pipe = mDevice->Pipes()[pipeIndex];
    return true;
  }

  bool SetPipePolicy(std::uint8_t pipeId, TPipePolicy policy, bool value) override {
    if (!TPipePolicies::Known(policy)) return Fail(EINVAL);
    const auto& pipes = mDevice->Pipes();
    if (std::none_of(pipes.begin(), pipes.end(), [pipeId](const TWinUsbPipeInformation& pipe) {
          return pipe.PipeId == pipeId;
        }))
      return Fail(EINVAL);
    mPolicies.Set(pipeId, policy, value);
    return true;
  }

  int ReadPipe(std::uint8_t pipeId, char* buffer, int length, int timeoutMs) override {
    int error = 0;
    const int count =
        mDevice->HostRead(mGeneration, pipeId, mPolicies.Has(pipeId, TPipePolicy::AutoClearStall),
                          buffer, length, timeoutMs, error);
    if (count < 0) tLastError = error;
    return count;
  }

  int WritePipe(std::uint8_t pipeId, const char* data, int length, int timeoutMs) override {
    int error = 0;
    const int count = mDevice->HostWrite(
        mGeneration, pipeId, mPolicies.Has(pipeId, TPipePolicy::AutoClearStall),
        mPolicies.Has(pipeId, TPipePolicy::ShortPacketTerminate), data, length, timeoutMs, error);
    if (count < 0) tLastError = error;
    return count;
  }

  bool ControlTransfer(const TWinUsbSetupPacket& setup, const QByteArray& data) override {
    int error = 0;
    if (mDevice->HostControl(mGeneration, setup, data, error)) return true;
    return Fail(error);
  }

  bool FlushPipe(std::uint8_t pipeId) override {
    int error = 0;
    if (mDevice->HostFlush(mGeneration, pipeId, error)) return true;
    return Fail(error);
  }

  int LastError() const override { return tLastError; }

 private:
  std::shared_ptr<TSimulatedUsbDevice> mDevice;
  std::uint64_t mGeneration;
  TPipePolicies mPolicies;
};

// --- TSimulatedUsbDevice ---

std::shared_ptr<TSimulatedUsbDevice> TSimulatedUsbDevice::Create(
    QString devicePath, QString hardwareId, std::vector<TWinUsbPipeInformation> pipes) {
  // The constructor is private so that every device is shared: Open hands out shared_from_this.
  return std::shared_ptr<TSimulatedUsbDevice>(
      new TSimulatedUsbDevice(std::move(devicePath), std::move(hardwareId), std::move(pipes)));
}

std::vector<TWinUsbPipeInformation> TSimulatedUsbDevice::DefaultPipes() {
  std::vector<TWinUsbPipeInformation> pipes;
  for (const std::uint8_t id : {DataInPipe, NotifyInPipe, DataOutPipe, CommandOutPipe}) {
    TWinUsbPipeInformation pipe;
    pipe.PipeType = TUsbPipeType::Bulk;
    pipe.PipeId = id;
    pipe.MaximumPacketSize = 64;
    pipes.push_back(pipe);
  }
  return pipes;
}

TSimulatedUsbDevice::TSimulatedUsbDevice(QString devicePath, QString hardwareId,
                                         std::vector<TWinUsbPipeInformation> pipes)
    : mDevicePath(std::move(devicePath)),
      mHardwareId(std::move(hardwareId)),
      mPipes(std::move(pipes)) {
  for (const TWinUsbPipeInformation& pipe : mPipes) mPipeStates[pipe.PipeId].Info = pipe;
}

TSimulatedUsbDevice::~TSimulatedUsbDevice() = default;

std::unique_ptr<TWinUsbInterface> TSimulatedUsbDevice::Open(TPlatformResult& result) {
  std::lock_guard<std::mutex> lock(mLock);
  const int code = !mPlugged ? ENODEV : mOpenError != 0 ? mOpenError : mClaimed ? EBUSY : 0;
  result = code != 0 ? SystemFailure(code) : TPlatformResult{};
  if (code != 0) return nullptr;
  mClaimed = true;
  ++mCounters.Opens;
  return std::make_unique<TSimulatedUsbInterface>(shared_from_this(), mGeneration);
}

bool TSimulatedUsbDevice::PushIn(std::uint8_t pipeId, const QByteArray& bytes) {
  {
    std::lock_guard<std::mutex> lock(mLock);
    TPipeState* pipe = TransferPipe(pipeId, true);
    if (pipe == nullptr || !mPlugged) return false;
    pipe->In.push_back(bytes);
  }
  mChanged.notify_all();
  return true;
}

QByteArray TSimulatedUsbDevice::TakeWritten(std::uint8_t pipeId) {
  QByteArray joined;
  for (const QByteArray& write : TakeWrites(pipeId)) joined += write;
  return joined;
}

std::vector<QByteArray> TSimulatedUsbDevice::TakeWrites(std::uint8_t pipeId) {
  std::lock_guard<std::mutex> lock(mLock);
  const auto found = mPipeStates.find(pipeId);
  if (found == mPipeStates.end()) return {};
  std::vector<QByteArray> writes(found->second.Written.begin(), found->second.Written.end());
  found->second.Written.clear();
  return writes;
}

bool TSimulatedUsbDevice::WaitForWritten(std::uint8_t pipeId, qsizetype bytes, int timeoutMs) {
  std::unique_lock<std::mutex> lock(mLock);
  const auto found = mPipeStates.find(pipeId);
  if (found == mPipeStates.end()) return false;
  const std::deque<QByteArray>& written = found->second.Written;
  return WaitUntil(lock, Deadline(timeoutMs), false, [&written, bytes] {
    qsizetype total = 0;
    for (const QByteArray& write : written) total += write.size();
    return total >= bytes;
  });
}

std::vector<TSimulatedControlTransfer> TSimulatedUsbDevice::TakeControlTransfers() {
  std::lock_guard<std::mutex> lock(mLock);
  std::vector<TSimulatedControlTransfer> transfers(mControlTransfers.begin(),
                                                   mControlTransfers.end());
  mControlTransfers.clear();
  return transfers;
}

bool TSimulatedUsbDevice::WaitForControlTransfers(std::size_t count, int timeoutMs) {
  std::unique_lock<std::mutex> lock(mLock);
  return WaitUntil(lock, Deadline(timeoutMs), false,
                   [this, count] { return mControlTransfers.size() >= count; });
}

bool TSimulatedUsbDevice::WaitForReaders(std::uint8_t pipeId, int count, int timeoutMs) {
  std::unique_lock<std::mutex> lock(mLock);
  const auto found = mPipeStates.find(pipeId);
  if (found == mPipeStates.end()) return false;
  const TPipeState& pipe = found->second;
  return WaitUntil(lock, Deadline(timeoutMs), false,
                   [&pipe, count] { return pipe.WaitingReaders >= count; });
}

void TSimulatedUsbDevice::SetWriteHandler(TWriteHandler handler) {
  std::lock_guard<std::mutex> lock(mLock);
  mWriteHandler = std::move(handler);
}

void TSimulatedUsbDevice::SetControlHandler(TControlHandler handler) {
  std::lock_guard<std::mutex> lock(mLock);
  mControlHandler = std::move(handler);
}

void TSimulatedUsbDevice::StallPipe(std::uint8_t pipeId) {
  {
    std::lock_guard<std::mutex> lock(mLock);
    const auto found = mPipeStates.find(pipeId);
    if (found == mPipeStates.end()) return;
    found->second.Stalled = true;
  }
  mChanged.notify_all();
}

void TSimulatedUsbDevice::PauseOutPipe(std::uint8_t pipeId, bool paused) {
  {
    std::lock_guard<std::mutex> lock(mLock);
    TPipeState* pipe = TransferPipe(pipeId, false);
    if (pipe == nullptr) return;
    pipe->Paused = paused;
  }
  mChanged.notify_all();
}

void TSimulatedUsbDevice::SetOpenError(int errorCode) {
  std::lock_guard<std::mutex> lock(mLock);
  mOpenError = errorCode;
}

void TSimulatedUsbDevice::Unplug() {
  {
    std::lock_guard<std::mutex> lock(mLock);
    if (!mPlugged) return;
    mPlugged = false;
    ++mGeneration;  // interfaces opened so far are dead from now on
    mClaimed = false;
    for (auto& [id, pipe] : mPipeStates) {
      pipe.In.clear();
      pipe.Stalled = false;
      pipe.Paused = false;
    }
  }
  mChanged.notify_all();
}

void TSimulatedUsbDevice::Replug() {
  std::lock_guard<std::mutex> lock(mLock);
  mPlugged = true;
}

bool TSimulatedUsbDevice::IsPlugged() const {
  std::lock_guard<std::mutex> lock(mLock);
  return mPlugged;
}

bool TSimulatedUsbDevice::IsOpen() const {
  std::lock_guard<std::mutex> lock(mLock);
  return mClaimed;
}

std::size_t TSimulatedUsbDevice::PendingIn(std::uint8_t pipeId) const {
  std::lock_guard<std::mutex> lock(mLock);
  const auto found = mPipeStates.find(pipeId);
  return found == mPipeStates.end() ? 0 : found->second.In.size();
}

TSimulatedUsbCounters TSimulatedUsbDevice::Counters() const {
  std::lock_guard<std::mutex> lock(mLock);
  return mCounters;
}

TSimulatedUsbDevice::TPipeState* TSimulatedUsbDevice::TransferPipe(std::uint8_t pipeId, bool in) {
  const auto found = mPipeStates.find(pipeId);
  if (found == mPipeStates.end() || IsInPipe(pipeId) != in) return nullptr;
  const TUsbPipeType type = found->second.Info.PipeType;
  if (type != TUsbPipeType::Bulk && type != TUsbPipeType::Interrupt) return nullptr;
  return &found->second;
}

TSimulatedUsbDevice::TPipeState* TSimulatedUsbDevice::StartTransfer(std::uint64_t generation,
                                                                    std::uint8_t pipeId, bool in,
                                                                    bool autoClearStall,
                                                                    const void* buffer, int length,
                                                                    int timeoutMs, int& error) {
  TPipeState* pipe = TransferPipe(pipeId, in);
  if (pipe == nullptr || length < 0 || timeoutMs < 0 || (buffer == nullptr && length > 0)) {
    error = EINVAL;
    return nullptr;
  }
  if (!Alive(generation)) {
    error = ENODEV;
    return nullptr;
  }
  return PassStall(*pipe, autoClearStall, error) ? pipe : nullptr;
}

bool TSimulatedUsbDevice::PassStall(TPipeState& pipe, bool autoClearStall, int& error) {
  if (!pipe.Stalled) return true;
  if (!autoClearStall) {
    error = EPIPE;
    return false;
  }
  pipe.Stalled = false;
  ++mCounters.StallsCleared;
  return true;
}

TSimulatedUsbDevice::TClock::time_point TSimulatedUsbDevice::Deadline(int timeoutMs) {
  return TClock::now() + std::chrono::milliseconds(std::max(timeoutMs, 0));
}

bool TSimulatedUsbDevice::WaitUntil(std::unique_lock<std::mutex>& lock, TClock::time_point deadline,
                                    bool unlimited, const std::function<bool()>& ready) {
  if (unlimited) {
    mChanged.wait(lock, ready);
    return true;
  }
  return mChanged.wait_until(lock, deadline, ready);
}

int TSimulatedUsbDevice::HostRead(std::uint64_t generation, std::uint8_t pipeId,
                                  bool autoClearStall, char* buffer, int length, int timeoutMs,
                                  int& error) {
  std::unique_lock<std::mutex> lock(mLock);
  TPipeState* pipe =
      StartTransfer(generation, pipeId, true, autoClearStall, buffer, length, timeoutMs, error);
  if (pipe == nullptr) return -1;
  if (length == 0) return 0;

  ++pipe->WaitingReaders;
  mChanged.notify_all();  // for WaitForReaders
  WaitUntil(lock, Deadline(timeoutMs), timeoutMs == 0,
            [this, pipe, generation] { return !Alive(generation) || !pipe->In.empty(); });
  --pipe->WaitingReaders;
  if (!Alive(generation)) {
    error = ENODEV;
    return -1;
  }
  if (pipe->In.empty()) return 0;  // timed out

  QByteArray& transfer = pipe->In.front();
  const int count = static_cast<int>(std::min<qsizetype>(length, transfer.size()));
  if (count > 0) std::memcpy(buffer, transfer.constData(), static_cast<std::size_t>(count));
  if (count < transfer.size())
    transfer.remove(0, count);
  else
    pipe->In.pop_front();
  if (count > 0) {
    ++mCounters.Reads;
    mCounters.BytesIn += count;
  }
  return count;
}

int TSimulatedUsbDevice::HostWrite(std::uint64_t generation, std::uint8_t pipeId,
                                   bool autoClearStall, bool shortPacketTerminate, const char* data,
                                   int length, int timeoutMs, int& error) {
  std::unique_lock<std::mutex> lock(mLock);
  TPipeState* pipe =
      StartTransfer(generation, pipeId, false, autoClearStall, data, length, timeoutMs, error);
  if (pipe == nullptr) return -1;
  if (pipe->Paused) {
    WaitUntil(lock, Deadline(timeoutMs), timeoutMs == 0,
              [this, pipe, generation] { return !Alive(generation) || !pipe->Paused; });
    if (!Alive(generation)) {
      error = ENODEV;
      return -1;
    }
    if (pipe->Paused) return 0;  // timed out, nothing taken
  }

  const QByteArray bytes(data, length);
  const std::uint16_t packet = pipe->Info.MaximumPacketSize;
  const bool zeroLengthPacket =
      length == 0 || (shortPacketTerminate && packet > 0 && length % packet == 0);
  if (length > 0) {
    ++mCounters.Writes;
    mCounters.BytesOut += length;
  }
  if (zeroLengthPacket) ++mCounters.ZeroLengthPackets;
  TWriteHandler handler = mWriteHandler;
  if (!handler) {
    if (length > 0) pipe->Written.push_back(bytes);
    if (zeroLengthPacket) pipe->Written.emplace_back();
  }
  lock.unlock();
  mChanged.notify_all();
  if (handler && length > 0) handler(pipeId, bytes);
  return length;
}

bool TSimulatedUsbDevice::HostControl(std::uint64_t generation, const TWinUsbSetupPacket& setup,
                                      const QByteArray& data, int& error) {
  std::unique_lock<std::mutex> lock(mLock);
  if ((setup.RequestType & 0x80) != 0 || data.size() < setup.Length) {
    error = EINVAL;
    return false;
  }
  if (!Alive(generation)) {
    error = ENODEV;
    return false;
  }
  const TSimulatedControlTransfer transfer{setup, data.left(setup.Length)};
  ++mCounters.ControlTransfers;
  TControlHandler handler = mControlHandler;
  if (!handler) mControlTransfers.push_back(transfer);
  lock.unlock();
  mChanged.notify_all();
  if (handler && !handler(transfer)) {
    error = EPIPE;
    return false;
  }
  return true;
}

bool TSimulatedUsbDevice::HostFlush(std::uint64_t generation, std::uint8_t pipeId, int& error) {
  std::lock_guard<std::mutex> lock(mLock);
  const auto found = mPipeStates.find(pipeId);
  if (found == mPipeStates.end()) {
    error = EINVAL;
    return false;
  }
  if (!Alive(generation)) {
    error = ENODEV;
    return false;
  }
  ++mCounters.Flushes;
  found->second.In.clear();
  return true;
}

void TSimulatedUsbDevice::HostClose(std::uint64_t generation) {
  std::lock_guard<std::mutex> lock(mLock);
  ++mCounters.Closes;
  if (generation == mGeneration) mClaimed = false;
}

// --- TSimulatedUsbBackend ---

std::shared_ptr<TSimulatedUsbDevice> TSimulatedUsbBackend::AddDevice(
    const QString& devicePath, const QString& hardwareId,
    std::vector<TWinUsbPipeInformation> pipes) {
  auto device = TSimulatedUsbDevice::Create(devicePath, hardwareId, std::move(pipes));
  std::shared_ptr<TSimulatedUsbDevice> replaced;
  {
    std::lock_guard<std::mutex> lock(mLock);
    const auto found = std::find_if(
        mDevices.begin(), mDevices.end(),
        [&devicePath](const auto& known) { return known->DevicePath() == devicePath; });
    if (found != mDevices.end()) {
      replaced = *found;
      *found = device;
    } else {
      mDevices.push_back(device);
    }
  }
  if (replaced) replaced->Unplug();
  return device;
}

bool TSimulatedUsbBackend::RemoveDevice(const QString& devicePath) {
  std::shared_ptr<TSimulatedUsbDevice> removed;
  {
    std::lock_guard<std::mutex> lock(mLock);
    const auto found = std::find_if(
        mDevices.begin(), mDevices.end(),
        [&devicePath](const auto& known) { return known->DevicePath() == devicePath; });
    if (found == mDevices.end()) return false;
    removed = *found;
    mDevices.erase(found);
  }
  removed->Unplug();
  return true;
}

std::shared_ptr<TSimulatedUsbDevice> TSimulatedUsbBackend::Device(const QString& devicePath) const {
  std::lock_guard<std::mutex> lock(mLock);
  for (const auto& device : mDevices)
    if (device->DevicePath() == devicePath) return device;
  return nullptr;
}

void TSimulatedUsbBackend::SetLoadable(bool loadable) {
  std::lock_guard<std::mutex> lock(mLock);
  mLoadable = loadable;
}

void TSimulatedUsbBackend::SetEnumerationError(const QString& reason) {
  std::lock_guard<std::mutex> lock(mLock);
  mEnumerationError = reason;
}

TPlatformResult TSimulatedUsbBackend::LoadWinUsb() {
  std::lock_guard<std::mutex> lock(mLock);
  if (mLoadable) return {};
  return TPlatformResult::Failure(ELIBACC, QStringLiteral("Error loading winusb.dll"));
}

TPlatformResult TSimulatedUsbBackend::EnumerateDevices(std::vector<TUsbDeviceEntry>& devices) {
  devices.clear();
  std::vector<std::shared_ptr<TSimulatedUsbDevice>> known;
  {
    std::lock_guard<std::mutex> lock(mLock);
    if (!mLoadable)
      return TPlatformResult::Failure(ELIBACC, QStringLiteral("Cannot load Setup API"));
    if (!mEnumerationError.isEmpty())
      return TPlatformResult::Failure(
          EIO, QStringLiteral("Error enumerating USB devices: ") + mEnumerationError);
    known = mDevices;
  }
  // Each device has its own lock; it is not taken while holding the backend's.
  for (const auto& device : known)
    if (device->IsPlugged()) devices.push_back({device->DevicePath(), device->HardwareId()});
  return {};
}

std::unique_ptr<TWinUsbInterface> TSimulatedUsbBackend::Open(const QString& devicePath,
                                                             TPlatformResult& result) {
  bool loadable = false;
  {
    std::lock_guard<std::mutex> lock(mLock);
    loadable = mLoadable;
  }
  if (!loadable) {
    result = SystemFailure(ELIBACC);
    return nullptr;
  }
  const std::shared_ptr<TSimulatedUsbDevice> device = Device(devicePath);
  if (!device) {
    result = SystemFailure(ENODEV);
    return nullptr;
  }
  return device->Open(result);
}

}  // namespace norva
