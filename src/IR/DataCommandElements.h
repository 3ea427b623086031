#pragma once
// The element readers of DataCommand.h, in templates.

#include <NorvaGlobal/EnumNames.h>
#include <OrbGlobal/Model/OrbErrors.h>
#include <OrbGlobal/Xml/XmlLookup.h>

#include <limits>

namespace norva {

template <typename T>
T ElementNumber(pugi::xml_node child, T fallback) {
  const std::optional<long long> value = DecimalOf(child.first_child().value());
  if (!value || *value < std::numeric_limits<T>::min() || *value > std::numeric_limits<T>::max())
    return fallback;
  return static_cast<T>(*value);
}

template <typename E>
E ElementEnum(pugi::xml_node child) {
  const char* text = child.first_child().value();
  if (const auto value = EnumFromName<E>(text)) return *value;
  throw EConvertError(QStringLiteral("'%1' is not a valid %2 value")
                          .arg(XMLValue(text), QString::fromLatin1(MetaEnumOf<E>().name())));
}

template <typename E>
void AddEnumElement(pugi::xml_node parent, const char* name, E value) {
  const char* key = MetaEnumOf<E>().valueToKey(static_cast<int>(value));
  AddTextElement(parent, name, key ? key : "");
}

}  // namespace norva
