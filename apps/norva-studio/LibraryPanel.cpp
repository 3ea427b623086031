#include "LibraryPanel.h"

#include <IR/IR.h>
#include <NorvaGlobal/UIServices.h>
#include <OrbGlobal/Gui/OrbDragObject.h>
#include <OrbGlobal/Model/OrbErrors.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>

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
  setSelectionMode(QAbstractItemView::ExtendedSelection);  // several commands to delete or export
  setEditTriggers(QAbstractItemView::EditKeyPressed);
  connect(this, &QTreeWidget::itemChanged, this, &TLibraryTree::RenamedInPlace);
  // Pieces of a few milliseconds, so the window answers the installer meanwhile.
  constexpr std::size_t CommandsPerPiece = 500;
  mGatherer.setInterval(0);
  connect(&mGatherer, &QTimer::timeout, this, [this] {
    if (mStale || mSearch.GatherSome(CommandsPerPiece)) mGatherer.stop();
  });
}

void TLibraryTree::SetDatabase(norva::TIRDB* database) {
  if (mDatabase) mDatabase->RemoveUpdateListener(mListener);
  mDatabase = database;
  if (mDatabase && !mDatabase->IsPublic() && !mBuiltIns)
    mBuiltIns = std::make_unique<norva::TIRDB>(QString(), true);
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
  const QSet<QString> expanded = ExpandedPaths();
  clear();
  mByGUID.clear();
  mItems.clear();
  mSearch.Clear();
  if (!mDatabase) {
    emit Refreshed();
    return;
  }
  setUpdatesEnabled(false);
  QList<QTreeWidgetItem*> makes;
  AddMakeItems(*mDatabase, makes);
  if (!mDatabase->IsPublic()) AddMakeItems(*mBuiltIns, makes);  // after the installer's own
  addTopLevelItems(makes);
  Expand(expanded);
  mGatherer.start();
  setUpdatesEnabled(true);
  if (!current.isEmpty()) Select(FindCommand(current));
  emit Refreshed();
}

namespace {

// Where an item is: the texts of its parents and its own. Commands are left out: they never open.
QString PathOf(const QTreeWidgetItem& item) {
  return item.parent() ? PathOf(*item.parent()) + u'\n' + item.text(0) : item.text(0);
}

template <typename F>
void ForEachOpenable(QTreeWidgetItem& item, const F& visit) {
  if (item.childCount() == 0) return;
  visit(item);
  for (int i = 0; i < item.childCount(); ++i) ForEachOpenable(*item.child(i), visit);
}

}  // namespace

QSet<QString> TLibraryTree::ExpandedPaths() const {
  QSet<QString> paths;
  for (int i = 0; i < topLevelItemCount(); ++i) {
    ForEachOpenable(*topLevelItem(i), [&paths](QTreeWidgetItem& item) {
      if (item.isExpanded()) paths.insert(PathOf(item));
    });
  }
  return paths;
}

void TLibraryTree::Expand(const QSet<QString>& paths) {
  if (paths.isEmpty()) return;
  for (int i = 0; i < topLevelItemCount(); ++i) {
    ForEachOpenable(*topLevelItem(i), [&paths](QTreeWidgetItem& item) {
      if (paths.contains(PathOf(item))) item.setExpanded(true);
    });
  }
}

void TLibraryTree::AddMakeItems(const norva::TIRDB& database, QList<QTreeWidgetItem*>& makes) {
  for (int m = 0; m < database.GetMakeCount(); ++m) {
    const norva::TMake* make = database.GetMake(m);
    auto* makeItem = new QTreeWidgetItem({make->GetName()});
    if (const auto* builtIn = qobject_cast<const norva::TNorvaIntegraMake*>(make)) {
      for (int g = 0; g < builtIn->GetNorvaCommandGroupCount(); ++g)
        makeItem->addChild(GroupItem(*builtIn->GetNorvaCommandGroup(g), make->GetName()));
    }
    for (int i = 0; i < make->GetModelCount(); ++i) {
      norva::TModel* model = make->GetModel(i);
      auto* modelItem = new QTreeWidgetItem(makeItem, {model->GetName()});
      modelItem->setData(0, ModelRole, QVariant::fromValue(static_cast<void*>(model)));
      mItems.insert(model, modelItem);
      AddCommandItems(*model, *modelItem, model->GetFullName());
    }
    makes.append(makeItem);
  }
}

QTreeWidgetItem* TLibraryTree::GroupItem(const norva::TNorvaGroup& group, const QString& where) {
  auto* item = new QTreeWidgetItem({group.GetName()});
  const QString groupWhere = where + QStringLiteral(" - ") + group.GetName();
  for (int i = 0; i < group.GetChildObjectCount(); ++i)
    item->addChild(GroupItem(*group.GetChildObject(i), groupWhere));
  AddCommandItems(group, *item, groupWhere);
  return item;
}

