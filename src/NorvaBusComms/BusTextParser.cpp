#include <NorvaBusComms/BusTextParser.h>

#include <NorvaGlobal/HexDigits.h>

#include <array>
#include <cstring>

namespace norva {

namespace {
// The byte at `pair` (two characters), or -1 when either is not a hex digit.
int HexPair(const char* pair) {
  return HexPairValue(static_cast<unsigned char>(pair[0]), static_cast<unsigned char>(pair[1]));
}

// Reads one line of `length` characters (line feed excluded) into `packet`; false drops the line.
bool ParseLine(const char* line, qsizetype length, TCommandPacket& packet) {
  if (length < 4 || length > MaxBusTextLine) return false;
  const int cmd = HexPair(line);
  const int zone = HexPair(line + 2);
  if (cmd < 0 || zone < 0) return false;
  const qsizetype dataCount = (length - 4) / 2;
  packet.Data.resize(static_cast<std::size_t>(dataCount));
  for (qsizetype i = 0; i < dataCount; ++i) {
    const int value = HexPair(line + 4 + 2 * i);
    if (value < 0) return false;
    packet.Data[static_cast<std::size_t>(i)] = value;
  }
  packet.Cmd = static_cast<TCommand>(cmd);
  packet.Zone = static_cast<std::uint8_t>(zone);
  return true;
}
}  // namespace

qsizetype ParseBusText(QByteArrayView text, TTickCount now, std::vector<TCommandPacket>& packets) {
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  const char* lineStart = begin;
  TCommandPacket packet;
  packet.Timestamp = now;
  while (lineStart < end) {
    const auto* lineFeed = static_cast<const char*>(
        std::memchr(lineStart, '\n', static_cast<std::size_t>(end - lineStart)));
    if (!lineFeed) break;
    if (ParseLine(lineStart, lineFeed - lineStart, packet)) packets.push_back(packet);
    lineStart = lineFeed + 1;
  }
  return lineStart - begin;
}

}  // namespace norva
