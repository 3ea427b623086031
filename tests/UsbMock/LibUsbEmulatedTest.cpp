// The libusb backend against a device emulated by umockdev: the real dlopen'd libusb, its usbfs
// ioctls answered by the model in EmulatedUsbDevice.
#include "EmulatedUsbDevice.h"

#include <libraries/LibUsbBackend.h>

#include "support/UsbPipes.h"

#include <gtest/gtest.h>

#include <QThread>

#include <cerrno>
#include <future>

namespace norva {
namespace {

// Long enough never to expire in a passing run; libusb polls while waiting, so waits that are
// meant to expire are kept short instead.
constexpr int NoExpiryMs = 10000;
constexpr int ShortMs = 50;

class LibUsbEmulatedTest : public ::testing::Test {
 protected:
  void SetUp() override {
#if defined(__SANITIZE_THREAD__)
    // umockdev hands the ioctls to the model through GLib's sockets and the model writes the
    // caller's URBs in place; neither hand-over is visible to ThreadSanitizer, which then reports
    // every transfer. The layer's own threading is covered by the simulated backend's suite.
    GTEST_SKIP() << "not meaningful under ThreadSanitizer";
#endif
    device = std::make_unique<TEmulatedUsbDevice>(0x1781, 0x07DA, 0x0100);
    ASSERT_TRUE(device->SetupError().isEmpty()) << device->SetupError().toStdString();
    // After the device: the context lists what the testbed holds when it starts.
    backend = std::make_unique<TLibUsbBackend>();
    TPlatformResult opened = TPlatformResult::Failure(EIO, "left from before");
    usb = backend->Open(TEmulatedUsbDevice::DevicePath(), opened);
    ASSERT_TRUE(opened.Ok()) << opened.Text.toStdString();
    ASSERT_NE(usb, nullptr);
  }

  QByteArray Read(std::uint8_t pipe, int timeoutMs) {
    QByteArray buffer(512, '\0');
    const int count =
        usb->ReadPipe(pipe, buffer.data(), static_cast<int>(buffer.size()), timeoutMs);
    if (count < 0) return QByteArray("<error ") + QByteArray::number(usb->LastError()) + '>';
    buffer.truncate(count);
    return buffer;
  }

  bool Listed() {
    std::vector<TUsbDeviceEntry> found;
    if (!backend->EnumerateDevices(found).Ok()) return false;
    return std::any_of(found.begin(), found.end(), [](const TUsbDeviceEntry& entry) {
      return entry.DevicePath == TEmulatedUsbDevice::DevicePath();
    });
  }

  // In this order: the interface is freed before the backend, the backend before the device.
  std::unique_ptr<TEmulatedUsbDevice> device;
  std::unique_ptr<TLibUsbBackend> backend;
  std::unique_ptr<TWinUsbInterface> usb;  // the device opened
};

TEST_F(LibUsbEmulatedTest, EnumerationFindsTheDeviceWithItsHardwareId) {
  ASSERT_TRUE(backend->LoadWinUsb().Ok());
  std::vector<TUsbDeviceEntry> found;
  const TPlatformResult enumerated = backend->EnumerateDevices(found);
  ASSERT_TRUE(enumerated.Ok()) << enumerated.Text.toStdString();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].DevicePath, "usb:003:007");
  EXPECT_EQ(found[0].HardwareId, "USB\\VID_1781&PID_07DA&REV_0100");
}

TEST_F(LibUsbEmulatedTest, OpenClaimsInterfaceZeroAndListsItsFourPipes) {
  EXPECT_EQ(device->Claims(), 1);

  testing::ExpectTheFourBulkPipes(*usb);
  TUsbInterfaceDescriptor descriptor;
  ASSERT_TRUE(usb->QueryInterfaceSettings(0, descriptor));
  EXPECT_EQ(descriptor.InterfaceClass, 0xFF);

  usb.reset();
  EXPECT_EQ(device->Releases(), 1) << "freeing the interface releases it";
}

TEST_F(LibUsbEmulatedTest, OpenOfAnAbsentDeviceFailsWithNoDevice) {
  TPlatformResult opened;
  EXPECT_EQ(backend->Open("usb:003:008", opened), nullptr);
  EXPECT_EQ(opened.Code, ENODEV);
  EXPECT_FALSE(opened.Text.isEmpty());
}

TEST_F(LibUsbEmulatedTest, BulkWritesReachTheDeviceAndShortPacketTerminateEndsWholePackets) {
  EXPECT_EQ(usb->WritePipe(0x01, "0B0523\r\n", 8, NoExpiryMs), 8);
  EXPECT_EQ(usb->WritePipe(0x04, "cmd", 3, NoExpiryMs), 3);
  EXPECT_EQ(device->TakeWrites(0x01), (std::vector<QByteArray>{"0B0523\r\n"}));
  EXPECT_EQ(device->TakeWrites(0x04), (std::vector<QByteArray>{"cmd"}));

  // With the policy, a zero-length packet follows a write of whole packets.
  const QByteArray packets(128, 'p');
  ASSERT_TRUE(usb->SetPipePolicy(0x01, TPipePolicy::ShortPacketTerminate, true));
  EXPECT_EQ(usb->WritePipe(0x01, packets.constData(), 128, NoExpiryMs), 128);
  EXPECT_EQ(usb->WritePipe(0x01, packets.constData(), 100, NoExpiryMs), 100);
  EXPECT_EQ(device->TakeWrites(0x01),
            (std::vector<QByteArray>{packets, QByteArray(), packets.left(100)}));
}

