// The bus object on real pseudo-terminals: line settings, echoes, coalescing, hang-ups.
#include <NorvaGlobal/EnumNames.h>
#include <Testing/RecordingUIServices.h>

#include <Simulation/DeviceSimulator.h>
#include "PseudoTerminal.h"
#include "RecordingClient.h"
#include "support/EventLoop.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace norva {
namespace {

using testing::PumpFor;
using testing::PumpUntil;
using testing::TPseudoTerminal;
using testing::TRecordingClient;

TEST(SerialLink, LineSettingsAreAppliedForEachInterface) {
  for (const TCommsInterface link : {RS232Interface, USBInterface}) {
    TPseudoTerminal pty;
    auto* bus = new TNorvaBusComms(link, {NorvaAmp}, pty.Path(), nullptr);
    TRecordingClient client(bus);
    client.SetConnected(true);
    ASSERT_TRUE(client.GetConnected()) << EnumName(link).toStdString();
    EXPECT_EQ(bus->ConnectedCommsInterface(), link);

    const termios settings = pty.Settings();
    EXPECT_EQ(cfgetospeed(&settings), B9600);
    EXPECT_EQ(cfgetispeed(&settings), B9600);
    EXPECT_EQ(settings.c_cflag & CSIZE, static_cast<tcflag_t>(CS8));
    EXPECT_FALSE(settings.c_cflag & (PARENB | CSTOPB | CRTSCTS));
    EXPECT_FALSE(settings.c_lflag & (ICANON | ECHO | ISIG));
    EXPECT_FALSE(settings.c_oflag & OPOST);
    EXPECT_EQ(settings.c_cc[VMIN], 0);
    EXPECT_EQ(settings.c_cc[VTIME], 0);
    const bool xonXoff = link == RS232Interface;  // never on a USB adapter
    EXPECT_EQ(static_cast<bool>(settings.c_iflag & IXON), xonXoff);
    EXPECT_EQ(static_cast<bool>(settings.c_iflag & IXOFF), xonXoff);
    if (xonXoff) {
      EXPECT_EQ(settings.c_cc[VSTART], 0x11);
      EXPECT_EQ(settings.c_cc[VSTOP], 0x13);
    }
  }
}

TEST(SerialLink, OpenFailureIsReportedOnceThroughOnErrorThenTheBox) {
  TRecordingUIServices ui;
  TScopedUIServices scope(ui);
  auto* bus = new TNorvaBusComms(QStringLiteral("/dev/no-such-port"), nullptr);
  TRecordingClient client(bus);
  QStringList heard;
  bus->SetOnError([&](TNorvaBusComms&, const QString& text, bool&) { heard << text; });
  client.SetConnected(true);
  EXPECT_FALSE(client.GetConnected());
  ASSERT_EQ(heard.size(), 1);
  EXPECT_EQ(heard[0],
            "Cannot open port /dev/no-such-port\r\n\r\nError: No such file or directory (2)");
  ASSERT_EQ(ui.Messages().size(), 1);
  EXPECT_EQ(ui.Messages()[0].Caption, "Error");
  EXPECT_EQ(ui.Messages()[0].Icon, TMessageIcon::Stop);

  bus->SetOnError([](TNorvaBusComms&, const QString&, bool& handled) { handled = true; });
  bus->SetDevicePath(QStringLiteral("/dev/null"));  // not a terminal
  EXPECT_EQ(ui.Messages().size(), 1);               // handled: no second box
  bus->SetOnError(nullptr);
  bus->SetDevicePath(QStringLiteral("/dev/null"), false);  // not allowed to show one
  EXPECT_EQ(ui.Messages().size(), 1);
}

class SimulatedAmplifier : public ::testing::Test {
 protected:
  void SetUp() override {
    path = sim.ServePty();
    ASSERT_FALSE(path.isEmpty());
    bus = new TNorvaBusComms(path, nullptr);
    client = std::make_unique<TRecordingClient>(bus);
    client->SetConnected(true);
    ASSERT_TRUE(client->GetConnected());
  }

