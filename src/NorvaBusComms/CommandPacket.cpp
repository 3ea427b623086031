#include <NorvaBusComms/CommandPacket.h>
#include <NorvaGlobal/DebugOutput.h>
#include <NorvaGlobal/HexDigits.h>

#include <atomic>

namespace norva {

namespace {
void AppendHex(QByteArray& out, std::uint8_t value) {
  out.append(HexDigitChar(value >> 4));
  out.append(HexDigitChar(value));
}

// "0B,05,23": the packet's bytes as hex pairs joined by commas.
QString CommaHex(const TCommandPacket& packet) {
  QByteArray text;
  text.reserve(3 * (2 + static_cast<qsizetype>(packet.Data.size())));
  AppendHex(text, packet.Cmd);
  text.append(',');
  AppendHex(text, packet.Zone);
  for (std::int32_t value : packet.Data) {
    text.append(',');
    AppendHex(text, static_cast<std::uint8_t>(value));
  }
  return QString::fromLatin1(text);
}

// Decided while the library loads, not at the first packet: a debugger attached later does not
// switch the trace on.
std::atomic<bool> gTraceEnabled{DebuggerAttachedAtStartUp()};
}  // namespace

QByteArray TCommandPacket::GetDataBytes() const {
  QByteArray bytes(static_cast<qsizetype>(Data.size()), Qt::Uninitialized);
  for (std::size_t i = 0; i < Data.size(); ++i)
    bytes[static_cast<qsizetype>(i)] = static_cast<char>(static_cast<std::uint8_t>(Data[i]));
  return bytes;
}

void TCommandPacket::SetDataBytes(const QByteArray& bytes) {
  Data.assign(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
              reinterpret_cast<const std::uint8_t*>(bytes.constData()) + bytes.size());
}

TCommandPacket BuildCommandPacket(TCommand cmd, std::uint8_t zone, std::span<const int> data) {
  TCommandPacket packet;
  packet.Cmd = cmd;
  packet.Zone = zone;
  packet.Data.reserve(data.size());
  for (int value : data) packet.Data.push_back(value < 0 ? value + 256 : value);
  packet.Timestamp = GetTickCount();
  return packet;
}

QByteArray PacketText(const TCommandPacket& packet) {
  QByteArray text;
  text.reserve(6 + 2 * static_cast<qsizetype>(packet.Data.size()));
  AppendHex(text, packet.Cmd);
  AppendHex(text, packet.Zone);
  for (std::int32_t value : packet.Data) AppendHex(text, static_cast<std::uint8_t>(value));
  text.append("\r\n");
  return text;
}

QString SendTraceLine(const TCommandPacket& packet, TTickCount tick) {
  return QString::number(tick) + QStringLiteral(" Send: ") + CommaHex(packet);
}

QString ReceiveTraceLine(const TCommandPacket& packet, bool echo, TTickCount tick) {
  QString line = QString::number(tick) + QStringLiteral(" Receive: ") + CommaHex(packet);
  if (echo) line += QStringLiteral(" (echo)");
  return line;
}

bool PacketTraceEnabled() { return gTraceEnabled.load(std::memory_order_relaxed); }

void SetPacketTraceEnabled(bool enabled) { gTraceEnabled.store(enabled); }

}  // namespace norva
