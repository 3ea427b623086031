#pragma once
// Developer diagnostics that must not disturb the user: the packet trace, "Unpublished property ",
// worker creation lines. They go to the debug-output sink: by default stderr, but only while a
// debugger was attached at start-up or NORVA_DEBUG_OUTPUT=1 is set (otherwise nowhere); tests
// capture them with their own sink.

#include <QString>

#include <functional>

namespace norva {

void DebugOutput(const QString& line);

using TDebugSink = std::function<void(const QString&)>;
// Replaces the sink (an empty function restores stderr). Returns the previous sink.
TDebugSink SetDebugOutputSink(TDebugSink sink);

// True when a debugger (any tracer) is attached to this process.
bool IsDebuggerPresent();

}  // namespace norva
