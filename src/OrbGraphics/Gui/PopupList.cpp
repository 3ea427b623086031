#include <OrbGraphics/Gui/PopupList.h>

#include <QGuiApplication>
#include <QKeyEvent>
#include <QListWidget>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace norva {

TPopupList::TPopupList(QWidget* parent) : QFrame(parent, Qt::Popup), mList(new QListWidget(this)) {
  setFrameStyle(QFrame::Box | QFrame::Plain);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(1, 1, 1, 1);
  layout->addWidget(mList);
  mList->setFrameStyle(QFrame::NoFrame);
  mList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  mList->setMinimumSize(1, 1);  // the popup's size is computed from its rows, not the list's hint
  connect(mList, &QListWidget::itemClicked, this,
          [this](QListWidgetItem* item) { Choose(mList->row(item)); });
}

void TPopupList::SetItems(const QStringList& items) {
  mList->clear();
  mList->addItems(items);
}

QStringList TPopupList::Items() const {
  QStringList items;
  for (int i = 0; i < mList->count(); ++i) items.append(mList->item(i)->text());
  return items;
}

void TPopupList::SetItemIndex(int index) { mList->setCurrentRow(index); }

int TPopupList::GetItemIndex() const { return mList->currentRow(); }

void TPopupList::PopupUnder(QWidget* anchor) {
  mChosen = false;
  const int rows = std::clamp(mList->count(), 1, mVisibleRows);
  const int rowHeight = std::max(mList->sizeHintForRow(0), fontMetrics().height());
  const QSize size(std::max(anchor->width(), mList->sizeHintForColumn(0) + 24),
                   rows * rowHeight + 2 * frameWidth() + 2);
  const QPoint below = anchor->mapToGlobal(QPoint(0, anchor->height()));
  QPoint position = below;
  const QScreen* screen = anchor->screen() ? anchor->screen() : QGuiApplication::primaryScreen();
  if (screen) {
    const QRect available = screen->availableGeometry();
    if (below.y() + size.height() > available.bottom())
      position.setY(anchor->mapToGlobal(QPoint(0, 0)).y() - size.height());
    position.setX(std::clamp(position.x(), available.left(),
                             std::max(available.left(), available.right() - size.width())));
  }
  setFixedSize(size);
  setGeometry(QRect(position, size));
  if (mList->currentRow() < 0 && mList->count() > 0) mList->setCurrentRow(0);
  show();
  mList->setFocus();
}

void TPopupList::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: Choose(mList->currentRow()); return;
    case Qt::Key_Escape: hide(); return;
    default: QFrame::keyPressEvent(event);
  }
}

void TPopupList::hideEvent(QHideEvent* event) {
  QFrame::hideEvent(event);
  if (!mChosen) emit Cancelled();
  mChosen = true;  // one report per opening
}

void TPopupList::Choose(int index) {
  if (index < 0 || index >= mList->count()) return;
  mChosen = true;
  hide();
  emit ItemChosen(index, mList->item(index)->text());
}

}  // namespace norva
