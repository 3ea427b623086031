// The one USB device search on the simulated USB layer: which devices it finds for which selected
// types, the failures of a USB layer that cannot be loaded or cannot list its devices, and the bus
// object taking such a failure through its error path.
#include <NorvaBusComms/Devices/BusComms.h>
#include <NorvaBusComms/Devices/UsbDeviceSearch.h>
#include <Simulation/SimulatedUsb.h>
#include <Testing/RecordingUIServices.h>

#include <gtest/gtest.h>

#include <cerrno>

namespace norva {
namespace {

class UsbDeviceSearch : public ::testing::Test {
 protected:
  UsbDeviceSearch() : previous(SetUsbBackend(&backend)) {
    backend.AddDevice("usb:1", "USB\\VID_1781&PID_07DC&REV_0100");  // the second amplifier identity
    backend.AddDevice("usb:2", "USB\\VID_1781&PID_07DB&REV_0002");  // a keypad interface
    backend.AddDevice("usb:3", "USB\\VID_1781&PID_0FFF&REV_0100");  // not ours
    backend.AddDevice("usb:4", "usb\\vid_1781&pid_07da");           // case matters
    backend.AddDevice("usb:5", "USB\\VID_0746&PID_4700");           // no revision
  }
  ~UsbDeviceSearch() override { SetUsbBackend(previous); }

  TSimulatedUsbBackend backend;
  TUsbBackend* previous;
  TRecordingUIServices ui;
  TScopedUIServices scope{ui};
};

TEST_F(UsbDeviceSearch, FindsTheSelectedTypesInTheOrderTheLayerListsThem) {
  const struct {
    TCommsDeviceTypes selected;
    QStringList paths;
  } cases[] = {
      {{NorvaAmp}, {"usb:1"}},
      {{NorvaWk2, NorvaAmp}, {"usb:1", "usb:2"}},
      {{IntegraAmp, Router_Q4}, {"usb:5"}},
      {{Router_Q4}, {}},
      {{}, {}},
      {RecognisedUsbDeviceTypes(), {"usb:1", "usb:2", "usb:5"}},
  };
  for (const auto& c : cases) {
    const TUsbDeviceSearch search = SearchUsbDevices(c.selected);
    EXPECT_TRUE(search.Result.Ok());
    QStringList paths;
    for (const TUSBDevice& device : search.Devices) paths << device.Path;
    EXPECT_EQ(paths, c.paths) << c.paths.join(u' ').toStdString();
  }

  const TUsbDeviceSearch all = SearchUsbDevices(RecognisedUsbDeviceTypes());
  ASSERT_EQ(all.Devices.size(), 3U);
  EXPECT_EQ(all.Devices[0].DeviceType, NorvaAmp);
  EXPECT_EQ(all.Devices[1].DeviceType, NorvaWk2);
  EXPECT_EQ(all.Devices[1].HardwareId, "USB\\VID_1781&PID_07DB&REV_0002");
  EXPECT_EQ(all.Devices[2].DeviceType, IntegraAmp);
  EXPECT_TRUE(ui.Messages().isEmpty());
}

TEST_F(UsbDeviceSearch, ALayerThatFailsGivesItsFailureAndNoDevices) {
  const struct {
    bool loadable;
    QString enumerationError;
    int code;
    QString text;
  } cases[] = {
      {false, {}, ELIBACC, "Cannot load Setup API"},
      {true, "bus gone", EIO, "Error enumerating USB devices: bus gone"},
  };
  for (const auto& c : cases) {
    backend.SetLoadable(c.loadable);
    backend.SetEnumerationError(c.enumerationError);
    const TUsbDeviceSearch search = SearchUsbDevices(RecognisedUsbDeviceTypes());
    EXPECT_EQ(search.Result.Code, c.code) << c.text.toStdString();
    EXPECT_EQ(search.Result.Text, c.text);
    EXPECT_TRUE(search.Devices.empty()) << c.text.toStdString();
  }
  EXPECT_TRUE(ui.Messages().isEmpty());  // the search itself tells nobody
}

TEST_F(UsbDeviceSearch,
       TheBusListsWhatItsSelectedTypesFindAndTakesAFailedSearchThroughItsErrorPath) {
  TNorvaBusComms bus(TCommsDeviceTypes{NorvaAmp, Router_Q4}, nullptr);
  bus.SearchUSBDevices();
  ASSERT_EQ(bus.GetUSBDeviceCount(), 1);
  EXPECT_EQ(bus.GetUSBDevicePath(0), "usb:1");
  EXPECT_EQ(bus.GetUSBDeviceType(0), NorvaAmp);
  bus.SetSelectedDeviceTypes({NorvaAmp, NorvaWk2});
  bus.SearchUSBDevices();
  ASSERT_EQ(bus.GetUSBDeviceCount(), 2);
  EXPECT_EQ(bus.GetUSBDeviceType(1), NorvaWk2);

  QStringList heard;
  bool handle = true;
  bus.SetOnError([&](TNorvaBusComms&, const QString& text, bool& handled) {
    heard << text;
    handled = handle;
  });
  backend.SetLoadable(false);
  bus.SearchUSBDevices();
  EXPECT_EQ(heard, QStringList({"Cannot load Setup API"}));
  EXPECT_TRUE(ui.Messages().isEmpty());   // handled: no box
  EXPECT_EQ(bus.GetUSBDeviceCount(), 0);  // what an earlier search found is forgotten

  handle = false;
  bus.SearchUSBDevices();
  EXPECT_EQ(heard.size(), 2);
  ASSERT_EQ(ui.Messages().size(), 1);
  EXPECT_EQ(ui.Messages()[0].Text, "Cannot load Setup API");
  EXPECT_EQ(ui.Messages()[0].Caption, "Error");
}

}  // namespace
}  // namespace norva
