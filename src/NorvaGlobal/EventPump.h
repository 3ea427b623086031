#pragma once
// How the UI thread waits: it sleeps in short steps and lets pending messages run in between, so
// that what it waits for (an echo, a device's answer) can arrive while it waits.

#include <NorvaGlobal/TickCount.h>

namespace norva {

// Waiting steps of the designed waits.
inline constexpr TTickCount WaitStepMs = 10;

// Sleeps `ms` milliseconds, then lets the pending events of the calling thread run.
void SleepAndPumpEvents(TTickCount ms);

}  // namespace norva
