#pragma once
// Developer diagnostics that must not disturb the user: the packet trace, "Unpublished property ",
// worker creation lines. They go to the debug-output sink, stderr unless a test captures them.

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
