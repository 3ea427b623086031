#include <NorvaGlobal/DebugOutput.h>

#include <QFile>
#include <QtGlobal>

#include <atomic>
#include <mutex>

namespace norva {

// Debug messages are off by default (Qt's default would show them).
Q_LOGGING_CATEGORY(BusLog, "norva.bus", QtInfoMsg)
Q_LOGGING_CATEGORY(OrbLog, "norva.orb", QtInfoMsg)
Q_LOGGING_CATEGORY(UsbLog, "norva.usb", QtInfoMsg)

namespace {
std::mutex gSinkLock;  // workers write their creation lines from their own threads
TDebugSink gSink;

std::atomic<TDebuggerProbe> gDebuggerProbe{nullptr};  // constant-initialised: usable while loading

bool TracerAttached() {
  QFile status(QStringLiteral("/proc/self/status"));
  if (!status.open(QIODevice::ReadOnly)) return false;
  for (QByteArray line = status.readLine(); !line.isEmpty(); line = status.readLine()) {
    if (line.startsWith("TracerPid:")) return line.mid(10).trimmed().toLongLong() != 0;
  }
  return false;
}

// Decided while the library loads, before any line is written.
const bool DefaultSinkEnabled =
    DebuggerAttachedAtStartUp() || qEnvironmentVariableIntValue("NORVA_DEBUG_OUTPUT") == 1;
}  // namespace

void DebugOutput(const QLoggingCategory& category, const QString& line) {
  {
    std::lock_guard lock(gSinkLock);
    if (gSink) {
      gSink(line);
      return;
    }
  }
  if (!DefaultSinkEnabled && !category.isDebugEnabled()) return;
  QMessageLogger(nullptr, 0, nullptr, category.categoryName()).debug().noquote() << line;
}

TDebugSink SetDebugOutputSink(TDebugSink sink) {
  std::lock_guard lock(gSinkLock);
  std::swap(gSink, sink);
  return sink;
}

bool IsDebuggerPresent() {
  const TDebuggerProbe probe = gDebuggerProbe.load();
  return probe ? probe() : TracerAttached();
}

bool DebuggerAttachedAtStartUp() {
  static const bool attached = IsDebuggerPresent();
  return attached;
}

TDebuggerProbe SetDebuggerProbe(TDebuggerProbe probe) { return gDebuggerProbe.exchange(probe); }

}  // namespace norva
