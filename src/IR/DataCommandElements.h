#pragma once
// The element readers of DataCommand.h, in templates.

#include <NorvaGlobal/EnumNames.h>
#include <OrbGlobal/Model/OrbErrors.h>
#include <OrbGlobal/Xml/XmlLookup.h>

#include <limits>

namespace norva {

template <typename T>
T ElementNumber(pugi::xml_node child, T fallback) {
  bool ok = false;
  const qlonglong value = QByteArrayView(child.first_child().value()).trimmed().toLongLong(&ok);
  if (!ok || value < std::numeric_limits<T>::min() || value > std::numeric_limits<T>::max())
    return fallback;
  return static_cast<T>(value);
}

template <typename E>
E ElementEnum(pugi::xml_node child) {
  const QString text = GetElementText(child);
  if (const auto value = EnumFromName<E>(text)) return *value;
  throw EConvertError(QStringLiteral("'%1' is not a valid %2 value")
                          .arg(text, QString::fromLatin1(QMetaEnum::fromType<E>().name())));
}

template <typename E>
void AddEnumElement(pugi::xml_node parent, const char* name, E value) {
  const char* key = QMetaEnum::fromType<E>().valueToKey(static_cast<int>(value));
  AddTextElement(parent, name, key ? key : "");
}

}  // namespace norva
