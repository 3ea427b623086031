#include <NorvaGlobal/DebugOutput.h>
#include <libraries/LibUsbBackend.h>
#include <libraries/PipePolicies.h>

// Only the types and constants come from this header; every function is looked up with dlsym.
#include <libusb-1.0/libusb.h>

#include <dlfcn.h>

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <vector>

namespace norva {

namespace {

constexpr unsigned ControlTimeoutMs = 5000;
// FlushPipe reads what is ready in short slices, and stops after a bounded number of them so that
// a device that never stops sending cannot hold the caller.
constexpr unsigned FlushSliceMs = 10;
constexpr int FlushReadLimit = 64;

thread_local int tLastError = 0;

template <typename TFunction>
bool Resolve(void* library, const char* name, TFunction& function) {
  function = reinterpret_cast<TFunction>(dlsym(library, name));
  if (function == nullptr)
    DebugOutput(UsbLog(), QStringLiteral("libusb: missing function ") + QString::fromLatin1(name));
  return function != nullptr;
}

TUsbPipeType PipeTypeOf(std::uint8_t attributes) {
  switch (attributes & LIBUSB_TRANSFER_TYPE_MASK) {
    case LIBUSB_ENDPOINT_TRANSFER_TYPE_ISOCHRONOUS: return TUsbPipeType::Isochronous;
    case LIBUSB_ENDPOINT_TRANSFER_TYPE_BULK: return TUsbPipeType::Bulk;
    case LIBUSB_ENDPOINT_TRANSFER_TYPE_INTERRUPT: return TUsbPipeType::Interrupt;
    default: return TUsbPipeType::Control;
  }
}

bool IsInPipe(std::uint8_t pipeId) { return (pipeId & LIBUSB_ENDPOINT_IN) != 0; }

}  // namespace

// The library handle, its entry points and one libusb context. Shared by the backend and every
// interface it opened, so that an interface never outlives the context it works in.
class TLibUsbSession {
 public:
  TLibUsbSession() = default;
  TLibUsbSession(const TLibUsbSession&) = delete;
  TLibUsbSession& operator=(const TLibUsbSession&) = delete;
  ~TLibUsbSession() {
    if (Context != nullptr) Exit(Context);
    if (mLibrary != nullptr) dlclose(mLibrary);
  }

