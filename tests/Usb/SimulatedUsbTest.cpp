// The simulated USB backend: what the bus's workers see on the host side and what a test or the
// simulator sees on the device side, including the cross-thread cases (a blocked read woken by
// data or by an unplug).
#include <Simulation/SimulatedUsb.h>

#include "support/UsbPipes.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <future>
#include <thread>

namespace norva {
namespace {

const QString AmpPath = QStringLiteral("sim:amp");
const QString AmpId = QStringLiteral("USB\\VID_1781&PID_07DA&REV_0100");
// Long enough never to expire in a passing run: a read that returns because of it has failed.
constexpr int NoExpiryMs = 20000;

class SimulatedUsbTest : public ::testing::Test {
 protected:
  void SetUp() override {
    device = backend.AddDevice(AmpPath, AmpId);
    TPlatformResult opened = TPlatformResult::Failure(EIO, "left from before");
    usb = backend.Open(AmpPath, opened);
    ASSERT_NE(usb, nullptr);
    ASSERT_TRUE(opened.Ok());
  }

  QByteArray Read(std::uint8_t pipe, int length, int timeoutMs) {
    QByteArray buffer(length, '\0');
    const int count = usb->ReadPipe(pipe, buffer.data(), length, timeoutMs);
    if (count < 0) return "<error " + QByteArray::number(usb->LastError()) + '>';
    buffer.truncate(count);
    return buffer;
  }

  TSimulatedUsbBackend backend;
  std::shared_ptr<TSimulatedUsbDevice> device;
  std::unique_ptr<TWinUsbInterface> usb;
};

TEST_F(SimulatedUsbTest, InterfaceListsTheDefaultPipes) { testing::ExpectTheFourBulkPipes(*usb); }

TEST_F(SimulatedUsbTest, ReadsTimeOutWithZeroOnNothingAndKeepTheDeviceTransfersApart) {
  char buffer[16];
  EXPECT_EQ(usb->ReadPipe(0x82, buffer, sizeof buffer, 10), 0);
  EXPECT_EQ(usb->ReadPipe(0x82, buffer, 0, 10), 0);
  EXPECT_TRUE(device->IsOpen());
  EXPECT_EQ(device->Counters().Reads, 0) << "a read that found nothing is no transfer";

  ASSERT_TRUE(device->PushIn(0x82, "first"));
  ASSERT_TRUE(device->PushIn(0x82, "second"));
  ASSERT_TRUE(device->PushIn(0x83, "notify"));

  EXPECT_EQ(Read(0x82, 1024, 100), "first");  // never joined with "second"
  EXPECT_EQ(Read(0x82, 3, 100), "sec");       // a short buffer takes the front of a transfer
  EXPECT_EQ(Read(0x82, 1024, 100), "ond");    // and the rest comes next
  EXPECT_EQ(Read(0x83, 1024, 100), "notify");
  EXPECT_EQ(device->Counters().BytesIn, 17);
}

// A read blocked on another thread is woken by data, and failed with "no device" by an unplug.
TEST_F(SimulatedUsbTest, ABlockedReadIsWokenByDataOrFailedByAnUnplug) {
  for (const bool unplug : {false, true}) {
    SCOPED_TRACE(unplug ? "unplug" : "data");
    auto reader = std::async(std::launch::async, [this] { return Read(0x83, 64, NoExpiryMs); });
    ASSERT_TRUE(device->WaitForReaders(0x83, 1, NoExpiryMs));
    if (unplug)
      device->Unplug();
    else
      device->PushIn(0x83, "late");
    EXPECT_EQ(reader.get(), unplug ? "<error " + QByteArray::number(ENODEV) + '>' : "late");
  }
}

TEST_F(SimulatedUsbTest, UnpluggedDeviceFailsEveryCallAndLeavesTheListTillReplugged) {
  device->PushIn(0x82, "lost");
  device->Unplug();
  char buffer[8] = {};
  EXPECT_EQ(usb->ReadPipe(0x82, buffer, sizeof buffer, 10), -1);
  EXPECT_EQ(usb->LastError(), ENODEV);
  EXPECT_EQ(usb->WritePipe(0x01, "x", 1, 10), -1);
  EXPECT_EQ(usb->LastError(), ENODEV);
  EXPECT_FALSE(usb->ControlTransfer({0x40, 1, 0, 0, 0}, QByteArray()));
  EXPECT_EQ(usb->LastError(), ENODEV);
  EXPECT_FALSE(usb->FlushPipe(0x82));
  EXPECT_FALSE(device->PushIn(0x82, "while away"));

  std::vector<TUsbDeviceEntry> found;
  ASSERT_TRUE(backend.EnumerateDevices(found).Ok());
  EXPECT_TRUE(found.empty());
  TPlatformResult opened;
  EXPECT_EQ(backend.Open(AmpPath, opened), nullptr);
  EXPECT_EQ(opened.Code, ENODEV);

  // Plugged in again, it needs a new open and starts empty.
  device->Replug();
  EXPECT_EQ(usb->ReadPipe(0x82, buffer, sizeof buffer, 10), -1);  // the old handle stays dead
  EXPECT_EQ(usb->LastError(), ENODEV);

  auto fresh = backend.Open(AmpPath, opened);  // the old handle no longer holds the interface
  ASSERT_NE(fresh, nullptr);
  EXPECT_EQ(fresh->ReadPipe(0x82, buffer, sizeof buffer, 10), 0);  // queued data did not survive
  ASSERT_TRUE(backend.EnumerateDevices(found).Ok());
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].DevicePath, AmpPath);
  EXPECT_EQ(found[0].HardwareId, AmpId);
}

