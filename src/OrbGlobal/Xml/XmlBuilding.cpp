#include <OrbGlobal/Xml/XmlBuilding.h>

#include <OrbGlobal/Xml/XmlErrors.h>
#include <OrbGlobal/Xml/XmlNames.h>

#include <array>
#include <charconv>
#include <string>

namespace norva {

namespace {

bool CanHoldChildren(pugi::xml_node node) {
  return node.type() == pugi::node_element || node.type() == pugi::node_document;
}

// "\r\n" and one tab per ancestor of `parent`. Documents are shallow: the common depths come from
// one string, deeper ones are built.
std::string IndentationFor(pugi::xml_node parent) {
  std::size_t depth = 0;
  for (pugi::xml_node ancestor = parent.parent(); ancestor; ancestor = ancestor.parent()) ++depth;
  return "\r\n" + std::string(depth, '\t');
}

bool SetIndentation(pugi::xml_node indentation, pugi::xml_node parent) {
  static const std::string Common = "\r\n" + std::string(32, '\t');
  std::size_t depth = 0;
  for (pugi::xml_node ancestor = parent.parent(); ancestor && depth <= 32;
       ancestor = ancestor.parent())
    ++depth;
  if (depth <= 32) return indentation.set_value(Common.c_str(), 2 + depth);
  return indentation.set_value(IndentationFor(parent).c_str());
}

// ASCII names as code writes them; anything else goes through the full check.
bool IsPlainXMLName(const char* name) {
  const auto letter = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
  };
  if (!letter(*name)) return false;
  for (const char* c = name + 1; *c; ++c) {
    if (!letter(*c) && !(*c >= '0' && *c <= '9') && *c != '-' && *c != '.') return false;
  }
  return true;
}

pugi::xml_node AppendElement(pugi::xml_node parent, const char* utf8Name) {
  if (!CanHoldChildren(parent)) {
    throw EXMLError(QStringLiteral("Cannot add element '%1': the parent holds no elements")
                        .arg(QString::fromUtf8(utf8Name)));
  }
  pugi::xml_node indentation = parent.append_child(pugi::node_pcdata);
  pugi::xml_node element = parent.append_child(utf8Name);
  if (!indentation || !SetIndentation(indentation, parent) || !element) {
    throw EXMLError(
        QStringLiteral("Cannot add element '%1': out of memory").arg(QString::fromUtf8(utf8Name)));
  }
  return element;
}

void RemoveAllChildren(pugi::xml_node node) {
  while (pugi::xml_node child = node.first_child()) node.remove_child(child);
}

}  // namespace

pugi::xml_node AddXMLDOMElement(pugi::xml_node parent, const QString& name) {
  if (!IsValidXMLName(name)) {
    throw EXMLError(QStringLiteral("'%1' is not a valid element name").arg(name));
  }
  return AppendElement(parent, name.toUtf8().constData());
}

pugi::xml_node StartXMLDocument(pugi::xml_document& document, const char* root) {
  document.reset();
  pugi::xml_node declaration = document.append_child(pugi::node_pi);
  pugi::xml_node element;
  if (declaration.set_name("xml") && declaration.set_value("version='1.0'")) {
    element = document.append_child(root);
  }
  if (!element) throw EXMLError(QStringLiteral("Cannot start a document: out of memory"));
  return element;
}

pugi::xml_node AddXMLDOMElement(pugi::xml_node parent, const char* name) {
  if (IsPlainXMLName(name)) return AppendElement(parent, name);
  return AddXMLDOMElement(parent, QString::fromUtf8(name));
}

void SetXMLDOMText(pugi::xml_node node, const QString& text) {
  SetXMLDOMText(node, text.toUtf8().constData());
}

void SetXMLDOMText(pugi::xml_node node, const char* utf8) {
  if (!CanHoldChildren(node)) throw EXMLError(QStringLiteral("Cannot set text: no element"));
  RemoveAllChildren(node);
  if (*utf8 == '\0') return;
  pugi::xml_node textNode = node.append_child(pugi::node_pcdata);
  if (!textNode || !textNode.set_value(utf8)) {
    throw EXMLError(QStringLiteral("Cannot set text: out of memory"));
  }
}

void AddTextElement(pugi::xml_node parent, const char* name, const QString& text) {
  SetXMLDOMText(AddXMLDOMElement(parent, name), text);
}

void AddTextElement(pugi::xml_node parent, const char* name, const char* utf8) {
  SetXMLDOMText(AddXMLDOMElement(parent, name), utf8);
}

void AddNumberElement(pugi::xml_node parent, const char* name, long long value) {
  std::array<char, 24> digits{};
  std::to_chars(digits.data(), digits.data() + digits.size() - 1, value);
  AddTextElement(parent, name, digits.data());
}

void SetNameAttribute(pugi::xml_node element, const QString& name) {
  element.append_attribute("name") = name.toUtf8().constData();
}

}  // namespace norva
