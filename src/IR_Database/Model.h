#pragma once
// A model of a make in the IR database: a named list of commands, which it files under its full
// name ("Make - Model") when they have no category of their own.

#include <IR/CommandCategory.h>
#include <IR/CommandObjectList.h>

namespace norva {

class TModel : public TCommandObjectList, public ICommandCategoryOwner {
  Q_OBJECT
  Q_CLASSINFO("ClassGUID", "{2E6A8C0B-4D1F-4B3A-9E5C-7F8091A2B3C4}")
  Q_PROPERTY(QString FullName READ GetFullName)

 public:
  Q_INVOKABLE explicit TModel(norva::TOrbObject* owner = nullptr);

  // The make's name, " - " and the model's own name; the own name alone without a make.
  QString GetFullName() const;
  QString CommandCategory() const override { return GetFullName(); }

  // Appends a "model" element with the attribute "name" and the commands.
  void SaveModel(pugi::xml_node makeElement) const;
  // Reads the commands of a "model" element (the name is read by the make).
  void LoadModel(pugi::xml_node element);
};

}  // namespace norva
