#include <IR_Database/Model.h>

#include <OrbGlobal/Xml/XmlBuilding.h>

namespace norva {

TModel::TModel(TOrbObject* owner) : TCommandObjectList(owner) {}

QString TModel::GetFullName() const {
  const TOrbObject* make = GetOwner();
  return make ? make->GetName() + QStringLiteral(" - ") + GetName() : GetName();
}

void TModel::SaveModel(pugi::xml_node makeElement) const {
  pugi::xml_node element = AddXMLDOMElement(makeElement, "model");
  SetNameAttribute(element, GetNameRaw());
  Save(element, false);
}

void TModel::LoadModel(pugi::xml_node element) { Load(element, false); }

}  // namespace norva
