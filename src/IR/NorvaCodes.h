#pragma once
// The native infra-red codes of the installation's own amplifiers, preamplifiers, relay modules
// and video switches: the frames, the names and categories they are shown with, and which
// commands make sense for a zone and a kind of device.

#include <ButtonClasses/ButtonClass.h>
#include <IR/IRStreamData.h>
#include <NorvaBusComms/CommandPacket.h>

#include <QString>

#include <cstdint>
#include <optional>

namespace norva {

// A relay-module command: the character code 'A' (65) .. '\' (92), 28 commands.
using TSw6Cmd = std::uint8_t;
inline constexpr TSw6Cmd FirstSw6Cmd = 65;
inline constexpr TSw6Cmd LastSw6Cmd = 92;

// "Standby", "Audio source 3", "Select preset 14", ...; empty outside the enumeration.
QString NorvaFunctionName(TNorvaCommand command);
// "Relay 1 off", ..., "Relay 5/6 -1"; empty outside FirstSw6Cmd..LastSw6Cmd.
QString Sw6CommandName(TSw6Cmd command);
// Whether the command makes sense for the zone (-1 = all zones) and the kind of device.
bool NorvaFunctionUseful(TNorvaCommand command, int zone, TNorvaCommandType type);

// The frame of a native command for a zone (-1 = all zones, else 0..95): lead-in, command group,
// zone byte, command bytes and checksum, one pair per bit, then the word end.
TIRStreamData NorvaFrame(int zone, TNorvaCommand command, TNorvaCommandType type);
// The older frame relay modules understand: the low 5 bits of `a`, then the 8 bits of `b`.
TIRStreamData LegacyRelayFrame(std::uint8_t a, std::uint8_t b);
// The category a native stream is filed under ("Norva, zone 3 (preamp)").
QString NorvaCategory(int zone, TNorvaCommandType type);
// The bytes a native frame carries, checksum left out, as "01 FF 04".
QString NorvaFrameText(const TIRStreamData& frame);
// The bus packet that asks an amplifier for what a native frame does: the frame's command group
// as the command, its zone byte as the zone, its command bytes as the data. Nothing when the
// stream is no native frame (other timings or lead-in, a bit that is neither 1 nor 2 ms, fewer
// than three bytes, or a wrong checksum); the older relay frame has no packet either.
std::optional<TCommandPacket> NorvaFramePacket(const TIRStreamData& frame);
// The Norva keypad function that does what the command does, if there is one.
std::optional<TButtonClass> NorvaCommandButtonClass(TNorvaCommand command);

}  // namespace norva
