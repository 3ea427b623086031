// Bus clients sharing one bus object: the form (a widget) and the headless client behave alike.
#include <NorvaBusComms/Devices/BusComms.h>
#include <NorvaBusComms/Devices/BusMessages.h>
#include <NorvaBusComms/Gui/BusForm.h>
#include <Testing/RecordingUIServices.h>

#include <Simulation/DeviceSimulator.h>
#include "support/EventLoop.h"

#include <QCoreApplication>
#include <QPointer>

#include <gtest/gtest.h>

namespace norva {
namespace {

using testing::PumpFor;
using testing::PumpUntil;

template <typename TBase>
class TRecording : public TBase {
 public:
  using TBase::TBase;
  QList<TCommandPacket> Packets;
  int Disconnects = 0;
  std::function<void()> OnPacket;
  void ProcessCommand(const TCommandPacket& packet) override {
    Packets.append(packet);
    if (OnPacket) OnPacket();
  }
  void Disconnected() override { ++Disconnects; }
};
using TRecordingForm = TRecording<TNorvaBusForm>;
using TRecordingClient = TRecording<TNorvaBusClient>;

class SharedBus : public ::testing::Test {
 protected:
  void SetUp() override {
    bus = new TNorvaBusComms(sim.ServePty(), nullptr);
    guard = bus;
  }
  sim::TDeviceSimulator sim;
  TNorvaBusComms* bus = nullptr;
  QPointer<TNorvaBusComms> guard;  // tells whether the bus object still exists
};

TEST_F(SharedBus, TheLastClientToLetGoFreesTheBus) {
  TRecordingForm form(nullptr, bus);
  auto client = std::make_unique<TRecordingClient>(bus);
  EXPECT_EQ(bus->Owner(), &form);  // the first client receives the workers' messages
  form.SetConnected(true);
  ASSERT_TRUE(client->GetConnected());

  form.Disconnect();
  EXPECT_TRUE(guard);
  EXPECT_EQ(form.Disconnects, 1);
  EXPECT_FALSE(form.GetConnected());
  sim.SendKeypress(5, 3, 1);  // the messages now go to the remaining client
  ASSERT_TRUE(PumpUntil([&] { return !client->Packets.isEmpty(); }));
  EXPECT_TRUE(form.Packets.isEmpty());

  client.reset();
  EXPECT_FALSE(guard);
}

TEST_F(SharedBus, AClientLeavingDuringDeliveryDoesNotMakeOthersMissThePacket) {
  TRecordingClient first(bus);
  TRecordingForm second(nullptr, bus);
  TRecordingClient third(bus);
  first.OnPacket = [&] { first.Disconnect(); };
  first.SetConnected(true);
  sim.SendKeypress(5, 3, 1);
  ASSERT_TRUE(PumpUntil([&] { return !third.Packets.isEmpty(); }));
  EXPECT_EQ(first.Packets.size(), 1);
  EXPECT_EQ(second.Packets.size(), 1);
  EXPECT_EQ(third.Packets.size(), 1);
  EXPECT_TRUE(guard);
}

TEST_F(SharedBus, MessagesAfterDisconnectingAreIgnored) {
  TRecordingForm form(nullptr, bus);
  form.SetConnected(true);
  form.SetConnected(false);
  // A receive message arriving late must not reach into a closed link.
  QCoreApplication::postEvent(&form, new TBusMessage(RXEventMessage, SerialRXKind));
  PumpFor(50);
  EXPECT_TRUE(form.Packets.isEmpty());
  EXPECT_FALSE(form.GetConnected());
}

TEST(BusFormDefaults, AFormWithoutBusIsQuietAndDisconnected) {
  TNorvaBusForm form;
  EXPECT_FALSE(form.GetConnected());
  form.SetConnected(true);  // nothing to connect; no crash
  EXPECT_EQ(form.property("Zone").toInt(), -1);
  EXPECT_EQ(form.GetSource(), SourceUnknown);
  form.setProperty("Zone", 7);  // the base ignores it
  EXPECT_EQ(form.GetZone(), NoZone);
  QByteArray bytes("x");
  EXPECT_FALSE(form.ProcessRawData(bytes));
  EXPECT_FALSE(form.ProcessNotification(usb_log_event, "log"));
}

}  // namespace
}  // namespace norva
