#include <OrbGlobal/Undo/PropertyKinds.h>

#include <OrbGlobal/Model/OrbClass.h>
#include <OrbGlobal/Model/OrbObject.h>

#include <QSequentialIterable>

namespace norva {

namespace {

bool IsOrdinalType(QMetaType type) {
  switch (type.id()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Char16:
    case QMetaType::Char32:
    case QMetaType::QChar: return true;
    default: break;
  }
  if (type.flags().testFlag(QMetaType::IsEnumeration)) return true;
  const QMetaType ordinalType = QMetaType::fromType<std::int32_t>();
  return QMetaType::hasRegisteredConverterFunction(type, ordinalType) &&
         QMetaType::hasRegisteredConverterFunction(ordinalType, type);
}

bool IsVariantType(QMetaType type) {
  switch (type.id()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::QVariant:
    case QMetaType::QDateTime:
    case QMetaType::QDate:
    case QMetaType::QTime:
    // Qt value types, kept whole. A 32-bit ordinal would lose "no colour" (an invalid QColor),
    // 16-bit channels and colours not given as RGB; a font is no object a snapshot could build,
    // only a value, so its copy is its snapshot. The library knows both by their meta-types
    // alone, so it needs no Qt GUI.
    case QMetaType::QColor:
    case QMetaType::QFont:
    // Geometry, kept whole for the same reason: two or four numbers, some of them floating-point,
    // that no 32-bit ordinal holds.
    case QMetaType::QPoint:
    case QMetaType::QPointF:
    case QMetaType::QSize:
    case QMetaType::QSizeF:
    case QMetaType::QRect:
    case QMetaType::QRectF: return true;
    default: return false;
  }
}

TPropertyKind ClassKindOf(const QMetaObject* declaredClass) {
  if (!InheritsOrbObject(declaredClass)) return TPropertyKind::OtherClass;
  return ClassIsSubComponent(declaredClass) ? TPropertyKind::SubObject
                                            : TPropertyKind::ObjectReference;
}

}  // namespace

TPropertyKind PropertyKindOf(const QMetaProperty& property) {
  const QMetaType type = property.metaType();
  if (property.isEnumType() || IsOrdinalType(type)) return TPropertyKind::Ordinal;
  if (type.id() == QMetaType::QByteArray) return TPropertyKind::AnsiString;
  if (type.id() == QMetaType::QString) return TPropertyKind::UnicodeString;
  if (IsVariantType(type)) return TPropertyKind::Variant;
  if (type.flags().testFlag(QMetaType::PointerToQObject)) return ClassKindOf(type.metaObject());
  if (QMetaType::canView(type, QMetaType::fromType<QSequentialIterable>())) {
    return TPropertyKind::DynamicArray;
  }
  return TPropertyKind::Unsupported;
}

// Qt converts no character type but QChar to or from an integer, so char16_t and char32_t are
// taken as they are; a char32_t keeps all its 32 bits.
std::int32_t OrdinalOf(const QVariant& value) {
  switch (value.metaType().id()) {
    case QMetaType::Char16: return value.value<char16_t>();
    case QMetaType::Char32: return static_cast<std::int32_t>(value.value<char32_t>());
    default: break;
  }
  QVariant ordinal = value;
  ordinal.convert(QMetaType::fromType<std::int32_t>());
  return ordinal.value<std::int32_t>();
}

QVariant OrdinalValue(QMetaType type, std::int32_t ordinal) {
  switch (type.id()) {
    case QMetaType::Char16: return QVariant::fromValue(static_cast<char16_t>(ordinal));
    case QMetaType::Char32: return QVariant::fromValue(static_cast<char32_t>(ordinal));
    default: return QVariant::fromValue(ordinal);  // writing the property converts it
  }
}

TOrbObject* OrbObjectOf(const QVariant& value) {
  return qobject_cast<TOrbObject*>(value.value<QObject*>());
}

// Qt converts a null QObject pointer to no other pointer type, so none is written as a null
// pointer of the property's own type.
QVariant ObjectPropertyValue(QMetaType type, QObject* object) {
  return object ? QVariant::fromValue(object) : QVariant(type);
}

}  // namespace norva