void TLibraryTree::AddCommandItems(const norva::TCommandObjectList& list, QTreeWidgetItem& parent,
                                   const QString& where) {
  QList<QTreeWidgetItem*> commands;
  commands.reserve(list.GetCommandCount());
  for (int c = 0; c < list.GetCommandCount(); ++c) {
    norva::TCommandObject* command = list.GetCommand(c);
    auto* item =
        new QTreeWidgetItem({command->GetName(), command->Status(), ClassesText(*command)});
    item->setData(0, CommandRole, QVariant::fromValue(static_cast<void*>(command)));
    const QString guid = command->GetGUIDString();
    item->setData(0, GUIDRole, guid);
    item->setFlags(item->flags() | Qt::ItemIsDragEnabled |
                   (command->IsReadOnly() ? Qt::NoItemFlags : Qt::ItemIsEditable));
    commands.append(item);
    mByGUID.insert(guid, command);
    mItems.insert(command, item);
    mSearch.Add(*command, where);
  }
  parent.addChildren(commands);
}

QList<TLibraryEntry> TLibraryTree::Find(QStringView query) const {
  return mStale ? QList<TLibraryEntry>() : mSearch.Find(query);
}

norva::TCommandObject* TLibraryTree::FindCommand(const QString& guid) const {
  return mStale ? nullptr : mByGUID.value(guid);
}

QTreeWidgetItem* TLibraryTree::ItemOf(const norva::TOrbObject* object) const {
  return mStale ? nullptr : mItems.value(object);
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
  if (!model) return {0, 0, {{QStringLiteral("file"), tr("The library is read-only.")}}, {}};
  norva::TCodeImportResult imported = norva::ImportCodeFile(
      *mDatabase, bytes, {path, model->GetOwner()->GetName(), model->GetName(), {}});
  EditDone();
  return imported;
}

void TLibraryTree::Rename(norva::TCommandObject& command, const QString& name) {
  if (command.IsReadOnly()) throw norva::EUserError(command.GetName() + tr(" cannot be renamed."));
  command.SetName(name);
  EditDone();
  Select(&command);
}

void TLibraryTree::Delete(const QList<norva::TCommandObject*>& commands) {
  for (norva::TCommandObject* command : commands) command->Delete();
  EditDone();
}

void TLibraryTree::DeleteSelected() {
  if (const QList<norva::TCommandObject*> selected = SelectedCommands(); !selected.isEmpty())
    Try([&] { Delete(selected); });
}

QList<norva::TCommandObject*> TLibraryTree::SelectedCommands() const {
  QList<norva::TCommandObject*> commands;
  if (mStale) return commands;
  for (QTreeWidgetItemIterator it(const_cast<TLibraryTree*>(this),
                                  QTreeWidgetItemIterator::Selected);
       *it; ++it) {
    if (auto* command = Pointer<norva::TCommandObject>(*it, CommandRole)) commands.append(command);
  }
  return commands;
}

std::optional<norva::TCodeExport> TLibraryTree::ExportChosen(
    norva::TCodeExportFormat format) const {
  const QList<norva::TCommandObject*> selected = SelectedCommands();
  if (selected.isEmpty()) {
    const norva::TModel* model = ChosenModel();
    if (!model) return std::nullopt;
    return norva::ExportCodes({model}, format);
  }
  // The selection as a model of its own, outside the library: no edit of it.
  const norva::TUndoSuspended undoOff;
  norva::TModel selection;
  selection.SetName(tr("Selection"));
  for (const norva::TCommandObject* command : selected) selection.AddNewCommandObject(command);
  return norva::ExportCodes({&selection}, format);
}

norva::TModel* TLibraryTree::ChosenModel() const {
  for (const QTreeWidgetItem* item = mStale ? nullptr : currentItem(); item;
       item = item->parent()) {
    if (auto* model = Pointer<norva::TModel>(item, ModelRole)) return model;
  }
  return nullptr;
}

norva::TCommandObject* TLibraryTree::MoveTo(norva::TCommandObject& command, norva::TModel& model,
                                            bool copy) {
  if (!copy && command.IsReadOnly())
    throw norva::EUserError(command.GetName() + tr(" cannot be moved."));
  norva::TCommandObject* added = model.AddNewCommandObject(&command);
  if (copy)
    added->AssignNewGUID();
  else
    command.Delete();
  EditDone();
  Select(added);
  return added;
}

void TLibraryTree::SetButtonClass(norva::TCommandObject& command,
                                  const norva::TButtonClass& buttonClass) {
  if (command.IsReadOnly())
    throw norva::EUserError(command.GetName() + tr(" takes no other button class."));
  command.SetButtonClasses({buttonClass});
  EditDone();
  Select(&command);
}

QList<norva::TModel*> TLibraryTree::WritableModels() const {
  QList<norva::TModel*> models;
  if (!mDatabase || mDatabase->IsReadOnly()) return models;
  for (int m = 0; m < mDatabase->GetMakeCount(); ++m) {
    const norva::TMake* make = mDatabase->GetMake(m);
    for (int i = 0; i < make->GetModelCount(); ++i) {
      if (!make->GetModel(i)->IsReadOnly()) models.append(make->GetModel(i));
    }
  }
  return models;
}

