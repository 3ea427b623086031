#pragma once
// Cuts received bus text into packets. Each line up to a line feed is one packet: two hex digits of
// command, two of zone, then a pair per data byte; a trailing CR or odd last character is ignored.
// Lines shorter than four characters, longer than MaxBusTextLine, or with a non-hex character where
// a digit is read, are dropped silently. An incomplete last line is left for the next arrival.

#include <NorvaBusComms/CommandPacket.h>

#include <QByteArrayView>

#include <vector>

namespace norva {

// The longest line a device sends is a packet of 253 data bytes (the most a notification frame can
// carry): 511 characters with its CR. A line longer than twice that is noise: dropped whole (the
// packet engine drops an unfinished one as soon as it is longer, and skips the rest of it).
inline constexpr qsizetype MaxBusTextLine = 1024;

// Appends the packets of every complete line to `packets`, stamped `now`, and returns the number of
// characters consumed (through the last line feed).
qsizetype ParseBusText(QByteArrayView text, TTickCount now, std::vector<TCommandPacket>& packets);

}  // namespace norva
