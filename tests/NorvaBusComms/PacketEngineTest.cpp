#include <NorvaBusComms/PacketEngine.h>
#include <NorvaGlobal/DebugOutput.h>

#include "EngineFixture.h"
#include "support/RecordingUser.h"

#include <QTimer>

#include <gtest/gtest.h>

namespace norva {
namespace {

using testing::TRecordingTransport;
using testing::TRecordingUser;

class PacketEngineTest : public testing::TEngineFixture<TRecordingUser> {};

TEST_F(PacketEngineTest, SendCmdHandsTheLinkBusTextAndRemembersWhatMayEcho) {
  engine.SendKeypress(5, 3, 1);
  EXPECT_EQ(transport.PacketTexts, QList<QByteArray>{"0B0523\r\n"});
  EXPECT_EQ(engine.CommandRecentlySent(0).Cmd, 0x0B);
  EXPECT_EQ(engine.CommandRecentlySent(0).Data, TCommandData{0x23});

  transport.RemembersPackets = false;  // a link whose devices never echo
  engine.SendCmd(BuildCommandPacket(0x21, 2));
  EXPECT_EQ(transport.PacketTexts.last(), "2102\r\n");
  EXPECT_EQ(engine.CommandRecentlySent(0).Cmd, 0x0B);

  transport.Open = false;  // sending while closed does nothing
  engine.SendCmd(BuildCommandPacket(0x22, 3));
  engine.SendXON();
  EXPECT_EQ(transport.PacketTexts.size(), 2);
  EXPECT_TRUE(transport.Items.isEmpty());
}

TEST_F(PacketEngineTest, FlowControlAcknowledgementAndRawBytes) {
  engine.SendXOFF();
  engine.SendXON();
  engine.SendRaw(QByteArray());
  EXPECT_EQ(transport.ItemData(), "\x13\x11");

  TCommandPacket received = BuildCommandPacket(0x85, 0x45, {1, 2});
  engine.AckCmd(received);
  EXPECT_EQ(transport.PacketTexts.last(), "05450102\r\n");  // 0x85 + 0x80 wraps to 0x05
}

TEST_F(PacketEngineTest, HistoryKeepsTheLast80) {
  for (int i = 0; i < 81; ++i)
    engine.SendCmd(BuildCommandPacket(0x10, static_cast<std::uint8_t>(i)));
  EXPECT_EQ(engine.CommandRecentlySent(0).Zone, 80);
  EXPECT_EQ(engine.CommandRecentlySent(79).Zone, 1);  // zone 0 was pushed out
}

TEST_F(PacketEngineTest, EchoWithinFiveSecondsIsRecognisedOnce) {
  engine.SendCmd(BuildCommandPacket(0x0B, 5, {0x23}));
  clock.Advance(4000);
  engine.ReceiveBytes(SerialRXKind, "0B0523\r\n");
  engine.ReceiveBytes(SerialRXKind, "0B0523\r\n");
  ASSERT_EQ(user.Packets.size(), 2);
  EXPECT_TRUE(user.Packets[0].Echo);
  EXPECT_FALSE(user.Packets[1].Echo);  // the entry was cleared by the first match
  EXPECT_EQ(engine.CommandRecentlySent(0).Cmd, 0);
  EXPECT_EQ(engine.TimeLastCommand(), 104000u);  // only the second counts as device activity
}

TEST_F(PacketEngineTest, EchoTooLateOrDifferentIsNotAnEcho) {
  engine.SendCmd(BuildCommandPacket(0x0B, 5, {0x23}));
  engine.ReceiveBytes(SerialRXKind,
                      "0B052300\r\n0B06\r\n0B0524\r\n");  // other data length, zone, value
  clock.Advance(6000);
  engine.ReceiveBytes(SerialRXKind, "0B0523\r\n");
  ASSERT_EQ(user.Packets.size(), 4);
  for (const auto& delivered : user.Packets) EXPECT_FALSE(delivered.Echo);
}

TEST_F(PacketEngineTest, EchoBookkeepingSurvivesOverwritesAndLookalikes) {
  engine.SendCmd(BuildCommandPacket(0x17, 0x00));  // (0x17, 0) and (0x10, 1) share a lookup slot
  engine.ReceiveBytes(SerialRXKind, "1001\r\n1700\r\n1700\r\n");
  ASSERT_EQ(user.Packets.size(), 3);
  EXPECT_FALSE(user.Packets[0].Echo);
  EXPECT_TRUE(user.Packets[1].Echo);
  EXPECT_FALSE(user.Packets[2].Echo);

  // A sent packet pushed out of the history by 80 newer ones can no longer be echoed.
  user.Packets.clear();
  engine.SendCmd(BuildCommandPacket(0x33, 0x01));
  for (int i = 0; i < 80; ++i)
    engine.SendCmd(BuildCommandPacket(0x34, static_cast<std::uint8_t>(i)));
  engine.ReceiveBytes(SerialRXKind, "3301\r\n344F\r\n3400\r\n");
  ASSERT_EQ(user.Packets.size(), 3);
  EXPECT_FALSE(user.Packets[0].Echo);
  EXPECT_TRUE(user.Packets[1].Echo);
  EXPECT_TRUE(user.Packets[2].Echo);
}

TEST_F(PacketEngineTest, EchoAcrossTheTickCountWrap) {
  clock.Set(0xFFFFF000u);
  engine.SendCmd(BuildCommandPacket(0x30, 1));
  clock.Set(0x00000100u);  // 4352 ms later, after the counter wrapped
  engine.ReceiveBytes(SerialRXKind, "3001\r\n");
  ASSERT_EQ(user.Packets.size(), 1);
  EXPECT_TRUE(user.Packets[0].Echo);
}

TEST_F(PacketEngineTest, TheLinkSaysWhoEchoes) {
  EXPECT_TRUE(engine.ExpectEcho());
  engine.SetConnectedDeviceType(NorvaAmp_Zr900);
  transport.Echoes = false;
  EXPECT_FALSE(engine.ExpectEcho());
  EXPECT_EQ(transport.AskedAboutEchoes, NorvaAmp_Zr900);  // asked about the connected type
  EXPECT_TRUE(engine.WaitUntilEchoReceived(0));           // nothing to wait for

  engine.SendCmd(BuildCommandPacket(0x0B, 5, {0x23}));
  engine.ReceiveBytes(SerialRXKind, "0B0523\r\n");
  EXPECT_FALSE(user.Packets.back().Echo);
}

TEST_F(PacketEngineTest, StatusReportsAreCoalescedPerZoneWithinABatch) {
  engine.ReceiveBytes(SerialRXKind,
                      "050101\r\n050102\r\n080101\r\n050201\r\n080102\r\n050103\r\n060101\r\n");
  QStringList seen;
  for (const auto& delivered : user.Packets)
    seen << QString::fromLatin1(PacketText(delivered.Packet).trimmed());
  EXPECT_EQ(seen, (QStringList{"080101", "050201", "080102", "050103", "060101"}));

  user.Packets.clear();  // a later batch is coalesced on its own
  engine.ReceiveBytes(SerialRXKind, "050104\r\n");
  engine.ReceiveBytes(SerialRXKind, "050105\r\n");
  EXPECT_EQ(user.Packets.size(), 2);
}

TEST_F(PacketEngineTest, LinesSplitAcrossArrivalsAreCompleted) {
  engine.ReceiveBytes(SerialRXKind, "0B05");
  EXPECT_TRUE(user.Packets.isEmpty());
  EXPECT_EQ(engine.PendingRawData(), "0B05");
  engine.ReceiveBytes(SerialRXKind, "23\r");
  engine.ReceiveBytes(SerialRXKind, "\n");
  ASSERT_EQ(user.Packets.size(), 1);
  EXPECT_EQ(user.Packets[0].Packet.Data, TCommandData{0x23});
  EXPECT_TRUE(engine.PendingRawData().isEmpty());
}

TEST_F(PacketEngineTest, RXEventTakesTheWorkersBytes) {
  transport.WorkerBuffers[SerialRXKind] = "0C0101\r\n";
  engine.RXEvent(SerialRXKind);
  ASSERT_EQ(user.Packets.size(), 1);
  EXPECT_TRUE(transport.WorkerBuffers[SerialRXKind].isEmpty());
}

TEST_F(PacketEngineTest, BytesArrivingDuringDeliveryAreProcessedInOrderAfterIt) {
  bool fed = false;
  user.OnCommand = [&](const TCommandPacket&) {
    if (fed) return;
    fed = true;
    engine.ReceiveBytes(SerialRXKind, "03\r\n");  // as if a user pumped events
    EXPECT_EQ(user.Packets.size(), 1);            // not delivered inside this delivery
  };
  engine.ReceiveBytes(SerialRXKind, "0C0101\r\n0C01");
  ASSERT_EQ(user.Packets.size(), 2);
  // The nested bytes complete the partial line left by the outer batch.
  EXPECT_EQ(user.Packets[1].Packet.Data, TCommandData{0x03});
  EXPECT_TRUE(engine.PendingRawData().isEmpty());
  EXPECT_EQ(engine.InProcessCmd(), 0);
}

TEST_F(PacketEngineTest, CountersRecoverWhenAUserThrows) {
  user.OnCommand = [](const TCommandPacket&) { throw std::runtime_error("handler failed"); };
  EXPECT_THROW(engine.ReceiveBytes(SerialRXKind, "0C0101\r\n"), std::runtime_error);
  EXPECT_EQ(engine.InProcessCmd(), 0);
  user.OnCommand = nullptr;
  engine.ReceiveBytes(SerialRXKind, "0C0102\r\n");  // not mistaken for a nested arrival
  EXPECT_EQ(user.Packets.size(), 2);
}

TEST_F(PacketEngineTest, UsersMayLeaveDuringDelivery) {
  TRecordingUser second(&engine);
  TRecordingUser third(&engine);
  engine.AddUser(&second);
  engine.AddUser(&third);
  user.OnCommand = [&](const TCommandPacket&) { engine.RemoveUser(&user); };
  engine.ReceiveBytes(SerialRXKind, "0C0101\r\n");
  EXPECT_EQ(user.Packets.size(), 1);
  EXPECT_EQ(second.Packets.size(), 1);  // not skipped although the list shifted under the walk
  EXPECT_EQ(third.Packets.size(), 1);
  EXPECT_EQ(engine.Users().size(), 2u);
}

TEST_F(PacketEngineTest, RawDataGoesToTheFirstUserThatTakesIt) {
  engine.SetConnectedDeviceType(NorvaWk3);  // a raw device
  TRecordingUser taker(&engine);
  TRecordingUser late(&engine);
  engine.AddUser(&taker);
  engine.AddUser(&late);
  taker.TakeRawData = true;
  taker.KeepRawBytes = 2;
  engine.ReceiveBytes(SerialRXKind, "abcdef");
  EXPECT_EQ(user.RawOffers, QList<QByteArray>{"abcdef"});
  EXPECT_TRUE(late.RawOffers.isEmpty());
  EXPECT_EQ(engine.PendingRawData(), "ef");  // kept for the next arrival
  engine.ReceiveBytes(SerialRXKind, "g");
  EXPECT_EQ(taker.RawOffers.last(), "efg");

  taker.TakeRawData = false;  // nobody takes them: discarded
  engine.ReceiveBytes(SerialRXKind, "h");
  EXPECT_TRUE(engine.PendingRawData().isEmpty());
}

TEST_F(PacketEngineTest, DataPipeAndForcedRawBypassTheTextParser) {
  engine.ReceiveBytes(DataPipeRXKind, "0C0101\r\n");
  EXPECT_TRUE(user.Packets.isEmpty());
  EXPECT_EQ(user.RawOffers.size(), 1);
  engine.SetForceRawProcessing(true);
  engine.ReceiveBytes(SerialRXKind, "0C0101\r\n");
  EXPECT_TRUE(user.Packets.isEmpty());
  EXPECT_EQ(user.RawOffers.size(), 2);
  EXPECT_EQ(engine.LastRX(), 100000u);
}

TEST_F(PacketEngineTest, NotificationChannelDeliversPacketsAndNotifications) {
  engine.SetSelectedCommsInterface(USBInterface);
  TRecordingUser second(&engine);
  engine.AddUser(&second);
  user.ConsumeNotifications = true;
  const QByteArray frames("\x05log\x00\x04\x03\x0B\x05\x23\x04\x03\x0B", 13);
  engine.ReceiveBytes(NotificationPipeRXKind, frames);
  ASSERT_EQ(user.Notifications.size(), 1);
  EXPECT_EQ(user.Notifications[0].second, QByteArray("log\x00", 4));
  EXPECT_TRUE(second.Notifications.isEmpty());  // consumed by the first user
  ASSERT_EQ(user.Packets.size(), 1);
  EXPECT_EQ(engine.PendingNotificationData(), QByteArray("\x04\x03\x0B", 3));
  engine.ReceiveBytes(NotificationPipeRXKind, QByteArray("\x06\x23", 2));
  ASSERT_EQ(user.Packets.size(), 2);
  EXPECT_EQ(user.Packets[1].Packet.Zone, 6);
}

TEST_F(PacketEngineTest, FlushDropsPendingBytesAndThePipe) {
  engine.ReceiveBytes(SerialRXKind, "0B05");
  engine.FlushRawData();
  EXPECT_TRUE(engine.PendingRawData().isEmpty());
  EXPECT_EQ(transport.Flushes, 1);
}

TEST_F(PacketEngineTest, TraceLinesWhileEnabled) {
  QStringList lines;
  const TDebugSink previous = SetDebugOutputSink([&](const QString& line) { lines << line; });
  SetPacketTraceEnabled(true);
  engine.SendKeypress(5, 3, 1);
  engine.ReceiveBytes(SerialRXKind, "0B0523\r\n");
  SetPacketTraceEnabled(false);
  engine.ReceiveBytes(SerialRXKind, "0B0523\r\n");
  SetDebugOutputSink(previous);
  EXPECT_EQ(lines, (QStringList{"100000 Send: 0B,05,23", "100000 Receive: 0B,05,23 (echo)"}));
}

// Waiting pumps the event loop, which is how the echo reaches the parser; on the real clock.
class PacketEngineWait : public ::testing::Test {
 protected:
  PacketEngineWait() {
    engine.SetTransport(&transport);
    engine.SetSelectedCommsInterface(RS232Interface);
    engine.SetConnectedDeviceType(NorvaAmp);
  }
  TRecordingTransport transport;
  TNorvaPacketEngine engine;
};

TEST_F(PacketEngineWait, EchoArrivingWhileWaiting) {
  engine.SendCmd(BuildCommandPacket(0x0B, 5, {0x23}));
  QTimer::singleShot(20, [&] { engine.ReceiveBytes(SerialRXKind, "0B0523\r\n"); });
  EXPECT_TRUE(engine.WaitUntilEchoReceived(5000));

  engine.SendCmd(BuildCommandPacket(0x0B, 5, {0x24}));
  EXPECT_FALSE(engine.WaitUntilEchoReceived(30));  // no device answers
}

TEST_F(PacketEngineWait, WaitForQueueLetsTheTransmitterDrainFirst) {
  engine.SetSelectedCommsInterface(USBInterface);
  transport.QueuedStillSending = 3;
  engine.SendUSBCommand(usb_fetch_system_info, 1, 2, "abc", true);
  EXPECT_FALSE(transport.Sending());  // all three busy answers were polled
  ASSERT_EQ(transport.Items.size(), 1);
  EXPECT_EQ(transport.Items[0].USBCommand, usb_fetch_system_info);
  EXPECT_EQ(transport.Items[0].RawData, "abc");
}

}  // namespace
}  // namespace norva
