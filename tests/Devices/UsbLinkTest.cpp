// The bus object on the simulated USB backend: device search, the open sequence and its checks,
// the four pipe workers, the object exchange and unplugging.
#include <Testing/RecordingUIServices.h>

#include <Simulation/UsbAmplifier.h>
#include "RecordingClient.h"
#include "support/EventLoop.h"

#include <QTimer>

#include <gtest/gtest.h>

namespace norva {
namespace {

using testing::PumpFor;
using testing::PumpUntil;
using testing::TRecordingClient;

class UsbLinkTest : public ::testing::Test {
 protected:
  UsbLinkTest() : previous(SetUsbBackend(&backend)) {}
  ~UsbLinkTest() override {
    client.reset();
    SetUsbBackend(previous);
  }

  void Connect() {
    bus = new TNorvaBusComms(TCommsDeviceTypes{NorvaAmp}, nullptr);
    client = std::make_unique<TRecordingClient>(bus);
    client->SetConnected(true);
    ASSERT_TRUE(client->GetConnected());
  }

  sim::TUsbAmplifier& Amplifier() {
    if (!mAmplifier) mAmplifier = std::make_unique<sim::TUsbAmplifier>(backend);
    return *mAmplifier;
  }

  TSimulatedUsbBackend backend;
  TUsbBackend* previous;
  std::unique_ptr<sim::TUsbAmplifier> mAmplifier;  // outlives the client and its workers
  TRecordingUIServices ui;
  TScopedUIServices scope{ui};
  TNorvaBusComms* bus = nullptr;
  std::unique_ptr<TRecordingClient> client;
};

TEST_F(UsbLinkTest, CommandsGoToTheCommandPipeAndEchoesComeBackAsFrames) {
  sim::TUsbAmplifier& amplifier = Amplifier();
  ASSERT_NO_FATAL_FAILURE(Connect());
  EXPECT_EQ(bus->ConnectedUSBDeviceType(), NorvaAmp);
  EXPECT_EQ(bus->GetUSBDeviceIndex(), 0);
  bus->SendCmd(BuildCommandPacket(0x20, 5, {1}));
  EXPECT_TRUE(bus->WaitUntilEchoReceived(5000));
  ASSERT_TRUE(PumpUntil([&] { return client->Packets.size() >= 2; }));
  EXPECT_EQ(PacketText(client->Packets[0]), "200501\r\n");
  EXPECT_EQ(PacketText(client->Packets[1]), "A00501\r\n");
  EXPECT_EQ(client->Echoes.mid(0, 2), (QList<bool>{true, false}));
  EXPECT_TRUE(amplifier.ControlRequests().empty());  // the command pipe needs no announcement
}

TEST_F(UsbLinkTest, WithoutACommandPipeTheTextIsAnnouncedAndSentOnTheDataPipe) {
  auto device =
      backend.AddDevice("usb:1", "USB\\VID_1781&PID_07DA&REV_0100",
                        {{TUsbPipeType::Bulk, 0x82, 64, 0}, {TUsbPipeType::Bulk, 0x01, 64, 0}});
  ASSERT_NO_FATAL_FAILURE(Connect());
  bus->SendCmd(BuildCommandPacket(0x0B, 5, {0x23}));
  ASSERT_TRUE(device->WaitForWritten(0x01, 8, 5000));
  EXPECT_EQ(device->TakeWritten(0x01), "0B0523\r\n");
  const auto transfers = device->TakeControlTransfers();
  ASSERT_EQ(transfers.size(), 1u);
  EXPECT_EQ(transfers[0].Setup.RequestType, 0x40);
  EXPECT_EQ(transfers[0].Setup.Request, usb_norva_cmd_num_bytes);
  EXPECT_EQ(transfers[0].Setup.Value, 8);
  EXPECT_EQ(transfers[0].Setup.Index, 1);
}

TEST_F(UsbLinkTest, VendorCommandsCarryAtMostEightBytesAndClosingIsAnnounced) {
  auto device = backend.AddDevice("usb:1", "USB\\VID_1781&PID_07DA&REV_0100");
  ASSERT_NO_FATAL_FAILURE(Connect());
  bus->SendUSBCommand(usb_read_setting, 0x1234, 0x0042, "abcdefghijkl", false);
  ASSERT_TRUE(device->WaitForControlTransfers(1, 5000));
  auto transfers = device->TakeControlTransfers();
  EXPECT_EQ(transfers[0].Setup.Request, usb_read_setting);
  EXPECT_EQ(transfers[0].Setup.Value, 0x1234);
  EXPECT_EQ(transfers[0].Setup.Index, 0x0042);
  EXPECT_EQ(transfers[0].Data, "abcdefgh");

  client->SetConnected(false);
  transfers = device->TakeControlTransfers();
  // Each transmit worker tells the device, as it ends, that the host has let go.
  ASSERT_FALSE(transfers.empty());
  for (const auto& transfer : transfers) EXPECT_EQ(transfer.Setup.Request, usb_closing);
}

TEST_F(UsbLinkTest, AnEndpointOfTheWrongKindFailsTheOpen) {
  backend.AddDevice("usb:1", "USB\\VID_1781&PID_07DA&REV_0100",
                    {{TUsbPipeType::Bulk, 0x82, 64, 0},
                     {TUsbPipeType::Interrupt, 0x81, 8, 1},  // not bulk: ignored
                     {TUsbPipeType::Bulk, 0x85, 64, 0},
                     {TUsbPipeType::Bulk, 0x01, 64, 0}});
  QStringList heard;
  bus = new TNorvaBusComms(TCommsDeviceTypes{NorvaAmp}, nullptr);
  bus->SetOnError([&](TNorvaBusComms&, const QString& text, bool&) { heard << text; });
  client = std::make_unique<TRecordingClient>(bus);
  bus->SearchUSBDevices();
  bus->SetDevicePath("usb:1");
  EXPECT_FALSE(client->GetConnected());
  ASSERT_EQ(heard.size(), 1);
  EXPECT_TRUE(heard[0].startsWith("Error: In pipe ID incorrect\r\n\r\nError: "))
      << heard[0].toStdString();
  EXPECT_EQ(ui.Messages().size(), 1);
}

TEST_F(UsbLinkTest, ANamedDeviceThatIsAbsentIsNeverReplacedByAnother) {
  backend.AddDevice("usb:1", "USB\\VID_1781&PID_07DA&REV_0100");  // another amplifier
  QStringList heard;
  bus = new TNorvaBusComms(USBInterface, {NorvaAmp}, QStringLiteral("usb:2"), nullptr);
  bus->SetOnError([&](TNorvaBusComms&, const QString& text, bool&) { heard << text; });
  client = std::make_unique<TRecordingClient>(bus);
  client->SetConnected(true);
  EXPECT_FALSE(client->GetConnected());
  ASSERT_EQ(heard.size(), 1);
  EXPECT_TRUE(heard[0].startsWith("USB device usb:2 is not connected\r\n\r\nError: "))
      << heard[0].toStdString();
  EXPECT_FALSE(bus->CheckConnections());  // checking again quietly waits for the named one
  EXPECT_FALSE(client->GetConnected());
  EXPECT_EQ(heard.size(), 1);

  backend.AddDevice("usb:2", "USB\\VID_1781&PID_07DA&REV_0100");  // plugged in: taken
  EXPECT_TRUE(bus->CheckConnections());
  EXPECT_TRUE(client->GetConnected());
  EXPECT_EQ(bus->DevicePath(), "usb:2");
}

TEST_F(UsbLinkTest, APermissionFailureSaysWhatToDo) {
  auto device = backend.AddDevice("usb:1", "USB\\VID_1781&PID_07DA&REV_0100");
  device->SetOpenError(EACCES);
  bus = new TNorvaBusComms(TCommsDeviceTypes{NorvaAmp}, nullptr);
  client = std::make_unique<TRecordingClient>(bus);
  bus->SearchUSBDevices();
  bus->SetDevicePath("usb:1");
  ASSERT_EQ(ui.Messages().size(), 1);
  EXPECT_TRUE(ui.Messages()[0].Text.startsWith("Cannot open device usb:1\r\n\r\n"));
  EXPECT_TRUE(ui.Messages()[0].Text.contains("udev")) << ui.Messages()[0].Text.toStdString();
}

// A user object that drives an enumeration: it takes the object list from the data pipe and ends
// the exchange when the device reports the count.
class TEnumeration : public TIUSBCommandUser,
                     public TRecordingClient,
                     public std::enable_shared_from_this<TEnumeration> {
 public:
  using TRecordingClient::TRecordingClient;
  QList<TUSBCommandStatus> Seen;
  void USBCommandStatusChange(TNorvaPacketEngine&, TUSBCommandStatus newStatus,
                              TUSBCommandStatus) override {
    Seen.append(newStatus);
  }
  bool ProcessNotification(TUSBNotification kind, const QByteArray& data) override {
    TRecordingClient::ProcessNotification(kind, data);
    if (data.startsWith("enumerated")) {
      BusComms()->SetUSBCommandStatus(EndEnumeratingObjects, shared_from_this());
      BusComms()->SetUSBCommandResult(USBCommand_Success);
      BusComms()->SetUSBCommandStatus(NoUSBCommand, nullptr);
    }
    return true;
  }
};

TEST_F(UsbLinkTest, AnObjectEnumerationRunsThroughItsPhasesToSuccess) {
  Amplifier();
  ASSERT_NO_FATAL_FAILURE(Connect());
  auto enumeration = std::make_shared<TEnumeration>(bus);
  enumeration->TakeRaw = true;
  bus->SetUSBCommandStatus(EnumeratingObjects, enumeration);
  bus->SendUSBCommand(usb_enumerate_objects, 0, 0, {}, true);
  ASSERT_TRUE(bus->WaitUSBCommandResponse(5000, false));
  EXPECT_EQ(bus->USBCommandResult(), USBCommand_Success);
  EXPECT_EQ(enumeration->Seen, (QList<TUSBCommandStatus>{EndEnumeratingObjects, NoUSBCommand}));
  EXPECT_TRUE(enumeration->Raw.contains("keypad-lounge.keycfg"));
  EXPECT_EQ(enumeration->Logs, QList<QByteArray>{QByteArray("enumerated 3 objects\0", 21)});
  enumeration->Disconnect();
}

TEST_F(UsbLinkTest, UnplugDuringATransferEndsItWithoutAnErrorStorm) {
  sim::TUsbAmplifier& amplifier = Amplifier();
  ASSERT_NO_FATAL_FAILURE(Connect());
  bus->SetUSBCommandStatus(DownloadObject_data, std::make_shared<TEnumeration>(nullptr));
  QTimer::singleShot(50, [&] { amplifier.Device().Unplug(); });
  EXPECT_FALSE(bus->WaitUSBCommandResponse(60000, false));
  EXPECT_EQ(bus->USBCommandResult(), USBCommand_Failure);
  PumpFor(300);
  EXPECT_FALSE(client->GetConnected());
  // The lost link is told once; the workers' failures are not reported, the device is gone.
  ASSERT_EQ(ui.Messages().size(), 1);
  EXPECT_EQ(ui.Messages()[0].Text, "Connection lost.");

  amplifier.Device().Replug();  // and it comes back
  EXPECT_TRUE(bus->CheckConnections());
  EXPECT_TRUE(client->GetConnected());
}

TEST_F(UsbLinkTest, NotificationFramesComeThroughTheWorker) {
  sim::TUsbAmplifier& amplifier = Amplifier();
  ASSERT_NO_FATAL_FAILURE(Connect());
  amplifier.SendLog("Amplifier started");
  amplifier.SendKeypress(5, 3, 1);
  ASSERT_TRUE(PumpUntil([&] { return !client->Packets.isEmpty() && !client->Logs.isEmpty(); }));
  EXPECT_EQ(PacketText(client->Packets[0]), "0B0523\r\n");
  EXPECT_EQ(client->Logs[0], QByteArray("Amplifier started\0", 18));
}

}  // namespace
}  // namespace norva
