// The USB layer's own pieces: hardware identifiers, device paths, the installed backend, and the
// libusb backend where no emulated device is needed (a missing library, the machine's own bus).
#include <Simulation/SimulatedUsb.h>
#include <libraries/LibUsbBackend.h>
#include <libraries/WINUSB.h>

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <cerrno>

namespace norva {
namespace {

// The bus recognises devices by the first 21 characters, vendor and product, whatever the revision.
TEST(UsbHardwareIdTest, FourUpperCaseHexDigitsPerField) {
  EXPECT_EQ(UsbHardwareId(0x1781, 0x07DA, 0x0100), "USB\\VID_1781&PID_07DA&REV_0100");
  EXPECT_EQ(UsbHardwareId(0x0746, 0x4737, 0x0002), "USB\\VID_0746&PID_4737&REV_0002");
  EXPECT_EQ(UsbHardwareId(0, 0xabcd, 0xffff), "USB\\VID_0000&PID_ABCD&REV_FFFF");
}

TEST(UsbDevicePathTest, BusAndAddressRoundTripAndOtherFormsAreRefused) {
  EXPECT_EQ(UsbDevicePath(1, 7), "usb:001:007");
  EXPECT_EQ(UsbDevicePath(255, 127), "usb:255:127");
  int bus = -1;
  int address = -1;
  ASSERT_TRUE(ParseUsbDevicePath("usb:003:012", bus, address));
  EXPECT_EQ(bus, 3);
  EXPECT_EQ(address, 12);
  for (const char* path :
       {"", "usb:1:2", "usb:001:002 ", "USB:001:002", "usb:001-002", "usb:256:001", "usb:001:128",
        "usb:0x1:002", "\\\\?\\usb#vid_1781", "sim:amp", "usb:001:002:003"})
    EXPECT_FALSE(ParseUsbDevicePath(QString::fromLatin1(path), bus, address)) << path;
}

TEST(UsbPermissionHintTest, NamesTheDeviceAndWhatToDo) {
  EXPECT_EQ(UsbPermissionHint("usb:001:004"),
            "No permission to open the USB device usb:001:004: install the udev rules shipped in "
            "packaging/udev/ (see docs/usb.md) and plug the device in again");
}

TEST(UsbBackendTest, InstalledBackendServesUntilRestored) {
  TUsbBackend* original = &UsbBackend();
  EXPECT_NE(dynamic_cast<TLibUsbBackend*>(original), nullptr) << "libusb unless another is set";

  TSimulatedUsbBackend simulated;
  simulated.AddDevice("sim:amp", "USB\\VID_1781&PID_07DA&REV_0100");
  TUsbBackend* previous = SetUsbBackend(&simulated);
  EXPECT_EQ(previous, original);
  std::vector<TUsbDeviceEntry> found;
  ASSERT_TRUE(UsbBackend().EnumerateDevices(found).Ok());
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].DevicePath, "sim:amp");

  EXPECT_EQ(SetUsbBackend(nullptr), &simulated);
  EXPECT_EQ(&UsbBackend(), original);
}

// A library that is missing, or that loads but is not libusb, is never called into.
TEST(LibUsbBackendTest, AMissingOrForeignLibraryGivesTheLoadTexts) {
  for (const char* library : {"libusb-absent-for-this-test.so.0", "libz.so.1"}) {
    SCOPED_TRACE(library);
    TLibUsbBackend backend(library);
    const TPlatformResult loaded = backend.LoadWinUsb();
    EXPECT_EQ(loaded.Code, ELIBACC);
    EXPECT_EQ(loaded.Text, "Error loading winusb.dll");

    std::vector<TUsbDeviceEntry> found{{"stale", "stale"}};
    const TPlatformResult enumerated = backend.EnumerateDevices(found);
    EXPECT_EQ(enumerated.Code, ELIBACC);
    EXPECT_EQ(enumerated.Text, "Cannot load Setup API");
    EXPECT_TRUE(found.empty());

    TPlatformResult opened;
    EXPECT_EQ(backend.Open("usb:001:001", opened), nullptr);
    EXPECT_EQ(opened.Code, ELIBACC);
    EXPECT_FALSE(opened.Text.isEmpty());
  }
}

TEST(LibUsbBackendTest, ListsThisMachinesDevicesInTheDesignedForms) {
  // Whatever this machine has (often nothing): every entry has a path Open understands and a
  // hardware identifier the bus can compare.
  TLibUsbBackend backend;
  const TPlatformResult loaded = backend.LoadWinUsb();
  ASSERT_TRUE(loaded.Ok()) << loaded.Text.toStdString();
  std::vector<TUsbDeviceEntry> found;
  const TPlatformResult enumerated = backend.EnumerateDevices(found);
  ASSERT_TRUE(enumerated.Ok()) << enumerated.Text.toStdString();
  const QRegularExpression id(
      QStringLiteral("^USB\\\\VID_[0-9A-F]{4}&PID_[0-9A-F]{4}&REV_[0-9A-F]{4}$"));
  for (const TUsbDeviceEntry& entry : found) {
    int bus = 0;
    int address = 0;
    EXPECT_TRUE(ParseUsbDevicePath(entry.DevicePath, bus, address))
        << entry.DevicePath.toStdString();
    EXPECT_TRUE(id.match(entry.HardwareId).hasMatch()) << entry.HardwareId.toStdString();
  }
}

TEST(LibUsbBackendTest, OpenRefusesBadPathsAndAbsentDevices) {
  TLibUsbBackend backend;
  struct TCase {
    const char* Path;
    int Code;
  };
  const TCase cases[] = {
      {"not a usb path", EINVAL},
      {"usb:255:000", ENODEV},  // address 0 is never given to a configured device
  };
  for (const TCase& c : cases) {
    SCOPED_TRACE(c.Path);
    TPlatformResult opened;
    EXPECT_EQ(backend.Open(QString::fromLatin1(c.Path), opened), nullptr);
    EXPECT_EQ(opened.Code, c.Code);
    EXPECT_FALSE(opened.Text.isEmpty());
  }
}

}  // namespace
}  // namespace norva
