#include <IR_Database/CodeFiles/SendirLines.h>

#include <IR/IRRawSignal.h>
#include <IR_Database/CodeFiles/CodeFileLines.h>
#include <NorvaGlobal/Exceptions.h>

#include <cmath>

namespace norva {

namespace {

// sendir, the gateway's connector, the code's ID, frequency, repeat count and offset.
constexpr int HeadFields = 6;
constexpr int FrequencyField = 3;
constexpr int OffsetField = 5;

QString SendirPart(const QString& line) { return line.section(u'\t', -1).trimmed(); }

bool IsSendirLine(const QString& line) {
  return SendirPart(line).startsWith(QStringLiteral("sendir,"), Qt::CaseInsensitive);
}

double PositiveNumber(const QString& field, const QString& what) {
  bool ok = false;
  const double value = field.trimmed().toDouble(&ok);
  if (!ok || !(value > 0))
    throw ENorvaError(QStringLiteral("%1 must be a positive number, not \"%2\"").arg(what, field));
  return value;
}

TIRStreamData ReadCode(const QString& sendir) {
  const QStringList head = sendir.section(u',', 0, HeadFields - 1).split(u',');
  const QList<double> periods = DecimalNumbers(sendir.section(u',', HeadFields), ',', "duration");
  if (head.size() < HeadFields || periods.size() < 2)
    throw ENorvaError(
        QStringLiteral("expected sendir,M:C,ID,FREQ,REPEAT,OFFSET,ON,OFF..., found %1 fields")
            .arg(head.size() + periods.size()));
  const double frequency = PositiveNumber(head[FrequencyField], QStringLiteral("FREQ"));
  const double offset = PositiveNumber(head[OffsetField], QStringLiteral("OFFSET"));
  if (offset != std::floor(offset) || offset > static_cast<double>(periods.size()) ||
      static_cast<qsizetype>(offset) % 2 == 0)
    throw ENorvaError(QStringLiteral("OFFSET %1 is no pulse of the %2 durations")
                          .arg(offset)
                          .arg(periods.size()));
  QList<double> once, repeat;
  for (qsizetype i = 0; i < periods.size(); ++i)
    (i + 1 < static_cast<qsizetype>(offset) ? once : repeat) << periods[i] * 1e6 / frequency;
  return WordsStream(frequency, once, repeat);
}

}  // namespace

bool IsSendirLines(const QByteArray& bytes) {
  const QList<TCodeFileLine> lines = CodeFileLines(bytes.left(RecognisedBytes));
  return !lines.isEmpty() && IsSendirLine(lines[0].Text);
}

TCodeFileEntries ReadSendirLines(const QByteArray& bytes, const QString& /*path*/) {
  TCodeFileEntries read;
  for (const TCodeFileLine& line : CodeFileLines(bytes)) {
    ReadEntry(read, LinePlace(line.Number), [&line, &read] {
      if (!IsSendirLine(line.Text)) throw ENorvaError(QStringLiteral("no sendir line"));
      TCodeFileEntry entry;
      entry.Code = ReadCode(SendirPart(line.Text));
      entry.Name = line.Text.contains(u'\t')
                       ? line.Text.section(u'\t', 0, -2).trimmed()
                       : QStringLiteral("Code %1").arg(read.Entries.size() + 1);
      return entry;
    });
  }
  return read;
}

}  // namespace norva