  // Loads the library and resolves every entry point; false when either fails. Then creates the
  // context: a failure there leaves Context null with InitError set.
  bool Load(const std::string& libraryName) {
    mLibrary = dlopen(libraryName.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (mLibrary == nullptr) {
      const char* reason = dlerror();
      DebugOutput(UsbLog(),
                  QStringLiteral("libusb: ") +
                      QString::fromLocal8Bit(reason != nullptr ? reason : "dlopen failed"));
      return false;
    }
    const bool resolved =
        Resolve(mLibrary, "libusb_init", Init) && Resolve(mLibrary, "libusb_exit", Exit) &&
        Resolve(mLibrary, "libusb_strerror", StrError) &&
        Resolve(mLibrary, "libusb_get_device_list", GetDeviceList) &&
        Resolve(mLibrary, "libusb_free_device_list", FreeDeviceList) &&
        Resolve(mLibrary, "libusb_get_device_descriptor", GetDeviceDescriptor) &&
        Resolve(mLibrary, "libusb_get_bus_number", GetBusNumber) &&
        Resolve(mLibrary, "libusb_get_device_address", GetDeviceAddress) &&
        Resolve(mLibrary, "libusb_get_device", GetDevice) &&
        Resolve(mLibrary, "libusb_open", Open) && Resolve(mLibrary, "libusb_close", Close) &&
        Resolve(mLibrary, "libusb_kernel_driver_active", KernelDriverActive) &&
        Resolve(mLibrary, "libusb_detach_kernel_driver", DetachKernelDriver) &&
        Resolve(mLibrary, "libusb_attach_kernel_driver", AttachKernelDriver) &&
        Resolve(mLibrary, "libusb_claim_interface", ClaimInterface) &&
        Resolve(mLibrary, "libusb_release_interface", ReleaseInterface) &&
        Resolve(mLibrary, "libusb_get_active_config_descriptor", GetActiveConfigDescriptor) &&
        Resolve(mLibrary, "libusb_free_config_descriptor", FreeConfigDescriptor) &&
        Resolve(mLibrary, "libusb_bulk_transfer", BulkTransfer) &&
        Resolve(mLibrary, "libusb_interrupt_transfer", InterruptTransfer) &&
        Resolve(mLibrary, "libusb_control_transfer", ControlTransfer) &&
        Resolve(mLibrary, "libusb_clear_halt", ClearHalt);
    if (!resolved) return false;
    InitError = Init(&Context);
    if (InitError != LIBUSB_SUCCESS) {
      Context = nullptr;
      DebugOutput(UsbLog(), QStringLiteral("libusb: libusb_init failed: ") +
                                QString::fromUtf8(StrError(InitError)));
    }
    return true;
  }

  decltype(&libusb_init) Init = nullptr;
  decltype(&libusb_exit) Exit = nullptr;
  decltype(&libusb_strerror) StrError = nullptr;
  decltype(&libusb_get_device_list) GetDeviceList = nullptr;
  decltype(&libusb_free_device_list) FreeDeviceList = nullptr;
  decltype(&libusb_get_device_descriptor) GetDeviceDescriptor = nullptr;
  decltype(&libusb_get_bus_number) GetBusNumber = nullptr;
  decltype(&libusb_get_device_address) GetDeviceAddress = nullptr;
  decltype(&libusb_get_device) GetDevice = nullptr;
  decltype(&libusb_open) Open = nullptr;
  decltype(&libusb_close) Close = nullptr;
  decltype(&libusb_kernel_driver_active) KernelDriverActive = nullptr;
  decltype(&libusb_detach_kernel_driver) DetachKernelDriver = nullptr;
  decltype(&libusb_attach_kernel_driver) AttachKernelDriver = nullptr;
  decltype(&libusb_claim_interface) ClaimInterface = nullptr;
  decltype(&libusb_release_interface) ReleaseInterface = nullptr;
  decltype(&libusb_get_active_config_descriptor) GetActiveConfigDescriptor = nullptr;
  decltype(&libusb_free_config_descriptor) FreeConfigDescriptor = nullptr;
  decltype(&libusb_bulk_transfer) BulkTransfer = nullptr;
  decltype(&libusb_interrupt_transfer) InterruptTransfer = nullptr;
  decltype(&libusb_control_transfer) ControlTransfer = nullptr;
  decltype(&libusb_clear_halt) ClearHalt = nullptr;

  libusb_context* Context = nullptr;
  int InitError = LIBUSB_SUCCESS;

 private:
  void* mLibrary = nullptr;
};

namespace {

// Interface 0 of an opened device. The handle and the descriptors are fixed after construction
// and libusb's synchronous calls are thread-safe, so pipes may be used from several threads at
// once; the pipe policies are atomics.
class TLibUsbInterface final : public TWinUsbInterface {
 public:
  TLibUsbInterface(std::shared_ptr<TLibUsbSession> session, libusb_device_handle* handle,
                   bool reattachKernelDriver)
      : mSession(std::move(session)), mHandle(handle), mReattachKernelDriver(reattachKernelDriver) {
    ReadDescriptors();
  }
  TLibUsbInterface(const TLibUsbInterface&) = delete;
  TLibUsbInterface& operator=(const TLibUsbInterface&) = delete;

  ~TLibUsbInterface() override {
    // Failures here mean the device is already gone; nothing is left to undo then.
    mSession->ReleaseInterface(mHandle, 0);
    if (mReattachKernelDriver) mSession->AttachKernelDriver(mHandle, 0);
    mSession->Close(mHandle);
  }

  bool QueryInterfaceSettings(std::uint8_t alternateSetting,
                              TUsbInterfaceDescriptor& descriptor) override {
    const TAlternateSetting* setting = FindSetting(alternateSetting);
    if (setting == nullptr) return false;
    descriptor = setting->Descriptor;
    return true;
  }

