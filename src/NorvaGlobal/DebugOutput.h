#pragma once
// Developer diagnostics that must not disturb the user: the packet trace, "Unpublished property ",
// worker creation lines. Each module writes them as debug messages of its own logging category
// (norva.bus, norva.orb, norva.usb), which are quiet unless asked for: a debugger attached at
// start-up, NORVA_DEBUG_OUTPUT=1, or Qt's logging rules (QT_LOGGING_RULES="norva.bus.debug=true").
// They then go through Qt's message handler, so an application can route them with
// qInstallMessageHandler; tests capture them with their own sink instead.

#include <QLoggingCategory>
#include <QString>

#include <functional>

namespace norva {

// The modules' categories: packets, links and workers; the document model; the USB layer.
Q_DECLARE_LOGGING_CATEGORY(BusLog)
Q_DECLARE_LOGGING_CATEGORY(OrbLog)
Q_DECLARE_LOGGING_CATEGORY(UsbLog)

void DebugOutput(const QLoggingCategory& category, const QString& line);

using TDebugSink = std::function<void(const QString&)>;
// Replaces the sink (an empty function restores the categories). Returns the previous sink.
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
