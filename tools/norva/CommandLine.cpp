#include "CommandLine.h"

#include <NorvaGlobal/Zones.h>

#include <vector>

namespace norva::cli {

bool TArguments::TakeFlag(const QString& flag) { return mArguments.removeAll(flag) > 0; }

std::optional<QString> TArguments::TakeOption(const QString& option) {
  const qsizetype at = mArguments.indexOf(option);
  if (at < 0) return std::nullopt;
  if (at + 1 >= mArguments.size()) throw EUsage(option + QStringLiteral(" needs a value"));
  const QString value = mArguments.at(at + 1);
  mArguments.remove(at, 2);
  return value;
}

QStringList TArguments::Positional() const {
  for (const QString& argument : mArguments) {
    // A lone "-" means standard input, and negative numbers are values, not options.
    bool isNumber = false;
    argument.toLongLong(&isNumber, 0);
    if (argument.startsWith(u'-') && argument != QStringLiteral("-") && !isNumber)
      throw EUsage(QStringLiteral("unknown option ") + argument);
  }
  return mArguments;
}

int ParseInteger(const QString& text, int min, int max, const QString& what) {
  bool ok = false;
  const qlonglong value = text.startsWith(QStringLiteral("0x"), Qt::CaseInsensitive)
                              ? text.mid(2).toLongLong(&ok, 16)
                              : text.toLongLong(&ok, 10);
  if (!ok || value < min || value > max)
    throw EUsage(QStringLiteral("%1 must be a number from %2 to %3, not \"%4\"")
                     .arg(what)
                     .arg(min)
                     .arg(max)
                     .arg(text));
  return static_cast<int>(value);
}

TCommandPacket TakePacket(TArguments& arguments, const QString& command) {
  const bool preamp = arguments.TakeFlag(QStringLiteral("--preamp"));
  const bool pagePreset = arguments.TakeFlag(QStringLiteral("--page-preset"));
  const QStringList values = arguments.Positional();
  if (values.size() < 2) throw EUsage(command + QStringLiteral(" needs CMD and ZONE"));
  const int cmd = ParseInteger(values[0], 0, 255, QStringLiteral("CMD"));
  const int zone = ParseInteger(values[1], -1, 95, QStringLiteral("ZONE"));
  std::vector<int> data;
  for (qsizetype i = 2; i < values.size(); ++i)
    data.push_back(ParseInteger(values[i], -255, 255, QStringLiteral("a data byte")));
  return BuildCommandPacket(static_cast<TCommand>(cmd),
                            EncodeZone(static_cast<std::int8_t>(zone), preamp, pagePreset), data);
}

}  // namespace norva::cli
