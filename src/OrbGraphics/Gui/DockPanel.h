#pragma once
// A dock panel with a caption bar of its own: the caption, a pin button and a close button. A
// pinned panel stays docked in its main window; unpinning lets it float as a window of its own,
// and pinning it again docks it where it was. Pinned is simply "not floating", so the main
// window's saveState and restoreState keep it, with the panel's place and size, as long as the
// panel has a unique object name.

#include <QDockWidget>

class QLabel;
class QToolButton;

namespace norva {

class TCaptionedDockPanel : public QDockWidget {
  Q_OBJECT

 public:
  // `name` is the object name saveState files the panel under.
  TCaptionedDockPanel(const QString& caption, const QString& name, QWidget* parent = nullptr);

  bool IsPinned() const { return !isFloating(); }
  void SetPinned(bool pinned);

  QToolButton* PinButton() const { return mPin; }
  QToolButton* CloseButton() const { return mClose; }

 signals:
  void PinnedChanged(bool pinned);

 protected:
  // A panel without a main window is a window of its own; added to one, it is docked.
  bool event(QEvent* event) override;

 private:
  void ShowPinState();

  QWidget* mCaptionBar;
  QLabel* mCaption;
  QToolButton* mPin;
  QToolButton* mClose;
};

}  // namespace norva