TEST_F(LibUsbEmulatedTest, BulkReadsReturnWhatTheDeviceSendsOrTimeOutWithZeroTakingNothing) {
  device->PushIn(0x82, "0C0501\r\n");
  device->PushIn(0x83, QByteArray("\x04\x02\x0B\x05", 4));
  EXPECT_EQ(Read(0x82, NoExpiryMs), "0C0501\r\n");
  EXPECT_EQ(Read(0x83, NoExpiryMs), QByteArray("\x04\x02\x0B\x05", 4));

  char buffer[64];
  EXPECT_EQ(usb->ReadPipe(0x82, buffer, sizeof buffer, ShortMs), 0);
  device->PushIn(0x82, "after");  // the cancelled read took nothing away
  EXPECT_EQ(Read(0x82, NoExpiryMs), "after");
}

TEST_F(LibUsbEmulatedTest, VendorControlTransferArrivesWithSetupAndData) {
  EXPECT_TRUE(
      usb->ControlTransfer({0x40, 5, 0x1234, 0x5678, 3}, QByteArray("\x09\x08\x07\x06", 4)));
  EXPECT_TRUE(usb->ControlTransfer({0x40, 23, 0, 0, 0}, QByteArray()));
  const auto controls = device->TakeControls();
  ASSERT_EQ(controls.size(), 2U);
  EXPECT_EQ(controls[0].RequestType, 0x40);
  EXPECT_EQ(controls[0].Request, 5);
  EXPECT_EQ(controls[0].Value, 0x1234);
  EXPECT_EQ(controls[0].Index, 0x5678);
  EXPECT_EQ(controls[0].Length, 3);
  EXPECT_EQ(controls[0].Data, QByteArray("\x09\x08\x07", 3));
  EXPECT_EQ(controls[1].Request, 23);
  EXPECT_TRUE(controls[1].Data.isEmpty());
}

TEST_F(LibUsbEmulatedTest, AutoClearStallClearsTheHaltAndRetries) {
  device->Stall(0x01);
  EXPECT_EQ(usb->WritePipe(0x01, "x", 1, NoExpiryMs), -1);
  EXPECT_EQ(usb->LastError(), EPIPE);

  ASSERT_TRUE(usb->SetPipePolicy(0x01, TPipePolicy::AutoClearStall, true));
  EXPECT_EQ(usb->WritePipe(0x01, "y", 1, NoExpiryMs), 1);
  EXPECT_EQ(device->HaltsCleared(0x01), 1);
  EXPECT_EQ(device->TakeWrites(0x01), (std::vector<QByteArray>{"y"}));
}

TEST_F(LibUsbEmulatedTest, FlushDropsWhatTheDeviceHasReady) {
  device->PushIn(0x82, "stale 1");
  device->PushIn(0x82, "stale 2");
  device->PushIn(0x83, "kept");
  EXPECT_TRUE(usb->FlushPipe(0x82));
  char buffer[64];
  EXPECT_EQ(usb->ReadPipe(0x82, buffer, sizeof buffer, ShortMs), 0);
  EXPECT_EQ(Read(0x83, NoExpiryMs), "kept");
}

TEST_F(LibUsbEmulatedTest, ReadsOfTwoPipesOnTwoThreadsEachGetTheirOwnData) {
  auto data = std::async(std::launch::async, [&] { return Read(0x82, NoExpiryMs); });
  auto notify = std::async(std::launch::async, [&] { return Read(0x83, NoExpiryMs); });
  ASSERT_TRUE(device->WaitForPendingIn(0x82, 1, NoExpiryMs));
  ASSERT_TRUE(device->WaitForPendingIn(0x83, 1, NoExpiryMs));
  device->PushIn(0x83, "notification");
  EXPECT_EQ(notify.get(), "notification");
  device->PushIn(0x82, "data");
  EXPECT_EQ(data.get(), "data");
}

TEST_F(LibUsbEmulatedTest, UnplugFailsAPendingReadAndRemovesTheDevice) {
  auto reader = std::async(std::launch::async, [&] {
    char buffer[64];
    const int count = usb->ReadPipe(0x82, buffer, sizeof buffer, NoExpiryMs);
    return std::pair<int, int>(count, usb->LastError());
  });
  ASSERT_TRUE(device->WaitForPendingIn(0x82, 1, NoExpiryMs));
  device->Unplug();
  const auto [count, error] = reader.get();
  EXPECT_EQ(count, -1);
  EXPECT_EQ(error, ENODEV);

  EXPECT_EQ(usb->WritePipe(0x01, "x", 1, NoExpiryMs), -1);
  EXPECT_EQ(usb->LastError(), ENODEV);
  // libusb learns of the removal from its hotplug thread, so the list changes a moment later.
  bool listed = true;
  for (int attempt = 0; attempt < 500 && listed; ++attempt) {
    listed = Listed();
    if (listed) QThread::msleep(10);
  }
  EXPECT_FALSE(listed);
}

}  // namespace
}  // namespace norva
