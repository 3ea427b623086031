#pragma once
// Conversion between enumeration values and their value names, through Qt's meta-enum data.

#include <QByteArray>
#include <QMetaEnum>
#include <QString>

#include <optional>

namespace norva {

// The value name, or an empty string for a value outside the enumeration.
template <typename E>
QString EnumName(E value) {
  const char* key = QMetaEnum::fromType<E>().valueToKey(static_cast<int>(value));
  return key ? QString::fromLatin1(key) : QString();
}

// The value whose name is exactly `name` (case-sensitive), or nothing.
template <typename E>
std::optional<E> EnumFromName(const QString& name) {
  // Qt would also accept scope-qualified names; files and traces only ever hold the bare name.
  if (name.contains(u':')) return std::nullopt;
  bool ok = false;
  const int value = QMetaEnum::fromType<E>().keyToValue(name.toLatin1().constData(), &ok);
  if (!ok) return std::nullopt;
  return static_cast<E>(value);
}

template <typename E>
int EnumCount() {
  return QMetaEnum::fromType<E>().keyCount();
}

}  // namespace norva
