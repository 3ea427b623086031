// norva ir hex / native / raw: infra-red codes read, built and shown as the library sees them.
#include "Subcommands.h"

#include <IR/IRHexCode.h>
#include <IR/IRRawSignal.h>
#include <IR/NorvaCodes.h>
#include <NorvaGlobal/EnumNames.h>
#include <NorvaGlobal/Exceptions.h>
#include <NorvaGlobal/Vocabulary.h>

#include <QFile>

namespace norva::cli {

namespace {

QString Microseconds(double seconds) { return QString::number(seconds * 1e6, 'f', 1) + " us"; }

double LengthSeconds(const TIRStreamData& stream, int id) {
  const double unit = id >= FirstWordEndID ? WordEndLengthUnit : PeriodLengthUnit;
  return stream.Lengths[static_cast<std::size_t>(id)] * unit;
}

// Status, format, carrier, the lengths the pairs use, the pairs and the hex code read back.
void PrintStream(const TIRStreamData& stream, QTextStream& out) {
  out << "status: " << stream.Status() << '\n';
  out << "format: " << EnumName(stream.Format) << '\n';
  if (stream.ModulationPeriod == 0)
    out << "carrier: none (unmodulated)\n";
  else
    out << "carrier: " << QString::number(ModulationClockHz / stream.ModulationPeriod, 'f', 0)
        << " Hz (period " << stream.ModulationPeriod << " ticks of 12 MHz)\n";
  const int end = stream.GetEndPos(false);
  QStringList periods;
  for (int id = 0; id < PeriodIDCount; ++id) {
    if (stream.IsPeriodUsed(static_cast<TPeriodID>(id), end))
      periods << QString::number(id) + ": " + Microseconds(LengthSeconds(stream, id));
  }
  out << "periods: " << periods.join(QStringLiteral(", ")) << '\n';
  out << "pairs: " << stream.GetPeriodIDPairsString() << '\n';
  try {
    out << "hex: " << HexCodeOf(stream) << '\n';
  } catch (const ENorvaError& error) {
    out << "hex: " << error.Message() << '\n';
  }
}

// A line of input: a code, or a name, a TAB and a code. True when it read into a valid stream; a
// code ignored for too few words or giving a stream whose status is not "OK" is no success.
bool ReportHexCode(const QString& line, QTextStream& out) {
  const QString code = line.section(u'\t', -1);
  if (line.contains(u'\t')) out << "name: " << line.section(u'\t', 0, -2) << '\n';
  out << "code: " << code.trimmed() << '\n';
  try {
    const std::optional<TIRStreamData> stream = ParseHexCode(code);
    if (!stream) {
      out << "ignored: fewer than five words\n";
      return false;
    }
    PrintStream(*stream, out);
    return stream->Status() == QStringLiteral("OK");
  } catch (const ENorvaError& error) {
    out << "error: " << error.Message() << '\n';
    return false;
  }
}

QStringList InputLines() {
  QFile input;
  if (!input.open(stdin, QIODevice::ReadOnly))
    throw EUsage(QStringLiteral("cannot read standard input"));
  QStringList lines;
  for (const QString& line : QString::fromUtf8(input.readAll()).split(u'\n')) {
    if (!line.trimmed().isEmpty()) lines << line.trimmed();
  }
  return lines;
}

template <typename E>
E ParseEnum(const QString& text, int last, const QString& what) {
  if (const auto byName = EnumFromName<E>(text)) return *byName;
  if (!ParseNumber(text)) throw EUsage(QStringLiteral("unknown %1 %2").arg(what, Quoted(text)));
  return static_cast<E>(ParseInteger(text, 0, last, what));
}

TSw6Cmd ParseRelayLetter(const QString& text) {
  if (text.size() == 1 && text[0].unicode() >= FirstSw6Cmd && text[0].unicode() <= LastSw6Cmd)
    return static_cast<TSw6Cmd>(text[0].unicode());
  throw EUsage(QStringLiteral("LETTER must be one of A to \\, not %1").arg(Quoted(text)));
}

// A duration as capture tools write it: a number of microseconds, perhaps signed (+pulse -gap).
double ParseDuration(const QString& text) {
  bool ok = false;
  const double value = std::abs(text.toDouble(&ok));
  if (!ok || !(value > 0))
    throw EUsage(QStringLiteral("a duration must be a positive number of microseconds, not %1")
                     .arg(Quoted(text)));
  return value;
}

double ParseFrequency(const QString& text) {
  bool ok = false;
  const double hertz = text.toDouble(&ok);
  if (!ok || hertz < 0)
    throw EUsage(QStringLiteral("HZ must be a frequency in hertz, not %1").arg(Quoted(text)));
  return hertz;
}

QList<double> ParseDurations(const QStringList& values) {
  QList<double> durations;
  for (const QString& value : values) durations << ParseDuration(value);
  if (durations.isEmpty()) throw EUsage(QStringLiteral("ir raw needs DURATIONS"));
  return durations;
}

// The stream of a raw signal, or the reason there is none; true when there is one.
bool ReportRawSignal(double hertz, const QList<double>& durations, QTextStream& out) {
  try {
    PrintStream(RawSignalStream(hertz, durations), out);
    return true;
  } catch (const ENorvaError& error) {
    out << "error: " << error.Message() << '\n';
    return false;
  }
}

// A line of input: [NAME<TAB>]FREQUENCY DURATIONS...; a line that holds no signal says why.
bool ReportRawLine(const QString& line, QTextStream& out) {
  if (line.contains(u'\t')) out << "name: " << line.section(u'\t', 0, -2) << '\n';
  const QStringList words = line.section(u'\t', -1).split(u' ', Qt::SkipEmptyParts);
  try {
    return ReportRawSignal(ParseFrequency(words.value(0)), ParseDurations(words.mid(1)), out);
  } catch (const EUsage& error) {
    out << "error: " << QString::fromUtf8(error.what()) << '\n';
    return false;
  }
}

}  // namespace

int RunIRHex(TArguments& arguments, QTextStream& out) {
  const QStringList values = arguments.Positional();
  if (values.isEmpty()) throw EUsage(QStringLiteral("ir hex needs a CODE, or - to read codes"));
  // A code typed without quotes arrives as one argument per word.
  const QStringList codes =
      values == QStringList{QStringLiteral("-")} ? InputLines() : QStringList{values.join(u' ')};
  bool allRead = true;
  for (qsizetype i = 0; i < codes.size(); ++i) {
    if (i > 0) out << '\n';
    allRead = ReportHexCode(codes[i], out) && allRead;
  }
  return allRead ? 0 : 1;
}

int RunIRNative(TArguments& arguments, QTextStream& out) {
  const std::optional<QString> type = arguments.TakeOption(QStringLiteral("--type"));
  const bool relay = arguments.TakeFlag(QStringLiteral("--sw6"));
  const QStringList values = arguments.Positional();
  if (values.size() != 2)
    throw EUsage(relay ? QStringLiteral("ir native --sw6 needs MODULE and LETTER")
                       : QStringLiteral("ir native needs ZONE and COMMAND"));
  TIRStreamData frame;
  if (relay) {
    const int module = ParseInteger(values[0], 0, 31, QStringLiteral("MODULE"));
    const TSw6Cmd letter = ParseRelayLetter(values[1]);
    frame = LegacyRelayFrame(static_cast<std::uint8_t>(module), letter);
    out << "name: " << Sw6CommandName(letter) << '\n';
    out << "category: Norva Sw6, zone " << module << '\n';
  } else {
    const int zone = ParseInteger(values[0], -1, MaxZone, QStringLiteral("ZONE"));
    const auto command =
        ParseEnum<TNorvaCommand>(values[1], nvAlarmSleep, QStringLiteral("COMMAND"));
    const auto kind =
        type ? ParseEnum<TNorvaCommandType>(*type, VideoSwitcherCommand, QStringLiteral("TYPE"))
             : AmpCommand;
    frame = NorvaFrame(zone, command, kind);
    out << "name: " << NorvaFunctionName(command) << '\n';
    out << "category: " << NorvaCategory(zone, kind) << '\n';
    out << "useful: " << (NorvaFunctionUseful(command, zone, kind) ? "yes" : "no") << '\n';
    out << "frame: " << NorvaFrameText(frame) << '\n';
  }
  out << "hex: " << HexCodeOf(frame) << '\n';
  return 0;
}

int RunIRRaw(TArguments& arguments, QTextStream& out) {
  const std::optional<QString> frequency = arguments.TakeOption(QStringLiteral("--frequency"));
  const QStringList values = arguments.Positional();
  if (!frequency && values == QStringList{QStringLiteral("-")}) {
    const QStringList lines = InputLines();
    bool allRead = true;
    for (qsizetype i = 0; i < lines.size(); ++i) {
      if (i > 0) out << '\n';
      allRead = ReportRawLine(lines[i], out) && allRead;
    }
    return allRead ? 0 : 1;
  }
  if (!frequency) throw EUsage(QStringLiteral("ir raw needs --frequency HZ, or - to read signals"));
  return ReportRawSignal(ParseFrequency(*frequency), ParseDurations(values), out) ? 0 : 1;
}

}  // namespace norva::cli
