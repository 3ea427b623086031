#pragma once
// The IR library: a tree of the database's makes, models and commands with each command's status
// and button classes. Commands drag onto keypad buttons; a Pronto hex code on the clipboard, or a
// code file of another tool, goes into the model chosen (or "Learnt codes" of make "User"), a
// pasted code named after its meaning when the database knows it. Any change to the database (an
// undo too) shows in the tree once control is back in the event loop.

#include <IR_Database/IR_Database.h>

#include <QHash>
#include <QTreeWidget>

#include <memory>

namespace studio {

class TLibraryTree : public QTreeWidget {
  Q_OBJECT

 public:
  explicit TLibraryTree(QWidget* parent = nullptr);

  // The database shown (not owned; it must outlive the tree or be replaced first); nullptr shows
  // nothing.
  void SetDatabase(norva::TIRDB* database);
  norva::TIRDB* Database() const { return mDatabase; }
  void Refresh();

  // The command with this GUID, or nullptr.
  norva::TCommandObject* FindCommand(const QString& guid) const;
  // The tree item of a command or model, or nullptr.
  QTreeWidgetItem* ItemOf(const norva::TOrbObject* object) const;
  // The command of the current item, or nullptr.
  norva::TCommandObject* CurrentCommand() const;

  // A hex code pasted from the clipboard as a new IR command; nullptr when the clipboard holds
  // none. A code that cannot be read raises ENorvaError, and nothing is added.
  norva::TCommandObject* PasteHexCode();
  // The model, made current; nullptr when the database or the make is read-only.
  norva::TModel* AddModel(const QString& make, const QString& model);
  // The codes of a file (its path and bytes), into the make and model the file names or else the
  // model chosen; one undo step.
  norva::TCodeImportResult ImportCodes(const QString& path, const QByteArray& bytes);
  // Edits, each one undo step.
  void Rename(norva::TCommandObject& command, const QString& name);

 signals:
  // The database was changed through the tree (the window saves it).
  void Edited();
  // The tree shows the database anew; what was looked up in it before may be gone.
  void Refreshed();

 protected:
  QMimeData* mimeData(const QList<QTreeWidgetItem*>& items) const override;
  QStringList mimeTypes() const override;

 private:
  norva::TModel* TargetModel();
  // The items of a built-in make's command group, and of the commands of any list.
  QTreeWidgetItem* GroupItem(const norva::TNorvaGroup& group);
  void AddCommandItems(const norva::TCommandObjectList& list, QTreeWidgetItem& parent);
  // One edit done: one undo step, the tree shown anew, Edited.
  void EditDone();
  void Select(const norva::TOrbObject* object);

  norva::TIRDB* mDatabase = nullptr;
  norva::TUpdateListenerId mListener = 0;          // the tree's, on the database
  QHash<QString, norva::TCommandObject*> mByGUID;  // as the tree was last built
  bool mStale = false;                             // the database changed since
};

}  // namespace studio