  bool QueryPipe(std::uint8_t alternateSetting, std::uint8_t pipeIndex,
                 TWinUsbPipeInformation& pipe) override {
    const TAlternateSetting* setting = FindSetting(alternateSetting);
    if (setting == nullptr) return false;
    if (pipeIndex >= setting->Pipes.size()) return Fail(ENOENT);
    pipe = setting->Pipes[pipeIndex];
    return true;
  }

  bool SetPipePolicy(std::uint8_t pipeId, TPipePolicy policy, bool value) override {
    if (!TPipePolicies::Known(policy) || FindPipe(pipeId) == nullptr) return Fail(EINVAL);
    mPolicies.Set(pipeId, policy, value);
    return true;
  }

  int ReadPipe(std::uint8_t pipeId, char* buffer, int length, int timeoutMs) override {
    const TWinUsbPipeInformation* pipe = CheckTransfer(pipeId, true, buffer, length, timeoutMs);
    if (pipe == nullptr) return -1;
    if (length == 0) return 0;
    int transferred = 0;
    const int result = Transfer(*pipe, reinterpret_cast<unsigned char*>(buffer), length,
                                static_cast<unsigned>(timeoutMs), transferred);
    return Outcome(result, transferred);
  }

  int WritePipe(std::uint8_t pipeId, const char* data, int length, int timeoutMs) override {
    const TWinUsbPipeInformation* pipe = CheckTransfer(pipeId, false, data, length, timeoutMs);
    if (pipe == nullptr) return -1;
    // libusb takes a non-const buffer for both directions; it only reads it for OUT transfers.
    auto* bytes = reinterpret_cast<unsigned char*>(const_cast<char*>(data));
    int transferred = 0;
    const int result =
        Transfer(*pipe, bytes, length, static_cast<unsigned>(timeoutMs), transferred);
    if (result == LIBUSB_SUCCESS && length > 0 && pipe->MaximumPacketSize > 0 &&
        length % pipe->MaximumPacketSize == 0 &&
        mPolicies.Has(pipeId, TPipePolicy::ShortPacketTerminate)) {
      // A transfer of whole packets ends only with a zero-length packet. The data are out
      // already, so a failure here is left to the next call to report.
      int none = 0;
      unsigned char unused = 0;
      Transfer(*pipe, &unused, 0, static_cast<unsigned>(timeoutMs), none);
    }
    return Outcome(result, transferred);
  }

  bool ControlTransfer(const TWinUsbSetupPacket& setup, const QByteArray& data) override {
    if ((setup.RequestType & LIBUSB_ENDPOINT_IN) != 0 || data.size() < setup.Length)
      return Fail(EINVAL);
    std::vector<unsigned char> stage(data.cbegin(), data.cbegin() + setup.Length);
    const int result =
        mSession->ControlTransfer(mHandle, setup.RequestType, setup.Request, setup.Value,
                                  setup.Index, stage.data(), setup.Length, ControlTimeoutMs);
    if (result < 0) return Fail(ErrnoFromLibUsb(result));
    return true;
  }

  bool FlushPipe(std::uint8_t pipeId) override {
    const TWinUsbPipeInformation* pipe = FindPipe(pipeId);
    if (pipe == nullptr) return Fail(EINVAL);
    if (!IsInPipe(pipeId)) return true;
    // Whole packets, so that a device with more ready never overflows the read.
    std::vector<unsigned char> sink(std::max<std::size_t>(pipe->MaximumPacketSize, 64) * 16);
    for (int read = 0; read < FlushReadLimit; ++read) {
      int transferred = 0;
      const int result =
          Transfer(*pipe, sink.data(), static_cast<int>(sink.size()), FlushSliceMs, transferred);
      if (result != LIBUSB_SUCCESS && result != LIBUSB_ERROR_TIMEOUT)
        return Fail(ErrnoFromLibUsb(result));
      if (transferred == 0) break;
    }
    return true;
  }