TEST_F(SimulatedUsbTest, InterfaceIsClaimedByOneHandleAtATime) {
  TPlatformResult opened;
  EXPECT_EQ(backend.Open(AmpPath, opened), nullptr);
  EXPECT_EQ(opened.Code, EBUSY);
  usb.reset();
  EXPECT_FALSE(device->IsOpen());
  auto again = backend.Open(AmpPath, opened);
  EXPECT_NE(again, nullptr);
  EXPECT_TRUE(opened.Ok());
  EXPECT_EQ(device->Counters().Opens, 2);
  EXPECT_EQ(device->Counters().Closes, 1);
}

TEST_F(SimulatedUsbTest, WritesArriveOnTheirPipeOneEntryPerWrite) {
  EXPECT_EQ(usb->WritePipe(0x01, "0B0523\r\n", 8, 100), 8);
  EXPECT_EQ(usb->WritePipe(0x01, "abc", 3, 100), 3);
  EXPECT_EQ(usb->WritePipe(0x04, "cmd", 3, 100), 3);
  EXPECT_EQ(device->TakeWrites(0x01), (std::vector<QByteArray>{"0B0523\r\n", "abc"}));
  EXPECT_EQ(device->TakeWritten(0x04), "cmd");
  EXPECT_TRUE(device->TakeWrites(0x01).empty());  // taken means gone
  EXPECT_EQ(device->Counters().BytesOut, 14);
}

TEST_F(SimulatedUsbTest, ShortPacketTerminateAddsAZeroLengthPacketAfterWholePackets) {
  const QByteArray packet(64, 'p');
  usb->WritePipe(0x01, packet.constData(), 64, 100);
  EXPECT_EQ(device->TakeWrites(0x01).size(), 1U) << "no zero-length packet without the policy";

  ASSERT_TRUE(usb->SetPipePolicy(0x01, TPipePolicy::ShortPacketTerminate, true));
  usb->WritePipe(0x01, packet.constData(), 64, 100);
  usb->WritePipe(0x01, packet.constData(), 63, 100);
  EXPECT_EQ(device->TakeWrites(0x01),
            (std::vector<QByteArray>{packet, QByteArray(), packet.left(63)}));
  EXPECT_EQ(device->Counters().ZeroLengthPackets, 1);

  usb->SetPipePolicy(0x04, TPipePolicy::ShortPacketTerminate, true);  // per pipe
  ASSERT_TRUE(usb->SetPipePolicy(0x01, TPipePolicy::ShortPacketTerminate, false));
  usb->WritePipe(0x01, packet.constData(), 64, 100);
  EXPECT_EQ(device->TakeWrites(0x01).size(), 1U);
}

TEST_F(SimulatedUsbTest, StalledPipeFailsUntilAutoClearStallClearsIt) {
  device->StallPipe(0x82);
  device->PushIn(0x82, "after stall");
  char buffer[32];
  EXPECT_EQ(usb->ReadPipe(0x82, buffer, sizeof buffer, 10), -1);
  EXPECT_EQ(usb->LastError(), EPIPE);
  EXPECT_EQ(usb->ReadPipe(0x82, buffer, sizeof buffer, 10), -1) << "a halt stays until cleared";

  ASSERT_TRUE(usb->SetPipePolicy(0x82, TPipePolicy::AutoClearStall, true));
  EXPECT_EQ(Read(0x82, 32, 100), "after stall");
  EXPECT_EQ(device->Counters().StallsCleared, 1);

  device->StallPipe(0x01);
  EXPECT_EQ(usb->WritePipe(0x01, "x", 1, 10), -1);
  usb->SetPipePolicy(0x01, TPipePolicy::AutoClearStall, true);
  EXPECT_EQ(usb->WritePipe(0x01, "x", 1, 10), 1);
}

