#include <IR_Database/CodeFiles/ProtocolCsvFile.h>

#include <IR_Database/CodeFiles/EntryReading.h>

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace norva {

namespace {

constexpr QStringView Header = u"functionname,protocol,device,subdevice,function";
constexpr qsizetype FieldCount = 5;

// The fields of a line, unquoting those in double quotes.
QStringList Fields(QStringView line) {
  QStringList fields{QString()};
  bool quoted = false;
  for (qsizetype i = 0; i < line.size(); ++i) {
    const QChar c = line[i];
    if (quoted && c == u'"' && i + 1 < line.size() && line[i + 1] == u'"') {
      fields.last() += c;
      ++i;
    } else if (c == u'"') {
      quoted = !quoted;
    } else if (c == u',' && !quoted) {
      fields.append(QString());
    } else {
      fields.last() += c;
    }
  }
  if (quoted) throw ENorvaError(QStringLiteral("a quote is not closed"));
  return fields;
}

struct TMakeAndModel {
  QString Make;
  QString Model;
};

// Make/DeviceType/D,S.csv gives make "Make" and model "DeviceType D,S".
TMakeAndModel FromPath(const QString& path) {
  static const QRegularExpression deviceAndSubdevice(QStringLiteral("^-?\\d+,-?\\d+$"));
  const QFileInfo file(path);
  const QStringList folders = QDir::fromNativeSeparators(file.path()).split(u'/');
  if (folders.size() < 2 || !deviceAndSubdevice.match(file.completeBaseName()).hasMatch())
    return {};
  const QString& make = folders[folders.size() - 2];
  const QString& type = folders.last();
  if (make.isEmpty() || make == u"." || type.isEmpty() || type == u".") return {};
  return {make, type + u' ' + file.completeBaseName()};
}

TCodeFileEntry ReadLine(QStringView line, const TMakeAndModel& names) {
  const QStringList fields = Fields(line);
  if (fields.size() != FieldCount)
    throw ENorvaError(QStringLiteral("expected 5 fields (%1), found %2")
                          .arg(Header.toString())
                          .arg(fields.size()));
  const QString name = fields[0].trimmed();
  const QString protocol = fields[1].trimmed();
  if (name.isEmpty()) throw ENorvaError(QStringLiteral("no function name"));
  if (protocol.isEmpty()) throw ENorvaError(QStringLiteral("no protocol"));
  TIRProtocolParameters parameters;
  parameters.D = WholeNumber(fields[2].trimmed(), u"the device");
  const QString subdevice = fields[3].trimmed();
  if (!subdevice.isEmpty() && subdevice != u"-1")
    parameters.S = WholeNumber(subdevice, u"the subdevice");
  parameters.F = WholeNumber(fields[4].trimmed(), u"the function");
  return {name, names.Make, names.Model, TProtocolCode{protocol, parameters}, QString()};
}

bool IsHeader(QStringView line) { return line.trimmed().compare(Header, Qt::CaseInsensitive) == 0; }

}  // namespace

bool IsProtocolCsvFile(const QByteArray& bytes) {
  const qsizetype end = bytes.indexOf('\n');
  return IsHeader(QString::fromUtf8(end < 0 ? bytes : bytes.left(end)));
}

TCodeFileEntries ReadProtocolCsvFile(const QByteArray& bytes, const QString& path) {
  const TMakeAndModel names = FromPath(path);
  TCodeFileEntries read;
  int number = 0;
  for (const QByteArray& bytesOfLine : bytes.split('\n')) {
    ++number;
    const QString line = QString::fromUtf8(bytesOfLine).trimmed();
    if (line.isEmpty() || IsHeader(line)) continue;
    ReadEntry(read, QStringLiteral("line %1").arg(number), [&] { return ReadLine(line, names); });
  }
  return read;
}

}  // namespace norva