  int LastError() const override { return tLastError; }

 private:
  struct TAlternateSetting {
    TUsbInterfaceDescriptor Descriptor;
    std::vector<TWinUsbPipeInformation> Pipes;
  };

  static bool Fail(int code) {
    tLastError = code;
    return false;
  }

  void ReadDescriptors() {
    libusb_config_descriptor* config = nullptr;
    mDescriptorError = mSession->GetActiveConfigDescriptor(mSession->GetDevice(mHandle), &config);
    if (mDescriptorError != LIBUSB_SUCCESS) return;
    for (int i = 0; i < config->bNumInterfaces; ++i) {
      const libusb_interface& usbInterface = config->interface[i];
      for (int alt = 0; alt < usbInterface.num_altsetting; ++alt) {
        const libusb_interface_descriptor& source = usbInterface.altsetting[alt];
        if (source.bInterfaceNumber != 0) continue;
        TAlternateSetting setting;
        setting.Descriptor.InterfaceNumber = source.bInterfaceNumber;
        setting.Descriptor.AlternateSetting = source.bAlternateSetting;
        setting.Descriptor.NumEndpoints = source.bNumEndpoints;
        setting.Descriptor.InterfaceClass = source.bInterfaceClass;
        setting.Descriptor.InterfaceSubClass = source.bInterfaceSubClass;
        setting.Descriptor.InterfaceProtocol = source.bInterfaceProtocol;
        for (int e = 0; e < source.bNumEndpoints; ++e) {
          const libusb_endpoint_descriptor& endpoint = source.endpoint[e];
          TWinUsbPipeInformation pipe;
          pipe.PipeType = PipeTypeOf(endpoint.bmAttributes);
          pipe.PipeId = endpoint.bEndpointAddress;
          // Bits 11 and 12 count extra transactions per microframe, not bytes.
          pipe.MaximumPacketSize = static_cast<std::uint16_t>(endpoint.wMaxPacketSize & 0x07FF);
          pipe.Interval = endpoint.bInterval;
          setting.Pipes.push_back(pipe);
        }
        mSettings.push_back(std::move(setting));
      }
    }
    mSession->FreeConfigDescriptor(config);
  }

  const TAlternateSetting* FindSetting(std::uint8_t alternateSetting) const {
    if (mDescriptorError != LIBUSB_SUCCESS) {
      tLastError = ErrnoFromLibUsb(mDescriptorError);
      return nullptr;
    }
    for (const TAlternateSetting& setting : mSettings)
      if (setting.Descriptor.AlternateSetting == alternateSetting) return &setting;
    tLastError = ENOENT;
    return nullptr;
  }

  // A pipe of the active alternate setting (0: the interface is never switched).
  const TWinUsbPipeInformation* FindPipe(std::uint8_t pipeId) const {
    for (const TAlternateSetting& setting : mSettings) {
      if (setting.Descriptor.AlternateSetting != 0) continue;
      for (const TWinUsbPipeInformation& pipe : setting.Pipes)
        if (pipe.PipeId == pipeId) return &pipe;
    }
    return nullptr;
  }

  const TWinUsbPipeInformation* CheckTransfer(std::uint8_t pipeId, bool in, const char* buffer,
                                              int length, int timeoutMs) const {
    const TWinUsbPipeInformation* pipe = FindPipe(pipeId);
    if (pipe == nullptr || IsInPipe(pipeId) != in || length < 0 || timeoutMs < 0 ||
        (buffer == nullptr && length > 0) ||
        (pipe->PipeType != TUsbPipeType::Bulk && pipe->PipeType != TUsbPipeType::Interrupt)) {
      tLastError = EINVAL;
      return nullptr;
    }
    return pipe;
  }

