#include <NorvaBusComms/BusTextParser.h>
#include <NorvaBusComms/NotificationFraming.h>

#include <gtest/gtest.h>

namespace norva {
namespace {

std::vector<TCommandPacket> Parse(QByteArrayView text, qsizetype* consumed = nullptr) {
  std::vector<TCommandPacket> packets;
  const qsizetype n = ParseBusText(text, 42, packets);
  if (consumed) *consumed = n;
  return packets;
}

TEST(BusText, OneLineIsOnePacket) {
  qsizetype consumed = 0;
  const auto packets = Parse("0B0523\r\n", &consumed);
  EXPECT_EQ(consumed, 8);
  ASSERT_EQ(packets.size(), 1u);
  EXPECT_EQ(packets[0].Cmd, 0x0B);
  EXPECT_EQ(packets[0].Zone, 0x05);
  EXPECT_EQ(packets[0].Data, TCommandData{0x23});
  EXPECT_EQ(packets[0].Timestamp, 42u);
}

TEST(BusText, IncompleteLineWaitsForItsLineFeed) {
  qsizetype consumed = -1;
  EXPECT_TRUE(Parse("0B05", &consumed).empty());
  EXPECT_EQ(consumed, 0);
  EXPECT_EQ(Parse("0405\r\n0B", &consumed).size(), 1u);
  EXPECT_EQ(consumed, 6);
}

TEST(BusText, MalformedLinesAreDroppedAndTheRestStillParses) {
  qsizetype consumed = 0;
  const auto packets = Parse("zz05\n0B0523\r\n", &consumed);
  EXPECT_EQ(consumed, 13);
  ASSERT_EQ(packets.size(), 1u);
  EXPECT_EQ(packets[0].Cmd, 0x0B);

  EXPECT_TRUE(Parse("0B0\n\n\r\n").empty());                   // fewer than four characters
  EXPECT_TRUE(Parse("0B05G3\r\n").empty());                    // bad digit in the data
  EXPECT_TRUE(Parse("0B 523\r\n").empty());                    // bad digit in the zone
  EXPECT_EQ(Parse("0b05ff\r\n")[0].Data, TCommandData{0xFF});  // lower case is hex too
}

TEST(BusText, TrailingCarriageReturnAndOddCharacterAreIgnored) {
  auto packets = Parse("0B05\n");
  ASSERT_EQ(packets.size(), 1u);
  EXPECT_TRUE(packets[0].Data.empty());
  packets = Parse("0B05231\n");  // odd last character
  ASSERT_EQ(packets.size(), 1u);
  EXPECT_EQ(packets[0].Data, TCommandData{0x23});
  // With an odd character before CR LF, the CR is read as part of a data pair: dropped.
  EXPECT_TRUE(Parse("0B0523Z\r\n").empty());
}

TEST(BusText, BinaryNoiseNeverCrashesAndConsumesThroughTheLastLineFeed) {
  QByteArray noise;
  for (int i = 0; i < 512; ++i) noise.append(static_cast<char>((i * 37) & 0xFF));
  std::vector<TCommandPacket> packets;
  const qsizetype consumed = ParseBusText(noise, 0, packets);
  EXPECT_EQ(consumed, noise.lastIndexOf('\n') + 1);
}

struct TFrames {
  std::vector<TCommandPacket> Packets;
  QList<std::pair<TUSBNotification, QByteArray>> Notifications;
  QByteArray Left;
};

TFrames Cut(QByteArray buffer) {
  TFrames frames;
  CutNotificationFrames(buffer, 7, frames.Packets,
                        [&](TUSBNotification kind, const QByteArray& body) {
                          frames.Notifications.append({kind, body});
                        });
  frames.Left = buffer;
  return frames;
}

QByteArray Bytes(std::initializer_list<int> values) {
  QByteArray bytes;
  for (int v : values) bytes.append(static_cast<char>(v));
  return bytes;
}

TEST(NotificationFrames, CommandFrames) {
  auto frames = Cut(Bytes({4, 3, 0x0B, 5, 0x23}));
  ASSERT_EQ(frames.Packets.size(), 1u);
  EXPECT_EQ(frames.Packets[0].Cmd, 0x0B);
  EXPECT_EQ(frames.Packets[0].Zone, 5);
  EXPECT_EQ(frames.Packets[0].Data, TCommandData{0x23});
  EXPECT_TRUE(frames.Left.isEmpty());

  frames = Cut(Bytes({4, 4, 0x0B, 5, 0x23}));  // one byte short: wait for it
  EXPECT_TRUE(frames.Packets.empty());
  EXPECT_EQ(frames.Left, Bytes({4, 4, 0x0B, 5, 0x23}));

  frames = Cut(Bytes({4, 1, 9, 4, 2, 0x0C, 6}));  // a length below 2 holds no packet
  ASSERT_EQ(frames.Packets.size(), 1u);
  EXPECT_EQ(frames.Packets[0].Cmd, 0x0C);
  EXPECT_TRUE(frames.Packets[0].Data.empty());
}

TEST(NotificationFrames, LogEvents) {
  auto frames = Cut(Bytes({5, 'h', 'i', 0, 2, 'o', 'k', 0}));
  ASSERT_EQ(frames.Notifications.size(), 2);
  EXPECT_EQ(frames.Notifications[0].first, usb_log_event);
  EXPECT_EQ(frames.Notifications[0].second, Bytes({'h', 'i', 0}));
  EXPECT_EQ(frames.Notifications[1].first, usb_log_event);  // the old code reports as the new

  frames = Cut(Bytes({5, 'a', 'b'}));  // unterminated: wait for the rest
  EXPECT_TRUE(frames.Notifications.isEmpty());
  EXPECT_EQ(frames.Left, Bytes({5, 'a', 'b'}));

  frames = Cut(Bytes({2, 'a', 'b'}));  // the old code runs to the end of the buffer
  ASSERT_EQ(frames.Notifications.size(), 1);
  EXPECT_EQ(frames.Notifications[0].second, "ab");

  frames = Cut(Bytes({5, 'x', 4, 3, 0x0B, 5, 0x23}));  // a byte 1-3 starts the next message
  ASSERT_EQ(frames.Notifications.size(), 2);
  EXPECT_EQ(frames.Notifications[0].second, Bytes({'x', 4}));
  EXPECT_EQ(frames.Notifications[1].first, usb_ir_learn_event);
  EXPECT_EQ(frames.Notifications[1].second, Bytes({0x0B, 5, 0x23}));
  EXPECT_TRUE(frames.Left.isEmpty());
}

TEST(NotificationFrames, LearnEvents) {
  auto frames = Cut(Bytes({3, 1, 2, 3, 4}));
  ASSERT_EQ(frames.Notifications.size(), 1);
  EXPECT_EQ(frames.Notifications[0].first, usb_ir_learn_event);
  EXPECT_EQ(frames.Notifications[0].second, Bytes({1, 2, 3, 4}));
  EXPECT_TRUE(frames.Left.isEmpty());

  frames = Cut(Bytes({3, 1}));
  EXPECT_TRUE(frames.Notifications.isEmpty());
  EXPECT_EQ(frames.Left, Bytes({3, 1}));
}

}  // namespace
}  // namespace norva
