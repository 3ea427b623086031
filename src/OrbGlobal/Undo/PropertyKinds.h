#pragma once
// How a Q_PROPERTY's type decides the kind of undo entry (and of snapshot field) it gets:
//   Ordinal         bool, 8/16/32-bit integers, characters (char16_t and char32_t too),
//                   enumerations, and bit sets registered with RegisterOrdinalSetType; kept as a
//                   32-bit ordinal
//   AnsiString      QByteArray (8-bit string)
//   UnicodeString   QString
//   Variant         float, double, 64-bit integers, QVariant, QDateTime, QDate, QTime, QColor,
//                   QFont, QPoint, QPointF, QSize, QSizeF, QRect, QRectF: kept as a copy of the
//                   value
//   DynamicArray    any sequential container (QList<T>, std::vector<T>, QStringList, ...)
//   ObjectReference pointer to a model class that is not a sub-component: another object
//   SubObject       pointer to a sub-component model class: a part the object owns and copies in
//                   its setter
//   OtherClass      pointer to any other QObject class: nothing is recorded
//   Unsupported     everything else (records, maps, plain pointers, sets never registered, ...);
//                   the class registry refuses a class that publishes such a property

#include <NorvaGlobal/EnumSet.h>

#include <QMetaProperty>
#include <QMetaType>
#include <QVariant>

#include <cstddef>
#include <cstdint>

namespace norva {

enum class TPropertyKind {
  Ordinal,
  AnsiString,
  UnicodeString,
  Variant,
  DynamicArray,
  ObjectReference,
  SubObject,
  OtherClass,
  Unsupported
};

TPropertyKind PropertyKindOf(const QMetaProperty& property);

// The 32-bit ordinal of an ordinal property's value, and back: the value of the property type
// `type` that the ordinal stands for, which the property's setter accepts.
std::int32_t OrdinalOf(const QVariant& value);
QVariant OrdinalValue(QMetaType type, std::int32_t ordinal);

class TOrbObject;
// The model object a class-valued property holds, or none.
TOrbObject* OrbObjectOf(const QVariant& value);
// The value that writes `object` (or none) to a class-valued property of type `type`.
QVariant ObjectPropertyValue(QMetaType type, QObject* object);

// A set becomes an ordinal property once its conversions to and from the 32-bit ordinal (bit i =
// value i) are registered; call this before the class publishing the set is registered (and before
// the first change of such a property is recorded). Registering twice is harmless.
template <typename E, std::size_t N>
void RegisterOrdinalSetType() {
  static_assert(N <= 32, "an ordinal set holds at most 32 values");
  using TSet = TEnumSet<E, N>;
  const QMetaType setType = QMetaType::fromType<TSet>();
  const QMetaType ordinalType = QMetaType::fromType<std::int32_t>();
  if (QMetaType::hasRegisteredConverterFunction(setType, ordinalType)) return;
  QMetaType::registerConverter<TSet, std::int32_t>(
      [](const TSet& set) { return static_cast<std::int32_t>(set.Bits().to_ulong()); });
  QMetaType::registerConverter<std::int32_t, TSet>([](std::int32_t ordinal) {
    TSet set;
    for (std::size_t i = 0; i < N; ++i) {
      if ((static_cast<std::uint32_t>(ordinal) >> i) & 1u) set.Include(static_cast<E>(i));
    }
    return set;
  });
}

}  // namespace norva
