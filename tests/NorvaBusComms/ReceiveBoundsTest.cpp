// What a misbehaving peer can make the receive paths hold: every buffer stays within its bound,
// what exceeds it is dropped with one debug line, and good input that follows still gets through.
#include <NorvaBusComms/BusTextParser.h>
#include <NorvaBusComms/NotificationFraming.h>
#include <NorvaBusComms/PacketEngine.h>
#include <NorvaGlobal/DebugOutput.h>

#include "EngineFixture.h"
#include "support/RecordingUser.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace norva {
namespace {

using testing::TRecordingUser;

QByteArray Bytes(std::initializer_list<int> values) {
  QByteArray bytes;
  for (int v : values) bytes.append(static_cast<char>(v));
  return bytes;
}

// A user that can act while a notification is being delivered.
class TNotifiedUser : public TRecordingUser {
 public:
  using TRecordingUser::TRecordingUser;
  std::function<void()> OnNotification;
  bool ProcessNotification(TUSBNotification kind, const QByteArray& data) override {
    const bool consumed = TRecordingUser::ProcessNotification(kind, data);
    if (OnNotification) std::exchange(OnNotification, nullptr)();
    return consumed;
  }
};

class ReceiveBoundsTest : public testing::TEngineFixture<TNotifiedUser> {
 protected:
  ReceiveBoundsTest() {
    previousSink = SetDebugOutputSink([this](const QString& line) { debugLines << line; });
  }
  ~ReceiveBoundsTest() override { SetDebugOutputSink(previousSink); }

  // Feeds `bytes` in arrivals of `chunk` bytes and returns the most either channel held meanwhile.
  qsizetype Feed(int kind, const QByteArray& bytes, qsizetype chunk) {
    qsizetype most = 0;
    for (qsizetype offset = 0; offset < bytes.size(); offset += chunk) {
      engine.ReceiveBytes(
          kind, QByteArrayView(bytes).sliced(offset, std::min(chunk, bytes.size() - offset)));
      most =
          std::max({most, engine.PendingRawData().size(), engine.PendingNotificationData().size()});
    }
    return most;
  }

  QStringList PacketTexts() const {
    QStringList texts;
    for (const auto& delivered : user.Packets)
      texts << QString::fromLatin1(PacketText(delivered.Packet).trimmed());
    return texts;
  }