  TRecordingUIServices ui;
  TScopedUIServices scope{ui};
  sim::TDeviceSimulator sim;
  QString path;
  TNorvaBusComms* bus = nullptr;  // freed by its last client
  std::unique_ptr<TRecordingClient> client;
};

TEST_F(SimulatedAmplifier, EchoIsRecognisedAndTheAcknowledgementFollows) {
  bus->SendCmd(BuildCommandPacket(0x20, 5, {1, 2}));
  EXPECT_TRUE(bus->WaitUntilEchoReceived(5000));
  ASSERT_TRUE(PumpUntil([&] { return client->Packets.size() >= 2; }));
  EXPECT_EQ(PacketText(client->Packets[0]), "20050102\r\n");
  EXPECT_EQ(PacketText(client->Packets[1]), "A0050102\r\n");
  EXPECT_EQ(client->Echoes.mid(0, 2), (QList<bool>{true, false}));
  ASSERT_EQ(sim.Received().size(), 1u);
  EXPECT_EQ(sim.Received()[0].Cmd, 0x20);
}

TEST_F(SimulatedAmplifier, StatusReportsOfABurstAreCoalescedToTheNewest) {
  QByteArray burst;
  for (int volume = 0; volume < 200; ++volume) {
    burst += PacketText(BuildCommandPacket(5, 1, {volume}));
    burst += PacketText(BuildCommandPacket(0x0C, 0, {volume}));  // never coalesced
  }
  sim.SendText(burst);
  const auto count = [&](TCommand cmd) {
    return std::count_if(client->Packets.begin(), client->Packets.end(),
                         [cmd](const auto& packet) { return packet.Cmd == cmd; });
  };
  ASSERT_TRUE(PumpUntil([&] { return count(0x0C) == 200; }));
  QList<int> volumes;
  for (const auto& packet : client->Packets)
    if (packet.Cmd == 5) volumes << packet.Data.at(0);
  EXPECT_LT(volumes.size(), 200);  // arrivals of 1024 bytes hold dozens of reports each
  EXPECT_EQ(volumes.last(), 199);  // and the newest always gets through
  EXPECT_TRUE(std::is_sorted(volumes.begin(), volumes.end()));
}

TEST_F(SimulatedAmplifier, WritesLargerThanAChunkArriveWhole) {
  TPseudoTerminal pty;
  auto* rawBus = new TNorvaBusComms(USBInterface, {NorvaAmp}, pty.Path(), nullptr);
  TRecordingClient rawClient(rawBus);
  rawClient.SetConnected(true);
  ASSERT_TRUE(rawClient.GetConnected());
  QByteArray payload(200000, Qt::Uninitialized);
  for (qsizetype i = 0; i < payload.size(); ++i) payload[i] = static_cast<char>(i * 7 + i / 256);
  rawBus->SendRaw(payload);
  EXPECT_EQ(pty.ReadExactly(payload.size()), payload);
}

TEST_F(SimulatedAmplifier, HangUpOfAVanishingDeviceShowsNoBox) {
  sim.HangUp();  // the device node disappears, as an unplugged adapter's does
  ASSERT_TRUE(PumpUntil([&] { return !client->GetConnected(); }));
  PumpFor(300);  // every worker has reported by now
  EXPECT_TRUE(ui.Messages().isEmpty());
  EXPECT_EQ(client->DroppedMessages, 0);
  EXPECT_TRUE(client->BusComms());  // still shared, ready to reconnect
}

TEST(SerialLinkFailure, AWorkerFailureWhileTheDeviceStaysIsReportedOnce) {
  // The client opens the port through a link that is pointed at a fresh line after the first
  // one hangs up: the device seems still there, so the failure must be reported.
  QTemporaryDir folder;
  const QString link = folder.filePath(QStringLiteral("ttyNorva"));
  TPseudoTerminal first;
  TPseudoTerminal second;
  ASSERT_TRUE(QFile::link(first.Path(), link));

  TRecordingUIServices ui;
  TScopedUIServices scope(ui);
  auto* bus = new TNorvaBusComms(link, nullptr);
  TRecordingClient client(bus);
  QStringList heard;
  bus->SetOnError([&](TNorvaBusComms&, const QString& text, bool&) { heard << text; });
  client.SetConnected(true);
  ASSERT_TRUE(client.GetConnected());

  first.HangUp();
  QFile::remove(link);
  ASSERT_TRUE(QFile::link(second.Path(), link));
  ASSERT_TRUE(PumpUntil([&] { return !ui.Messages().isEmpty(); }));
  PumpFor(300);
  ASSERT_EQ(ui.Messages().size(), 1);
  EXPECT_EQ(ui.Messages()[0].Caption, "Communications error");
  EXPECT_EQ(ui.Messages()[0].Icon, TMessageIcon::Stop);
  EXPECT_EQ(heard, QStringList{ui.Messages()[0].Text});
  EXPECT_FALSE(client.GetConnected());
  EXPECT_EQ(client.DroppedMessages, 1);
}

}  // namespace
}  // namespace norva