  // One bulk or interrupt transfer. With AutoClearStall, a stall is cleared and the rest of the
  // transfer tried once more, as WinUSB does.
  int Transfer(const TWinUsbPipeInformation& pipe, unsigned char* data, int length,
               unsigned timeoutMs, int& transferred) {
    const auto run = pipe.PipeType == TUsbPipeType::Interrupt ? mSession->InterruptTransfer
                                                              : mSession->BulkTransfer;
    transferred = 0;
    int result = run(mHandle, pipe.PipeId, data, length, &transferred, timeoutMs);
    if (result == LIBUSB_ERROR_PIPE && mPolicies.Has(pipe.PipeId, TPipePolicy::AutoClearStall)) {
      const int cleared = mSession->ClearHalt(mHandle, pipe.PipeId);
      if (cleared != LIBUSB_SUCCESS) return cleared;
      int more = 0;
      result =
          run(mHandle, pipe.PipeId, data + transferred, length - transferred, &more, timeoutMs);
      transferred += more;
    }
    return result;
  }

  // A time-out is not a failure: the caller gets what was transferred until then.
  static int Outcome(int result, int transferred) {
    if (result == LIBUSB_SUCCESS || result == LIBUSB_ERROR_TIMEOUT) return transferred;
    tLastError = ErrnoFromLibUsb(result);
    return -1;
  }