// The tree is rebuilt by the database's update, once the editor that wrote the text is closed.
void TLibraryTree::RenamedInPlace(QTreeWidgetItem* item, int column) {
  norva::TCommandObject* command = Pointer<norva::TCommandObject>(item, CommandRole);
  if (column != 0 || !command || mStale) return;
  const QString name = item->text(0).trimmed();
  if (name == command->GetName()) return;
  if (name.isEmpty() || command->IsReadOnly()) {
    const QSignalBlocker quiet(this);
    item->setText(0, command->GetName());
    return;
  }
  command->SetName(name);
  norva::MaintainUndo();
  emit Edited();
}

template <typename F>
void TLibraryTree::Try(F edit) {
  try {
    edit();
  } catch (const std::exception& error) {
    norva::UIServices().MessageBox(QString::fromUtf8(error.what()), tr("IR library"),
                                   norva::TMessageIcon::Stop, norva::TMessageButtons::OK);
  }
}

bool TLibraryTree::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Delete || key == Qt::Key_F2) {
      event->accept();
      return true;
    }
  }
  return QTreeWidget::event(event);
}

void TLibraryTree::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Delete && state() != EditingState) {
    DeleteSelected();
    return;
  }
  QTreeWidget::keyPressEvent(event);
}

void TLibraryTree::contextMenuEvent(QContextMenuEvent* event) {
  norva::TCommandObject* command =
      Pointer<norva::TCommandObject>(itemAt(event->pos()), CommandRole);
  if (!command || mStale) return;
  setCurrentItem(itemAt(event->pos()));
  QMenu menu(this);
  const bool readOnly = command->IsReadOnly();
  menu.addAction(tr("&Rename"), this, [this] { editItem(currentItem(), 0); })
      ->setEnabled(!readOnly);
  menu.addAction(tr("&Delete"), this, [this, command] { Try([&] { Delete({command}); }); })
      ->setEnabled(!readOnly);
  QMenu* moveTo = menu.addMenu(tr("&Move to"));
  QMenu* copyTo = menu.addMenu(tr("&Copy to"));
  for (norva::TModel* model : WritableModels()) {
    if (command->GetOwner() == model) continue;
    moveTo->addAction(model->GetFullName(), this,
                      [this, command, model] { Try([&] { MoveTo(*command, *model, false); }); });
    copyTo->addAction(model->GetFullName(), this,
                      [this, command, model] { Try([&] { MoveTo(*command, *model, true); }); });
  }
  moveTo->setEnabled(!readOnly && !moveTo->isEmpty());
  copyTo->setEnabled(!copyTo->isEmpty());
  menu.exec(event->globalPos());
}

norva::TModel* TLibraryTree::TargetModel() {
  for (const QTreeWidgetItem* item = currentItem(); item; item = item->parent()) {
    if (auto* model = Pointer<norva::TModel>(item, ModelRole); model && !model->IsReadOnly())
      return model;
  }
  return mDatabase->GetOrAddModel(QStringLiteral("User"), QStringLiteral("Learnt codes"));
}

TPastedCode TLibraryTree::PasteHexCode() {
  if (!mDatabase || mDatabase->IsReadOnly() || !norva::HexCodeInClipboard()) return {};
  // Named before it joins the database, where it would only find itself.
  norva::TIRStream pasted;
  pasted.SetHexCode(norva::UIServices().ClipboardText());
  norva::TModel* model = TargetModel();
  TPastedCode result;
  if (mDatabase->GetNames(pasted)) {
    result.Naming = TPastedCode::TNaming::SameCode;
    result.NamedAfter = pasted.GetName() + QStringLiteral(" (") + pasted.GetCategory() + u')';
    const norva::TMessageResult answer = norva::UIServices().MessageBox(
        tr("The library holds this code already: %1. Add it again?").arg(result.NamedAfter),
        tr("Paste hex code"), norva::TMessageIcon::Exclamation, norva::TMessageButtons::YesNo);
    if (answer != norva::TMessageResult::Yes) return {};
  } else if (const QList<norva::TStreamName> same = mDatabase->RecogniseNames(pasted.Data());
             !same.isEmpty()) {
    result.Naming = TPastedCode::TNaming::SameButton;
    result.NamedAfter = same.first().Name + QStringLiteral(" (") + same.first().Category + u')';
    pasted.SetName(same.first().Name);
  } else {
    pasted.SetName(QStringLiteral("Code %1").arg(model->GetCommandCount() + 1));
  }
  result.Command = AddCopy(pasted, *model);
  return result;
}

norva::TCommandObject* TLibraryTree::AddStream(const norva::TIRStreamData& stream,
                                               const QString& name) {
  if (!mDatabase || mDatabase->IsReadOnly()) return nullptr;
  norva::TIRStream command;
  command.SetData(stream);
  command.SetName(name);
  return AddCopy(command, *TargetModel());
}

norva::TCommandObject* TLibraryTree::AddCopy(const norva::TIRStream& stream, norva::TModel& model) {
  norva::TCommandObject* added = model.AddNewCommandObject(&stream);
  added->AssignNewGUID();
  added->AutoAssignButtonClass();
  EditDone();
  Select(added);
  return added;
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
