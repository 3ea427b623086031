#include "ButtonTile.h"

#include "CommandDrag.h"

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QVBoxLayout>

namespace studio {

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
  setMinimumSize(150, 80);
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
  setFrameShadow(selected ? QFrame::Sunken : QFrame::Raised);
  setStyleSheet(selected ? QStringLiteral("TButtonTile { background: palette(highlight); }")
                         : QString());
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
  auto* mime = new QMimeData;
  mime->setData(QLatin1String(ButtonMimeType), QByteArray::number(mIndex));
  auto* drag = new QDrag(this);
  drag->setMimeData(mime);
  drag->setPixmap(grab());
  drag->exec(Qt::MoveAction | Qt::CopyAction, Qt::MoveAction);
}

void TButtonTile::dragEnterEvent(QDragEnterEvent* event) {
  const QMimeData* mime = event->mimeData();
  if (mime->hasFormat(QLatin1String(CommandMimeType)) ||
      (mime->hasFormat(QLatin1String(ButtonMimeType)) &&
       mime->data(QLatin1String(ButtonMimeType)).toInt() != mIndex))
    event->acceptProposedAction();
}

void TButtonTile::dropEvent(QDropEvent* event) {
  const QMimeData* mime = event->mimeData();
  if (mime->hasFormat(QLatin1String(CommandMimeType))) {
    emit CommandDropped(mIndex, mime);
  } else if (mime->hasFormat(QLatin1String(ButtonMimeType))) {
    const bool copy = event->modifiers().testFlag(Qt::ControlModifier);
    emit ButtonDropped(mime->data(QLatin1String(ButtonMimeType)).toInt(), mIndex, copy);
  }
  event->acceptProposedAction();
}

}  // namespace studio
