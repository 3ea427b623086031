#pragma once
// One keypad button in the designer: caption, button class and bound command, a drop target for
// commands and for other buttons, and a drag source for itself.

#include <QFrame>
#include <QMimeData>

class QLabel;

namespace studio {

inline constexpr char ButtonMimeType[] = "application/x-norva-keypad-button";

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

 signals:
  void Clicked(int index);
  void CommandDropped(int index, const QMimeData* data);
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
};

}  // namespace studio
