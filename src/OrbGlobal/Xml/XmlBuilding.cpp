#include <OrbGlobal/Xml/XmlBuilding.h>

#include <OrbGlobal/Xml/XmlErrors.h>
#include <OrbGlobal/Xml/XmlNames.h>

namespace norva {

namespace {

bool CanHoldChildren(pugi::xml_node node) {
  return node.type() == pugi::node_element || node.type() == pugi::node_document;
}

QByteArray IndentationFor(pugi::xml_node parent) {
  QByteArray indentation("\r\n");
  for (pugi::xml_node ancestor = parent.parent(); ancestor; ancestor = ancestor.parent()) {
    indentation.append('\t');
  }
  return indentation;
}

void RemoveAllChildren(pugi::xml_node node) {
  while (pugi::xml_node child = node.first_child()) node.remove_child(child);
}

}  // namespace

pugi::xml_node AddXMLDOMElement(pugi::xml_node parent, const QString& name) {
  if (!IsValidXMLName(name)) {
    throw EXMLError(QStringLiteral("'%1' is not a valid element name").arg(name));
  }
  if (!CanHoldChildren(parent)) {
    throw EXMLError(
        QStringLiteral("Cannot add element '%1': the parent holds no elements").arg(name));
  }
  pugi::xml_node indentation = parent.append_child(pugi::node_pcdata);
  pugi::xml_node element = parent.append_child(name.toUtf8().constData());
  if (!indentation || !indentation.set_value(IndentationFor(parent).constData()) || !element) {
    throw EXMLError(QStringLiteral("Cannot add element '%1': out of memory").arg(name));
  }
  return element;
}

void SetXMLDOMText(pugi::xml_node node, const QString& text) {
  if (!CanHoldChildren(node)) throw EXMLError(QStringLiteral("Cannot set text: no element"));
  RemoveAllChildren(node);
  if (text.isEmpty()) return;
  pugi::xml_node textNode = node.append_child(pugi::node_pcdata);
  if (!textNode || !textNode.set_value(text.toUtf8().constData())) {
    throw EXMLError(QStringLiteral("Cannot set text: out of memory"));
  }
}

}  // namespace norva
