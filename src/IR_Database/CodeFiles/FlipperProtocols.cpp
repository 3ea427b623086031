#include <IR_Database/CodeFiles/FlipperProtocols.h>

#include <NorvaGlobal/Exceptions.h>

namespace norva {

namespace {

using TParameters = TIRProtocolParameters;

// The maker codes that Kaseikyo frames of the Panasonic and Denon-K protocols carry.
constexpr std::uint32_t PanasonicMaker = 0x2002;
constexpr std::uint32_t DenonMaker = 0x3254;

TProtocolCode Nec(std::uint32_t address, std::uint32_t command) {
  return {QStringLiteral("NEC1"), TParameters{address, {}, command, {}}};
}

// A 16-bit address; a command that is a byte and its inverse is NEC1's own, any other is 16 bits.
TProtocolCode NecExtended(std::uint32_t address, std::uint32_t command) {
  const std::uint32_t device = address & 0xFF, subDevice = address >> 8;
  if ((command >> 8) == (~command & 0xFF))
    return {QStringLiteral("NEC1"), TParameters{device, subDevice, command & 0xFF, {}}};
  return {QStringLiteral("NEC1-f16"), TParameters{device, subDevice, command, {}}};
}

// The address byte is sent twice, after a lead of 4.5 ms on and off.
TProtocolCode Samsung(std::uint32_t address, std::uint32_t command) {
  return {QStringLiteral("NECx1"), TParameters{address, address, command, {}}};
}

TProtocolCode Rc5(std::uint32_t address, std::uint32_t command) {
  return {QStringLiteral("RC5"), TParameters{address, {}, command, 0}};
}

// The extended form's seventh command bit is the inverted field bit: commands 64 to 127 of RC5.
TProtocolCode Rc5Extended(std::uint32_t address, std::uint32_t command) {
  return {QStringLiteral("RC5"), TParameters{address, {}, command + 64, 0}};
}

TProtocolCode Rc6(std::uint32_t address, std::uint32_t command) {
  return {QStringLiteral("RC6"), TParameters{address, {}, command, 0}};
}

TProtocolCode Sony12(std::uint32_t address, std::uint32_t command) {
  return {QStringLiteral("Sony12"), TParameters{address, {}, command, {}}};
}

TProtocolCode Sony15(std::uint32_t address, std::uint32_t command) {
  return {QStringLiteral("Sony15"), TParameters{address, {}, command, {}}};
}

// A 13-bit address: the device in its low 5 bits, the sub-device above.
TProtocolCode Sony20(std::uint32_t address, std::uint32_t command) {
  return {QStringLiteral("Sony20"), TParameters{address & 0x1F, address >> 5, command, {}}};
}

// The address holds the genres in its low byte (first above second), the maker code in the next
// two and an ID in bits 24 and 25; the command has 10 bits. The Panasonic protocol's device is the
// first genre with the maker's parity (0 for both makers here), its sub-device the second genre
// with the command's low 4 bits, its function the other 6 bits with the ID. Denon-K sends the same
// bytes after its own maker code, read as nibbles: the device is the first genre, the sub-device
// the second, the function the 12 bits after them.
TProtocolCode Kaseikyo(std::uint32_t address, std::uint32_t command) {
  const std::uint32_t maker = (address >> 8) & 0xFFFF;
  if (maker != PanasonicMaker && maker != DenonMaker)
    throw ENorvaError(QStringLiteral("Kaseikyo maker code 0x%1 has no protocol here (Panasonic's "
                                     "0x2002 and Denon's 0x3254 have)")
                          .arg(maker, 4, 16, QLatin1Char('0')));
  if (address >> 26 != 0 || command >> 10 != 0)
    throw ENorvaError(QStringLiteral("Kaseikyo address or command has bits beyond its fields"));
  const std::uint32_t device = address & 0xF0;
  const std::uint32_t subDevice = (address & 0x0F) | (command & 0x0F) << 4;
  const std::uint32_t function = command >> 4 | (address >> 24) << 6;
  if (maker == DenonMaker)
    return {QStringLiteral("Denon-K"),
            TParameters{device >> 4, subDevice & 0x0F, subDevice >> 4 | function << 4, {}}};
  return {QStringLiteral("Panasonic"), TParameters{device, subDevice, function, {}}};
}

TProtocolCode Pioneer(std::uint32_t address, std::uint32_t command) {
  return {QStringLiteral("Pioneer"), TParameters{address, {}, command, {}}};
}

struct TMapping {
  const char* Name;  // as the file writes it
  TProtocolCode (*Code)(std::uint32_t address, std::uint32_t command);
};

constexpr TMapping Mappings[] = {
    {"NEC", &Nec},           {"NECext", &NecExtended}, {"Samsung32", &Samsung},
    {"RC5", &Rc5},           {"RC5X", &Rc5Extended},   {"RC6", &Rc6},
    {"SIRC", &Sony12},       {"SIRC15", &Sony15},      {"SIRC20", &Sony20},
    {"Kaseikyo", &Kaseikyo}, {"Pioneer", &Pioneer},
};

}  // namespace

TProtocolCode FlipperProtocolCode(const QString& protocol, std::uint32_t address,
                                  std::uint32_t command) {
  for (const TMapping& mapping : Mappings)
    if (protocol == QLatin1String(mapping.Name)) return mapping.Code(address, command);
  throw ENorvaError(QStringLiteral("protocol \"%1\" is not one the import knows").arg(protocol));
}

}  // namespace norva
