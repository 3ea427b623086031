#pragma once
// Reading values back: required elements are looked up with mustExist true and raise when absent,
// optional ones with false. Names match exactly (case-sensitive), among direct children only.

#include <QByteArrayView>
#include <QString>

#include <pugixml.hpp>

#include <optional>
#include <string_view>

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

}  // namespace norva