TEST_F(SimulatedUsbTest, PausedOutPipeTimesOutWithZeroAndResumes) {
  device->PauseOutPipe(0x01, true);
  EXPECT_EQ(usb->WritePipe(0x01, "held", 4, 10), 0);
  EXPECT_TRUE(device->TakeWrites(0x01).empty());

  auto writer = std::async(std::launch::async,
                           [this] { return usb->WritePipe(0x01, "later", 5, NoExpiryMs); });
  device->PauseOutPipe(0x01, false);
  EXPECT_EQ(writer.get(), 5);
  EXPECT_EQ(device->TakeWritten(0x01), "later");
}

TEST_F(SimulatedUsbTest, ControlTransfersAreRecordedWithSetupAndDataStageUnlessUnsendable) {
  EXPECT_FALSE(usb->ControlTransfer({0xC0, 1, 0, 0, 4}, QByteArray(4, 'x')));  // device to host
  EXPECT_EQ(usb->LastError(), EINVAL);
  EXPECT_FALSE(usb->ControlTransfer({0x40, 1, 0, 0, 8}, QByteArray(3, 'x')));  // data short
  EXPECT_EQ(usb->LastError(), EINVAL);
  EXPECT_TRUE(device->TakeControlTransfers().empty());

  EXPECT_TRUE(
      usb->ControlTransfer({0x40, 5, 0x1234, 0x0002, 3}, QByteArray("\x01\x02\x03\x04", 4)));
  EXPECT_TRUE(usb->ControlTransfer({0x40, 23, 0, 0, 0}, QByteArray()));
  ASSERT_TRUE(device->WaitForControlTransfers(2, 100));
  const auto transfers = device->TakeControlTransfers();
  ASSERT_EQ(transfers.size(), 2U);
  EXPECT_EQ(transfers[0].Setup.RequestType, 0x40);
  EXPECT_EQ(transfers[0].Setup.Request, 5);
  EXPECT_EQ(transfers[0].Setup.Value, 0x1234);
  EXPECT_EQ(transfers[0].Setup.Index, 2);
  EXPECT_EQ(transfers[0].Data, QByteArray("\x01\x02\x03", 3));  // Length decides the data stage
  EXPECT_EQ(transfers[1].Setup.Request, 23);
  EXPECT_TRUE(transfers[1].Data.isEmpty());
}

TEST_F(SimulatedUsbTest, HandlersAnswerOnTheHostThreadAndMayPushIn) {
  // The simulator's echo: what the host writes comes back on the data pipe.
  device->SetWriteHandler([this](std::uint8_t pipe, const QByteArray& bytes) {
    if (pipe == 0x01) device->PushIn(0x82, bytes);
  });
  device->SetControlHandler(
      [](const TSimulatedControlTransfer& transfer) { return transfer.Setup.Request != 99; });
  EXPECT_EQ(usb->WritePipe(0x01, "echo", 4, 100), 4);
  EXPECT_EQ(Read(0x82, 64, 100), "echo");
  EXPECT_TRUE(device->TakeWrites(0x01).empty()) << "a handled write is not queued";
  EXPECT_TRUE(usb->ControlTransfer({0x40, 1, 0, 0, 0}, QByteArray()));
  EXPECT_FALSE(usb->ControlTransfer({0x40, 99, 0, 0, 0}, QByteArray()));
  EXPECT_EQ(usb->LastError(), EPIPE);
  EXPECT_EQ(device->Counters().ControlTransfers, 2);
}

TEST_F(SimulatedUsbTest, FlushDropsWhatAnInPipeHolds) {
  device->PushIn(0x82, "stale");
  device->PushIn(0x83, "kept");
  EXPECT_TRUE(usb->FlushPipe(0x82));
  EXPECT_TRUE(usb->FlushPipe(0x01));
  EXPECT_EQ(device->PendingIn(0x82), 0U);
  EXPECT_EQ(Read(0x83, 64, 100), "kept");
  EXPECT_FALSE(usb->FlushPipe(0x85));
  EXPECT_EQ(usb->LastError(), EINVAL);
}

