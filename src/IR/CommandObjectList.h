#pragma once
// A list of commands: a model's command set, or a view on commands owned elsewhere. Insertions,
// removals and moves are undoable like every list of the model.

#include <IR/CommandObject.h>
#include <OrbGlobal/Model/OrbObjectList.h>

#include <memory>
#include <vector>

namespace norva {

class TIRStream;

class TCommandObjectList : public TOrbObject {
  Q_OBJECT

 public:
  // An owning list: it destroys its commands.
  Q_INVOKABLE explicit TCommandObjectList(norva::TOrbObject* owner = nullptr);
  // A list that refers to commands owned elsewhere and never destroys them.
  static std::unique_ptr<TCommandObjectList> CreateReferenceList(TOrbObject* owner);

  int GetCommandCount() const { return mCommands.Count(); }
  TCommandObject* GetCommand(int index) const;
  // Only the infra-red streams (native ones included), counted in list order.
  int GetIRStreamCount() const;
  // The index-th infra-red stream, or none beyond the count.
  TIRStream* GetIRStream(int index) const;

  void AddCommandObject(TCommandObject* command);
  // A new command of `command`'s own class, owned by the list, with its values; none for none.
  TCommandObject* AddNewCommandObject(const TCommandObject* command);
  // A new empty command of the class, constructed through the class registry's virtual
  // constructor. Raises ENorvaError for a class that is no command class, and on a reference
  // list, which owns nothing.
  TCommandObject* AddNewCommandObject(TOrbObjectClass commandClass);
  void Clear();

  TOrbObjectList* GetChildList(const TOrbObject* child) const override;

  // To a list: inside one update, clears it and adds a copy of every command in order.
  void AssignTo(QObject* dest) const override;

  // One child element per command that is not empty, named by its class ("rs232_command"...).
  // With `indexed`, each also gets "index": its position in the list (empty commands still use up
  // their number).
  virtual void Save(pugi::xml_node element, bool indexed) const;
  // Replaces the commands by those of the child elements whose names are command classes'; other
  // children are ignored. With `indexed`, in the order of their "index" (duplicates in document
  // order); an element whose index is missing or not below the number of child nodes is left out.
  // A failure leaves the list as it was. A reference list refuses to load.
  virtual void Load(pugi::xml_node element, bool indexed);

 private:
  TCommandObjectList(bool ownsCommands, TOrbObject* owner);
  void CheckOwnsCommands() const;
  // The commands of the child elements, in list order, not yet added.
  std::vector<std::unique_ptr<TCommandObject>> ReadCommands(pugi::xml_node element, bool indexed);

  // mutable: the child list is handed out by the const GetChildList.
  mutable TOrbObjectList mCommands;
};

}  // namespace norva
