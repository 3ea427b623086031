#include <OrbGlobal/Xml/XmlErrors.h>

#include <algorithm>
#include <utility>

namespace norva {

namespace {

QString ParseErrorMessage(const QString& reason, int line, int column, const QString& path) {
  const QString message =
      QStringLiteral("%1\r\nLine: %2, position: %3").arg(reason).arg(line).arg(column);
  return path.isEmpty() ? message : QStringLiteral("Error loading %1\r\n\r\n%2").arg(path, message);
}

bool IsUtf8ContinuationByte(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

}  // namespace

EXMLParseError::EXMLParseError(QString reason, int line, int column, const QString& path)
    : EXMLError(ParseErrorMessage(reason, line, column, path)),
      mReason(std::move(reason)),
      mLine(line),
      mColumn(column) {}

// Line ends are counted as the parser counts them: CR LF, CR and LF each end one line.
EXMLParseError EXMLParseError::AtOffset(QString reason, QByteArrayView utf8, qsizetype offset) {
  offset = std::clamp<qsizetype>(offset, 0, utf8.size());
  int line = 1;
  int column = 1;
  for (qsizetype i = 0; i < offset; ++i) {
    const bool crlf = utf8[i] == '\r' && i + 1 < offset && utf8[i + 1] == '\n';
    if (crlf) continue;
    if (utf8[i] == '\n' || utf8[i] == '\r') {
      ++line;
      column = 1;
    } else if (!IsUtf8ContinuationByte(utf8[i])) {
      ++column;
    }
  }
  return EXMLParseError(std::move(reason), line, column);
}

}  // namespace norva
