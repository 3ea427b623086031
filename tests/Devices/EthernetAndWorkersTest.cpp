// The bus object over loopback TCP, and the transmit worker's queue under flow control.
#include <NorvaBusComms/Devices/BusClient.h>
#include <NorvaBusComms/Devices/BusComms.h>
#include <NorvaGlobal/RecordingUIServices.h>

#include "DeviceSimulator.h"
#include "PseudoTerminal.h"
#include "support/EventLoop.h"

#include <QTcpServer>

#include <gtest/gtest.h>

namespace norva {
namespace {

using testing::PumpFor;
using testing::PumpUntil;
using testing::TPseudoTerminal;

class TCountingClient : public TNorvaBusClient {
 public:
  using TNorvaBusClient::TNorvaBusClient;
  QList<TCommandPacket> Packets;
  int ConnectionChanges = 0;
  void ProcessCommand(const TCommandPacket& packet) override { Packets.append(packet); }
  void ConnectionChange() override { ++ConnectionChanges; }
};

class EthernetLinkTest : public ::testing::Test {
 protected:
  void SetUp() override {
    port = sim.ServeTcp();
    ASSERT_NE(port, 0);
    bus = new TNorvaBusComms(EthernetInterface, {NorvaAmp},
                             QStringLiteral("127.0.0.1:%1").arg(port), nullptr);
    client = std::make_unique<TCountingClient>(bus);
    client->SetConnected(true);
    ASSERT_TRUE(PumpUntil([&] { return bus->EthernetConnected(); }));
  }

  TRecordingUIServices ui;
  TScopedUIServices scope{ui};
  sim::TDeviceSimulator sim;
  quint16 port = 0;
  TNorvaBusComms* bus = nullptr;
  std::unique_ptr<TCountingClient> client;
};

TEST_F(EthernetLinkTest, CommandsGoOutAndAnswersComeBackWithoutEchoes) {
  EXPECT_FALSE(bus->ExpectEcho());
  bus->SendCmd(BuildCommandPacket(0x21, 7, {9}));
  ASSERT_TRUE(PumpUntil([&] { return !client->Packets.isEmpty(); }));
  EXPECT_EQ(PacketText(client->Packets[0]), "A10709\r\n");  // the acknowledgement, no echo
  EXPECT_EQ(bus->CommandRecentlySent(0).Cmd, 0);            // Ethernet sends are not remembered
  ASSERT_EQ(sim.Received().size(), 1u);
}

TEST_F(EthernetLinkTest, ADroppedConnectionIsReopenedAndDataFlowsAgain) {
  sim.HangUp();  // drops the client, keeps listening
  ASSERT_TRUE(PumpUntil([&] { return client->ConnectionChanges > 0; }));
  ASSERT_TRUE(PumpUntil([&] { return bus->EthernetConnected(); }));
  PumpFor(50);  // let the simulator take the new connection in
  sim.SendKeypress(5, 3, 1);
  ASSERT_TRUE(PumpUntil([&] { return !client->Packets.isEmpty(); }));
  EXPECT_EQ(PacketText(client->Packets.last()), "0B0523\r\n");
  EXPECT_TRUE(ui.Messages().isEmpty());  // a device that reboots is no error
}

TEST(EthernetLinkAway, APeerThatStaysAwayIsRetriedCalmly) {
  TRecordingUIServices ui;
  TScopedUIServices scope(ui);
  QTcpServer probe;  // find a free port, then close it again
  ASSERT_TRUE(probe.listen(QHostAddress::LocalHost));
  const quint16 port = probe.serverPort();
  probe.close();

  auto* bus = new TNorvaBusComms(EthernetInterface, {NorvaAmp},
                                 QStringLiteral("127.0.0.1:%1").arg(port), nullptr);
  TCountingClient client(bus);
  client.SetConnected(true);
  PumpFor(1500);
  // Refused at once every time: without backing off this would be thousands of attempts.
  EXPECT_GE(client.ConnectionChanges, 4);
  EXPECT_LE(client.ConnectionChanges, 12);
  EXPECT_TRUE(ui.Messages().isEmpty());  // connect errors are retried, never shown
}

TEST(TransmitWorker, CloseAbandonsQueuedItemsEvenWhileOutputIsHeld) {
  TPseudoTerminal pty;
  auto* bus = new TNorvaBusComms(pty.Path(), nullptr);  // RS232: XON/XOFF honoured
  TCountingClient client(bus);
  client.SetConnected(true);
  ASSERT_TRUE(client.GetConnected());
  pty.Write(QByteArray(1, '\x13'));  // XOFF: the port must hold its output
  PumpFor(20);
  bus->SendRaw(QByteArray(300000, 'a'));  // more than the line can buffer: the write blocks
  bus->SendRaw(QByteArray(10, 'B'));
  bus->SendRaw(QByteArray(10, 'C'));
  PumpFor(50);
  client.SetConnected(false);  // must not hang on the blocked write
  EXPECT_FALSE(client.GetConnected());
  const QByteArray seen = pty.ReadAvailable(100);
  EXPECT_FALSE(seen.contains('B'));
  EXPECT_FALSE(seen.contains('C'));
  EXPECT_LT(seen.size(), 300000);
}

}  // namespace
}  // namespace norva
