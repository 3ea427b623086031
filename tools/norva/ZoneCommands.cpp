// norva zone encode / decode, and norva error: the vocabulary at the installer's fingertips.
#include "Subcommands.h"

#include <NorvaGlobal/NorvaGlobal.h>

namespace norva::cli {

int RunZoneEncode(TArguments& arguments, QTextStream& out) {
  const bool preamp = arguments.TakeFlag(QStringLiteral("--preamp"));
  const bool pagePreset = arguments.TakeFlag(QStringLiteral("--page-preset"));
  const QStringList values = arguments.Positional();
  if (values.size() != 1) throw EUsage(QStringLiteral("zone encode needs one ZONE"));
  const int zone = ParseInteger(values[0], -1, MaxZone, QStringLiteral("ZONE"));
  const std::uint8_t byte = EncodeZone(static_cast<std::int8_t>(zone), preamp, pagePreset);
  out << "0x" << QStringLiteral("%1").arg(byte, 2, 16, QLatin1Char('0')).toUpper() << '\n';
  return 0;
}

int RunZoneDecode(TArguments& arguments, QTextStream& out) {
  const QStringList values = arguments.Positional();
  if (values.size() != 1) throw EUsage(QStringLiteral("zone decode needs one BYTE"));
  const auto byte =
      static_cast<std::uint8_t>(ParseInteger(values[0], 0, 255, QStringLiteral("BYTE")));
  out << ZoneByteText(byte) << '\n';
  return 0;
}

int RunError(TArguments& arguments, QTextStream& out) {
  const QStringList values = arguments.Positional();
  if (values.size() != 1 && values.size() != 3)
    throw EUsage(QStringLiteral("error needs CODE, or CODE FIRST SECOND"));
  const auto byName = EnumFromName<TError>(values[0]);
  const TError code =
      byName ? *byName
             : static_cast<TError>(ParseInteger(values[0], 0, 255, QStringLiteral("CODE")));
  const int first =
      values.size() == 3 ? ParseInteger(values[1], -1, 1 << 30, QStringLiteral("FIRST")) : -1;
  const int second =
      values.size() == 3 ? ParseInteger(values[2], -1, 1 << 30, QStringLiteral("SECOND")) : -1;
  out << NorvaErrorMsg(code, first, second) << '\n';
  return 0;
}

}  // namespace norva::cli
