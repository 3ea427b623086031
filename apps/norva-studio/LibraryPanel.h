#pragma once
// The IR library: a tree of the database's makes, models and commands with each command's status
// and button classes. Commands drag onto keypad buttons; a Pronto hex code on the clipboard is
// pasted into the model chosen (or "Learnt codes" of make "User"), named after its meaning when
// the database knows it.

#include <IR_Database/IR_Database.h>

#include <QTreeWidget>

#include <memory>

namespace studio {

class TLibraryTree : public QTreeWidget {
  Q_OBJECT

 public:
  explicit TLibraryTree(QWidget* parent = nullptr);

  // The database shown (not owned); nullptr shows nothing.
  void SetDatabase(norva::TIRDB* database);
  norva::TIRDB* Database() const { return mDatabase; }
  void Refresh();

  // The command with this GUID, or nullptr.
  norva::TCommandObject* FindCommand(const QString& guid) const;
  // The tree item of a command, or nullptr.
  QTreeWidgetItem* ItemOf(const norva::TCommandObject* command) const;

  // A hex code pasted from the clipboard as a new IR command; nullptr when the clipboard holds
  // none.
  norva::TCommandObject* PasteHexCode();
  norva::TModel* AddModel(const QString& make, const QString& model);

 protected:
  QMimeData* mimeData(const QList<QTreeWidgetItem*>& items) const override;
  QStringList mimeTypes() const override;

 private:
  norva::TModel* TargetModel();

  norva::TIRDB* mDatabase = nullptr;
};

}  // namespace studio
