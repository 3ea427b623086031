#pragma once
// A list that drops down under a widget, as a combo box's does, for choices that need no combo
// box: the user picks with the mouse, or moves with the arrow keys and takes one with Return.
// Escape or a click anywhere outside closes it without a choice.

#include <QFrame>
#include <QStringList>

class QListWidget;

namespace norva {

class TPopupList : public QFrame {
  Q_OBJECT

 public:
  explicit TPopupList(QWidget* parent = nullptr);

  void SetItems(const QStringList& items);
  QStringList Items() const;
  // The row shown selected when the list opens (-1: none).
  void SetItemIndex(int index);
  int GetItemIndex() const;
  // At most this many rows show at once; the rest scroll.
  void SetVisibleRows(int rows) { mVisibleRows = rows; }

  // Opens under `anchor`, at least as wide as it, or above it when the screen has no room below.
  void PopupUnder(QWidget* anchor);

  QListWidget* List() const { return mList; }

 signals:
  void ItemChosen(int index, const QString& text);
  // Closed without a choice (Escape, a click outside).
  void Cancelled();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void Choose(int index);

  QListWidget* mList;
  int mVisibleRows = 8;
  bool mChosen = false;
};

}  // namespace norva
