#pragma once
// One keypad button in the designer: caption, button class and bound command, a drop target for
// commands of the library and for other buttons, and a drag source for itself. Both kinds of drag
// are the object model's drag objects: a command travels as itself, a button as the tile it was
// dragged from.

#include <IR/CommandObject.h>

#include <QFrame>

class QLabel;

namespace studio {

class TButtonTile : public QFrame {
  Q_OBJECT

 public:
  TButtonTile(int index, QWidget* parent = nullptr);

  int Index() const { return mIndex; }
  void Show(const QString& caption, const QString& buttonClass, const QString& command,
            bool selected);
  QString CaptionText() const;
  QString ButtonClassText() const;
  QString CommandText() const;
  bool IsShownSelected() const { return mSelected; }

 signals:
  void Clicked(int index);
  void CommandDropped(int index, const norva::TCommandObject& command);
  // Another button dropped here; `copy` when Ctrl was held.
  void ButtonDropped(int from, int to, bool copy);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  int mIndex;
  QLabel* mCaption;
  QLabel* mClass;
  QLabel* mCommand;
  QPoint mPressedAt;
  bool mSelected = false;
};

}  // namespace studio
