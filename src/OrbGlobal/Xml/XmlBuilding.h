#pragma once
// Building elements so that every file looks alike: one element per value, each child on its own
// line indented with tabs, values as element text.

#include <NorvaGlobal/EnumNames.h>

#include <QString>

#include <pugixml.hpp>

namespace norva {

// Empties `document` and starts it as every file of the application starts: the processing
// instruction "xml" with "version='1.0'", then at once the root element `root` (a name written in
// code), which is returned.
pugi::xml_node StartXMLDocument(pugi::xml_document& document, const char* root);

// Appends a line break ("\r\n" plus one tab per ancestor of `parent`, the document included) and
// then a new element `name` to `parent`, and returns the element. Nothing follows the last child,
// so the parent's end tag comes right after it. Raises EXMLError for a name that is not a valid
// XML name or a parent that cannot hold elements.
pugi::xml_node AddXMLDOMElement(pugi::xml_node parent, const QString& name);
// The same for a name already in UTF-8, as the element names written in code are.
pugi::xml_node AddXMLDOMElement(pugi::xml_node parent, const char* name);

// The DOM's text setter: replaces every child of `node` by one text node holding `text` (no child
// at all when `text` is empty). Raises EXMLError when `node` cannot hold text.
void SetXMLDOMText(pugi::xml_node node, const QString& text);
// The same for text already in UTF-8.
void SetXMLDOMText(pugi::xml_node node, const char* utf8);

// Appends an element `name` holding `text`.
void AddTextElement(pugi::xml_node parent, const char* name, const QString& text);
void AddTextElement(pugi::xml_node parent, const char* name, const char* utf8);
// Appends an element holding the decimal number.
void AddNumberElement(pugi::xml_node parent, const char* name, long long value);
// Appends an element holding the value name ("" for a value E does not name).
template <typename E>
void AddEnumElement(pugi::xml_node parent, const char* name, E value) {
  const char* key = MetaEnumOf<E>().valueToKey(static_cast<int>(value));
  AddTextElement(parent, name, key ? key : "");
}

// Appends the "name" attribute that makes, models and commands carry.
void SetNameAttribute(pugi::xml_node element, const QString& name);

}  // namespace norva
