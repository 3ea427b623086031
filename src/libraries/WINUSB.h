#pragma once
// The USB layer the bus code talks to: the operations it needs from a WinUSB-style interface
// (query the interface and its pipes, set pipe policy, read and write pipes, vendor control
// transfers, flush) and the device search with hardware identifiers in the form
// "USB\VID_xxxx&PID_xxxx&REV_xxxx". The real backend is libusb-1.0, loaded at run time on first
// use; tests and norva-sim plug in a simulated backend instead.

#include <NorvaGlobal/PlatformResult.h>

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

namespace norva {

enum class TUsbPipeType : std::uint8_t { Control, Isochronous, Bulk, Interrupt };

struct TWinUsbPipeInformation {
  TUsbPipeType PipeType = TUsbPipeType::Control;
  std::uint8_t PipeId = 0;  // the endpoint address: bit 7 set for IN pipes
  std::uint16_t MaximumPacketSize = 0;
  std::uint8_t Interval = 0;
};

struct TUsbInterfaceDescriptor {
  std::uint8_t InterfaceNumber = 0;
  std::uint8_t AlternateSetting = 0;
  std::uint8_t NumEndpoints = 0;
  std::uint8_t InterfaceClass = 0;
  std::uint8_t InterfaceSubClass = 0;
  std::uint8_t InterfaceProtocol = 0;
};

struct TWinUsbSetupPacket {
  std::uint8_t RequestType = 0;
  std::uint8_t Request = 0;
  std::uint16_t Value = 0;
  std::uint16_t Index = 0;
  std::uint16_t Length = 0;
};

// The pipe policies the bus sets (the WinUSB numbering).
enum class TPipePolicy : std::uint8_t { ShortPacketTerminate = 1, AutoClearStall = 2 };

// One opened and initialised device interface. Every call may come from a worker thread; reads
// and writes of different pipes may run at the same time.
class TWinUsbInterface {
 public:
  virtual ~TWinUsbInterface() = default;  // frees the interface and closes the device

  virtual bool QueryInterfaceSettings(std::uint8_t alternateSetting,
                                      TUsbInterfaceDescriptor& descriptor) = 0;
  virtual bool QueryPipe(std::uint8_t alternateSetting, std::uint8_t pipeIndex,
                         TWinUsbPipeInformation& pipe) = 0;
  virtual bool SetPipePolicy(std::uint8_t pipeId, TPipePolicy policy, bool value) = 0;

  // Reads up to `length` bytes from an IN pipe. Returns the count read, 0 when `timeoutMs` passed
  // without data (not an error), or -1 on failure with LastError() set (ENODEV once the device is
  // gone).
  // A `timeoutMs` of 0 waits without limit (as a WinUSB pipe time-out of 0); a negative one, a pipe
  // that is not an IN pipe of the interface, or a null buffer fail with EINVAL.
  virtual int ReadPipe(std::uint8_t pipeId, char* buffer, int length, int timeoutMs) = 0;
  // Writes to an OUT pipe; returns the count written, 0 on time-out, -1 on failure.
  // `timeoutMs` as for ReadPipe; a time-out after part of the data went out returns that part.
  virtual int WritePipe(std::uint8_t pipeId, const char* data, int length, int timeoutMs) = 0;
  // A control transfer with `data` as its data stage (host to device); false on failure.
  // The data stage is the first `setup.Length` bytes of `data`; a shorter `data`, or a
  // device-to-host request type, fails with EINVAL. Control transfers time out after 5000 ms.
  virtual bool ControlTransfer(const TWinUsbSetupPacket& setup, const QByteArray& data) = 0;
  // An IN pipe: reads and drops what the device has ready for it. An OUT pipe holds nothing on
  // the host side (writes return once the device took the data), so it is left as it is.
  virtual bool FlushPipe(std::uint8_t pipeId) = 0;

  // The errno-style code of the last failure on the calling thread.
  virtual int LastError() const = 0;
};

struct TUsbDeviceEntry {
  QString DevicePath;  // what Open takes
  QString HardwareId;  // "USB\VID_1781&PID_07DA&REV_0100"
};

class TUsbBackend {
 public:
  virtual ~TUsbBackend() = default;

  // Loads the USB library on first use. Fails (ELIBACC) with "Error loading winusb.dll" when it
  // cannot be.
  virtual TPlatformResult LoadWinUsb() = 0;
  // Lists the USB devices present. Fails (ELIBACC) with "Cannot load Setup API" when the library
  // cannot be loaded, or with "Error enumerating USB devices: " and the reason.
  virtual TPlatformResult EnumerateDevices(std::vector<TUsbDeviceEntry>& devices) = 0;
  // Opens and initialises interface 0 of a device; nullptr with `result` saying why (EACCES: no
  // permission on the device node; EBUSY: claimed by another program; ENODEV: not there).
  virtual std::unique_ptr<TWinUsbInterface> Open(const QString& devicePath,
                                                 TPlatformResult& result) = 0;
};

// The backend in use: libusb unless another was installed.
TUsbBackend& UsbBackend();
// Installs `backend` (not owned; nullptr restores libusb). Returns the previous one.
TUsbBackend* SetUsbBackend(TUsbBackend* backend);

// "USB\VID_xxxx&PID_xxxx&REV_xxxx" with upper-case hex digits.
QString UsbHardwareId(std::uint16_t vendorId, std::uint16_t productId, std::uint16_t revision);

// What the user is told when a device cannot be opened for lack of permission (EACCES): the
// device node needs the udev rules installed with the library.
QString UsbPermissionHint(const QString& devicePath);

}  // namespace norva
