#include "LibraryPanel.h"

#include <IR/IR.h>
#include <NorvaGlobal/UIServices.h>
#include <OrbGlobal/Gui/OrbDragObject.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <QHeaderView>

namespace studio {

namespace {

constexpr int CommandRole = Qt::UserRole + 1;  // the command an item shows
constexpr int ModelRole = Qt::UserRole + 2;    // the model an item shows
constexpr int GUIDRole = Qt::UserRole + 3;     // the command's GUID, still valid once it is gone

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
  header()->resizeSection(0, 240);
  header()->resizeSection(1, 80);
  setDragEnabled(true);
  setDragDropMode(QAbstractItemView::DragOnly);
  setSelectionMode(QAbstractItemView::SingleSelection);
}

void TLibraryTree::SetDatabase(norva::TIRDB* database) {
  if (mDatabase) mDatabase->RemoveUpdateListener(mListener);
  mDatabase = database;
  if (mDatabase) {
    mListener = mDatabase->AddUpdateListener(this, [this](norva::TOrbObject*) {
      if (mStale) return;
      mStale = true;
      QMetaObject::invokeMethod(
          this,
          [this] {
            if (mStale) Refresh();
          },
          Qt::QueuedConnection);
    });
  }
  Refresh();
}

void TLibraryTree::Refresh() {
  mStale = false;
  const QString current = currentItem() ? currentItem()->data(0, GUIDRole).toString() : QString();
  clear();
  mByGUID.clear();
  if (!mDatabase) {
    emit Refreshed();
    return;
  }
  setUpdatesEnabled(false);
  QList<QTreeWidgetItem*> makes;
  for (int m = 0; m < mDatabase->GetMakeCount(); ++m) {
    const norva::TMake* make = mDatabase->GetMake(m);
    auto* makeItem = new QTreeWidgetItem({make->GetName()});
    if (const auto* builtIn = qobject_cast<const norva::TNorvaIntegraMake*>(make)) {
      for (int g = 0; g < builtIn->GetNorvaCommandGroupCount(); ++g)
        makeItem->addChild(GroupItem(*builtIn->GetNorvaCommandGroup(g)));
    }
    for (int i = 0; i < make->GetModelCount(); ++i) {
      norva::TModel* model = make->GetModel(i);
      auto* modelItem = new QTreeWidgetItem(makeItem, {model->GetName()});
      modelItem->setData(0, ModelRole, QVariant::fromValue(static_cast<void*>(model)));
      AddCommandItems(*model, *modelItem);
    }
    makes.append(makeItem);
  }
  addTopLevelItems(makes);
  setUpdatesEnabled(true);
  if (!current.isEmpty()) Select(FindCommand(current));
  emit Refreshed();
}

QTreeWidgetItem* TLibraryTree::GroupItem(const norva::TNorvaGroup& group) {
  auto* item = new QTreeWidgetItem({group.GetName()});
  for (int i = 0; i < group.GetChildObjectCount(); ++i)
    item->addChild(GroupItem(*group.GetChildObject(i)));
  AddCommandItems(group, *item);
  return item;
}

void TLibraryTree::AddCommandItems(const norva::TCommandObjectList& list, QTreeWidgetItem& parent) {
  QList<QTreeWidgetItem*> commands;
  commands.reserve(list.GetCommandCount());
  for (int c = 0; c < list.GetCommandCount(); ++c) {
    norva::TCommandObject* command = list.GetCommand(c);
    auto* item =
        new QTreeWidgetItem({command->GetName(), command->Status(), ClassesText(*command)});
    item->setData(0, CommandRole, QVariant::fromValue(static_cast<void*>(command)));
    const QString guid = command->GetGUIDString();
    item->setData(0, GUIDRole, guid);
    item->setFlags(item->flags() | Qt::ItemIsDragEnabled);
    commands.append(item);
    mByGUID.insert(guid, command);
  }
  parent.addChildren(commands);
}

norva::TCommandObject* TLibraryTree::FindCommand(const QString& guid) const {
  return mStale ? nullptr : mByGUID.value(guid);
}

QTreeWidgetItem* TLibraryTree::ItemOf(const norva::TOrbObject* object) const {
  for (QTreeWidgetItemIterator it(const_cast<TLibraryTree*>(this)); *it; ++it) {
    if (Pointer<norva::TOrbObject>(*it, CommandRole) == object ||
        Pointer<norva::TOrbObject>(*it, ModelRole) == object)
      return *it;
  }
  return nullptr;
}

norva::TCommandObject* TLibraryTree::CurrentCommand() const {
  return mStale ? nullptr : Pointer<norva::TCommandObject>(currentItem(), CommandRole);
}

void TLibraryTree::Select(const norva::TOrbObject* object) {
  if (QTreeWidgetItem* item = object ? ItemOf(object) : nullptr) setCurrentItem(item);
}

void TLibraryTree::EditDone() {
  norva::MaintainUndo();
  Refresh();
  emit Edited();
}

norva::TModel* TLibraryTree::AddModel(const QString& makeName, const QString& modelName) {
  norva::TModel* model = mDatabase ? mDatabase->GetOrAddModel(makeName, modelName) : nullptr;
  if (!model) return nullptr;
  EditDone();
  Select(model);  // where the next codes go
  return model;
}

norva::TCodeImportResult TLibraryTree::ImportCodes(const QString& path, const QByteArray& bytes) {
  norva::TModel* model = mDatabase && !mDatabase->IsReadOnly() ? TargetModel() : nullptr;
  if (!model) return {0, 0, {{QStringLiteral("file"), tr("The library is read-only.")}}};
  norva::TCodeImportResult imported = norva::ImportCodeFile(
      *mDatabase, bytes, {path, model->GetOwner()->GetName(), model->GetName(), {}});
  EditDone();
  return imported;
}

void TLibraryTree::Rename(norva::TCommandObject& command, const QString& name) {
  command.SetName(name);
  EditDone();
  Select(&command);
}

norva::TModel* TLibraryTree::TargetModel() {
  for (const QTreeWidgetItem* item = currentItem(); item; item = item->parent()) {
    if (auto* model = Pointer<norva::TModel>(item, ModelRole); model && !model->IsReadOnly())
      return model;
  }
  return mDatabase->GetOrAddModel(QStringLiteral("User"), QStringLiteral("Learnt codes"));
}

norva::TCommandObject* TLibraryTree::PasteHexCode() {
  if (!mDatabase || mDatabase->IsReadOnly() || !norva::HexCodeInClipboard()) return nullptr;
  // Named before it joins the database, where it would only find itself.
  norva::TIRStream pasted;
  pasted.SetHexCode(norva::UIServices().ClipboardText());
  norva::TModel* model = TargetModel();
  if (!mDatabase->GetNames(pasted))
    pasted.SetName(QStringLiteral("Code %1").arg(model->GetCommandCount() + 1));
  norva::TCommandObject* stream = model->AddNewCommandObject(&pasted);
  stream->AssignNewGUID();
  stream->AutoAssignButtonClass();
  EditDone();
  Select(stream);
  return stream;
}

QStringList TLibraryTree::mimeTypes() const { return {norva::TOrbDragObject::MimeType}; }

// A command drags as itself, not owned by the drag; keypad buttons read what they bind from it.
QMimeData* TLibraryTree::mimeData(const QList<QTreeWidgetItem*>& items) const {
  auto* command =
      items.isEmpty() ? nullptr : Pointer<norva::TCommandObject>(items.first(), CommandRole);
  if (!command) return nullptr;
  auto* drag = new norva::TOrbDragObject(const_cast<TLibraryTree*>(this));
  drag->SetOrbObject(command);
  return drag;
}

}  // namespace studio
