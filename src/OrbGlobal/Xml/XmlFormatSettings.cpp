#include <OrbGlobal/Xml/XmlFormatSettings.h>

#include <OrbGlobal/Xml/XmlErrors.h>

#include <charconv>
#include <cmath>
#include <string>

namespace norva {

namespace {

constexpr int SignificantDigits = 15;

// value = digits[0].digits[1..] x 10^exponent, without trailing zeros.
struct TDecimalDigits {
  bool negative = false;
  std::string digits;
  int exponent = 0;
};

TDecimalDigits ParseScientific(const char* begin, const char* end) {
  TDecimalDigits decimal;
  const char* c = begin;
  if (*c == '-') {
    decimal.negative = true;
    ++c;
  }
  for (; c != end && *c != 'e'; ++c) {
    if (*c != '.') decimal.digits.push_back(*c);
  }
  ++c;  // 'e'
  const bool negativeExponent = *c == '-';
  ++c;  // its sign, always written
  std::from_chars(c, end, decimal.exponent);
  if (negativeExponent) decimal.exponent = -decimal.exponent;
  while (decimal.digits.size() > 1 && decimal.digits.back() == '0') decimal.digits.pop_back();
  return decimal;
}

// The shortest digits that read back to `value`, rounded to 15 digits when more would be needed.
TDecimalDigits ToDecimalDigits(double value) {
  char buffer[64];
  auto written =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
  TDecimalDigits decimal = ParseScientific(buffer, written.ptr);
  if (decimal.digits.size() > SignificantDigits) {
    written = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific,
                            SignificantDigits - 1);
    decimal = ParseScientific(buffer, written.ptr);
  }
  return decimal;
}

bool UsesExponentForm(int exponent) { return exponent >= SignificantDigits || exponent < -4; }

QString Zeros(int count) { return QString(count, u'0'); }

QString LayOut(const TDecimalDigits& decimal) {
  const QString digits = QString::fromLatin1(decimal.digits);
  const QChar separator(XMLFormatSettings.DecimalSeparator);
  const int exponent = decimal.exponent;
  const auto length = static_cast<int>(digits.size());
  QString text = decimal.negative ? QStringLiteral("-") : QString();
  if (UsesExponentForm(exponent)) {
    text.append(digits.front());
    if (length > 1) text.append(separator).append(digits.mid(1));
    text.append(u'E').append(QString::number(exponent));
  } else if (exponent < 0) {
    text.append(u'0').append(separator).append(Zeros(-exponent - 1)).append(digits);
  } else if (exponent + 1 >= length) {
    text.append(digits).append(Zeros(exponent + 1 - length));
  } else {
    text.append(digits.left(exponent + 1)).append(separator).append(digits.mid(exponent + 1));
  }
  return text;
}

[[noreturn]] void RaiseNotAFloat(const QString& text) {
  throw EConvertError(QStringLiteral("'%1' is not a valid floating point value").arg(text));
}

[[noreturn]] void RaiseNotADate(const QString& text) {
  throw EConvertError(QStringLiteral("'%1' is not a valid date and time").arg(text));
}

bool IsAscii(const QString& text) {
  for (QChar c : text) {
    if (c.unicode() > 0x7F) return false;
  }
  return true;
}

QString Padded(int value, int width) { return QString::number(value).rightJustified(width, u'0'); }

// The number of `width` digits at `position`, or -1 when any of them is not a digit.
int DigitsAt(const QString& text, qsizetype position, int width) {
  int value = 0;
  for (int i = 0; i < width; ++i) {
    const QChar c = text.at(position + i);
    if (c < u'0' || c > u'9') return -1;
    value = value * 10 + (c.unicode() - u'0');
  }
  return value;
}

constexpr qsizetype DateLength = 10;      // yyyy/MM/dd
constexpr qsizetype DateTimeLength = 19;  // yyyy/MM/dd HH:mm:ss

QDate ParseDate(const QString& text) {
  if (text.at(4) != XMLFormatSettings.DateSeparator ||
      text.at(7) != XMLFormatSettings.DateSeparator)
    return QDate();
  const int year = DigitsAt(text, 0, 4);
  const int month = DigitsAt(text, 5, 2);
  const int day = DigitsAt(text, 8, 2);
  if (year < 1 || month < 0 || day < 0) return QDate();
  return QDate(year, month, day);
}

QTime ParseTime(const QString& text) {
  if (text.at(10) != u' ' || text.at(13) != XMLFormatSettings.TimeSeparator ||
      text.at(16) != XMLFormatSettings.TimeSeparator)
    return QTime();
  const int hour = DigitsAt(text, 11, 2);
  const int minute = DigitsAt(text, 14, 2);
  const int second = DigitsAt(text, 17, 2);
  if (hour < 0 || minute < 0 || second < 0) return QTime();
  return QTime(hour, minute, second);
}

}  // namespace

QString FloatToXMLText(double value) {
  if (std::isnan(value)) return QStringLiteral("NAN");
  if (std::isinf(value)) return value > 0 ? QStringLiteral("INF") : QStringLiteral("-INF");
  if (value == 0) return QStringLiteral("0");
  return LayOut(ToDecimalDigits(value));
}

double XMLTextToFloat(const QString& text) {
  const QString trimmed = text.trimmed();
  if (trimmed.isEmpty() || !IsAscii(trimmed)) RaiseNotAFloat(text);
  // The decimal separator of the files is the full stop, which is also what from_chars reads.
  static_assert(XMLFormatSettings.DecimalSeparator == u'.');
  const QByteArray ascii = trimmed.toLatin1();
  const char* begin = ascii.constData();
  const char* end = begin + ascii.size();
  if (*begin == '+' && begin + 1 != end && begin[1] != '-') ++begin;
  double value = 0;
  const auto [stop, error] = std::from_chars(begin, end, value);
  if (error != std::errc() || stop != end) RaiseNotAFloat(text);
  return value;
}

QString DateTimeToXMLText(const QDateTime& value) {
  if (!value.isValid()) throw EConvertError(QStringLiteral("Invalid date and time"));
  const QDate date = value.date();
  const QTime time = value.time();
  if (date.year() < 1 || date.year() > 9999) {
    throw EConvertError(QStringLiteral("Year %1 cannot be written").arg(date.year()));
  }
  const QChar dateSeparator(XMLFormatSettings.DateSeparator);
  const QChar timeSeparator(XMLFormatSettings.TimeSeparator);
  QString text = Padded(date.year(), 4);
  text.append(dateSeparator).append(Padded(date.month(), 2));
  text.append(dateSeparator).append(Padded(date.day(), 2));
  text.append(u' ').append(Padded(time.hour(), 2));
  text.append(timeSeparator).append(Padded(time.minute(), 2));
  text.append(timeSeparator).append(Padded(time.second(), 2));
  return text;
}

QDateTime XMLTextToDateTime(const QString& text, Qt::TimeSpec timeSpec) {
  if (text.size() != DateLength && text.size() != DateTimeLength) RaiseNotADate(text);
  const QDate date = ParseDate(text);
  const QTime time = text.size() == DateLength ? QTime(0, 0) : ParseTime(text);
  if (!date.isValid() || !time.isValid()) RaiseNotADate(text);
  return QDateTime(date, time, timeSpec);
}

}  // namespace norva
