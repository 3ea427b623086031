// The two receive formats cut into packets: bus text, one packet a line, and the notification
// pipe's frames; what waits for the next arrival, and what is dropped.
#include <NorvaBusComms/BusTextParser.h>
#include <NorvaBusComms/NotificationFraming.h>
#include <NorvaGlobal/DebugOutput.h>

#include <QStringList>

#include <gtest/gtest.h>

namespace norva {
namespace {

QStringList Texts(const std::vector<TCommandPacket>& packets) {
  QStringList texts;
  for (const TCommandPacket& packet : packets)
    texts << QString::fromLatin1(PacketText(packet).trimmed());
  return texts;
}

QByteArray Bytes(std::initializer_list<int> values) {
  QByteArray bytes;
  for (int v : values) bytes.append(static_cast<char>(v));
  return bytes;
}

TEST(BusText, EachWholeLineIsOnePacketAndAMalformedOneIsDropped) {
  const struct {
    const char* What;
    QByteArray Text;
    QStringList Packets;
    qsizetype Consumed;
  } cases[] = {
      {"one line", "0B0523\r\n", {"0B0523"}, 8},
      {"a line waits for its line feed", "0B05", {}, 0},
      {"a whole line before a partial one", "0405\r\n0B", {"0405"}, 6},
      {"a bad command digit, then a good line", "zz05\n0B0523\r\n", {"0B0523"}, 13},
      {"fewer than four characters", "0B0\n\n\r\n", {}, 7},
      {"a bad digit in the data", "0B05G3\r\n", {}, 8},
      {"a bad digit in the zone", "0B 523\r\n", {}, 8},
      {"lower case is hex too", "0b05ff\r\n", {"0B05FF"}, 8},
      {"no data, a line feed alone", "0B05\n", {"0B05"}, 5},
      {"an odd last character is ignored", "0B05231\n", {"0B0523"}, 8},
      // The CR after an odd character is read as part of a data pair.
      {"an odd character before CR LF", "0B0523Z\r\n", {}, 9},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.What);
    std::vector<TCommandPacket> packets;
    EXPECT_EQ(ParseBusText(c.Text, 42, packets), c.Consumed);
    EXPECT_EQ(Texts(packets), c.Packets);
    for (const TCommandPacket& packet : packets) EXPECT_EQ(packet.Timestamp, 42u);
  }
}

TEST(BusText, BinaryNoiseNeverCrashesAndConsumesThroughTheLastLineFeed) {
  QByteArray noise;
  for (int i = 0; i < 512; ++i) noise.append(static_cast<char>((i * 37) & 0xFF));
  std::vector<TCommandPacket> packets;
  const qsizetype consumed = ParseBusText(noise, 0, packets);
  EXPECT_EQ(consumed, noise.lastIndexOf('\n') + 1);
}

// What a cut of the notification pipe's buffer makes of it: packets, notifications, the tail it
// holds for the next arrival (at most the bound), and one debug line for what it drops.
TEST(NotificationFrames, CommandLogAndLearnFramesWhatWaitsAndWhatIsDropped) {
  using TNotifications = QList<std::pair<TUSBNotification, QByteArray>>;
  const TUSBNotification log = usb_log_event;
  const TUSBNotification learn = usb_ir_learn_event;
  const QByteArray longText = Bytes({5}) + QByteArray(MaxHeldNotificationBytes, 'x');
  const struct {
    const char* What;
    QByteArray Bytes;
    QStringList Packets;
    TNotifications Notifications;
    qsizetype Held;  // the tail left in the buffer
    int DebugLines;
  } cases[] = {
      // clang-format off
      {"a command frame", Bytes({4, 3, 0x0B, 5, 0x23}), {"0B0523"}, {}, 0, 0},
      {"a command code alone waits", Bytes({4}), {}, {}, 1, 0},
      {"code and length wait", Bytes({4, 7}), {}, {}, 2, 0},
      {"a command frame one byte short waits", Bytes({4, 4, 0x0B, 5, 0x23}), {}, {}, 5, 0},
      {"the longest one byte short waits", Bytes({4, 255}) + QByteArray(254, 1), {}, {}, 256, 0},
      {"a length below 2 holds no packet", Bytes({4, 1, 9, 4, 2, 0x0C, 6}), {"0C06"}, {}, 0, 0},
      // The old log code reports as the new one, and runs to the end of its transfer.
      {"log texts, new code and old", Bytes({5, 'h', 'i', 0, 2, 'o', 'k', 0}), {},
          {{log, Bytes({'h', 'i', 0})}, {log, Bytes({'o', 'k', 0})}}, 0, 0},
      {"an old log text needs no end", Bytes({2, 'a', 'b'}), {}, {{log, "ab"}}, 0, 0},
      {"an unterminated log text waits", Bytes({5, 'a', 'b'}), {}, {}, 3, 0},
      {"up to the bound", longText.chopped(1), {}, {}, MaxHeldNotificationBytes, 0},
      {"and past it is dropped", longText, {}, {}, 0, 1},
      {"a byte 1-3 starts the next message", Bytes({5, 'x', 4, 3, 0x0B, 5, 0x23}), {},
          {{log, Bytes({'x', 4})}, {learn, Bytes({0x0B, 5, 0x23})}}, 0, 0},
      {"a learn event", Bytes({3, 1, 2, 3, 4}), {}, {{learn, Bytes({1, 2, 3, 4})}}, 0, 0},
      {"a learn event's code alone waits", Bytes({3, 1}), {}, {}, 2, 0},
      {"an unknown code is skipped to the next frame", Bytes({1, 4, 3, 0x0B, 5, 0x23}),
          {"0B0523"}, {}, 0, 1},
      {"unknown bytes to the end are dropped", Bytes({0x30, 0x31, 0, 0xFF}), {}, {}, 0, 1},
      {"noise between frames is one line", Bytes({0, 4, 1, 9, 0, 4, 1, 9, 0}), {}, {}, 0, 1},
      {"after a complete frame too", Bytes({4, 2, 0x0C, 6, 9, 9, 4, 2, 0x0C, 7, 4, 2}),
          {"0C06", "0C07"}, {}, 2, 1},
      // clang-format on
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.What);
    QStringList lines;
    const TDebugSink previous = SetDebugOutputSink([&](const QString& line) { lines << line; });
    QByteArray buffer = c.Bytes;
    std::vector<TCommandPacket> packets;
    TNotifications notifications;
    CutNotificationFrames(buffer, 7, packets, [&](TUSBNotification kind, const QByteArray& body) {
      notifications.append({kind, body});
    });
    SetDebugOutputSink(previous);
    EXPECT_EQ(Texts(packets), c.Packets);
    EXPECT_EQ(notifications, c.Notifications);
    EXPECT_EQ(buffer, c.Bytes.right(c.Held));
    EXPECT_EQ(lines.size(), c.DebugLines);
  }
}

}  // namespace
}  // namespace norva
