#pragma once
// The IR library panel: a search box over the library, the tree (or, while a search is typed, the
// commands found), and the details of the chosen command. Commands found drag onto the keypad as
// those of the tree do, and choosing one chooses it in the tree.

#include "CommandDetails.h"
#include "LibraryPanel.h"

#include <QAbstractTableModel>
#include <QWidget>

class QLabel;
class QLineEdit;
class QStackedWidget;
class QTreeView;

namespace studio {

// The commands a search found: name and where each is filed.
class TSearchResults : public QAbstractTableModel {
  Q_OBJECT

 public:
  // Commands drag from `dragSource`.
  explicit TSearchResults(QWidget* dragSource) : mDragSource(dragSource) {}

  void SetEntries(QList<TLibraryEntry> entries);
  norva::TCommandObject* CommandAt(int row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QStringList mimeTypes() const override;
  QMimeData* mimeData(const QModelIndexList& indexes) const override;

 private:
  QWidget* mDragSource;
  QList<TLibraryEntry> mEntries;
};

class TLibraryBrowser : public QWidget {
  Q_OBJECT

 public:
  explicit TLibraryBrowser(TLibraryTree* tree, QWidget* parent = nullptr);

  TLibraryTree* Tree() const { return mTree; }
  QLineEdit* SearchField() const { return mSearch; }
  TSearchResults& Results() { return mResults; }
  QTreeView* ResultsView() const { return mResultsView; }
  TCommandDetails* Details() const { return mDetails; }
  // Shows the commands the search finds for `text`, or the tree for no words.
  void Search(const QString& text);

 private:
  void ShowDetails();

  TLibraryTree* mTree;
  QLineEdit* mSearch;
  QLabel* mFound;
  QStackedWidget* mPages;
  TSearchResults mResults;
  QTreeView* mResultsView;
  TCommandDetails* mDetails;
};

}  // namespace studio
