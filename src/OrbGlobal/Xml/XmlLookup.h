#pragma once
// Reading values back: required elements are looked up with mustExist true and raise when absent,
// optional ones with false. Names match exactly (case-sensitive), among direct children only.

#include <NorvaGlobal/EnumNames.h>
#include <OrbGlobal/Model/OrbErrors.h>

#include <QByteArrayView>
#include <QString>

#include <pugixml.hpp>

#include <concepts>
#include <optional>
#include <string_view>
#include <utility>

namespace norva {

// The first direct child element of `parent` named exactly `name`, or a null node. With
// `mustExist`, a missing element raises ENorvaError with name + " element not found".
pugi::xml_node GetXMLDOMNode(pugi::xml_node parent, const QString& name, bool mustExist);

// Whether an element or attribute is named exactly `name`. Readers test every child against
// several names, so the comparison is inlined and stops at the first difference.
template <typename TNode>
bool IsNamed(TNode node, std::string_view name) {
  const char* actual = node.name();
  for (const char c : name) {
    if (*actual++ != c) return false;
  }
  return *actual == '\0';
}

// The whole number a value holds in decimal, white space around it allowed, or nothing.
std::optional<long long> DecimalOf(const char* utf8);

// The DOM text of that child (see GetXMLDOMText); "" when it is missing and !mustExist.
QString GetXMLDOMNodeText(pugi::xml_node parent, const QString& name, bool mustExist);

// The value of the first child node of `element`: for text exactly the text, for a nested element
// its node value (empty). "" when `element` has no children.
QString GetElementText(pugi::xml_node element);

// The DOM's text of `node`: the text of it and all its descendants, concatenated in document
// order.
QString GetXMLDOMText(pugi::xml_node node);

// A text or attribute value of the DOM (UTF-8) as a string, every character kept, a leading U+FEFF
// too (the plain UTF-8 conversion would take it for a byte-order mark and drop it).
QString XMLValue(QByteArrayView utf8);

// The whole number a value holds in decimal (DecimalOf) when it fits T; nothing for a number T
// cannot hold.
template <std::integral T>
std::optional<T> NumberOf(const char* utf8) {
  const std::optional<long long> value = DecimalOf(utf8);
  if (!value || !std::in_range<T>(*value)) return std::nullopt;
  return static_cast<T>(*value);
}

// An element's text as a number (NumberOf).
template <std::integral T>
std::optional<T> ElementNumber(pugi::xml_node element) {
  return NumberOf<T>(element.first_child().value());
}

// An element's text as a number, `fallback` when it is not one or does not fit.
template <std::integral T>
T ElementNumber(pugi::xml_node element, T fallback) {
  return ElementNumber<T>(element).value_or(fallback);
}

// An attribute's value as a number (NumberOf); nothing for a missing attribute.
template <std::integral T>
std::optional<T> AttributeNumber(pugi::xml_attribute attribute) {
  return NumberOf<T>(attribute.value());
}

// The boolean text of files: "0" false, any other number true, and "true" and "false" in any
// case. Raises EConvertError for other text.
bool ElementBoolean(pugi::xml_node element);

// An element's text as the value name of E; raises EConvertError for a name E does not have.
template <typename E>
E ElementEnum(pugi::xml_node element) {
  const char* text = element.first_child().value();
  if (const auto value = EnumFromName<E>(text)) return *value;
  throw EConvertError(QStringLiteral("'%1' is not a valid %2 value")
                          .arg(XMLValue(text), QString::fromLatin1(MetaEnumOf<E>().name())));
}

// The "name" attribute that makes, models and commands carry; "" when it is missing.
QString NameAttribute(pugi::xml_node element);

}  // namespace norva
