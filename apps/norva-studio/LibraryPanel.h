#pragma once
// The IR library: a tree of the database's makes, models and commands with each command's status
// and button classes. A library of the installer's own shows the installation's built-in commands
// too, read-only, so native and learnt commands bind to one keypad whichever library is open.
// Commands drag onto keypad buttons; a Pronto hex code on the clipboard, or a code file of another
// tool, goes into the model chosen (or "Learnt codes" of make "User"), a pasted code named after
// the same code, else the same button, the library knows. Commands are deleted, moved and copied
// between models and renamed in place, each one undo step. Any change to the database (an undo
// too) shows in the tree once control is back in the event loop.

#include "LibrarySearch.h"

#include <IR_Database/IR_Database.h>

#include <QHash>
#include <QSet>
#include <QTimer>
#include <QTreeWidget>

#include <memory>
#include <optional>

namespace studio {

// A code pasted into the library, and how it was named.
struct TPastedCode {
  norva::TCommandObject* Command = nullptr;  // none when nothing was added
  enum class TNaming { Numbered, SameCode, SameButton } Naming = TNaming::Numbered;
  QString NamedAfter;  // the command and model that gave the name
};

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

  // A hex code pasted from the clipboard as a new IR command, named after the same code in the
  // library, else after the same button, else "Code N". A code the library holds already is added
  // only when the installer agrees. No command when the clipboard holds none or the installer
  // declined. A code that cannot be read raises ENorvaError, and nothing is added.
  TPastedCode PasteHexCode();
  // A new IR command with the stream and name in the chosen model, its button class assigned from
  // its name; nullptr when the database is read-only.
  norva::TCommandObject* AddStream(const norva::TIRStreamData& stream, const QString& name);
  // The model, made current; nullptr when the database or the make is read-only.
  norva::TModel* AddModel(const QString& make, const QString& model);
  // The codes of a file (its path and bytes), into the make and model the file names or else the
  // model chosen; one undo step.
  norva::TCodeImportResult ImportCodes(const QString& path, const QByteArray& bytes);
  // Edits, each one undo step. A read-only command raises EUserError, and nothing changes.
  void Rename(norva::TCommandObject& command, const QString& name);
  // Every command given, in one step.
  void Delete(const QList<norva::TCommandObject*>& commands);
  // The command in `model`, returned: a copy gets a GUID of its own, a moved command keeps its
  // own, so that buttons bound to it still find it.
  norva::TCommandObject* MoveTo(norva::TCommandObject& command, norva::TModel& model, bool copy);
  // The command's classes replaced by this one class.
  void SetButtonClass(norva::TCommandObject& command, const norva::TButtonClass& buttonClass);

  // The selected commands deleted in one step (the Delete key while the tree has the focus); a
  // refusal is told in a box.
  void DeleteSelected();
  // The commands selected in the tree, in tree order.
  QList<norva::TCommandObject*> SelectedCommands() const;
  // The selected commands written in `format`, or, when none is selected, the chosen model's;
  // nothing when neither is chosen.
  std::optional<norva::TCodeExport> ExportChosen(norva::TCodeExportFormat format) const;

  // Every model that takes commands, in library order.
  QList<norva::TModel*> WritableModels() const;
  // The commands the search finds for `query` (LibrarySearch.h); none while the tree is stale.
  QList<TLibraryEntry> Find(QStringView query) const;

 signals:
  // The database was changed through the tree (the window saves it).
  void Edited();
  // The tree shows the database anew; what was looked up in it before may be gone.
  void Refreshed();

 protected:
  QMimeData* mimeData(const QList<QTreeWidgetItem*>& items) const override;
  QStringList mimeTypes() const override;
  // Delete and F2 belong to the tree while it has the focus.
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  norva::TModel* TargetModel();
  // The model of the current item or of one above it, read-only ones too; none for none.
  norva::TModel* ChosenModel() const;
  // A copy of `stream` added to `model` as a new command, chosen in the tree.
  norva::TCommandObject* AddCopy(const norva::TIRStream& stream, norva::TModel& model);
  void AddMakeItems(const norva::TIRDB& database, QList<QTreeWidgetItem*>& makes);
  // The items of a built-in make's command group, and of the commands of any list, filed under
  // `where`.
  QTreeWidgetItem* GroupItem(const norva::TNorvaGroup& group, const QString& where);
  void AddCommandItems(const norva::TCommandObjectList& list, QTreeWidgetItem& parent,
                       const QString& where);
  void RenamedInPlace(QTreeWidgetItem* item, int column);
  // The makes, models and groups open, by the path of their names, to open again after a rebuild.
  QSet<QString> ExpandedPaths() const;
  void Expand(const QSet<QString>& paths);
  // Runs an edit of the context menu or a key, telling a refusal in a box.
  template <typename F>
  void Try(F edit);
  // One edit done: one undo step, the tree shown anew, Edited.
  void EditDone();
  void Select(const norva::TOrbObject* object);

  norva::TIRDB* mDatabase = nullptr;
  // The built-in commands beside a library that has none of its own.
  std::unique_ptr<norva::TIRDB> mBuiltIns;
  norva::TUpdateListenerId mListener = 0;          // the tree's, on the database
  QHash<QString, norva::TCommandObject*> mByGUID;  // as the tree was last built
  QHash<const norva::TOrbObject*, QTreeWidgetItem*> mItems;
  TLibrarySearch mSearch;
  QTimer mGatherer;     // gathers the search's text while the window is idle
  bool mStale = false;  // the database changed since
};

}  // namespace studio
