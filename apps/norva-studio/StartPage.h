#pragma once
// What the window shows while no IR library is open: what to do first, with the actions at hand
// (open or create a library, open the public one, open a keypad, connect to the installation or
// the simulator), the link's state, and the libraries and keypads used last. It scrolls rather
// than clip where the window is small.

#include <QScrollArea>

class QAction;
class QLabel;
class QListWidget;
class QListWidgetItem;

namespace studio {

class TStartPage : public QScrollArea {
  Q_OBJECT

 public:
  // One button per action, in this order.
  explicit TStartPage(const QList<QAction*>& actions, QWidget* parent = nullptr);

  void ShowRecent(const QStringList& libraries, const QStringList& publicLibraries,
                  const QStringList& keypads);
  void ShowLinkState(const QString& state);

  QListWidget* RecentLibraries() const { return mLibraries; }
  QListWidget* RecentKeypads() const { return mKeypads; }

 signals:
  void LibraryChosen(const QString& path, bool isPublic);
  void KeypadChosen(const QString& path);

 private:
  static void AddFile(QListWidget& list, const QString& path, const QString& note);

  QLabel* mLinkState;
  QListWidget* mLibraries;
  QListWidget* mKeypads;
};

}  // namespace studio
