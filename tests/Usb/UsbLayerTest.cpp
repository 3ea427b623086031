// The USB layer's own pieces: hardware identifiers, device paths, the installed backend, and the
// libusb backend where no emulated device is needed (a missing library, the machine's own bus).
#include <libraries/LibUsbBackend.h>
#include <libraries/SimulatedUsb.h>
#include <libraries/WINUSB.h>

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <cerrno>

namespace norva {
namespace {

TEST(UsbHardwareIdTest, FourUpperCaseHexDigitsPerField) {
  EXPECT_EQ(UsbHardwareId(0x1781, 0x07DA, 0x0100), "USB\\VID_1781&PID_07DA&REV_0100");
  EXPECT_EQ(UsbHardwareId(0x0746, 0x4737, 0x0002), "USB\\VID_0746&PID_4737&REV_0002");
  EXPECT_EQ(UsbHardwareId(0, 0xabcd, 0xffff), "USB\\VID_0000&PID_ABCD&REV_FFFF");
}

TEST(UsbHardwareIdTest, FirstTwentyOneCharactersNameVendorAndProduct) {
  // The bus recognises devices by this prefix, whatever the revision.
  EXPECT_EQ(UsbHardwareId(0x1781, 0x07DC, 0x0100).left(21), "USB\\VID_1781&PID_07DC");
  EXPECT_EQ(UsbHardwareId(0x1781, 0x07DC, 0x9999).left(21), "USB\\VID_1781&PID_07DC");
}

TEST(UsbDevicePathTest, BusAndAddressRoundTrip) {
  EXPECT_EQ(UsbDevicePath(1, 7), "usb:001:007");
  EXPECT_EQ(UsbDevicePath(255, 127), "usb:255:127");
  int bus = -1;
  int address = -1;
  ASSERT_TRUE(ParseUsbDevicePath("usb:003:012", bus, address));
  EXPECT_EQ(bus, 3);
  EXPECT_EQ(address, 12);
}

TEST(UsbDevicePathTest, RejectsOtherForms) {
  int bus = 0;
  int address = 0;
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
  QString error;
  ASSERT_TRUE(UsbBackend().EnumerateDevices(found, error));
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].DevicePath, "sim:amp");

  EXPECT_EQ(SetUsbBackend(nullptr), &simulated);
  EXPECT_EQ(&UsbBackend(), original);
}

TEST(LibUsbBackendTest, MissingLibraryGivesTheLoadTexts) {
  TLibUsbBackend backend("libusb-absent-for-this-test.so.0");
  QString error;
  EXPECT_FALSE(backend.LoadWinUsb(error));
  EXPECT_EQ(error, "Error loading winusb.dll");

  std::vector<TUsbDeviceEntry> found{{"stale", "stale"}};
  EXPECT_FALSE(backend.EnumerateDevices(found, error));
  EXPECT_EQ(error, "Cannot load Setup API");
  EXPECT_TRUE(found.empty());

  int code = 0;
  EXPECT_EQ(backend.Open("usb:001:001", code), nullptr);
  EXPECT_EQ(code, ELIBACC);
}

TEST(LibUsbBackendTest, LibraryWithoutTheEntryPointsIsNotLoaded) {
  // A library that loads but is not libusb must not be called into.
  TLibUsbBackend backend("libz.so.1");
  QString error;
  EXPECT_FALSE(backend.LoadWinUsb(error));
  EXPECT_EQ(error, "Error loading winusb.dll");
}

TEST(LibUsbBackendTest, ListsThisMachinesDevicesInTheDesignedForms) {
  // Whatever this machine has (often nothing): every entry has a path Open understands and a
  // hardware identifier the bus can compare.
  TLibUsbBackend backend;
  QString error;
  ASSERT_TRUE(backend.LoadWinUsb(error)) << error.toStdString();
  std::vector<TUsbDeviceEntry> found;
  ASSERT_TRUE(backend.EnumerateDevices(found, error)) << error.toStdString();
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
  int code = 0;
  EXPECT_EQ(backend.Open("not a usb path", code), nullptr);
  EXPECT_EQ(code, EINVAL);
  // Address 0 is never given to a configured device.
  EXPECT_EQ(backend.Open("usb:255:000", code), nullptr);
  EXPECT_EQ(code, ENODEV);
}

}  // namespace
}  // namespace norva
