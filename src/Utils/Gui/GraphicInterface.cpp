#include <Utils/Gui/GraphicInterface.h>

#include <QPixmap>

namespace norva {

TGraphicInterface::TGraphicInterface(TDrawHandler draw, TGetWidthHandler width,
                                     TGetHeightHandler height)
    : mDraw(std::move(draw)), mGetWidth(std::move(width)), mGetHeight(std::move(height)) {}

void TGraphicInterface::Draw(QPainter& canvas, const QRect& rect) const {
  if (mDraw) mDraw(canvas, rect);
}

int TGraphicInterface::GetWidth() const { return mGetWidth ? mGetWidth() : mWidth; }

int TGraphicInterface::GetHeight() const { return mGetHeight ? mGetHeight() : mHeight; }

void TGraphicInterface::LoadFromStream(QIODevice& /*stream*/) {}
void TGraphicInterface::SaveToStream(QIODevice& /*stream*/) const {}
void TGraphicInterface::LoadFromClipboard() {}
void TGraphicInterface::SaveToClipboard() const {}

QIcon TGraphicInterface::ToIcon(const QSize& size) const {
  QPixmap pixmap(size);
  pixmap.fill(Qt::transparent);
  {
    QPainter painter(&pixmap);
    Draw(painter, QRect(QPoint(0, 0), size));
  }
  return QIcon(pixmap);
}

}  // namespace norva
