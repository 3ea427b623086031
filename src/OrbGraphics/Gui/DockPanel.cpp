#include <OrbGraphics/Gui/DockPanel.h>

#include <Utils/Gui/InterfaceHelpers.h>

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QPaintEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionToolButton>
#include <QStylePainter>
#include <QToolBar>
#include <QToolButton>

namespace norva {

namespace {

// The strip behind the caption, painted as the style paints list headers.
class TCaptionBar : public QWidget {
 public:
  explicit TCaptionBar(QDockWidget* panel) : QWidget(panel), mPanel(panel) {}

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    ThemedHeaderPaint(painter, rect(), QString(), this);
  }
  // A double click on the caption floats or docks the panel, as on the title of a window.
  void mouseDoubleClickEvent(QMouseEvent* /*event*/) override {
    mPanel->setFloating(!mPanel->isFloating());
  }

 private:
  QDockWidget* mPanel;
};

QToolButton* CaptionButton(QWidget* parent, QStyle::StandardPixmap icon, const QString& tip) {
  auto* button = new QToolButton(parent);
  button->setAutoRaise(true);
  button->setIcon(parent->style()->standardIcon(icon));
  button->setToolTip(tip);
  button->setFocusPolicy(Qt::NoFocus);
  return button;
}

// The tab of an unpinned panel: its caption, written upwards on the window's left and right edges
// so that the tab takes no more room there than a tool bar does.
class TEdgeTab : public QToolButton {
 public:
  explicit TEdgeTab(QToolBar* bar) : QToolButton(bar) {
    connect(bar, &QToolBar::orientationChanged, this, [this](Qt::Orientation orientation) {
      mUpright = orientation == Qt::Vertical;
      updateGeometry();
      update();
    });
  }
  QSize sizeHint() const override {
    const QSize size = QToolButton::sizeHint();
    return mUpright ? size.transposed() : size;
  }
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override {
    if (!mUpright) {
      QToolButton::paintEvent(event);
      return;
    }
    QStylePainter painter(this);
    painter.rotate(-90);
    painter.translate(-height(), 0);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.rect = QRect(0, 0, height(), width());
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
  }

 private:
  bool mUpright = false;
};

// The tool bar area along the same window edge as a dock area.
Qt::ToolBarArea EdgeOf(Qt::DockWidgetArea area) {
  switch (area) {
    case Qt::RightDockWidgetArea: return Qt::RightToolBarArea;
    case Qt::TopDockWidgetArea: return Qt::TopToolBarArea;
    case Qt::BottomDockWidgetArea: return Qt::BottomToolBarArea;
    default: return Qt::LeftToolBarArea;
  }
}

}  // namespace

TCaptionedDockPanel::TCaptionedDockPanel(const QString& caption, const QString& name,
                                         QWidget* parent)
    : QDockWidget(caption, parent), mCaptionBar(new TCaptionBar(this)) {
  setObjectName(name);
  mCaption = new QLabel(caption, mCaptionBar);
  mPin = CaptionButton(mCaptionBar, QStyle::SP_TitleBarNormalButton, QString());
  mPin->setCheckable(true);
  mClose = CaptionButton(mCaptionBar, QStyle::SP_TitleBarCloseButton, tr("Close"));
  auto* layout = new QHBoxLayout(mCaptionBar);
  layout->setContentsMargins(6, 2, 2, 2);
  layout->setSpacing(2);
  layout->addWidget(mCaption, 1);
  layout->addWidget(mPin);
  layout->addWidget(mClose);
  setTitleBarWidget(mCaptionBar);
  mHide.setSingleShot(true);
  mHide.setInterval(HideDelayMs);
  connect(&mHide, &QTimer::timeout, this, [this] {
    if (!IsPinned()) hide();
  });
  installEventFilter(this);

  connect(mPin, &QToolButton::clicked, this, [this](bool pinned) { SetPinned(pinned); });
  connect(mClose, &QToolButton::clicked, this, &QDockWidget::close);
  connect(this, &QDockWidget::windowTitleChanged, mCaption, &QLabel::setText);
  ShowPinState();
}

bool TCaptionedDockPanel::IsPinned() const { return !mTabBar || mTabBar->isHidden(); }

void TCaptionedDockPanel::SetPinned(bool pinned) {
  if (pinned == IsPinned() || !mTabBar) {
    ShowPinState();
    return;
  }
  auto* window = qobject_cast<QMainWindow*>(parentWidget());
  if (!pinned && window) {
    setFloating(false);
    window->addToolBar(EdgeOf(window->dockWidgetArea(this)), mTabBar);  // moved to this edge
  }
  mTabBar->setVisible(!pinned);
  setVisible(pinned);
  ShowPinState();
  emit PinnedChanged(pinned);
}

void TCaptionedDockPanel::MakeTab() {
  auto* window = qobject_cast<QMainWindow*>(parentWidget());
  if (mTabBar || !window) return;
  mTabBar = new QToolBar(window);
  mTabBar->setObjectName(objectName() + QStringLiteral("Tab"));
  mTabBar->setMovable(false);
  mTabBar->toggleViewAction()->setVisible(false);
  mTab = new TEdgeTab(mTabBar);
  mTab->setText(windowTitle());
  mTab->setToolTip(tr("Shown while the pointer is over it"));
  mTabBar->addWidget(mTab);
  connect(this, &QDockWidget::windowTitleChanged, mTab, &QToolButton::setText);
  window->addToolBar(EdgeOf(window->dockWidgetArea(this)), mTabBar);
  mTabBar->hide();
  mTab->installEventFilter(this);
  mTabBar->installEventFilter(this);  // its visibility is the pin: restoreState sets it too
}

bool TCaptionedDockPanel::event(QEvent* event) {
  const bool handled = QDockWidget::event(event);
  if (event->type() == QEvent::ParentChange) MakeTab();
  return handled;
}

bool TCaptionedDockPanel::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Enter:
      mHide.stop();
      if (watched == mTab && !IsPinned()) {
        show();
        raise();
      }
      break;
    case QEvent::Leave:
      if (!IsPinned()) mHide.start();
      break;
    case QEvent::Show:
      if (watched != mTabBar) break;
      ShowPinState();
      // Restored unpinned (restoreState shows the tab, and may show the panel after it): hidden
      // once the restore is done.
      QMetaObject::invokeMethod(
          this,
          [this] {
            if (!IsPinned()) hide();
          },
          Qt::QueuedConnection);
      break;
    case QEvent::Hide:
      if (watched == mTabBar) ShowPinState();
      break;
    default: break;
  }
  return QDockWidget::eventFilter(watched, event);
}

void TCaptionedDockPanel::ShowPinState() {
  mPin->setChecked(IsPinned());
  mPin->setToolTip(IsPinned() ? tr("Pinned: stays in view (click to hide it at the window's edge)")
                              : tr("Hidden at the window's edge, shown while the pointer is over "
                                   "its tab (click to pin)"));
}

}  // namespace norva
