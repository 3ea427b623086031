#include <IR_Database/CodeFiles/CodeFileLines.h>

namespace norva {

QList<TCodeFileLine> CodeFileLines(const QByteArray& bytes) {
  QList<TCodeFileLine> lines;
  int number = 0;
  for (const QByteArray& line : bytes.split('\n')) {
    ++number;
    const QString text = QString::fromUtf8(line).trimmed();
    if (!text.isEmpty()) lines.append({number, text});
  }
  return lines;
}

QString LinePlace(int number) { return QStringLiteral("line %1").arg(number); }

}  // namespace norva
