// Who may let go of the bus object, and when: clients that leave from inside the bus's own calls,
// and what the bus accepts as the target of its workers' messages.
#include <NorvaBusComms/Devices/BusClient.h>
#include <NorvaBusComms/Devices/BusComms.h>
#include <NorvaBusComms/Devices/BusMessages.h>
#include <Testing/RecordingUIServices.h>

#include <Simulation/DeviceSimulator.h>
#include "support/EventLoop.h"

#include <QPointer>

#include <gtest/gtest.h>

#include <cerrno>
#include <stdexcept>

namespace norva {
namespace {

using testing::PumpUntil;

// A client that lets go of the bus at the first packet, or at a connection change, once armed.
class TLeavingClient : public TNorvaBusClient {
 public:
  using TNorvaBusClient::TNorvaBusClient;
  bool LeaveAtPacket = false;
  bool LeaveAtConnectionChange = false;
  int Packets = 0;

  void ProcessCommand(const TCommandPacket&) override {
    ++Packets;
    if (LeaveAtPacket) Disconnect();
  }
  void ConnectionChange() override {
    if (LeaveAtConnectionChange) Disconnect();
  }
};

class BusLifetime : public ::testing::Test {
 protected:
  void SetUp() override {
    path = sim.ServePty();
    ASSERT_FALSE(path.isEmpty());
  }

  TRecordingUIServices ui;
  TScopedUIServices scope{ui};
  sim::TDeviceSimulator sim;
  QString path;
};

TEST_F(BusLifetime, TheLastClientLeavingInsideADeliveryFreesTheBusAfterIt) {
  QPointer<TNorvaBusComms> bus = new TNorvaBusComms(path, nullptr);
  TLeavingClient client(bus);
  client.LeaveAtPacket = true;
  client.SetConnected(true);
  ASSERT_TRUE(client.GetConnected());
  // Two packets in one arrival: the bus is still walking its batch when the client leaves.
  sim.SendText(PacketText(BuildCommandPacket(0x0B, 5, {0x23})) +
               PacketText(BuildCommandPacket(0x0B, 6, {0x23})));
  ASSERT_TRUE(PumpUntil([&] { return client.Packets > 0; }));
  EXPECT_EQ(client.BusComms(), nullptr);
  EXPECT_TRUE(PumpUntil([&] { return bus.isNull(); }));  // freed once the delivery is over
  EXPECT_EQ(client.Packets, 1);
}

TEST_F(BusLifetime, TheLastClientLeavingWhileTheBusWaitsFreesTheBusAfterTheWait) {
  QPointer<TNorvaBusComms> bus = new TNorvaBusComms(path, nullptr);
  TLeavingClient client(bus);
  client.SetConnected(true);
  ASSERT_TRUE(client.GetConnected());
  client.LeaveAtPacket = true;  // the echo arrives inside the wait, and the client leaves on it
  bus->SendCmd(BuildCommandPacket(0x20, 5, {1}));
  bus->WaitForCommands(300, true);  // goes on pumping events after the client has left
  EXPECT_EQ(client.Packets, 1);
  ASSERT_FALSE(bus.isNull());  // the wait was still on its stack
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(bus.isNull());
}

TEST_F(BusLifetime, AWorkerFailureIsReportedWhenTheClientLetsGoOnTheWay) {
  // A device that stays while its worker fails: the client is told of the dropped connection
  // and lets go of the bus in that very call.
  QPointer<TNorvaBusComms> bus = new TNorvaBusComms(path, nullptr);
  TLeavingClient client(bus);
  QStringList heard;
  bus->SetOnError([&](TNorvaBusComms&, const QString& text, bool&) { heard << text; });
  client.SetConnected(true);
  ASSERT_TRUE(client.GetConnected());
  client.LeaveAtConnectionChange = true;

  TBusMessage failure(ThreadCrashMessage, EIO);
  QCoreApplication::sendEvent(&client, &failure);

  EXPECT_EQ(client.BusComms(), nullptr);
  EXPECT_TRUE(bus.isNull());
  ASSERT_EQ(ui.Messages().size(), 1);
  EXPECT_EQ(ui.Messages()[0].Caption, "Communications error");
  EXPECT_EQ(ui.Messages()[0].Text, QString::fromLocal8Bit(std::strerror(EIO)));
  EXPECT_TRUE(heard.isEmpty());  // the bus that had the handler was gone by then
}

TEST_F(BusLifetime, OnlyABusClientCanBeTheTargetOfWorkerMessages) {
  QObject plain;
  EXPECT_THROW(TNorvaBusComms(path, &plain), std::invalid_argument);
  auto* bus = new TNorvaBusComms(path, nullptr);
  EXPECT_THROW(bus->SetOwner(&plain), std::invalid_argument);
  TNorvaBusClient client(bus);
  EXPECT_EQ(bus->Owner(), &client);  // the first client is the target
  bus->SetOwner(nullptr);
  bus->SetOwner(&client);
  EXPECT_EQ(bus->Owner(), &client);
}

}  // namespace
}  // namespace norva
