#pragma once
// The enumerations of device commands: infra-red stream formats, the installation's own native
// codes, and the line settings of serial and network commands. Value names are written to files
// and typed on the command line: never reorder or rename them.

#include <QObject>

#include <cstdint>

namespace norva {
inline namespace IR {
Q_NAMESPACE

// The value lists read as the tables they are.
// clang-format off

// Which word of a stream is repeated while a key is held; the ordinal is the stored value.
enum TIRStreamFormat : std::uint8_t { RepeatWord1, RepeatWord2, RepeatBothWords, NoRepeat };
Q_ENUM_NS(TIRStreamFormat)

// The native commands of the installation's amplifiers; the value is the position.
enum TNorvaCommand : std::uint8_t {
  nvStandbyCmd, nvMuteCmd, nvVolUpCmd, nvVolDownCmd,
  nvSrc1Cmd, nvSrc2Cmd, nvSrc3Cmd, nvSrc4Cmd, nvSrc5Cmd, nvSrc6Cmd, nvSrc7Cmd, nvSrc8Cmd,
  nvSrc9Cmd, nvSrc10Cmd, nvSrc11Cmd, nvSrc12Cmd, nvSrc13Cmd, nvSrc14Cmd, nvSrc15Cmd, nvSrc16Cmd,
  nvSrcMediaCmd,
  nvSrc1AudioCmd, nvSrc2AudioCmd, nvSrc3AudioCmd, nvSrc4AudioCmd, nvSrc5AudioCmd, nvSrc6AudioCmd,
  nvSrc7AudioCmd, nvSrc8AudioCmd, nvSrc9AudioCmd, nvSrc10AudioCmd, nvSrc11AudioCmd,
  nvSrc12AudioCmd, nvSrc13AudioCmd, nvSrc14AudioCmd, nvSrc15AudioCmd, nvSrc16AudioCmd,
  nvSrcMediaAudioCmd,
  nvSrc1VideoCmd, nvSrc2VideoCmd, nvSrc3VideoCmd, nvSrc4VideoCmd, nvSrc5VideoCmd, nvSrc6VideoCmd,
  nvSrc7VideoCmd, nvSrc8VideoCmd, nvSrc9VideoCmd, nvSrc10VideoCmd, nvSrc11VideoCmd,
  nvSrc12VideoCmd, nvSrc13VideoCmd, nvSrc14VideoCmd, nvSrc15VideoCmd, nvSrc16VideoCmd,
  nvOnCmd, nvOffCmd,
  nvOnSrc1Cmd, nvOnSrc2Cmd, nvOnSrc3Cmd, nvOnSrc4Cmd, nvOnSrc5Cmd, nvOnSrc6Cmd, nvOnSrc7Cmd,
  nvOnSrc8Cmd, nvOnSrc9Cmd, nvOnSrc10Cmd, nvOnSrc11Cmd, nvOnSrc12Cmd, nvOnSrc13Cmd,
  nvOnSrc14Cmd, nvOnSrc15Cmd, nvOnSrc16Cmd, nvOnSrcMediaCmd,
  nvSelectPreset1Cmd, nvSelectPreset2Cmd, nvSelectPreset3Cmd, nvSelectPreset4Cmd,
  nvSelectPreset5Cmd, nvSelectPreset6Cmd, nvSelectPreset7Cmd, nvSelectPreset8Cmd,
  nvSelectPreset9Cmd, nvSelectPreset10Cmd, nvSelectPreset11Cmd, nvSelectPreset12Cmd,
  nvSelectPreset13Cmd, nvSelectPreset14Cmd,
  nvAlarmOff, nvAlarmOn, nvAlarmSleep
};
Q_ENUM_NS(TNorvaCommand)

enum TNorvaCommandType : std::uint8_t {
  AmpCommand, PreampCommand, IntegraAmpCommand, IntegraPreampCommand, Sw6Command,
  VideoSwitcherCommand
};
Q_ENUM_NS(TNorvaCommandType)

enum TPressDurationType : std::uint8_t { Press_Short, Press_Long };
Q_ENUM_NS(TPressDurationType)

enum TParity : std::uint8_t { parity_none, parity_odd, parity_even, parity_mark, parity_space };
Q_ENUM_NS(TParity)

enum TNumStopbits : std::uint8_t { stop_bits_1, stop_bits_1_5, stop_bits_2 };
Q_ENUM_NS(TNumStopbits)

enum TIPProtocol : std::uint8_t { TCP_IP, UDP_IP };
Q_ENUM_NS(TIPProtocol)

// clang-format on

}  // namespace IR
}  // namespace norva
