#include "PropertyEdits.h"

#include "EditValues.h"

#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Model/OrbObject.h>
#include <OrbGlobal/Undo/PropertyKinds.h>

#include <QMetaEnum>
#include <QMetaProperty>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <cstring>
#include <functional>
#include <limits>
#include <optional>

namespace norva::edits {

namespace {

bool Named(const QMetaProperty& property, const char* name) {
  return std::strcmp(property.name(), name) == 0;
}

// Texts that carry a format of their own; any other text property gets a name-like text.
QString TextFor(const QMetaProperty& property, TEditChoices& choices) {
  const std::pair<const char*, std::function<QString()>> formats[] = {
      {"GUIDString", [&] { return GUIDValue(choices); }},
      {"CommandGUID", [&] { return choices.Percent(20) ? QString() : GUIDValue(choices); }},
      {"PeriodLengthsString", [&] { return PeriodLengthsValue(choices); }},
      {"PeriodIDPairsString", [&] { return PeriodIDPairsValue(choices); }},
      {"DataString", [&] { return HexDigitsValue(choices); }},
      {"ButtonClassData",
       [&] {
         QString data;
         for (const TButtonClass& buttonClass : ButtonClassesValue(choices)) {
           for (const std::uint8_t byte : buttonClass.GetRecordBytes())
             data += QStringLiteral("%1").arg(uint{byte}, 2, 16, QLatin1Char('0')).toUpper();
         }
         return data;
       }},
  };
  for (const auto& [name, value] : formats)
    if (Named(property, name)) return value();
  return TextValue(choices);
}

// The enumeration of a property, also one declared in a namespace of its own (Q_ENUM_NS), which
// the property's class does not know.
QMetaEnum EnumerationOf(const QMetaProperty& property) {
  if (property.isEnumType()) return property.enumerator();
  const QMetaObject* scope = property.metaType().metaObject();
  if (!scope) return {};
  const QByteArray name = QByteArray(property.typeName()).split(':').last();
  const int index = scope->indexOfEnumerator(name.constData());
  return index < 0 ? QMetaEnum() : scope->enumerator(index);
}

QVariant OrdinalFor(const QMetaProperty& property, TEditChoices& choices) {
  if (const QMetaEnum enumeration = EnumerationOf(property); enumeration.isValid()) {
    const int value = enumeration.value(static_cast<int>(choices.Below(enumeration.keyCount())));
    QVariant typed(value);
    typed.convert(property.metaType());
    return typed;
  }
  if (property.metaType().id() == QMetaType::Bool) return choices.Percent(50);
  if (Named(property, "ButtonClassValue")) return ButtonClassValue(choices).GetOrdValue();
  // Small values most of the time, now and then the type's extremes.
  const qsizetype size = property.metaType().sizeOf();
  const qint64 largest = size >= 4 ? std::numeric_limits<qint32>::max() : (1LL << (8 * size)) - 1;
  switch (choices.Below(6)) {
    case 0: return 0;
    case 1: return static_cast<qlonglong>(largest);
    default: return choices.Between(1, 500);
  }
}

// Placements on a keypad's face: small, negative now and then, and empty.
QVariant GeometryFor(const QMetaProperty& property, TEditChoices& choices) {
  const auto point = [&] { return QPoint(choices.Between(-20, 300), choices.Between(-20, 300)); };
  const auto size = [&] { return QSize(choices.Between(0, 200), choices.Between(0, 200)); };
  switch (property.metaType().id()) {
    case QMetaType::QPoint: return point();
    case QMetaType::QSize: return size();
    case QMetaType::QRect: {
      const QPoint topLeft = point();
      return QRect(topLeft, size());
    }
    default: return {};
  }
}

std::optional<QVariant> ValueFor(const QMetaProperty& property, TEditChoices& choices) {
  QVariant geometry = GeometryFor(property, choices);
  if (geometry.isValid()) return geometry;
  switch (PropertyKindOf(property)) {
    case TPropertyKind::Ordinal: return OrdinalFor(property, choices);
    case TPropertyKind::AnsiString: return BytesValue(choices);
    case TPropertyKind::UnicodeString: return TextFor(property, choices);
    case TPropertyKind::Variant: return choices.Between(-1000, 1000) / 8.0;
    default: return std::nullopt;
  }
}

QString Shown(const QVariant& value) {
  if (value.metaType().id() == QMetaType::QByteArray) return value.toByteArray().toHex();
  if (value.canConvert<QString>()) return QLatin1Char('\'') + value.toString() + QLatin1Char('\'');
  return QString::fromLatin1(value.typeName());
}

}  // namespace

QString EditProperty(TOrbObject& object, TEditChoices& choices) {
  const QMetaObject* cls = object.metaObject();
  QList<QMetaProperty> writable;
  for (int i = QObject::staticMetaObject.propertyCount(); i < cls->propertyCount(); ++i) {
    if (cls->property(i).isWritable()) writable.append(cls->property(i));
  }
  if (writable.isEmpty()) return {};
  const QMetaProperty property = choices.Pick(writable);
  const std::optional<QVariant> value = ValueFor(property, choices);
  const QString what = object.GetClassName() + u'.' + QString::fromLatin1(property.name());
  if (!value) return what + QStringLiteral(" left alone (no values for its type)");
  try {
    if (!property.write(&object, *value))
      return what + QStringLiteral(" = ") + Shown(*value) + QStringLiteral(" not accepted");
  } catch (const ENorvaError& error) {
    return what + QStringLiteral(" = ") + Shown(*value) + QStringLiteral(" refused: ") +
           error.Message();
  }
  return what + QStringLiteral(" = ") + Shown(*value);
}

}  // namespace norva::edits
