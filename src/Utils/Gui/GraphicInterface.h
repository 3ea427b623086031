#pragma once
// A graphic whose drawing and size come from handlers: menu items and dock captions show pictures
// that are painted on demand (a zone's colour, a device's state) instead of stored. It holds no
// picture data, so reading and writing it through streams or the clipboard does nothing.

#include <QIcon>
#include <QPainter>
#include <QRect>

#include <functional>

class QIODevice;

namespace norva {

using TDrawHandler = std::function<void(QPainter& canvas, const QRect& rect)>;
using TGetWidthHandler = std::function<int()>;
using TGetHeightHandler = std::function<int()>;

class TGraphicInterface {
 public:
  TGraphicInterface() = default;
  TGraphicInterface(TDrawHandler draw, TGetWidthHandler width, TGetHeightHandler height);

  // Draws through the handler; nothing without one.
  void Draw(QPainter& canvas, const QRect& rect) const;
  // From the handlers; without one, the size last set (0 at first).
  int GetWidth() const;
  int GetHeight() const;
  void SetWidth(int width) { mWidth = width; }
  void SetHeight(int height) { mHeight = height; }
  // True without a draw handler.
  bool GetEmpty() const { return !mDraw; }
  // Takes over the handlers and the set size.
  void Assign(const TGraphicInterface& source) { *this = source; }

  // No picture data to read or write: these leave stream, clipboard and graphic as they are.
  void LoadFromStream(QIODevice& stream);
  void SaveToStream(QIODevice& stream) const;
  void LoadFromClipboard();
  void SaveToClipboard() const;

  // The drawing as an icon of `size` pixels (transparent where nothing is drawn), for menus.
  QIcon ToIcon(const QSize& size) const;

 private:
  TDrawHandler mDraw;
  TGetWidthHandler mGetWidth;
  TGetHeightHandler mGetHeight;
  int mWidth = 0;
  int mHeight = 0;
};

}  // namespace norva
