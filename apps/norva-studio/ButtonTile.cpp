#include "ButtonTile.h"

#include <OrbGlobal/Gui/OrbDragObject.h>

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QVBoxLayout>

namespace studio {

namespace {

const norva::TOrbDragObject* OrbDrag(const QMimeData* mime) {
  return qobject_cast<const norva::TOrbDragObject*>(mime);
}

// The command a drag brings; none once it was destroyed during the drag.
const norva::TCommandObject* DraggedCommand(const QMimeData* mime) {
  const norva::TOrbDragObject* drag = OrbDrag(mime);
  return drag ? qobject_cast<const norva::TCommandObject*>(drag->OrbObject()) : nullptr;
}

const TButtonTile* DraggedTile(const QMimeData* mime) {
  const norva::TOrbDragObject* drag = OrbDrag(mime);
  return drag ? qobject_cast<const TButtonTile*>(drag->Source()) : nullptr;
}

}  // namespace

TButtonTile::TButtonTile(int index, QWidget* parent)
    : QFrame(parent),
      mIndex(index),
      mCaption(new QLabel(this)),
      mClass(new QLabel(this)),
      mCommand(new QLabel(this)) {
  setObjectName(QStringLiteral("button%1").arg(index + 1));
  setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
  setLineWidth(2);
  setAcceptDrops(true);
  setMinimumSize(140, 64);
  // A click takes the keyboard from the caption field, so the document's keys reach the keypad.
  setFocusPolicy(Qt::ClickFocus);
  setAutoFillBackground(true);
  QFont bold = mCaption->font();
  bold.setBold(true);
  bold.setPointSizeF(bold.pointSizeF() * 1.2);
  mCaption->setFont(bold);
  auto* layout = new QVBoxLayout(this);
  for (QLabel* label : {mCaption, mClass, mCommand}) {
    label->setAlignment(Qt::AlignCenter);
    layout->addWidget(label);
  }
}

void TButtonTile::Show(const QString& caption, const QString& buttonClass, const QString& command,
                       bool selected) {
  mCaption->setText(caption.isEmpty() ? tr("(no caption)") : caption);
  mClass->setText(buttonClass);
  mCommand->setText(command.isEmpty() ? tr("no command") : command);
  mSelected = selected;
  setFrameShadow(selected ? QFrame::Sunken : QFrame::Raised);
  setLineWidth(selected ? 3 : 2);
  setBackgroundRole(selected ? QPalette::Highlight : QPalette::Button);
  for (QLabel* label : {mCaption, mClass, mCommand})
    label->setForegroundRole(selected ? QPalette::HighlightedText : QPalette::ButtonText);
}

QString TButtonTile::CaptionText() const { return mCaption->text(); }
QString TButtonTile::ButtonClassText() const { return mClass->text(); }
QString TButtonTile::CommandText() const { return mCommand->text(); }

void TButtonTile::mousePressEvent(QMouseEvent* event) {
  mPressedAt = event->position().toPoint();
  emit Clicked(mIndex);
}

void TButtonTile::mouseMoveEvent(QMouseEvent* event) {
  if (!(event->buttons() & Qt::LeftButton) ||
      (event->position().toPoint() - mPressedAt).manhattanLength() <
          QApplication::startDragDistance())
    return;
  auto* dragged = new norva::TOrbDragObject(this);
  dragged->SetDraggedItem(mIndex);
  dragged->SetItemOffset(mPressedAt);
  auto* drag = new QDrag(this);
  drag->setMimeData(dragged);
  drag->setPixmap(grab());
  drag->exec(Qt::MoveAction | Qt::CopyAction, Qt::MoveAction);
}

void TButtonTile::dragEnterEvent(QDragEnterEvent* event) {
  const TButtonTile* tile = DraggedTile(event->mimeData());
  if (DraggedCommand(event->mimeData()) || (tile && tile != this)) event->acceptProposedAction();
}

void TButtonTile::dropEvent(QDropEvent* event) {
  if (const norva::TCommandObject* command = DraggedCommand(event->mimeData())) {
    emit CommandDropped(mIndex, *command);
  } else if (const TButtonTile* tile = DraggedTile(event->mimeData())) {
    const bool copy = event->modifiers().testFlag(Qt::ControlModifier);
    emit ButtonDropped(tile->Index(), mIndex, copy);
  }
  event->acceptProposedAction();
}

}  // namespace studio
