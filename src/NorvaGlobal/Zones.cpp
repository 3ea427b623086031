#include <NorvaGlobal/Zones.h>

namespace norva {

namespace {
constexpr std::uint8_t BankMask = 0xC0;
constexpr std::uint8_t PreampBank = 0x40;
constexpr std::uint8_t Bank1 = 0x80;
constexpr std::uint8_t Bank2 = 0xC0;
constexpr std::uint8_t PagePresetBit = 0x20;
constexpr std::uint8_t ZoneInBankMask = 0x1F;
}  // namespace

std::uint8_t EncodeZone(std::int8_t zone, bool preamp, bool pagePreset) {
  if (zone == -1) return NoZoneByte;
  std::uint8_t result;
  if (zone <= LastPreampZone)
    result = static_cast<std::uint8_t>(zone) | (preamp ? PreampBank : 0);
  else if (zone <= 63)
    result = static_cast<std::uint8_t>(Bank1 + (zone - 32));
  else
    result = static_cast<std::uint8_t>(Bank2 + (zone - 64));
  if (pagePreset) result |= PagePresetBit;
  return result;
}

std::int8_t GetDecodedZone(std::uint8_t zoneByte) {
  if (zoneByte == NoZoneByte) return -1;
  const auto inBank = static_cast<std::int8_t>(zoneByte & ZoneInBankMask);
  switch (zoneByte & BankMask) {
    case Bank1: return static_cast<std::int8_t>(inBank + 32);
    case Bank2: return static_cast<std::int8_t>(inBank + 64);
    default: return inBank;
  }
}

bool IsPreampZone(std::uint8_t zoneByte) {
  return zoneByte != NoZoneByte && (zoneByte & BankMask) == PreampBank;
}

bool IsPagePresetZone(std::uint8_t zoneByte) {
  return zoneByte != NoZoneByte && (zoneByte & PagePresetBit) != 0;
}

QString ZoneByteText(std::uint8_t zoneByte) {
  if (zoneByte == NoZoneByte) return QStringLiteral("no zone");
  QString text = QStringLiteral("zone %1").arg(GetDecodedZone(zoneByte));
  if (IsPreampZone(zoneByte)) text += QStringLiteral(", preamp output");
  if (IsPagePresetZone(zoneByte)) text += QStringLiteral(", page preset");
  return text;
}

}  // namespace norva
