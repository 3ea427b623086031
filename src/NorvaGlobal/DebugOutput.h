#pragma once
// Developer diagnostics that must not disturb the user: the packet trace, "Unpublished property ",
// worker creation lines. They go to the debug-output sink: by default stderr, but only when a
// debugger was attached at start-up or NORVA_DEBUG_OUTPUT=1 is set (otherwise nowhere); tests
// capture them with their own sink.

#include <QString>

#include <functional>

namespace norva {

void DebugOutput(const QString& line);

using TDebugSink = std::function<void(const QString&)>;
// Replaces the sink (an empty function restores stderr). Returns the previous sink.
TDebugSink SetDebugOutputSink(TDebugSink sink);

// True when a debugger (any tracer) is attached to this process now.
bool IsDebuggerPresent();

// Whether a debugger was attached when the library was loaded: probed once then, before anything
// can write a line, so the diagnostics neither appear nor vanish when one attaches later.
bool DebuggerAttachedAtStartUp();

// Replaces how IsDebuggerPresent finds out (nullptr restores the look at the process status), so
// tests can stand in for a debugger that comes or goes. Returns the previous probe.
using TDebuggerProbe = bool (*)();
TDebuggerProbe SetDebuggerProbe(TDebuggerProbe probe);

}  // namespace norva
