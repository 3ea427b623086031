#pragma once
// A dock panel with a caption bar of its own: the caption, a pin button and a close button. A
// pinned panel stays in view, docked in its main window (or floating, by a double click on the
// caption). Unpinning hides it at its window's edge: a tab with its caption stands there in its
// place, the panel shows while the pointer is over the tab or the panel, and hides again shortly
// after the pointer left both; pinning it again keeps it in view. The tab is a tool bar of the
// main window named after the panel, so the main window's saveState and restoreState keep both
// the pin and the panel's place, as long as the panel has a unique object name.

#include <QDockWidget>
#include <QTimer>

class QLabel;
class QToolBar;
class QToolButton;

namespace norva {

class TCaptionedDockPanel : public QDockWidget {
  Q_OBJECT

 public:
  // How long the pointer may be away from the tab and the panel before an unpinned panel hides.
  static constexpr int HideDelayMs = 400;

  // `name` is the object name saveState files the panel under.
  TCaptionedDockPanel(const QString& caption, const QString& name, QWidget* parent = nullptr);

  bool IsPinned() const;
  void SetPinned(bool pinned);

  QToolButton* PinButton() const { return mPin; }
  QToolButton* CloseButton() const { return mClose; }
  // The tab at the window's edge while unpinned; none before the panel is in a main window.
  QToolButton* Tab() const { return mTab; }

 signals:
  void PinnedChanged(bool pinned);

 protected:
  // Added to a main window, the panel gets its tab there.
  bool event(QEvent* event) override;
  // The pointer over the tab or the panel keeps an unpinned panel shown.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeTab();
  void ShowPinState();

  QWidget* mCaptionBar;
  QLabel* mCaption;
  QToolButton* mPin;
  QToolButton* mClose;
  QToolBar* mTabBar = nullptr;
  QToolButton* mTab = nullptr;
  QTimer mHide;
};

}  // namespace norva
