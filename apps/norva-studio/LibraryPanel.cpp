#include "LibraryPanel.h"

#include "CommandDrag.h"

#include <IR/IR.h>
#include <NorvaGlobal/UIServices.h>
#include <OrbGlobal/Undo/UndoControl.h>

namespace studio {

namespace {

constexpr int CommandRole = Qt::UserRole + 1;  // the command an item shows
constexpr int ModelRole = Qt::UserRole + 2;    // the model an item shows

QString ClassesText(const norva::TCommandObject& command) {
  QStringList names;
  for (const norva::TButtonClass& buttonClass : command.GetButtonClasses())
    names.append(buttonClass.GetName());
  return names.join(QStringLiteral(", "));
}

template <typename T>
T* Pointer(const QTreeWidgetItem* item, int role) {
  return item ? static_cast<T*>(item->data(0, role).value<void*>()) : nullptr;
}

}  // namespace

TLibraryTree::TLibraryTree(QWidget* parent) : QTreeWidget(parent) {
  setObjectName(QStringLiteral("library"));
  setHeaderLabels({tr("Name"), tr("Status"), tr("Button classes")});
  setDragEnabled(true);
  setDragDropMode(QAbstractItemView::DragOnly);
  setSelectionMode(QAbstractItemView::SingleSelection);
}

void TLibraryTree::SetDatabase(norva::TIRDB* database) {
  mDatabase = database;
  Refresh();
}

void TLibraryTree::Refresh() {
  clear();
  if (!mDatabase) return;
  setUpdatesEnabled(false);
  QList<QTreeWidgetItem*> makes;
  for (int m = 0; m < mDatabase->GetMakeCount(); ++m) {
    const norva::TMake* make = mDatabase->GetMake(m);
    auto* makeItem = new QTreeWidgetItem({make->GetName()});
    for (int i = 0; i < make->GetModelCount(); ++i) {
      norva::TModel* model = make->GetModel(i);
      auto* modelItem = new QTreeWidgetItem(makeItem, {model->GetName()});
      modelItem->setData(0, ModelRole, QVariant::fromValue(static_cast<void*>(model)));
      QList<QTreeWidgetItem*> commands;
      commands.reserve(model->GetCommandCount());
      for (int c = 0; c < model->GetCommandCount(); ++c) {
        norva::TCommandObject* command = model->GetCommand(c);
        auto* item =
            new QTreeWidgetItem({command->GetName(), command->Status(), ClassesText(*command)});
        item->setData(0, CommandRole, QVariant::fromValue(static_cast<void*>(command)));
        item->setFlags(item->flags() | Qt::ItemIsDragEnabled);
        commands.append(item);
      }
      modelItem->addChildren(commands);
    }
    makes.append(makeItem);
  }
  addTopLevelItems(makes);
  setUpdatesEnabled(true);
}

norva::TCommandObject* TLibraryTree::FindCommand(const QString& guid) const {
  if (!mDatabase || guid.isEmpty()) return nullptr;
  for (int m = 0; m < mDatabase->GetMakeCount(); ++m) {
    const norva::TMake* make = mDatabase->GetMake(m);
    for (int i = 0; i < make->GetModelCount(); ++i) {
      const norva::TModel* model = make->GetModel(i);
      for (int c = 0; c < model->GetCommandCount(); ++c) {
        if (model->GetCommand(c)->GetGUIDString() == guid) return model->GetCommand(c);
      }
    }
  }
  return nullptr;
}

QTreeWidgetItem* TLibraryTree::ItemOf(const norva::TCommandObject* command) const {
  for (QTreeWidgetItemIterator it(const_cast<TLibraryTree*>(this)); *it; ++it) {
    if (Pointer<norva::TCommandObject>(*it, CommandRole) == command) return *it;
  }
  return nullptr;
}

norva::TModel* TLibraryTree::AddModel(const QString& makeName, const QString& modelName) {
  if (!mDatabase) return nullptr;
  norva::TMake* make = mDatabase->GetMakeByName(makeName);
  if (!make) {
    make = mDatabase->AddNewMake();
    make->SetName(makeName);
  }
  norva::TModel* model = make->GetModelByName(modelName);
  if (!model) {
    model = make->AddNewModel();
    model->SetName(modelName);
  }
  return model;
}

norva::TModel* TLibraryTree::TargetModel() {
  for (const QTreeWidgetItem* item = currentItem(); item; item = item->parent()) {
    if (auto* model = Pointer<norva::TModel>(item, ModelRole); model && !model->IsReadOnly())
      return model;
  }
  return AddModel(QStringLiteral("User"), QStringLiteral("Learnt codes"));
}

norva::TCommandObject* TLibraryTree::PasteHexCode() {
  if (!mDatabase || mDatabase->IsReadOnly() || !norva::HexCodeInClipboard()) return nullptr;
  norva::TModel* model = TargetModel();
  auto* stream = static_cast<norva::TIRStream*>(
      model->AddNewCommandObject(&norva::TIRStream::staticMetaObject));
  stream->SetHexCode(norva::UIServices().ClipboardText());
  stream->AssignNewGUID();
  if (!mDatabase->GetNames(*stream))
    stream->SetName(QStringLiteral("Code %1").arg(model->GetCommandCount()));
  stream->AutoAssignButtonClass();
  norva::MaintainUndo();
  Refresh();
  if (QTreeWidgetItem* item = ItemOf(stream)) setCurrentItem(item);
  return stream;
}

QStringList TLibraryTree::mimeTypes() const { return {QLatin1String(CommandMimeType)}; }

QMimeData* TLibraryTree::mimeData(const QList<QTreeWidgetItem*>& items) const {
  const auto* command =
      items.isEmpty() ? nullptr : Pointer<norva::TCommandObject>(items.first(), CommandRole);
  if (!command) return nullptr;
  TDraggedCommand dragged{command->GetGUIDString(), command->GetName(), {}};
  if (!command->GetButtonClasses().isEmpty())
    dragged.ButtonClass = command->GetButtonClasses().first();
  return CommandMimeData(dragged);
}

}  // namespace studio