  QStringList debugLines;
  TDebugSink previousSink;
};

// Frames that end within themselves: however the transfers split them, the same packets and
// notifications come out. (An IR learn event and an unterminated old-style log run to the end of
// their transfer, so they are left out.)
TEST_F(ReceiveBoundsTest, NotificationFramesDoNotDependOnHowTheyArrive) {
  QByteArray capture = Bytes({5}) + "Amplifier started" + Bytes({0});
  capture += Bytes({4, 3, 0x0B, 5, 0x23, 4, 4, 5, 1, 0x3C, 0x0A, 4, 4, 6, 2, 0x3C, 0x0B});
  capture += Bytes({4, 1, 9});  // too short for command and zone: dropped whole
  capture += Bytes({5}) + "Keypad 5 online" + Bytes({0});
  capture += Bytes({4, 255, 0x20, 7}) + QByteArray(253, '\x42');  // the longest command frame
  capture += Bytes({4, 2, 0x8B, 5});
  engine.SetSelectedCommsInterface(USBInterface);

  engine.ReceiveBytes(NotificationPipeRXKind, capture);
  const QStringList wholePackets = PacketTexts();
  const auto wholeNotifications = user.Notifications;
  ASSERT_EQ(wholePackets.size(), 5);
  ASSERT_EQ(wholeNotifications.size(), 2);

  for (const qsizetype chunk : {1, 2, 3, 7, 1024}) {
    SCOPED_TRACE(chunk);
    user.Packets.clear();
    user.Notifications.clear();
    Feed(NotificationPipeRXKind, capture, chunk);
    EXPECT_EQ(PacketTexts(), wholePackets);
    EXPECT_EQ(user.Notifications, wholeNotifications);
    EXPECT_TRUE(engine.PendingNotificationData().isEmpty());
  }
  EXPECT_TRUE(debugLines.isEmpty());
}

// What a device sends, encoded frame after frame, cuts back to the packets and text it was made
// from; a packet whose data cannot be counted in the length byte gets no frame.
TEST(NotificationFrameBounds, EncodedFramesCutBackToWhatWasEncoded) {
  std::vector<int> longest(MaxCommandFrameData);
  for (std::size_t i = 0; i < longest.size(); ++i) longest[i] = static_cast<int>(i + 3) % 256;
  const TCommandPacket packets[] = {
      BuildCommandPacket(KeypressCommand, 5, {0x23}),
      BuildCommandPacket(0x8B, 0xFF),  // no data
      BuildCommandPacket(0x20, 7, longest),
  };
  QByteArray frames;
  for (const TCommandPacket& packet : packets) frames += EncodeCommandFrame(packet);
  frames += EncodeLogFrame("Keypad 5 online");

  std::vector<TCommandPacket> cut;
  QList<QByteArray> logs;
  CutNotificationFrames(frames, 0, cut, [&logs](TUSBNotification kind, const QByteArray& body) {
    EXPECT_EQ(kind, usb_log_event);
    logs << body;
  });
  EXPECT_TRUE(frames.isEmpty());
  ASSERT_EQ(cut.size(), std::size(packets));
  for (std::size_t i = 0; i < cut.size(); ++i) EXPECT_TRUE(cut[i].SameContent(packets[i])) << i;
  EXPECT_EQ(logs, QList<QByteArray>{QByteArray("Keypad 5 online", 16)});  // with its zero

  longest.push_back(1);
  EXPECT_TRUE(EncodeCommandFrame(BuildCommandPacket(0x20, 7, longest)).isEmpty());
}

// An unknown code no longer blocks the channel, nor does an endless log text: each is dropped
// within the bound, and the frame after it gets through.
TEST_F(ReceiveBoundsTest, NotificationJunkIsDroppedAndTheChannelRecovers) {
  engine.SetSelectedCommsInterface(USBInterface);
  engine.ReceiveBytes(NotificationPipeRXKind, Bytes({1}));
  EXPECT_EQ(Feed(NotificationPipeRXKind, QByteArray(100 * 1024, '\xFF'), 1024), 0);
  engine.ReceiveBytes(NotificationPipeRXKind, Bytes({4, 3, 0x0B, 5, 0x23}));
  EXPECT_FALSE(debugLines.isEmpty());

  const QByteArray endless = Bytes({5}) + QByteArray(64 * 1024, 'x') + Bytes({0});
  EXPECT_LE(Feed(NotificationPipeRXKind, endless, 1024), MaxHeldNotificationBytes);
  engine.ReceiveBytes(NotificationPipeRXKind, Bytes({4, 3, 0x0B, 5, 0x24}));
  EXPECT_TRUE(user.Notifications.isEmpty());
  EXPECT_EQ(PacketTexts(), (QStringList{"0B0523", "0B0524"}));
}

// An endless line of hex digits: its tail must not be read as a packet once its line feed comes.
TEST_F(ReceiveBoundsTest, EndlessBusTextLineIsDroppedThroughItsLineFeed) {
  const QByteArray endless = "0C0101\r\n" + QByteArray(64 * 1024, '0');
  EXPECT_LE(Feed(SerialRXKind, endless, 1024), MaxBusTextLine);
  EXPECT_EQ(debugLines.size(), 1);
  engine.ReceiveBytes(SerialRXKind, "0000\r\n0C0102\r\n");
  EXPECT_EQ(PacketTexts(), (QStringList{"0C0101", "0C0102"}));
}

TEST_F(ReceiveBoundsTest, OverlongBusTextLineIsDroppedHoweverItArrives) {
  const QByteArray text = "0C0101\r\n" + QByteArray(2 * MaxBusTextLine, '0') + "\r\n0C0102\r\n";
  for (const qsizetype chunk : {qsizetype{1}, qsizetype{7}, qsizetype{1024}, text.size()}) {
    SCOPED_TRACE(chunk);
    user.Packets.clear();
    Feed(SerialRXKind, text, chunk);
    EXPECT_EQ(PacketTexts(), (QStringList{"0C0101", "0C0102"}));
    EXPECT_TRUE(engine.PendingRawData().isEmpty());
  }
  // The longest line a device sends still gets through.
  user.Packets.clear();
  const QByteArray longest = "1001" + QByteArray(2 * 253, 'A') + "\r\n";
  Feed(SerialRXKind, longest, 7);
  ASSERT_EQ(user.Packets.size(), 1);
  EXPECT_EQ(user.Packets[0].Packet.Data.size(), 253u);
}

// A user that pumps events while a device floods the link: the arrivals nested inside its handler
// pile up only to the bound; then they are dropped and the reading starts again at the next line.
TEST_F(ReceiveBoundsTest, ArrivalsDuringABusyHandlerAreBounded) {
  QByteArray flood;
  while (flood.size() < 1024) flood += "050101\r\n";
  qsizetype most = 0;
  bool flooded = false;
  user.OnCommand = [&](const TCommandPacket&) {
    if (std::exchange(flooded, true)) return;
    for (int i = 0; i < 100; ++i) {
      engine.ReceiveBytes(SerialRXKind, flood.sliced(3) + flood.first(3));  // off the line start
      most = std::max(most, engine.PendingRawData().size());
    }
    engine.ReceiveBytes(SerialRXKind, "101\r\n");
  };
  engine.ReceiveBytes(SerialRXKind, "0C0101\r\n0C01");
  EXPECT_LE(most, TNorvaPacketEngine::MaxPendingBytes);
  EXPECT_EQ(debugLines.size(), 1);
  engine.ReceiveBytes(SerialRXKind, "0C0102\r\n");
  // The unfinished line before the gap is not completed with bytes from after it.
  EXPECT_EQ(PacketTexts(), (QStringList{"0C0101", "050101", "0C0102"}));
}

TEST_F(ReceiveBoundsTest, AFrameCutOffByDroppedArrivalsIsNotCompletedWithLaterBytes) {
  engine.SetSelectedCommsInterface(USBInterface);
  user.OnNotification = [&] {
    for (int i = 0; i < 100; ++i)
      engine.ReceiveBytes(NotificationPipeRXKind, QByteArray(1024, 'x'));
    engine.ReceiveBytes(NotificationPipeRXKind, Bytes({4, 2, 0x0C, 1}));
    EXPECT_LE(engine.PendingNotificationData().size(), TNorvaPacketEngine::MaxPendingBytes);
  };
  engine.ReceiveBytes(NotificationPipeRXKind, Bytes({5, 'a', 0, 4, 3, 0x0B}));
  EXPECT_EQ(PacketTexts(), QStringList{"0C01"});
  EXPECT_TRUE(engine.PendingNotificationData().isEmpty());
}

TEST_F(ReceiveBoundsTest, WhatARawDataUserKeepsIsBounded) {
  engine.SetConnectedDeviceType(NorvaWk3);  // a raw device
  user.TakeRawData = true;
  user.KeepRawBytes = 1 << 30;  // keeps everything
  EXPECT_LE(Feed(SerialRXKind, QByteArray(100 * 1024, 'r'), 1024),
            TNorvaPacketEngine::MaxPendingBytes);
  EXPECT_EQ(debugLines.size(), 1);
}

}  // namespace
}  // namespace norva
