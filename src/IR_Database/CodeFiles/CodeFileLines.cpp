#include <IR_Database/CodeFiles/CodeFileLines.h>

#include <NorvaGlobal/Exceptions.h>

#include <algorithm>
#include <charconv>

namespace norva {

QList<TCodeFileLine> CodeFileLines(const QByteArray& bytes) {
  QList<TCodeFileLine> lines;
  int number = 0;
  // A byte order mark is no part of the first line.
  const QByteArray content = bytes.startsWith("\xEF\xBB\xBF") ? bytes.mid(3) : bytes;
  for (const QByteArray& line : content.split('\n')) {
    ++number;
    const QString text = QString::fromUtf8(line).trimmed();
    if (!text.isEmpty()) lines.append({number, text});
  }
  return lines;
}

QString LinePlace(int number) { return QStringLiteral("line %1").arg(number); }

// Learnt captures hold thousands of numbers a file: read without a string for each.
QList<double> DecimalNumbers(QStringView text, char separator, const char* what) {
  const QByteArray latin = text.toLatin1();
  QList<double> numbers;
  for (const char *at = latin.cbegin(), *end = latin.cend(); at != end;) {
    if (*at == separator) {
      ++at;
      continue;
    }
    const char* tokenEnd = std::find(at, end, separator);
    double number = 0;
    const std::from_chars_result read = std::from_chars(at, tokenEnd, number);
    if (read.ec != std::errc() || read.ptr != tokenEnd)
      throw ENorvaError(QStringLiteral("%1 \"%2\" is no number")
                            .arg(QLatin1String(what), QLatin1String(at, tokenEnd)));
    numbers << number;
    at = tokenEnd;
  }
  return numbers;
}

}  // namespace norva
