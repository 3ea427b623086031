#pragma once
// A make (manufacturer) in the IR database: a named, owned list of models.

#include <IR_Database/Model.h>
#include <OrbGlobal/Model/OrbObjectList.h>

namespace norva {

class TMake : public TOrbObject {
  Q_OBJECT
  Q_CLASSINFO("ClassGUID", "{7C3E5A1D-9B2F-4E6C-8D0A-1B2C3D4E5F60}")
  Q_PROPERTY(int ModelCount READ GetModelCount)

 public:
  Q_INVOKABLE explicit TMake(norva::TOrbObject* owner = nullptr);

  TModel* AddNewModel();
  TModel* GetModel(int index) const { return static_cast<TModel*>(mModels.Get(index)); }
  int GetModelCount() const { return mModels.Count(); }
  // The first model of that name, compared ignoring case, or none.
  TModel* GetModelByName(const QString& name) const;
  void Clear() { mModels.Clear(); }

  TOrbObjectList* GetChildList(const TOrbObject* child) const override;
  // To a make: cleared, then the name and a copy of every model in order.
  void AssignTo(QObject* dest) const override;

  // Appends a "make" element with the attribute "name" and one "model" element per model.
  void Save(pugi::xml_node databaseElement) const;
  // Adds the models of a "make" element to those the make has.
  void Load(pugi::xml_node element);

 private:
  // mutable: the child list is handed out by the const GetChildList.
  mutable TOrbObjectList mModels;
};

}  // namespace norva
