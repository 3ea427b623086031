#pragma once
// The real USB backend: libusb-1.0, loaded with dlopen on first use (no link-time dependency), so
// that a machine without it still runs everything but USB. Devices are named "usb:BBB:DDD" (bus
// number and device address in decimal, as in /dev/bus/usb/BBB/DDD); Open claims interface 0,
// detaching a kernel driver first if one holds it.

#include <libraries/WINUSB.h>

#include <memory>
#include <mutex>
#include <string>

namespace norva {

class TLibUsbSession;

class TLibUsbBackend final : public TUsbBackend {
 public:
  // `libraryName` is what dlopen is given; another name lets tests see a missing library.
  explicit TLibUsbBackend(std::string libraryName = "libusb-1.0.so.0");
  ~TLibUsbBackend() override;
  TLibUsbBackend(const TLibUsbBackend&) = delete;
  TLibUsbBackend& operator=(const TLibUsbBackend&) = delete;

  TPlatformResult LoadWinUsb() override;
  TPlatformResult EnumerateDevices(std::vector<TUsbDeviceEntry>& devices) override;
  // Failures carry libusb's text of its error, or say that the path or the library is wrong.
  std::unique_ptr<TWinUsbInterface> Open(const QString& devicePath,
                                         TPlatformResult& result) override;

 private:
  // The loaded library and its context; nullptr when the library cannot be loaded. A failed load
  // is tried again on the next call, so installing libusb needs no restart.
  std::shared_ptr<TLibUsbSession> Session();

  std::string mLibraryName;
  std::mutex mLock;
  std::shared_ptr<TLibUsbSession> mSession;
};

// The errno-style code for a libusb error code (LIBUSB_ERROR_ACCESS -> EACCES, ...).
int ErrnoFromLibUsb(int libusbError);

// "usb:BBB:DDD" for a bus number and device address; ParseUsbDevicePath is its inverse and
// rejects anything else.
QString UsbDevicePath(int busNumber, int deviceAddress);
bool ParseUsbDevicePath(const QString& devicePath, int& busNumber, int& deviceAddress);

}  // namespace norva
