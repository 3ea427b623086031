#pragma once
// 32-bit millisecond tick counts. They wrap after 49.7 days, so time-outs always compare the
// difference of two counts (unsigned arithmetic), never the counts themselves.

#include <cstdint>

namespace norva {

using TTickCount = std::uint32_t;

TTickCount GetTickCount();

// Milliseconds from `start` to `now`, correct across a wrap of the counter.
constexpr TTickCount TicksBetween(TTickCount start, TTickCount now) { return now - start; }
inline TTickCount TicksSince(TTickCount start) { return TicksBetween(start, GetTickCount()); }

// Tests drive time by hand: a plain function that returns the current count (nullptr restores
// the system clock). Returns the previous source.
using TTickSource = TTickCount (*)();
TTickSource SetTickSource(TTickSource source);

}  // namespace norva
