#include "EditValues.h"

#include <OrbGlobal/Model/OrbClassRegistry.h>

#include <QFile>
#include <QStringList>

namespace norva::edits {

namespace {

// Read once; a few codes stand in when the file is not there.
const QStringList& RealHexCodes() {
  static const QStringList codes = [] {
    QStringList read;
    QFile file(QStringLiteral(NORVA_SOURCE_DIR "/tests/data/ir/pronto-codes.tsv"));
    if (file.open(QIODevice::ReadOnly | QIODevice::Text)) {
      while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        const qsizetype tab = line.indexOf(u'\t');
        if (tab > 0) read.append(line.mid(tab + 1));
      }
    }
    if (read.isEmpty()) {
      read = {QStringLiteral("0000 006D 0000 0004 0016 0016 0016 0041 0016 0016 0016 0400"),
              QStringLiteral("0000 0073 0000 000B 0020 0020 0020 0020 0040 0020 0020 0020 0020 "
                             "0020 0020 0040 0040 0020 0020 0040 0020 0020 0040 0020 0020 0CC8")};
    }
    return read;
  }();
  return codes;
}

QString HexDigits(TEditChoices& choices, int byteCount) {
  QString digits;
  for (int i = 0; i < byteCount; ++i)
    digits += QStringLiteral("%1").arg(choices.Below(256), 2, 16, QLatin1Char('0')).toUpper();
  return digits;
}

}  // namespace

QString HexCodeValue(TEditChoices& choices) {
  if (choices.Percent(5)) return QStringLiteral("0000 006D 0000");  // too short: changes nothing
  return choices.Pick(RealHexCodes());
}

QString TextValue(TEditChoices& choices) {
  static const QStringList texts = {
      QString(),
      QStringLiteral("Power"),
      QStringLiteral("Vol+"),
      QStringLiteral("  Input HDMI 2 "),
      QStringLiteral("Lounge & <Kitchen>"),
      QStringLiteral("\"quoted\" 'text'"),
      QStringLiteral("Lautst\u00E4rke \u2013 \u97F3\u91CF"),
      QStringLiteral("Tab\there"),
      QStringLiteral("power"),
  };
  return choices.Pick(texts);
}

QString GUIDValue(TEditChoices& choices) {
  static const QStringList guids = {
      QStringLiteral("{11111111-2222-3333-4444-555555555555}"),
      QStringLiteral("{66666666-7777-8888-9999-AAAAAAAAAAAA}"),
      QStringLiteral("{0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0}"),
  };
  return choices.Pick(guids);
}

TButtonClass ButtonClassValue(TEditChoices& choices) {
  const auto classId = static_cast<std::uint8_t>(choices.Between(0, 40));
  const QList<TOrbObjectClass>* registered = GetRegisteredOrbClasses();
  if (registered && !registered->isEmpty() && choices.Percent(30))
    return TButtonClass(choices.Pick(*registered), classId);
  return TButtonClass(static_cast<TButtonClassGroup>(choices.Below(GenericAppletClassGroup)),
                      classId);
}

TButtonClasses ButtonClassesValue(TEditChoices& choices) {
  TButtonClasses classes;
  for (int count = choices.Between(0, 3); count > 0; --count)
    classes.append(ButtonClassValue(choices));
  return classes;
}

QString ButtonClassText(const TButtonClass& buttonClass) {
  const QString group = buttonClass.Group == GenericAppletClassGroup
                            ? QStringLiteral("applets of ") +
                                  (buttonClass.ClientClass ? ClassNameOf(buttonClass.ClientClass)
                                                           : QStringLiteral("none"))
                            : QStringLiteral("group %1").arg(static_cast<int>(buttonClass.Group));
  return QStringLiteral("class %1 of %2").arg(static_cast<int>(buttonClass.ClassID)).arg(group);
}

QString HexDigitsValue(TEditChoices& choices) {
  QString digits = HexDigits(choices, choices.Between(0, 8));
  if (choices.Percent(20)) digits = digits.toLower();
  if (choices.Percent(10)) digits += u'7';
  if (choices.Percent(5)) digits.insert(0, QStringLiteral("ZZ"));
  return digits;
}

QByteArray BytesValue(TEditChoices& choices) {
  QByteArray bytes;
  for (int count = choices.Between(0, 8); count > 0; --count)
    bytes.append(static_cast<char>(choices.Below(256)));
  return bytes;
}

QString PeriodLengthsValue(TEditChoices& choices) {
  QStringList lengths;
  for (int count = choices.Percent(90) ? 16 : choices.Between(1, 20); count > 0; --count)
    lengths.append(QString::number(choices.Between(1, 3000)));
  return lengths.join(u',');
}

QString PeriodIDPairsValue(TEditChoices& choices) {
  QStringList pairs;
  for (int count = choices.Between(1, 24); count > 1; --count)
    pairs.append(QStringLiteral("%1%2").arg(choices.Below(4)).arg(choices.Below(4)));
  pairs.append(choices.Percent(90) ? QStringLiteral("0E") : QStringLiteral("01"));
  return pairs.join(u',');
}

QList<double> RawSignalValue(TEditChoices& choices, double& carrierHz) {
  carrierHz = choices.Pick(QList<double>{36000, 38000, 40000, 56000, 0});
  QList<double> microseconds = {9000, 4500};
  for (int bit = choices.Between(4, 40); bit > 0; --bit) {
    microseconds.append(560);
    microseconds.append(choices.Percent(50) ? 560 : 1690);
  }
  microseconds.append(560);
  microseconds.append(choices.Between(20000, 100000));
  return microseconds;
}

}  // namespace norva::edits
