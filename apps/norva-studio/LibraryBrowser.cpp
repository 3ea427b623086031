#include "LibraryBrowser.h"

#include <OrbGlobal/Gui/OrbDragObject.h>

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QTreeView>
#include <QVBoxLayout>

namespace studio {

void TSearchResults::SetEntries(QList<TLibraryEntry> entries) {
  beginResetModel();
  mEntries = std::move(entries);
  endResetModel();
}

norva::TCommandObject* TSearchResults::CommandAt(int row) const {
  return row >= 0 && row < mEntries.size() ? mEntries[row].Command : nullptr;
}

int TSearchResults::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(mEntries.size());
}

int TSearchResults::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : 2;
}

QVariant TSearchResults::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole || !index.isValid()) return {};
  const TLibraryEntry& entry = mEntries[index.row()];
  return index.column() == 0 ? entry.Command->GetName() : entry.Where;
}

QVariant TSearchResults::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return section == 0 ? tr("Name") : tr("Where");
}

Qt::ItemFlags TSearchResults::flags(const QModelIndex& index) const {
  return QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled;
}

QStringList TSearchResults::mimeTypes() const { return {norva::TOrbDragObject::MimeType}; }

// As the tree's: the command drags as itself.
QMimeData* TSearchResults::mimeData(const QModelIndexList& indexes) const {
  norva::TCommandObject* command = indexes.isEmpty() ? nullptr : CommandAt(indexes.first().row());
  if (!command) return nullptr;
  auto* drag = new norva::TOrbDragObject(mDragSource);
  drag->SetOrbObject(command);
  return drag;
}

TLibraryBrowser::TLibraryBrowser(TLibraryTree* tree, QWidget* parent)
    : QWidget(parent),
      mTree(tree),
      mSearch(new QLineEdit),
      mFound(new QLabel),
      mPages(new QStackedWidget),
      mResults(this),
      mResultsView(new QTreeView),
      mDetails(new TCommandDetails) {
  setObjectName(QStringLiteral("libraryBrowser"));
  mSearch->setObjectName(QStringLiteral("librarySearch"));
  mSearch->setPlaceholderText(tr("Search names, makes, models, button classes, decodes"));
  mSearch->setClearButtonEnabled(true);
  mResultsView->setObjectName(QStringLiteral("searchResults"));
  mResultsView->setModel(&mResults);
  mResultsView->setRootIsDecorated(false);
  mResultsView->setUniformRowHeights(true);  // long result lists lay out at once
  mResultsView->setDragEnabled(true);
  mResultsView->setDragDropMode(QAbstractItemView::DragOnly);
  mResultsView->header()->resizeSection(0, 200);
  mPages->addWidget(mTree);
  mPages->addWidget(mResultsView);
  auto* upper = new QWidget;
  auto* upperLayout = new QVBoxLayout(upper);
  upperLayout->setContentsMargins(0, 0, 0, 0);
  upperLayout->addWidget(mSearch);
  upperLayout->addWidget(mFound);
  upperLayout->addWidget(mPages, 1);
  mFound->hide();
  // In a low window the details scroll rather than hold the window taller than the screen.
  auto* details = new QScrollArea;
  details->setWidget(mDetails);
  details->setWidgetResizable(true);
  details->setFrameShape(QFrame::NoFrame);
  auto* splitter = new QSplitter(Qt::Vertical);
  splitter->addWidget(upper);
  splitter->addWidget(details);
  splitter->setChildrenCollapsible(false);
  // The details as tall as they need, the tree taking what is left and what the window gains.
  splitter->setStretchFactor(0, 1);
  splitter->setStretchFactor(1, 0);
  splitter->setSizes({upper->sizeHint().height() * 4, mDetails->sizeHint().height()});
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(splitter);
  connect(mSearch, &QLineEdit::textChanged, this, &TLibraryBrowser::Search);
  connect(mTree, &TLibraryTree::Refreshed, this, [this] {
    if (!mSearch->text().trimmed().isEmpty()) Search(mSearch->text());
    ShowDetails();
  });
  connect(mTree, &QTreeWidget::currentItemChanged, this, &TLibraryBrowser::ShowDetails);
  connect(mResultsView->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& current) {
            if (QTreeWidgetItem* item = mTree->ItemOf(mResults.CommandAt(current.row())))
              mTree->setCurrentItem(item);
          });
  connect(mDetails, &TCommandDetails::ButtonClassChosen, this,
          [this](const norva::TButtonClass& buttonClass) {
            if (norva::TCommandObject* command = mTree->CurrentCommand())
              mTree->SetButtonClass(*command, buttonClass);
          });
}

void TLibraryBrowser::Search(const QString& text) {
  const bool searching = !text.trimmed().isEmpty();
  mResults.SetEntries(searching ? mTree->Find(text) : QList<TLibraryEntry>());
  mFound->setText(tr("%n command(s) found", nullptr, mResults.rowCount()));
  mFound->setVisible(searching);
  mPages->setCurrentWidget(searching ? static_cast<QWidget*>(mResultsView) : mTree);
}

void TLibraryBrowser::ShowDetails() { mDetails->Show(mTree->CurrentCommand()); }

}  // namespace studio
