#include <IR_Database/Make.h>

#include <OrbGlobal/Model/AssignTarget.h>
#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlLookup.h>

namespace norva {

TMake::TMake(TOrbObject* owner) : TOrbObject(owner), mModels(true, this) {
  mModels.SetUpdateOwner(true);
}

TModel* TMake::AddNewModel() {
  auto* model = new TModel(this);
  mModels.Add(model);
  return model;
}

TModel* TMake::GetModelByName(const QString& name) const {
  for (TOrbObject* model : mModels)
    if (model->GetName().compare(name, Qt::CaseInsensitive) == 0)
      return static_cast<TModel*>(model);
  return nullptr;
}

TOrbObjectList* TMake::GetChildList(const TOrbObject* child) const {
  return qobject_cast<const TModel*>(child) ? &mModels : nullptr;
}

void TMake::AssignTo(QObject* dest) const {
  const TAssignTarget<TMake> make(this, dest);
  if (make) make->Clear();
  TOrbObject::AssignTo(dest);
  if (!make) return;
  for (int i = 0; i < GetModelCount(); ++i) make->AddNewModel()->Assign(GetModel(i));
}

void TMake::Save(pugi::xml_node databaseElement) const {
  pugi::xml_node element = AddXMLDOMElement(databaseElement, "make");
  SetNameAttribute(element, GetNameRaw());
  for (int i = 0; i < GetModelCount(); ++i) GetModel(i)->SaveModel(element);
}

void TMake::Load(pugi::xml_node element) {
  for (pugi::xml_node child : element.children("model")) {
    TModel* model = AddNewModel();
    model->SetName(NameAttribute(child));
    model->LoadModel(child);
  }
}

}  // namespace norva
