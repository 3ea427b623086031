#pragma once
// The command packet: a one-byte command, a one-byte zone (as EncodeZone makes it) and data bytes,
// and its text form on every channel: upper-case hex of command, zone and each data byte, then CR
// LF.

#include <NorvaGlobal/TickCount.h>

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <initializer_list>
#include <span>
#include <vector>

namespace norva {

using TCommand = std::uint8_t;
// One data byte value (0-255) per element.
using TCommandData = std::vector<std::int32_t>;

inline constexpr TCommand KeypressCommand = 0x0B;
inline constexpr TCommand AcknowledgeOffset = 0x80;

struct TCommandPacket {
  TCommand Cmd = 0;
  std::uint8_t Zone = 0;
  TCommandData Data;
  TTickCount Timestamp = 0;  // when the packet was built or received

  // Data as bytes, each value truncated to 8 bits.
  QByteArray GetDataBytes() const;
  void SetDataBytes(const QByteArray& bytes);

  // Same command, zone and data; the timestamp does not count.
  bool SameContent(const TCommandPacket& other) const {
    return Cmd == other.Cmd && Zone == other.Zone && Data == other.Data;
  }
};

// A packet stamped now; a negative data value gets 256 added (so -1 becomes 255).
TCommandPacket BuildCommandPacket(TCommand cmd, std::uint8_t zone, std::span<const int> data);
inline TCommandPacket BuildCommandPacket(TCommand cmd, std::uint8_t zone,
                                         std::initializer_list<int> data = {}) {
  return BuildCommandPacket(cmd, zone, std::span<const int>(data.begin(), data.size()));
}

// The bytes sent on the wire, CR LF included.
QByteArray PacketText(const TCommandPacket& packet);

// Debug trace lines: "<tick> Send: 0B,05,23" and "<tick> Receive: 0B,05,23 (echo)".
QString SendTraceLine(const TCommandPacket& packet, TTickCount tick);
QString ReceiveTraceLine(const TCommandPacket& packet, bool echo, TTickCount tick);

// The packet trace is written only when a debugger was attached as the library loaded, decided
// once then; tools and tests may switch it explicitly.
bool PacketTraceEnabled();
void SetPacketTraceEnabled(bool enabled);

}  // namespace norva
