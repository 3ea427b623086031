// The bus object over loopback TCP (peers that stay away, or accept and close at once), and the
// workers under flow control and at awkward moments of closing.
#include <NorvaBusComms/Devices/ReceiveWorkers.h>
#include <Testing/RecordingUIServices.h>

#include <Simulation/DeviceSimulator.h>
#include "PseudoTerminal.h"
#include "RecordingClient.h"
#include "support/EventLoop.h"

#include <QTcpServer>

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <future>
#include <thread>

namespace norva {
namespace {

using testing::PumpFor;
using testing::PumpUntil;
using testing::TPseudoTerminal;
using testing::TRecordingClient;

// A free loopback port with nobody listening.
quint16 RefusingPort() {
  QTcpServer probe;
  if (!probe.listen(QHostAddress::LocalHost)) return 0;
  return probe.serverPort();
}

// A bus over loopback TCP to the simulator, or to a peer that misbehaves: one that is not there,
// or one that closes at once.
class EthernetLinkTest : public ::testing::Test {
 protected:
  void Open(quint16 port) {
    ASSERT_NE(port, 0);
    bus = new TNorvaBusComms(EthernetInterface, {NorvaAmp},
                             QStringLiteral("127.0.0.1:%1").arg(port), nullptr);
    client = std::make_unique<TRecordingClient>(bus);
    bus->SetOnError([this](TNorvaBusComms&, const QString& text, bool&) { heard << text; });
    client->SetConnected(true);
  }
  void ConnectToTheSimulator() {
    Open(sim.ServeTcp());
    ASSERT_TRUE(PumpUntil([&] { return bus->EthernetConnected(); }));
  }

