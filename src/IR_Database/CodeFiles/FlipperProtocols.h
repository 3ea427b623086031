#pragma once
// The protocols of the parsed signals of Flipper remote files, mapped onto the engine's own. The
// file gives an address and a command of four little-endian bytes each; how their bits become
// device, sub-device and function is told in docs/ir-database.md.

#include <IR_Database/CodeFileEntries.h>

#include <cstdint>

namespace norva {

// Raises ENorvaError for a protocol the map does not hold and for bits the protocol has no room
// for (what is out of a parameter's range the engine refuses when it builds the code).
TProtocolCode FlipperProtocolCode(const QString& protocol, std::uint32_t address,
                                  std::uint32_t command);

}  // namespace norva
