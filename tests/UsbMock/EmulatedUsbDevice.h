#pragma once
// A USB device emulated by umockdev, so that the real libusb path runs without USB hardware (the
// machines here have no USB support in their kernels at all).
//
// The test program links umockdev's preload library, which redirects /sys and /dev to a testbed
// directory and hands the ioctls on the emulated device node to a handler in this process. This
// class builds that testbed: a sysfs device with the binary descriptors (device, configuration,
// interface 0, its endpoints), and a small device model that answers the usbdevfs ioctls libusb
// issues (capabilities, claim and release, URB submit, reap and discard, clear halt).
//
// Notes for writing tests with it:
// - Create the device before the libusb backend: libusb lists devices from the testbed when its
//   context starts; later changes reach it as uevents.
// - libusb polls the emulated node in a loop while a transfer is pending, so keep time-outs short.

#include <QByteArray>
#include <QString>

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

struct _UMockdevTestbed;
struct _UMockdevIoctlBase;
struct _UMockdevIoctlClient;
struct usbdevfs_urb;

namespace norva {

struct TEmulatedEndpoint {
  std::uint8_t Address = 0;
  std::uint8_t Attributes = 2;  // bulk
  std::uint16_t MaxPacketSize = 64;
  std::uint8_t Interval = 0;
};

// A control transfer as the emulated device received it.
struct TEmulatedControl {
  std::uint8_t RequestType = 0;
  std::uint8_t Request = 0;
  std::uint16_t Value = 0;
  std::uint16_t Index = 0;
  std::uint16_t Length = 0;
  QByteArray Data;
};

class TEmulatedUsbDevice {
 public:
  // Bus 3, address 7: the device is "usb:003:007" to the libusb backend.
  TEmulatedUsbDevice(std::uint16_t vendorId, std::uint16_t productId, std::uint16_t revision,
                     std::vector<TEmulatedEndpoint> endpoints = DefaultEndpoints());
  ~TEmulatedUsbDevice();
  TEmulatedUsbDevice(const TEmulatedUsbDevice&) = delete;
  TEmulatedUsbDevice& operator=(const TEmulatedUsbDevice&) = delete;

  // The installation's four bulk pipes, 64-byte packets.
  static std::vector<TEmulatedEndpoint> DefaultEndpoints();

  // Empty when the testbed is ready; otherwise what failed while building it.
  const QString& SetupError() const { return mSetupError; }
  static QString DevicePath() { return QStringLiteral("usb:003:007"); }

  // Queues one device transfer on an IN endpoint; the next IN URB there completes with it.
  void PushIn(std::uint8_t endpoint, const QByteArray& bytes);
  // The OUT URBs received on an endpoint, taken; an empty entry is a zero-length packet.
  std::vector<QByteArray> TakeWrites(std::uint8_t endpoint);
  std::vector<TEmulatedControl> TakeControls();
  // Halts an endpoint: URBs on it complete with -EPIPE until the host clears the halt.
  void Stall(std::uint8_t endpoint);
  int HaltsCleared(std::uint8_t endpoint) const;
  int Claims() const;
  int Releases() const;
  // Waits until `count` IN URBs are in flight on `endpoint`; false after `timeoutMs`.
  bool WaitForPendingIn(std::uint8_t endpoint, int count, int timeoutMs);
  // Pulls the device: URBs in flight complete with -ESHUTDOWN, later ones fail with ENODEV, and
  // a "remove" uevent tells libusb's hotplug monitor.
  void Unplug();

 private:
  struct TUrb {
    usbdevfs_urb* Urb = nullptr;
    bool Done = false;
  };

  static int HandleIoctl(_UMockdevIoctlBase* handler, _UMockdevIoctlClient* client, void* self);
  void Answer(_UMockdevIoctlClient* client);
  void Submit(_UMockdevIoctlClient* client, usbdevfs_urb* urb);
  void Reap(_UMockdevIoctlClient* client, void** slot);
  void Discard(_UMockdevIoctlClient* client, const usbdevfs_urb* urb);
  bool Knows(std::uint8_t endpoint) const;
  std::string DeviceDescription() const;

  const std::uint16_t mVendorId;
  const std::uint16_t mProductId;
  const std::uint16_t mRevision;
  const std::vector<TEmulatedEndpoint> mEndpoints;

  _UMockdevTestbed* mTestbed = nullptr;
  _UMockdevIoctlBase* mHandler = nullptr;
  QString mSetupError;

  mutable std::mutex mLock;
  std::condition_variable mChanged;
  std::vector<TUrb> mUrbs;  // submitted and not yet reaped, in submission order
  std::map<std::uint8_t, std::deque<QByteArray>> mIn;
  std::map<std::uint8_t, std::vector<QByteArray>> mWrites;
  std::vector<TEmulatedControl> mControls;
  std::set<std::uint8_t> mHalted;
  std::map<std::uint8_t, int> mHaltsCleared;
  int mClaims = 0;
  int mReleases = 0;
  bool mUnplugged = false;
};

}  // namespace norva