  TRecordingUIServices ui;
  TScopedUIServices scope{ui};
  sim::TDeviceSimulator sim;
  TNorvaBusComms* bus = nullptr;
  std::unique_ptr<TRecordingClient> client;
  QStringList heard;
};

TEST_F(EthernetLinkTest, CommandsGoOutAndAnswersComeBackWithoutEchoes) {
  ASSERT_NO_FATAL_FAILURE(ConnectToTheSimulator());
  EXPECT_FALSE(bus->ExpectEcho());
  bus->SendCmd(BuildCommandPacket(0x21, 7, {9}));
  ASSERT_TRUE(PumpUntil([&] { return !client->Packets.isEmpty(); }));
  EXPECT_EQ(PacketText(client->Packets[0]), "A10709\r\n");  // the acknowledgement, no echo
  EXPECT_EQ(bus->CommandRecentlySent(0).Cmd, 0);            // Ethernet sends are not remembered
  ASSERT_EQ(sim.Received().size(), 1u);
}

TEST_F(EthernetLinkTest, ADroppedConnectionIsReopenedAndDataFlowsAgain) {
  ASSERT_NO_FATAL_FAILURE(ConnectToTheSimulator());
  sim.HangUp();  // drops the client, keeps listening
  ASSERT_TRUE(PumpUntil([&] { return client->ConnectionChanges > 0; }));
  ASSERT_TRUE(PumpUntil([&] { return bus->EthernetConnected(); }));
  PumpFor(50);  // let the simulator take the new connection in
  sim.SendKeypress(5, 3, 1);
  ASSERT_TRUE(PumpUntil([&] { return !client->Packets.isEmpty(); }));
  EXPECT_EQ(PacketText(client->Packets.last()), "0B0523\r\n");
  EXPECT_TRUE(ui.Messages().isEmpty());  // a device that reboots is no error
}

TEST_F(EthernetLinkTest, APeerThatStaysAwayIsRetriedCalmly) {
  ASSERT_NO_FATAL_FAILURE(Open(RefusingPort()));
  PumpFor(1500);
  // Refused at once every time: without backing off this would be thousands of attempts.
  EXPECT_GE(client->ConnectionChanges, 4);
  EXPECT_LE(client->ConnectionChanges, 12);
  EXPECT_TRUE(ui.Messages().isEmpty());  // connect errors are retried, never shown
  EXPECT_FALSE(bus->LinkRetryReason().isEmpty()) << "but the bus can say why it is not up";
}

TEST_F(EthernetLinkTest, APeerThatClosesAtOnceIsRetriedCalmlyAndEachChangeIsTold) {
  sim.SetBusy(true);
  ASSERT_NO_FATAL_FAILURE(Open(sim.ServeTcp()));
  PumpFor(1500);
  // A connection that does not stay up does not reset the back-off: without that this would be
  // thousands of connections a second.
  EXPECT_GE(sim.TcpConnections(), 3);
  EXPECT_LE(sim.TcpConnections(), 12);
  // Each connection made and each one lost is told.
  EXPECT_GE(client->ConnectionChanges, 2 * sim.TcpConnections() - 2);
  EXPECT_TRUE(ui.Messages().isEmpty());  // a device that closes is no error box

  sim.SetBusy(false);  // the device settles: the link comes back and stays
  ASSERT_TRUE(PumpUntil([&] { return bus->EthernetConnected(); }));
  PumpFor(100);
  EXPECT_TRUE(bus->LinkUp());
  EXPECT_TRUE(bus->LinkRetryReason().isEmpty());
}

TEST_F(EthernetLinkTest, BytesThatNeverReachTheNetworkAreASendFailure) {
  ASSERT_NO_FATAL_FAILURE(Open(RefusingPort()));
  bus->SendCmd(BuildCommandPacket(0x21, 7, {9}));  // queued while connecting; then refused
  ASSERT_TRUE(PumpUntil([&] { return !heard.isEmpty(); }));
  EXPECT_EQ(heard[0], "The connection closed before 8 bytes were sent");
  ASSERT_EQ(ui.Messages().size(), 1);  // nobody handled it: shown
  EXPECT_EQ(ui.Messages()[0].Caption, "Error sending");
}

TEST(TransmitWorker, AWriteHeldByXoffFailsAfterThePortsTimeOut) {
  TRecordingUIServices ui;
  TScopedUIServices scope(ui);
  TPseudoTerminal pty;
  auto* bus = new TNorvaBusComms(pty.Path(), nullptr);  // RS232: XON/XOFF honoured
  TRecordingClient client(bus);
  client.SetConnected(true);
  ASSERT_TRUE(client.GetConnected());
  pty.Write(QByteArray(1, '\x13'));  // XOFF, never followed by XON
  PumpFor(20);
  bus->SendRaw("hello");  // 10 ms a byte plus a second: the write gives up after 1.05 s
  ASSERT_TRUE(PumpUntil([&] { return !ui.Messages().isEmpty(); }, 10000));
  EXPECT_EQ(ui.Messages()[0].Text, QString::fromLocal8Bit(std::strerror(ETIMEDOUT)));
  EXPECT_EQ(ui.Messages()[0].Caption, "Communications error");
  EXPECT_FALSE(client.GetConnected());
}

// A receive worker with endless data whose hand-over dawdles right after its last look at the
// stop request: a Close() landing there must still end it.
class TDawdlingWorker : public TRXEventHandler {
 public:
  TDawdlingWorker() : TRXEventHandler(nullptr, -1, 1, "TDawdlingWorker") { Start(); }
  ~TDawdlingWorker() override { Close(); }
  std::atomic<bool> InWindow{false};

 protected:
  void Execute() override {
    while (!Terminated()) {
      rx_buf[0] = 'x';
      rx_buf_len = 1;
      SignalReceive(0);
    }
  }
  void BeforeHandOver() override {
    InWindow = true;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
};

TEST(ReceiveWorker, ACloseInTheHandOverWindowIsNeverMissed) {
  auto worker = std::make_unique<TDawdlingWorker>();
  while (!worker->InWindow) std::this_thread::yield();
  auto closed = std::async(std::launch::async, [&] { worker->Close(); });
  if (closed.wait_for(std::chrono::seconds(10)) != std::future_status::ready) {
    // The worker can never be joined now; end here rather than hang the suite.
    ADD_FAILURE() << "Close() missed the stop request and waits for ever";
    std::_Exit(1);
  }
}

TEST(TransmitWorker, CloseAbandonsQueuedItemsEvenWhileOutputIsHeld) {
  TPseudoTerminal pty;
  auto* bus = new TNorvaBusComms(pty.Path(), nullptr);  // RS232: XON/XOFF honoured
  TRecordingClient client(bus);
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