TEST_F(SimulatedUsbTest, BadArgumentsFailWithInvalidArgument) {
  char buffer[4];
  const std::array<int, 6> results = {
      usb->ReadPipe(0x01, buffer, 4, 10),   // an OUT pipe
      usb->ReadPipe(0x85, buffer, 4, 10),   // no such pipe
      usb->ReadPipe(0x82, nullptr, 4, 10),  // no buffer
      usb->ReadPipe(0x82, buffer, -1, 10),  // negative length
      usb->ReadPipe(0x82, buffer, 4, -5),   // negative time-out
      usb->WritePipe(0x82, buffer, 4, 10),  // an IN pipe
  };
  for (const int result : results) EXPECT_EQ(result, -1);
  EXPECT_EQ(usb->LastError(), EINVAL);
  EXPECT_FALSE(usb->SetPipePolicy(0x85, TPipePolicy::AutoClearStall, true));
  EXPECT_FALSE(usb->SetPipePolicy(0x82, static_cast<TPipePolicy>(7), true));
  EXPECT_FALSE(device->PushIn(0x01, "wrong way"));
}

TEST_F(SimulatedUsbTest, LastErrorBelongsToTheCallingThread) {
  char buffer[4];
  ASSERT_EQ(usb->ReadPipe(0x85, buffer, 4, 10), -1);
  ASSERT_EQ(usb->LastError(), EINVAL);
  std::thread other([this] {
    device->StallPipe(0x83);
    char inner[4];
    usb->ReadPipe(0x83, inner, 4, 10);
    EXPECT_EQ(usb->LastError(), EPIPE);
  });
  other.join();
  EXPECT_EQ(usb->LastError(), EINVAL);
}

TEST(SimulatedUsbBackendTest, ListsPluggedDevicesInTheOrderAdded) {
  TSimulatedUsbBackend backend;
  backend.AddDevice("sim:b", "USB\\VID_1781&PID_07DB&REV_0001");
  backend.AddDevice("sim:a", "USB\\VID_0746&PID_4700&REV_0002");
  backend.AddDevice("sim:c", "USB\\VID_1781&PID_07E0&REV_0003")->Unplug();
  std::vector<TUsbDeviceEntry> found;
  ASSERT_TRUE(backend.EnumerateDevices(found).Ok());
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].DevicePath, "sim:b");
  EXPECT_EQ(found[1].HardwareId, "USB\\VID_0746&PID_4700&REV_0002");

  EXPECT_TRUE(backend.RemoveDevice("sim:b"));
  EXPECT_FALSE(backend.RemoveDevice("sim:b"));
  EXPECT_EQ(backend.Device("sim:b"), nullptr);
  TPlatformResult opened;
  EXPECT_EQ(backend.Open("sim:b", opened), nullptr);
  EXPECT_EQ(opened.Code, ENODEV);
}

TEST(SimulatedUsbBackendTest, LoadAndEnumerationFailuresCarryTheirCodesAndTexts) {
  TSimulatedUsbBackend backend;
  backend.AddDevice("sim:a", "USB\\VID_1781&PID_07DA&REV_0100");
  std::vector<TUsbDeviceEntry> found;

  backend.SetEnumerationError("device list unavailable");
  EXPECT_TRUE(backend.LoadWinUsb().Ok());
  TPlatformResult enumerated = backend.EnumerateDevices(found);
  EXPECT_EQ(enumerated.Code, EIO);
  EXPECT_EQ(enumerated.Text, "Error enumerating USB devices: device list unavailable");

  backend.SetLoadable(false);
  const TPlatformResult loaded = backend.LoadWinUsb();
  EXPECT_EQ(loaded.Code, ELIBACC);
  EXPECT_EQ(loaded.Text, "Error loading winusb.dll");
  enumerated = backend.EnumerateDevices(found);
  EXPECT_EQ(enumerated.Code, ELIBACC);
  EXPECT_EQ(enumerated.Text, "Cannot load Setup API");
  TPlatformResult opened;
  EXPECT_EQ(backend.Open("sim:a", opened), nullptr);
  EXPECT_EQ(opened.Code, ELIBACC);
  EXPECT_FALSE(opened.Text.isEmpty());
}

TEST(SimulatedUsbBackendTest, OpenReportsTheCodeTheDeviceWasGiven) {
  TSimulatedUsbBackend backend;
  const auto device = backend.AddDevice("sim:a", "USB\\VID_1781&PID_07DA&REV_0100");
  for (const int code : {EACCES, EIO}) {
    device->SetOpenError(code);
    TPlatformResult opened;
    EXPECT_EQ(backend.Open("sim:a", opened), nullptr);
    EXPECT_EQ(opened.Code, code);
    EXPECT_FALSE(opened.Text.isEmpty());
  }
  device->SetOpenError(0);
  TPlatformResult opened;
  EXPECT_NE(backend.Open("sim:a", opened), nullptr);
  EXPECT_TRUE(opened.Ok());
}

}  // namespace
}  // namespace norva
