#include <IR_Database/CodeFiles/FlipperFile.h>

#include <IR_Database/CodeFiles/CodeFileLines.h>
#include <IR_Database/CodeFiles/FlipperProtocols.h>
#include <NorvaGlobal/Exceptions.h>

namespace norva {

namespace {

// One button's block: its keys and values, and the line of its name.
struct TBlock {
  int Line = 0;
  QString Name;
  QList<std::pair<QString, QString>> Values;  // a handful: searched in order
};

QList<TBlock> Blocks(const QByteArray& bytes) {
  QList<TBlock> blocks;
  for (const TCodeFileLine& line : CodeFileLines(bytes)) {
    if (line.Text.startsWith(u'#') || !line.Text.contains(u':')) continue;
    const QString key = line.Text.section(u':', 0, 0).trimmed();
    const QString value = line.Text.section(u':', 1).trimmed();
    if (key == QStringLiteral("name"))
      blocks.append({line.Number, value, {}});
    else if (!blocks.isEmpty())
      blocks.last().Values.append({key, value});
  }
  return blocks;
}

QString Value(const TBlock& block, const char* key) {
  for (const auto& [name, value] : block.Values)
    if (name == QLatin1String(key) && !value.isEmpty()) return value;
  throw ENorvaError(QStringLiteral("no \"%1:\"").arg(QLatin1String(key)));
}

TRawCapture RawCapture(const TBlock& block) {
  TRawCapture capture;
  const QString frequency = Value(block, "frequency");
  const QList<double> hertz = DecimalNumbers(frequency, ' ', "frequency");
  if (hertz.size() != 1)
    throw ENorvaError(QStringLiteral("frequency \"%1\" is no number").arg(frequency));
  capture.FrequencyHz = hertz[0];
  capture.Microseconds = DecimalNumbers(Value(block, "data"), ' ', "duration");
  return capture;
}

// Four bytes in hexadecimal, the least significant first.
std::uint32_t LittleEndian(const QString& text, const char* what) {
  const QStringList bytes = text.split(u' ', Qt::SkipEmptyParts);
  std::uint32_t value = 0;
  bool ok = bytes.size() == 4;
  for (qsizetype i = 0; ok && i < bytes.size(); ++i) {
    const std::uint32_t byte = bytes[i].toUInt(&ok, 16);
    ok = ok && bytes[i].size() == 2;
    value |= byte << (8 * i);
  }
  if (!ok)
    throw ENorvaError(
        QStringLiteral("%1 \"%2\" is not four hexadecimal bytes").arg(QLatin1String(what), text));
  return value;
}

TCodeFileEntry Entry(const TBlock& block) {
  TCodeFileEntry entry;
  entry.Name = block.Name;
  const QString type = Value(block, "type");
  if (type == QStringLiteral("raw"))
    entry.Code = RawCapture(block);
  else if (type == QStringLiteral("parsed"))
    entry.Code = FlipperProtocolCode(Value(block, "protocol"),
                                     LittleEndian(Value(block, "address"), "address"),
                                     LittleEndian(Value(block, "command"), "command"));
  else
    throw ENorvaError(QStringLiteral("type \"%1\" is neither raw nor parsed").arg(type));
  return entry;
}

}  // namespace

bool IsFlipperFile(const QByteArray& bytes) {
  for (const TCodeFileLine& line : CodeFileLines(bytes.left(RecognisedBytes))) {
    if (line.Text.startsWith(u'#')) continue;
    return line.Text.startsWith(QStringLiteral("Filetype:")) &&
           line.Text.contains(QStringLiteral(" IR "));
  }
  return false;
}

TCodeFileEntries ReadFlipperFile(const QByteArray& bytes, const QString& /*path*/) {
  TCodeFileEntries read;
  for (const TBlock& block : Blocks(bytes)) {
    const QString place = QStringLiteral("%1 (%2)").arg(LinePlace(block.Line), block.Name);
    ReadEntry(read, place, [&block] {
      if (block.Name.isEmpty()) throw ENorvaError(QStringLiteral("no name"));
      return Entry(block);
    });
  }
  return read;
}

}  // namespace norva
