#pragma once
// A command the installation can send to equipment: an infra-red stream, a serial or a network
// command. It carries a category (where it comes from, such as a make and model) and the button
// classes that say which keypad buttons it suits. Every change is undoable by property name.

#include <ButtonClasses/ButtonClass.h>
#include <OrbGlobal/Model/OrbObject.h>

#include <QString>

#include <pugixml.hpp>

namespace norva {

class TCommandObject : public TOrbObject {
  Q_OBJECT
  // Undo and snapshots restore the category through CategoryRaw, the one the command holds itself,
  // so that a command that followed its list's category follows it again.
  Q_PROPERTY(QString Category READ GetCategory WRITE SetCategory STORED false)
  Q_PROPERTY(QString CategoryRaw READ GetCategoryRaw WRITE SetCategoryRaw)
  Q_PROPERTY(QString ButtonClassData READ GetButtonClassData WRITE SetButtonClassData)

 public:
  Q_INVOKABLE explicit TCommandObject(norva::TOrbObject* owner = nullptr);

  // The stored category, or, when there is none, what the list holding the command, or else that
  // list's owner, gives as ICommandCategoryOwner.
  QString GetCategory() const;
  // Compares with GetCategory: setting the owner's category stores nothing.
  void SetCategory(const QString& category);
  // The category the command holds itself; empty while it follows its list's.
  const QString& GetCategoryRaw() const { return mCategory; }
  void SetCategoryRaw(const QString& category);

  const TButtonClasses& GetButtonClasses() const { return mButtonClasses; }
  // Recorded as a change of "ButtonClassData".
  void SetButtonClasses(const TButtonClasses& classes);
  // The classes as hexadecimal text, 16 digits (8 bytes) per class in order (see
  // TButtonClass::GetRecordBytes); meant for undo within the process, never for files.
  QString GetButtonClassData() const;
  // One class per 16 digits; conversion stops at the first pair that is not hexadecimal, leaving
  // the rest zero.
  void SetButtonClassData(const QString& data);
  // Whether a held class is equivalent to `buttonClass` (so Norva "Mute" counts as System "Mute").
  bool HasButtonClass(const TButtonClass& buttonClass) const;
  // Appends the class unless an equivalent one is held.
  void AddButtonClass(const TButtonClass& buttonClass);
  // Adds the class the name finder proposes for the command's name, if any; never removes one.
  void AutoAssignButtonClass();

  // Gives the command a GUID when it has none.
  void UpdateGUID();

  // Learnt from a remote control rather than typed or built; copied by AssignTo, shown by names.
  bool GetLearnt() const { return mLearnt; }
  void SetLearnt(bool learnt) { mLearnt = learnt; }

  // "OK" when the command can be sent, otherwise why not. Never raises.
  virtual QString Status() const;
  // Whether `other` sends the same thing (names, categories and classes aside).
  virtual bool Match(const TCommandObject* other) const;
  // Whether there is nothing to send; empty commands are left out of saved lists.
  virtual bool IsEmpty() const;

  // To a command: inside one update of it, the name, category, button classes, learnt flag and
  // GUID (so a copy keeps its identity).
  void AssignTo(QObject* dest) const override;

  // The attributes "name", "category" (when there is one) and "guid", and the child element
  // "button_classes". Subclasses add their own elements after it.
  virtual void Save(pugi::xml_node element) const;
  // Reads the attributes, then hands every child element to LoadElement.
  virtual void Load(pugi::xml_node element);

 protected:
  // Subclasses extend it and call it first.
  virtual void LoadElement(pugi::xml_node child);

 private:
  TButtonClasses mButtonClasses;
  QString mCategory;
  bool mLearnt = false;
};

}  // namespace norva
