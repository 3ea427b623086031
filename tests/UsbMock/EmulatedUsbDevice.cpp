// Before any Qt header: GLib names a struct member "signals", which Qt defines as a keyword.
#include <umockdev.h>

#include "EmulatedUsbDevice.h"

#include <NorvaBusComms/UsbPipes.h>

#include <linux/usbdevice_fs.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <string>

namespace norva {

namespace {

constexpr const char* SysPath = "/sys/devices/usb3";
constexpr const char* DevNode = "/dev/bus/usb/003/007";
constexpr std::uint8_t UrbTypeControl = USBDEVFS_URB_TYPE_CONTROL;
constexpr std::size_t SetupSize = 8;

void AppendHex(std::string& text, std::initializer_list<unsigned> bytes) {
  static const char digits[] = "0123456789ABCDEF";
  for (const unsigned byte : bytes) {
    text += digits[(byte >> 4) & 0xF];
    text += digits[byte & 0xF];
  }
}

unsigned Low(unsigned value) { return value & 0xFF; }
unsigned High(unsigned value) { return (value >> 8) & 0xFF; }

}  // namespace

std::vector<TEmulatedEndpoint> TEmulatedUsbDevice::DefaultEndpoints() {
  return {{DataInPipe, 2, 64, 0},
          {NotifyInPipe, 2, 64, 0},
          {DataOutPipe, 2, 64, 0},
          {CommandOutPipe, 2, 64, 0}};
}

TEmulatedUsbDevice::TEmulatedUsbDevice(std::uint16_t vendorId, std::uint16_t productId,
                                       std::uint16_t revision,
                                       std::vector<TEmulatedEndpoint> endpoints)
    : mVendorId(vendorId),
      mProductId(productId),
      mRevision(revision),
      mEndpoints(std::move(endpoints)) {
  mTestbed = umockdev_testbed_new();
  mHandler = UMOCKDEV_IOCTL_BASE(g_object_new(UMOCKDEV_TYPE_IOCTL_BASE, nullptr));
  g_signal_connect(mHandler, "handle-ioctl", G_CALLBACK(&TEmulatedUsbDevice::HandleIoctl), this);
  GError* error = nullptr;
  // The handler first, so that the node answers as soon as the device appears.
  if (!umockdev_testbed_attach_ioctl(mTestbed, DevNode, mHandler, &error) ||
      !umockdev_testbed_add_from_string(mTestbed, DeviceDescription().c_str(), &error)) {
    mSetupError = QString::fromUtf8(error != nullptr ? error->message : "umockdev failed");
    if (error != nullptr) g_error_free(error);
  }
}

TEmulatedUsbDevice::~TEmulatedUsbDevice() {
  if (mHandler != nullptr) {
    umockdev_testbed_detach_ioctl(mTestbed, DevNode, nullptr);
    g_object_unref(mHandler);
  }
  g_object_unref(mTestbed);
}

std::string TEmulatedUsbDevice::DeviceDescription() const {
  std::string descriptors;
  AppendHex(descriptors,
            {18, 1, 0x00, 0x02, 0, 0, 0, 64, Low(mVendorId), High(mVendorId), Low(mProductId),
             High(mProductId), Low(mRevision), High(mRevision), 0, 0, 0, 1});
  const auto total = static_cast<unsigned>(9 + 9 + 7 * mEndpoints.size());
  AppendHex(descriptors, {9, 2, Low(total), High(total), 1, 1, 0, 0x80, 50});
  AppendHex(descriptors, {9, 4, 0, 0, static_cast<unsigned>(mEndpoints.size()), 0xFF, 0, 0, 0});
  for (const TEmulatedEndpoint& endpoint : mEndpoints)
    AppendHex(descriptors,
              {7, 5, endpoint.Address, endpoint.Attributes, Low(endpoint.MaxPacketSize),
               High(endpoint.MaxPacketSize), endpoint.Interval});
  // A root-hub-like name ("usbN") spares libusb the search for a parent device.
  return std::string(
             "P: /devices/usb3\n"
             "N: bus/usb/003/007\n"
             "E: SUBSYSTEM=usb\n"
             "E: DEVTYPE=usb_device\n"
             "E: DEVNAME=/dev/bus/usb/003/007\n"
             "E: BUSNUM=003\n"
             "E: DEVNUM=007\n"
             "A: busnum=3\\n\n"
             "A: devnum=7\\n\n"
             "A: bConfigurationValue=1\\n\n"
             "A: speed=480\\n\n"
             "H: descriptors=") +
         descriptors + "\n";
}

void TEmulatedUsbDevice::PushIn(std::uint8_t endpoint, const QByteArray& bytes) {
  {
    std::lock_guard<std::mutex> lock(mLock);
    mIn[endpoint].push_back(bytes);
  }
  mChanged.notify_all();
}

std::vector<QByteArray> TEmulatedUsbDevice::TakeWrites(std::uint8_t endpoint) {
  std::lock_guard<std::mutex> lock(mLock);
  std::vector<QByteArray> writes;
  writes.swap(mWrites[endpoint]);
  return writes;
}

std::vector<TEmulatedControl> TEmulatedUsbDevice::TakeControls() {
  std::lock_guard<std::mutex> lock(mLock);
  std::vector<TEmulatedControl> controls;
  controls.swap(mControls);
  return controls;
}

void TEmulatedUsbDevice::Stall(std::uint8_t endpoint) {
  std::lock_guard<std::mutex> lock(mLock);
  mHalted.insert(endpoint);
}

int TEmulatedUsbDevice::HaltsCleared(std::uint8_t endpoint) const {
  std::lock_guard<std::mutex> lock(mLock);
  const auto found = mHaltsCleared.find(endpoint);
  return found == mHaltsCleared.end() ? 0 : found->second;
}

int TEmulatedUsbDevice::Claims() const {
  std::lock_guard<std::mutex> lock(mLock);
  return mClaims;
}

int TEmulatedUsbDevice::Releases() const {
  std::lock_guard<std::mutex> lock(mLock);
  return mReleases;
}

bool TEmulatedUsbDevice::WaitForPendingIn(std::uint8_t endpoint, int count, int timeoutMs) {
  std::unique_lock<std::mutex> lock(mLock);
  return mChanged.wait_for(lock, std::chrono::milliseconds(timeoutMs), [&] {
    return std::count_if(mUrbs.begin(), mUrbs.end(), [endpoint](const TUrb& urb) {
             return !urb.Done && urb.Urb->endpoint == endpoint;
           }) >= count;
  });
}

void TEmulatedUsbDevice::Unplug() {
  {
    std::lock_guard<std::mutex> lock(mLock);
    mUnplugged = true;
  }
  umockdev_testbed_uevent(mTestbed, SysPath, "remove");
}

bool TEmulatedUsbDevice::Knows(std::uint8_t endpoint) const {
  return std::any_of(
      mEndpoints.begin(), mEndpoints.end(),
      [endpoint](const TEmulatedEndpoint& known) { return known.Address == endpoint; });
}

int TEmulatedUsbDevice::HandleIoctl(_UMockdevIoctlBase* /*handler*/, _UMockdevIoctlClient* client,
                                    void* self) {
  static_cast<TEmulatedUsbDevice*>(self)->Answer(client);
  return TRUE;
}

// Runs on umockdev's worker thread while the calling thread waits in its ioctl. The client is
// this very process, so the model reads and writes the caller's structures (URBs, buffers) in
// place; the caller sees them once its ioctl returns.
void TEmulatedUsbDevice::Answer(UMockdevIoctlClient* client) {
  const gulong request = umockdev_ioctl_client_get_request(client);
  UMockdevIoctlData* argument = umockdev_ioctl_client_get_arg(client);
  void* pointer = nullptr;
  std::memcpy(&pointer, argument->data, sizeof pointer);

  std::lock_guard<std::mutex> lock(mLock);
  switch (request) {
    case USBDEVFS_GET_CAPABILITIES: {
      const std::uint32_t capabilities = USBDEVFS_CAP_BULK_CONTINUATION |
                                         USBDEVFS_CAP_NO_PACKET_SIZE_LIM |
                                         USBDEVFS_CAP_REAP_AFTER_DISCONNECT;
      std::memcpy(pointer, &capabilities, sizeof capabilities);
      umockdev_ioctl_client_complete(client, 0, 0);
      return;
    }
    case USBDEVFS_CLAIMINTERFACE:
    case USBDEVFS_RELEASEINTERFACE: {
      unsigned number = 0;
      std::memcpy(&number, pointer, sizeof number);
      if (mUnplugged || number != 0) {
        umockdev_ioctl_client_complete(client, -1, mUnplugged ? ENODEV : EINVAL);
        return;
      }
      ++(request == USBDEVFS_CLAIMINTERFACE ? mClaims : mReleases);
      umockdev_ioctl_client_complete(client, 0, 0);
      return;
    }
    case USBDEVFS_GETDRIVER:
    case USBDEVFS_IOCTL:  // no kernel driver is bound to the interface
      umockdev_ioctl_client_complete(client, -1, ENODATA);
      return;
    case USBDEVFS_CLEAR_HALT: {
      unsigned endpoint = 0;
      std::memcpy(&endpoint, pointer, sizeof endpoint);
      if (mUnplugged) {
        umockdev_ioctl_client_complete(client, -1, ENODEV);
        return;
      }
      mHalted.erase(static_cast<std::uint8_t>(endpoint));
      ++mHaltsCleared[static_cast<std::uint8_t>(endpoint)];
      umockdev_ioctl_client_complete(client, 0, 0);
      return;
    }
    case USBDEVFS_SUBMITURB: Submit(client, static_cast<usbdevfs_urb*>(pointer)); return;
    case USBDEVFS_REAPURB:
    case USBDEVFS_REAPURBNDELAY: Reap(client, static_cast<void**>(pointer)); return;
    case USBDEVFS_DISCARDURB: Discard(client, static_cast<const usbdevfs_urb*>(pointer)); return;
    default: umockdev_ioctl_client_complete(client, -1, ENOTTY); return;
  }
}

void TEmulatedUsbDevice::Submit(UMockdevIoctlClient* client, usbdevfs_urb* urb) {
  if (mUnplugged) {
    umockdev_ioctl_client_complete(client, -1, ENODEV);
    return;
  }
  const auto* bytes = static_cast<const char*>(urb->buffer);
  urb->status = 0;
  urb->actual_length = 0;
  TUrb entry{urb, true};
  if (urb->type == UrbTypeControl) {
    if (urb->buffer_length < static_cast<int>(SetupSize)) {
      umockdev_ioctl_client_complete(client, -1, EINVAL);
      return;
    }
    TEmulatedControl control;
    control.RequestType = static_cast<std::uint8_t>(bytes[0]);
    control.Request = static_cast<std::uint8_t>(bytes[1]);
    const auto word = [bytes](int at) {
      return static_cast<std::uint16_t>(static_cast<std::uint8_t>(bytes[at]) |
                                        static_cast<std::uint8_t>(bytes[at + 1]) << 8);
    };
    control.Value = word(2);
    control.Index = word(4);
    control.Length = word(6);
    if ((control.RequestType & 0x80) != 0) {
      urb->status = -EPIPE;  // the model answers no device-to-host requests
    } else {
      control.Data = QByteArray(bytes + SetupSize,
                                std::min<int>(control.Length, urb->buffer_length - SetupSize));
      urb->actual_length = static_cast<int>(control.Data.size());
      mControls.push_back(control);
    }
  } else if (!Knows(urb->endpoint)) {
    umockdev_ioctl_client_complete(client, -1, ENOENT);
    return;
  } else if (mHalted.count(urb->endpoint) != 0) {
    urb->status = -EPIPE;
  } else if ((urb->endpoint & 0x80) == 0) {
    mWrites[urb->endpoint].push_back(QByteArray(bytes, urb->buffer_length));
    urb->actual_length = urb->buffer_length;
  } else {
    entry.Done = false;  // completed by Reap once the device has something to send
  }
  mUrbs.push_back(entry);
  umockdev_ioctl_client_complete(client, 0, 0);
  mChanged.notify_all();
}

void TEmulatedUsbDevice::Reap(UMockdevIoctlClient* client, void** slot) {
  for (TUrb& pending : mUrbs) {
    if (pending.Done) continue;
    usbdevfs_urb* urb = pending.Urb;
    std::deque<QByteArray>& queue = mIn[urb->endpoint];
    if (mUnplugged) {
      urb->status = -ESHUTDOWN;
    } else if (mHalted.count(urb->endpoint) != 0) {
      urb->status = -EPIPE;
    } else if (!queue.empty()) {
      QByteArray& transfer = queue.front();
      const int count = std::min<int>(urb->buffer_length, static_cast<int>(transfer.size()));
      std::memcpy(urb->buffer, transfer.constData(), static_cast<std::size_t>(count));
      urb->actual_length = count;
      if (count < transfer.size())
        transfer.remove(0, count);
      else
        queue.pop_front();
    } else {
      continue;
    }
    pending.Done = true;
  }
  const auto done =
      std::find_if(mUrbs.begin(), mUrbs.end(), [](const TUrb& urb) { return urb.Done; });
  if (done == mUrbs.end()) {
    umockdev_ioctl_client_complete(client, -1, mUnplugged ? ENODEV : EAGAIN);
    return;
  }
  *slot = done->Urb;
  mUrbs.erase(done);
  umockdev_ioctl_client_complete(client, 0, 0);
  mChanged.notify_all();
}

void TEmulatedUsbDevice::Discard(UMockdevIoctlClient* client, const usbdevfs_urb* urb) {
  const auto found = std::find_if(mUrbs.begin(), mUrbs.end(), [urb](const TUrb& pending) {
    return pending.Urb == urb && !pending.Done;
  });
  if (found == mUrbs.end()) {
    umockdev_ioctl_client_complete(client, -1, EINVAL);
    return;
  }
  found->Urb->status = -ENOENT;  // unlinked, as the kernel reports a discarded URB
  found->Done = true;
  umockdev_ioctl_client_complete(client, 0, 0);
}

}  // namespace norva
