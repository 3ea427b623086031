#pragma once
// What the edit sequences edit: for each model class, a subject that holds an object of the class
// (with what it lives in), writes it as its file does, and makes one random user action at a
// time through the public setters and operations.

#include "EditChoices.h"

#include <OrbGlobal/Model/OrbClass.h>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace norva {
class TIRDB;
}

namespace norva::edits {

class TEditSubject {
 public:
  virtual ~TEditSubject() = default;
  // The object as its file holds it.
  virtual QByteArray Saved() const = 0;
  // One user action; says what it did, for the report of a failure.
  virtual QString Edit(TEditChoices& choices) = 0;
  // The database whose naming is checked after every step; none for the other subjects.
  virtual TIRDB* Database() const { return nullptr; }
};

struct TSubjectKind {
  TOrbObjectClass Class;
  // A subject with some content of its own. Made with undo on: the caller empties the histories.
  std::function<std::unique_ptr<TEditSubject>(TEditChoices&)> Create;
  // Made by opening a file, which must leave no history.
  bool Opened = false;
};

// One kind per model class: every class the library registers, the keypad type and the picture a
// keypad holds, and the lists, macros, makes, models and databases that are not registered.
const std::vector<TSubjectKind>& SubjectKinds();
const TSubjectKind* SubjectKindOf(TOrbObjectClass cls);

// Registers the library's model classes and those an application adds (the example keypad type
// and the placed picture), each on its own; returns the registry's reasons for those it refused.
const QStringList& RegisterModelClasses();

}  // namespace norva::edits