  std::shared_ptr<TLibUsbSession> mSession;
  libusb_device_handle* mHandle;
  bool mReattachKernelDriver;
  int mDescriptorError = LIBUSB_SUCCESS;
  std::vector<TAlternateSetting> mSettings;
  TPipePolicies mPolicies;
};

}  // namespace

int ErrnoFromLibUsb(int libusbError) {
  switch (libusbError) {
    case LIBUSB_SUCCESS: return 0;
    case LIBUSB_ERROR_IO: return EIO;
    case LIBUSB_ERROR_INVALID_PARAM: return EINVAL;
    case LIBUSB_ERROR_ACCESS: return EACCES;
    case LIBUSB_ERROR_NO_DEVICE: return ENODEV;
    case LIBUSB_ERROR_NOT_FOUND: return ENOENT;
    case LIBUSB_ERROR_BUSY: return EBUSY;
    case LIBUSB_ERROR_TIMEOUT: return ETIMEDOUT;
    case LIBUSB_ERROR_OVERFLOW: return EOVERFLOW;
    case LIBUSB_ERROR_PIPE: return EPIPE;
    case LIBUSB_ERROR_INTERRUPTED: return EINTR;
    case LIBUSB_ERROR_NO_MEM: return ENOMEM;
    case LIBUSB_ERROR_NOT_SUPPORTED: return EOPNOTSUPP;
    default: return EIO;
  }
}

QString UsbDevicePath(int busNumber, int deviceAddress) {
  return QStringLiteral("usb:%1:%2")
      .arg(busNumber, 3, 10, QLatin1Char('0'))
      .arg(deviceAddress, 3, 10, QLatin1Char('0'));
}

bool ParseUsbDevicePath(const QString& devicePath, int& busNumber, int& deviceAddress) {
  static const QRegularExpression pattern(QStringLiteral("^usb:([0-9]{3}):([0-9]{3})$"));
  const QRegularExpressionMatch match = pattern.match(devicePath);
  if (!match.hasMatch()) return false;
  busNumber = match.captured(1).toInt();
  deviceAddress = match.captured(2).toInt();
  return busNumber <= 255 && deviceAddress <= 127;
}

TLibUsbBackend::TLibUsbBackend(std::string libraryName) : mLibraryName(std::move(libraryName)) {}

TLibUsbBackend::~TLibUsbBackend() = default;

std::shared_ptr<TLibUsbSession> TLibUsbBackend::Session() {
  std::lock_guard<std::mutex> lock(mLock);
  if (mSession) return mSession;
  auto session = std::make_shared<TLibUsbSession>();
  if (!session->Load(mLibraryName)) return nullptr;
  if (session->Context != nullptr) mSession = session;
  return session;
}

TPlatformResult TLibUsbBackend::LoadWinUsb() {
  const std::shared_ptr<TLibUsbSession> session = Session();
  if (session && session->Context != nullptr) return {};
  return TPlatformResult::Failure(ELIBACC, QStringLiteral("Error loading winusb.dll"));
}

TPlatformResult TLibUsbBackend::EnumerateDevices(std::vector<TUsbDeviceEntry>& devices) {
  devices.clear();
  const std::shared_ptr<TLibUsbSession> session = Session();
  if (!session) return TPlatformResult::Failure(ELIBACC, QStringLiteral("Cannot load Setup API"));
  const auto failure = [&session](int code) {
    return TPlatformResult::Failure(ErrnoFromLibUsb(code),
                                    QStringLiteral("Error enumerating USB devices: ") +
                                        QString::fromUtf8(session->StrError(code)));
  };
  if (session->Context == nullptr) return failure(session->InitError);
  libusb_device** list = nullptr;
  const ssize_t count = session->GetDeviceList(session->Context, &list);
  if (count < 0) return failure(static_cast<int>(count));
  std::vector<std::pair<std::pair<int, int>, TUsbDeviceEntry>> found;
  for (ssize_t i = 0; i < count; ++i) {
    libusb_device_descriptor descriptor{};
    if (session->GetDeviceDescriptor(list[i], &descriptor) != LIBUSB_SUCCESS) continue;
    const int bus = session->GetBusNumber(list[i]);
    const int address = session->GetDeviceAddress(list[i]);
    found.push_back(
        {{bus, address},
         {UsbDevicePath(bus, address),
          UsbHardwareId(descriptor.idVendor, descriptor.idProduct, descriptor.bcdDevice)}});
  }
  session->FreeDeviceList(list, 1);
  // libusb's order is arbitrary; the bus tries devices in list order, so keep it stable.
  std::sort(found.begin(), found.end(),
            [](const auto& left, const auto& right) { return left.first < right.first; });
  for (auto& entry : found) devices.push_back(std::move(entry.second));
  return {};
}

std::unique_ptr<TWinUsbInterface> TLibUsbBackend::Open(const QString& devicePath,
                                                       TPlatformResult& result) {
  result = {};
  int bus = 0;
  int address = 0;
  if (!ParseUsbDevicePath(devicePath, bus, address)) {
    result = TPlatformResult::Failure(EINVAL, QStringLiteral("Not a USB device path"));
    return nullptr;
  }
  const std::shared_ptr<TLibUsbSession> session = Session();
  if (!session) {
    result = TPlatformResult::Failure(ELIBACC, QStringLiteral("libusb-1.0 cannot be loaded"));
    return nullptr;
  }
  const auto failure = [&session, &result](int libusbError) {
    result = TPlatformResult::Failure(ErrnoFromLibUsb(libusbError),
                                      QString::fromUtf8(session->StrError(libusbError)));
    return nullptr;
  };
  if (session->Context == nullptr) return failure(session->InitError);

  libusb_device** list = nullptr;
  const ssize_t count = session->GetDeviceList(session->Context, &list);
  if (count < 0) return failure(static_cast<int>(count));
  libusb_device_handle* handle = nullptr;
  int opened = LIBUSB_ERROR_NO_DEVICE;
  for (ssize_t i = 0; i < count; ++i) {
    if (session->GetBusNumber(list[i]) == bus && session->GetDeviceAddress(list[i]) == address) {
      opened = session->Open(list[i], &handle);
      break;
    }
  }
  session->FreeDeviceList(list, 1);  // an open handle keeps its own reference to the device
  if (opened != LIBUSB_SUCCESS) return failure(opened);

  bool detached = false;
  if (session->KernelDriverActive(handle, 0) == 1) {
    opened = session->DetachKernelDriver(handle, 0);
    detached = opened == LIBUSB_SUCCESS;
  }
  if (opened == LIBUSB_SUCCESS) opened = session->ClaimInterface(handle, 0);
  if (opened != LIBUSB_SUCCESS) {
    if (detached) session->AttachKernelDriver(handle, 0);
    session->Close(handle);
    return failure(opened);
  }
  return std::make_unique<TLibUsbInterface>(session, handle, detached);
}

}  // namespace norva
