#include <NorvaGlobal/DebugOutput.h>

#include <QFile>
#include <QtGlobal>

#include <cstdio>
#include <mutex>

namespace norva {

namespace {
std::mutex gSinkLock;  // workers write their creation lines from their own threads
TDebugSink gSink;

bool DefaultSinkEnabled() {
  static const bool enabled =
      IsDebuggerPresent() || qEnvironmentVariableIntValue("NORVA_DEBUG_OUTPUT") == 1;
  return enabled;
}
}  // namespace

void DebugOutput(const QString& line) {
  std::lock_guard lock(gSinkLock);
  if (gSink) {
    gSink(line);
    return;
  }
  if (!DefaultSinkEnabled()) return;
  const QByteArray text = line.toLocal8Bit();
  std::fprintf(stderr, "%s\n", text.constData());
}

TDebugSink SetDebugOutputSink(TDebugSink sink) {
  std::lock_guard lock(gSinkLock);
  std::swap(gSink, sink);
  return sink;
}

bool IsDebuggerPresent() {
  QFile status(QStringLiteral("/proc/self/status"));
  if (!status.open(QIODevice::ReadOnly)) return false;
  for (QByteArray line = status.readLine(); !line.isEmpty(); line = status.readLine()) {
    if (line.startsWith("TracerPid:")) return line.mid(10).trimmed().toLongLong() != 0;
  }
  return false;
}

}  // namespace norva
