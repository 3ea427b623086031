// Arbitrary bytes as a document of button classes: every element reads as some class without
// failing, names itself, encodes, and what it saves reads back as the same class.
#include <ButtonClasses/ButtonClass.h>
#include <OrbGlobal/Xml/XmlDocument.h>
#include <OrbGlobal/Xml/XmlErrors.h>

#include <cstdint>
#include <cstdlib>

namespace {

void CheckClass(pugi::xml_node element) {
  const norva::TButtonClass read(element);
  if (!norva::IsButtonClassGroup(read.Group)) std::abort();
  (void)read.GetName();
  (void)read.GetOrdValueWk3();
  (void)read.GetOrdValueNvZr900();
  if (norva::TButtonClass::FromOrdValue(read.GetOrdValue()).Group != read.Group) std::abort();

  pugi::xml_document saved;
  read.Save(saved.append_child("button_classes"));
  if (norva::TButtonClass(saved.first_child().child("class")) != read) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  pugi::xml_document document;
  try {
    norva::LoadXMLDocument(document, bytes);
  } catch (const norva::EXMLError&) {
    return 0;
  }
  // Class elements sit in a list under the document element, as commands keep them.
  for (pugi::xml_node element : document.document_element().children()) {
    if (element.type() == pugi::node_element) CheckClass(element);
  }
  CheckClass(document.document_element());
  return 0;
}
