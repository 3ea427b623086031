#include <OrbGraphics/Gui/DockPanel.h>

#include <Utils/Gui/InterfaceHelpers.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QStyle>
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
  // A double click on the caption pins or unpins, as on the title of a floating window.
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

}  // namespace

TCaptionedDockPanel::TCaptionedDockPanel(const QString& caption, const QString& name,
                                         QWidget* parent)
    : QDockWidget(caption, parent), mCaptionBar(new TCaptionBar(this)) {
  setObjectName(name);
  mCaption = new QLabel(caption, mCaptionBar);
  mPin = CaptionButton(mCaptionBar, QStyle::SP_TitleBarNormalButton, tr("Pinned: docked"));
  mPin->setCheckable(true);
  mClose = CaptionButton(mCaptionBar, QStyle::SP_TitleBarCloseButton, tr("Close"));
  auto* layout = new QHBoxLayout(mCaptionBar);
  layout->setContentsMargins(6, 2, 2, 2);
  layout->setSpacing(2);
  layout->addWidget(mCaption, 1);
  layout->addWidget(mPin);
  layout->addWidget(mClose);
  setTitleBarWidget(mCaptionBar);

  connect(mPin, &QToolButton::clicked, this, [this](bool pinned) { SetPinned(pinned); });
  connect(mClose, &QToolButton::clicked, this, &QDockWidget::close);
  connect(this, &QDockWidget::windowTitleChanged, mCaption, &QLabel::setText);
  connect(this, &QDockWidget::topLevelChanged, this, [this] {
    ShowPinState();
    emit PinnedChanged(IsPinned());
  });
  ShowPinState();
}

void TCaptionedDockPanel::SetPinned(bool pinned) {
  if (pinned != IsPinned()) setFloating(!pinned);
  ShowPinState();
}

bool TCaptionedDockPanel::event(QEvent* event) {
  const bool handled = QDockWidget::event(event);
  if (event->type() == QEvent::ParentChange) ShowPinState();
  return handled;
}

void TCaptionedDockPanel::ShowPinState() {
  mPin->setChecked(IsPinned());
  mPin->setToolTip(IsPinned() ? tr("Pinned: docked (click to float)")
                              : tr("Floating (click to dock)"));
}

}  // namespace norva
