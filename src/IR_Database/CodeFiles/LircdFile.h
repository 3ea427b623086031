#pragma once
// lircd.conf, the remote definitions of the LIRC daemon: "begin remote" blocks of timings (header,
// one, zero, lead and trail pulses, pre and post data, gap, repeat, frequency, flags) followed by
// "begin codes" (a name and a code a line) or "begin raw_codes" (a name, then durations).

#include <IR_Database/CodeFileEntries.h>

namespace norva {

// Whether the first line that is neither blank nor a comment begins a remote.
bool IsLircdFile(const QByteArray& bytes);

// One entry per code ("line 40"), placed in a model named after its remote (no make). Codes are
// rendered from the remote's timings into the frame sent first and the frame repeated while the
// button is held; raw codes are read as one signal. Receive-only settings (eps, aeps, ignore_mask,
// toggle bits, duty_cycle, min_repeat and the like) are not needed to send and are passed over.
// Refused with the reason, each code of a remote that: names a flag other than SPACE_ENC, RC5,
// SHIFT_ENC, RC6, CONST_LENGTH, REVERSE and RAW_CODES, or a setting this reader does not know;
// has no one and zero timings (codes of a receiver that decodes them itself); or more than 64
// bits with its pre and post data. Also refused: a code that is no number or has more bits than
// the remote sends, several codes for one button, a line outside every remote.
TCodeFileEntries ReadLircdFile(const QByteArray& bytes, const QString& path);

}  // namespace norva
