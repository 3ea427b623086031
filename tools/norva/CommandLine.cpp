#include "CommandLine.h"

#include <NorvaGlobal/Vocabulary.h>
#include <NorvaGlobal/Zones.h>

#include <algorithm>
#include <vector>

namespace norva::cli {

namespace {

bool IsDecimalDigit(QChar c) { return c >= u'0' && c <= u'9'; }
bool IsHexDigit(QChar c) {
  return IsDecimalDigit(c) || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

// One character of a quoted value: itself when it prints on the same line, else an escape.
QString EscapedCharacter(char32_t c) {
  switch (c) {
    case u'\\': return QStringLiteral("\\\\");
    case u'"': return QStringLiteral("\\\"");
    case u'\n': return QStringLiteral("\\n");
    case u'\r': return QStringLiteral("\\r");
    case u'\t': return QStringLiteral("\\t");
    default: break;
  }
  const bool breaksLine = c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
  if (QChar::isPrint(c) && !breaksLine) return QString::fromUcs4(&c, 1);
  const auto code = static_cast<uint>(c);
  if (code <= 0xFF) return QStringLiteral("\\x%1").arg(code, 2, 16, QLatin1Char('0'));
  if (code <= 0xFFFF) return QStringLiteral("\\u%1").arg(code, 4, 16, QLatin1Char('0'));
  return QStringLiteral("\\U%1").arg(code, 8, 16, QLatin1Char('0'));
}

}  // namespace

QString Escaped(const QString& text) {
  QString escaped;
  for (const char32_t c : text.toUcs4()) escaped += EscapedCharacter(c);
  return escaped;
}

QString Quoted(const QString& value) { return u'"' + Escaped(value) + u'"'; }

std::optional<qlonglong> ParseNumber(const QString& text) {
  const bool negative = text.startsWith(u'-');
  QStringView digits = QStringView(text).mid(negative ? 1 : 0);
  const bool hex = digits.startsWith(QStringLiteral("0x"), Qt::CaseInsensitive);
  if (hex) digits = digits.mid(2);
  if (digits.isEmpty() ||
      !std::all_of(digits.begin(), digits.end(), hex ? &IsHexDigit : &IsDecimalDigit))
    return std::nullopt;
  bool ok = false;
  const qlonglong magnitude = digits.toLongLong(&ok, hex ? 16 : 10);
  if (!ok) return std::nullopt;
  return negative ? -magnitude : magnitude;
}

qsizetype TArguments::OptionsEnd() const {
  const qsizetype end = mArguments.indexOf(QStringLiteral("--"));
  return end < 0 ? mArguments.size() : end;
}

bool TArguments::TakeFlag(const QString& flag) {
  const qsizetype at = mArguments.indexOf(flag);
  if (at < 0 || at >= OptionsEnd()) return false;
  mArguments.removeAll(flag);
  return true;
}

std::optional<QString> TArguments::TakeOption(const QString& option) {
  const qsizetype at = mArguments.indexOf(option);
  if (at < 0 || at >= OptionsEnd()) return std::nullopt;
  if (at + 1 >= mArguments.size()) throw EUsage(option + QStringLiteral(" needs a value"));
  const QString value = mArguments.at(at + 1);
  mArguments.remove(at, 2);
  return value;
}

QStringList TArguments::Positional() const {
  const qsizetype end = OptionsEnd();
  for (const QString& argument : mArguments.first(end)) {
    // A lone "-" means standard input, and negative numbers are values, not options.
    if (argument.startsWith(u'-') && argument != QStringLiteral("-") && !ParseNumber(argument))
      throw EUsage(QStringLiteral("unknown option ") + Quoted(argument));
  }
  QStringList values = mArguments;
  if (end < values.size()) values.removeAt(end);
  return values;
}

int ParseInteger(const QString& text, int min, int max, const QString& what) {
  const std::optional<qlonglong> value = ParseNumber(text);
  if (!value || *value < min || *value > max)
    throw EUsage(QStringLiteral("%1 must be a number from %2 to %3, not %4")
                     .arg(what)
                     .arg(min)
                     .arg(max)
                     .arg(Quoted(text)));
  return static_cast<int>(*value);
}

TCommandPacket TakePacket(TArguments& arguments, const QString& command) {
  const bool preamp = arguments.TakeFlag(QStringLiteral("--preamp"));
  const bool pagePreset = arguments.TakeFlag(QStringLiteral("--page-preset"));
  const QStringList values = arguments.Positional();
  if (values.size() < 2) throw EUsage(command + QStringLiteral(" needs CMD and ZONE"));
  const int cmd = ParseInteger(values[0], 0, 255, QStringLiteral("CMD"));
  const int zone = ParseInteger(values[1], -1, MaxZone, QStringLiteral("ZONE"));
  std::vector<int> data;
  for (qsizetype i = 2; i < values.size(); ++i)
    data.push_back(ParseInteger(values[i], -255, 255, QStringLiteral("a data byte")));
  return BuildCommandPacket(static_cast<TCommand>(cmd),
                            EncodeZone(static_cast<std::int8_t>(zone), preamp, pagePreset), data);
}

}  // namespace norva::cli
