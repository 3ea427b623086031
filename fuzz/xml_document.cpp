// Arbitrary bytes as a document: loading either succeeds or raises EXMLParseError with a
// position. A loaded document can be walked with the lookup helpers and saved; refused bytes are
// saved as text. Either way what is saved loads again.
#include <OrbGlobal/Xml/XmlDocument.h>
#include <OrbGlobal/Xml/XmlErrors.h>
#include <OrbGlobal/Xml/XmlLookup.h>

#include <cstdint>
#include <cstdlib>

namespace {

// Visits every element without recursion, as deep input would exhaust the stack.
void WalkElements(pugi::xml_node root) {
  pugi::xml_node node = root;
  while (node) {
    if (node.type() == pugi::node_element) {
      const QString name = QString::fromUtf8(node.name());
      (void)norva::GetElementText(node);
      (void)norva::GetXMLDOMNodeText(node, name, false);
      // Names that are valid UTF-8 must be found again under their parent.
      if (name.toUtf8() == node.name() && !norva::GetXMLDOMNode(node.parent(), name, false)) {
        std::abort();
      }
    }
    if (pugi::xml_node child = node.first_child()) {
      node = child;
      continue;
    }
    while (node && node != root && !node.next_sibling()) node = node.parent();
    node = (node && node != root) ? node.next_sibling() : pugi::xml_node();
  }
}

// What is saved is well-formed XML: it loads again strictly, or this raises and fails the run.
QByteArray SaveAndLoadAgain(const pugi::xml_document& document, pugi::xml_document& reloaded) {
  const QByteArray saved = norva::SaveXMLDocument(document);
  norva::LoadXMLDocument(reloaded, saved);
  return saved;
}

// Refused bytes as the text and an attribute value of a built document, for the save to leave out
// what XML cannot hold.
void CheckSaveOfRawText(const QByteArray& bytes) {
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("r");
  root.append_attribute("a").set_value(bytes.constData());
  root.text().set(bytes.constData());
  pugi::xml_document reloaded;
  SaveAndLoadAgain(document, reloaded);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  pugi::xml_document document;
  try {
    norva::LoadXMLDocument(document, bytes);
  } catch (const norva::EXMLParseError& error) {
    if (error.Line() < 1 || error.Column() < 1) std::abort();
    CheckSaveOfRawText(bytes);
    return 0;
  }
  WalkElements(document);
  pugi::xml_document reloaded;
  const QByteArray saved = SaveAndLoadAgain(document, reloaded);
  if (norva::SaveXMLDocument(reloaded) != saved)
    std::abort();  // a loaded document is kept as it is
  return 0;
}
