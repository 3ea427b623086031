#include <libraries/LibUsbBackend.h>
#include <libraries/WINUSB.h>

#include <atomic>

namespace norva {

namespace {

std::atomic<TUsbBackend*> gInstalledBackend{nullptr};

TUsbBackend& DefaultBackend() {
  // Created on first use, so that nothing is loaded before the bus first looks for a device.
  static TLibUsbBackend backend;
  return backend;
}

QString Hex4(std::uint16_t value) {
  return QStringLiteral("%1").arg(value, 4, 16, QLatin1Char('0')).toUpper();
}

}  // namespace

TUsbBackend& UsbBackend() {
  TUsbBackend* installed = gInstalledBackend.load(std::memory_order_acquire);
  return installed != nullptr ? *installed : DefaultBackend();
}

TUsbBackend* SetUsbBackend(TUsbBackend* backend) {
  TUsbBackend* previous = gInstalledBackend.exchange(backend, std::memory_order_acq_rel);
  return previous != nullptr ? previous : &DefaultBackend();
}

QString UsbHardwareId(std::uint16_t vendorId, std::uint16_t productId, std::uint16_t revision) {
  return QStringLiteral("USB\\VID_") + Hex4(vendorId) + QStringLiteral("&PID_") + Hex4(productId) +
         QStringLiteral("&REV_") + Hex4(revision);
}

QString UsbPermissionHint(const QString& devicePath) {
  return QStringLiteral("No permission to open the USB device ") + devicePath +
         QStringLiteral(
             ": install the udev rules shipped in packaging/udev/ (see docs/usb.md) and plug the "
             "device in again");
}

}  // namespace norva
