#pragma once
// Conversion between enumeration values and their value names, through Qt's meta-enum data.

#include <QByteArray>
#include <QMetaEnum>
#include <QString>

#include <cstring>
#include <optional>

namespace norva {

// Looked up by name once: files name an enumeration value per element, thousands of times.
template <typename E>
const QMetaEnum& MetaEnumOf() {
  static const QMetaEnum meta = QMetaEnum::fromType<E>();
  return meta;
}

// The value name, or an empty string for a value outside the enumeration.
template <typename E>
QString EnumName(E value) {
  const char* key = MetaEnumOf<E>().valueToKey(static_cast<int>(value));
  return key ? QString::fromLatin1(key) : QString();
}

// The value whose name is exactly `name` (UTF-8 or a string, case-sensitive), or nothing.
template <typename E>
std::optional<E> EnumFromName(const char* name) {
  // Qt would also accept scope-qualified names; files and traces only ever hold the bare name.
  if (std::strchr(name, ':')) return std::nullopt;
  bool ok = false;
  const int value = MetaEnumOf<E>().keyToValue(name, &ok);
  if (!ok) return std::nullopt;
  return static_cast<E>(value);
}

template <typename E>
std::optional<E> EnumFromName(const QString& name) {
  if (name.contains(QChar(0))) return std::nullopt;  // it would end the name early
  return EnumFromName<E>(name.toUtf8().constData());
}

template <typename E>
int EnumCount() {
  return MetaEnumOf<E>().keyCount();
}

}  // namespace norva
