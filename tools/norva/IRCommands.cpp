// norva ir hex / native / raw / decode / encode: infra-red codes read, built, decoded and shown as
// the library sees them.
#include "Subcommands.h"

#include <IR/IRHexCode.h>
#include <IR/IRProtocols.h>
#include <IR/IRRawSignal.h>
#include <IR/NorvaCodes.h>
#include <NorvaGlobal/EnumNames.h>
#include <NorvaGlobal/Exceptions.h>
#include <NorvaGlobal/Vocabulary.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <functional>
#include <utility>

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

// A line of input: a code, or a name, a TAB and a code.
struct TCodeLine {
  std::optional<QString> Name;
  QString Code;
};

TCodeLine SplitCodeLine(const QString& line) {
  if (!line.contains(u'\t')) return {std::nullopt, line};
  return {line.section(u'\t', 0, -2), line.section(u'\t', -1).trimmed()};
}

// True when the line read into a valid stream; a code ignored for too few words or giving a stream
// whose status is not "OK" is no success.
bool ReportHexCode(const QString& line, QTextStream& out) {
  const TCodeLine code = SplitCodeLine(line);
  if (code.Name) out << "name: " << *code.Name << '\n';
  out << "code: " << code.Code.trimmed() << '\n';
  try {
    const std::optional<TIRStreamData> stream = ParseHexCode(code.Code);
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

// The codes named by the arguments: one typed without quotes arrives as one argument per word;
// "-" reads one a line from standard input.
QStringList CodesToRead(const QStringList& values) {
  return values == QStringList{QStringLiteral("-")} ? InputLines() : QStringList{values.join(u' ')};
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

struct TRawSignal {
  double Hertz = 0;
  QList<double> Durations;
};

// --frequency HZ and DURATIONS... of `command`.
TRawSignal ReadRawSignal(const QString& frequency, const QStringList& values, const char* command) {
  TRawSignal signal;
  bool ok = false;
  signal.Hertz = frequency.toDouble(&ok);
  if (!ok || signal.Hertz < 0)
    throw EUsage(QStringLiteral("HZ must be a frequency in hertz, not %1").arg(Quoted(frequency)));
  for (const QString& value : values) signal.Durations << ParseDuration(value);
  if (signal.Durations.isEmpty())
    throw EUsage(QStringLiteral("%1 needs DURATIONS").arg(QLatin1String(command)));
  return signal;
}

// The most likely decode of a code, or why there is none.
struct TDecodeAnswer {
  std::optional<TIRDecode> Decode;
  QString Error;
};

TDecodeAnswer AnswerOf(const std::function<QList<TIRDecode>()>& decode) {
  try {
    const QList<TIRDecode> decodes = decode();
    if (decodes.isEmpty()) return {std::nullopt, QStringLiteral("the stream has no end")};
    return {decodes.front(), {}};
  } catch (const ENorvaError& error) {
    return {std::nullopt, error.Message()};
  }
}

QList<TIRDecode> DecodeHexCode(const QString& code) {
  const std::optional<TIRStreamData> stream = ParseHexCode(code);
  if (!stream) throw ENorvaError(QStringLiteral("fewer than five words"));
  return DecodeIRStream(*stream);
}

// The protocol and the parameters it has.
void AddCodeJson(const TIRDecode& decode, QJsonObject& object) {
  object[QStringLiteral("protocol")] = decode.Protocol;
  const TIRProtocolParameters& parameters = decode.Parameters;
  for (const auto& [field, value] : {std::pair{"D", parameters.D}, std::pair{"S", parameters.S},
                                     std::pair{"F", parameters.F}, std::pair{"T", parameters.T}}) {
    if (value) object[QLatin1String(field)] = static_cast<qint64>(*value);
  }
}

QJsonObject DecodeJson(const std::optional<QString>& name, const TDecodeAnswer& answer) {
  QJsonObject object;
  if (name) object[QStringLiteral("name")] = *name;
  if (!answer.Decode) {
    object[QStringLiteral("error")] = answer.Error;
    return object;
  }
  const TIRDecode& decode = *answer.Decode;
  if (!decode.IsKnown()) {
    object[QStringLiteral("protocol")] = QJsonValue::Null;
    object[QStringLiteral("generic")] = decode.Generic;
    return object;
  }
  AddCodeJson(decode, object);
  if (!decode.Then.isEmpty()) {
    QJsonArray then;
    for (const TIRDecode& part : decode.Then) {
      QJsonObject code;
      AddCodeJson(part, code);
      then.append(code);
    }
    object[QStringLiteral("then")] = then;
  }
  return object;
}

// One line: the decode's text (or the error), after the input's name and a TAB; or with `json`
// one JSON object.
void PrintDecode(const TCodeLine& code, const TDecodeAnswer& answer, bool json, QTextStream& out) {
  if (json) {
    out << QJsonDocument(DecodeJson(code.Name, answer)).toJson(QJsonDocument::Compact) << '\n';
    return;
  }
  if (code.Name) out << *code.Name << '\t';
  out << (answer.Decode ? DecodeText(*answer.Decode) : QStringLiteral("error: ") + answer.Error)
      << '\n';
}

// D=n, S=n, F=n and T=n (letters in either case), each at most once.
TIRProtocolParameters ParseParameters(const QStringList& words) {
  TIRProtocolParameters parameters;
  for (const QString& word : words) {
    const QString letter = word.section(u'=', 0, 0).toUpper();
    std::optional<std::int64_t>* slot = letter == u"D"   ? &parameters.D
                                        : letter == u"S" ? &parameters.S
                                        : letter == u"F" ? &parameters.F
                                        : letter == u"T" ? &parameters.T
                                                         : nullptr;
    const std::optional<qlonglong> value =
        word.contains(u'=') ? ParseNumber(word.section(u'=', 1)) : std::nullopt;
    if (!slot || !value)
      throw EUsage(QStringLiteral("a parameter is D=n, S=n, F=n or T=n, not %1").arg(Quoted(word)));
    if (*slot) throw EUsage(QStringLiteral("%1 is given twice").arg(letter));
    *slot = *value;
  }
  return parameters;
}
// The stream of a raw signal, or the reason there is none; true when it gave a stream whose status
// is "OK", as for a hex code.
bool ReportRawSignal(const TRawSignal& signal, QTextStream& out) {
  try {
    const TIRStreamData stream = RawSignalStream(signal.Hertz, signal.Durations);
    PrintStream(stream, out);
    return stream.Status() == QStringLiteral("OK");
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
    return ReportRawSignal(ReadRawSignal(words.value(0), words.mid(1), "ir raw"), out);
  } catch (const EUsage& error) {
    out << "error: " << QString::fromUtf8(error.what()) << '\n';
    return false;
  }
}

}  // namespace

int RunIRHex(TArguments& arguments, QTextStream& out) {
  const QStringList values = arguments.Positional();
  if (values.isEmpty()) throw EUsage(QStringLiteral("ir hex needs a CODE, or - to read codes"));
  const QStringList codes = CodesToRead(values);
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
  return ReportRawSignal(ReadRawSignal(*frequency, values, "ir raw"), out) ? 0 : 1;
}

int RunIRDecode(TArguments& arguments, QTextStream& out) {
  const bool json = arguments.TakeFlag(QStringLiteral("--json"));
  const std::optional<QString> frequency = arguments.TakeOption(QStringLiteral("--frequency"));
  const QStringList values = arguments.Positional();
  if (frequency) {
    const TRawSignal signal = ReadRawSignal(*frequency, values, "ir decode");
    const TDecodeAnswer answer =
        AnswerOf([&signal] { return DecodeIRSignal(signal.Hertz, signal.Durations); });
    PrintDecode({std::nullopt, {}}, answer, json, out);
    return answer.Decode ? 0 : 1;
  }
  if (values.isEmpty())
    throw EUsage(QStringLiteral("ir decode needs a CODE, - to read codes, or --frequency HZ"));
  bool allDecoded = true;
  for (const QString& line : CodesToRead(values)) {
    const TCodeLine code = SplitCodeLine(line);
    const TDecodeAnswer answer = AnswerOf([&code] { return DecodeHexCode(code.Code); });
    PrintDecode(code, answer, json, out);
    allDecoded = allDecoded && answer.Decode;
  }
  return allDecoded ? 0 : 1;
}

int RunIREncode(TArguments& arguments, QTextStream& out) {
  const bool hexOnly = arguments.TakeFlag(QStringLiteral("--hex"));
  const QStringList values = arguments.Positional();
  if (values.isEmpty()) throw EUsage(QStringLiteral("ir encode needs PROTOCOL and D=n F=n"));
  // An unknown protocol or a value out of its range is the library's answer: exit 1.
  const TIRStreamData stream = EncodeIRStream(values[0], ParseParameters(values.mid(1)));
  if (hexOnly)
    out << HexCodeOf(stream) << '\n';
  else
    PrintStream(stream, out);
  return 0;
}

}  // namespace norva::cli
