#include <OrbGraphics/Gui/Graphic.h>

#include <NorvaGlobal/Exceptions.h>

#include <QBuffer>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>

namespace norva {

namespace {

const char* FormatOf(TGraphicClass cls) {
  switch (cls) {
    case TGraphicClass::Bitmap: return "bmp";
    case TGraphicClass::PNG: return "png";
    case TGraphicClass::JPEG: return "jpeg";
    case TGraphicClass::GIF: return "gif";
    case TGraphicClass::None: break;
  }
  return "";
}

}  // namespace

QString GraphicClassName(TGraphicClass cls) {
  switch (cls) {
    case TGraphicClass::Bitmap: return QStringLiteral("TBitmap");
    case TGraphicClass::PNG: return QStringLiteral("TPngImage");
    case TGraphicClass::JPEG: return QStringLiteral("TJPEGImage");
    case TGraphicClass::GIF: return QStringLiteral("TGIFImage");
    case TGraphicClass::None: break;
  }
  return QString();
}

TGraphicClass GraphicClassFromName(QByteArrayView name) {
  const QByteArray lower = name.toByteArray().toLower();
  if (lower == "tbitmap") return TGraphicClass::Bitmap;
  if (lower == "tpngimage" || lower == "tpngobject") return TGraphicClass::PNG;
  if (lower == "tjpegimage") return TGraphicClass::JPEG;
  if (lower == "tgifimage") return TGraphicClass::GIF;
  return TGraphicClass::None;
}

TGraphicClass GraphicClassOfBytes(QByteArrayView bytes) {
  if (bytes.startsWith("\x89PNG\r\n\x1a\n")) return TGraphicClass::PNG;
  if (bytes.startsWith("\xff\xd8\xff")) return TGraphicClass::JPEG;
  if (bytes.startsWith("GIF87a") || bytes.startsWith("GIF89a")) return TGraphicClass::GIF;
  if (bytes.startsWith("BM")) return TGraphicClass::Bitmap;
  return TGraphicClass::None;
}

TGraphicClass GraphicClassOfFile(const QString& path) {
  const QString suffix = QFileInfo(path).suffix().toLower();
  if (suffix == u"bmp") return TGraphicClass::Bitmap;
  if (suffix == u"png") return TGraphicClass::PNG;
  if (suffix == u"jpg" || suffix == u"jpeg") return TGraphicClass::JPEG;
  if (suffix == u"gif") return TGraphicClass::GIF;
  return TGraphicClass::None;
}

bool GraphicClassWritable(TGraphicClass cls) {
  return cls != TGraphicClass::GIF && cls != TGraphicClass::None &&
         QImageWriter::supportedImageFormats().contains(FormatOf(cls));
}

TGraphic::TGraphic(TGraphicClass cls, QImage image) : mClass(cls), mImage(std::move(image)) {}

void TGraphic::SetImage(const QImage& image) {
  mImage = image;
  Change();
}

void TGraphic::SetTransparent(bool transparent) {
  if (transparent == mTransparent) return;
  mTransparent = transparent;
  Change();
}

void TGraphic::LoadFromBytes(const QByteArray& bytes) {
  QBuffer buffer;
  buffer.setData(bytes);
  buffer.open(QIODevice::ReadOnly);
  // The class names the format, but the bytes decide: a picture filed under the wrong class still
  // shows.
  QImageReader reader(&buffer, FormatOf(mClass));
  reader.setDecideFormatFromContent(true);
  QImage image = reader.read();
  if (image.isNull()) {
    throw ENorvaError(QStringLiteral("Cannot read the %1 picture: %2")
                          .arg(GraphicClassName(mClass), reader.errorString()));
  }
  mImage = std::move(image);
  Change();
}

void TGraphic::Assign(const TGraphic& source) {
  mImage = source.mImage;
  mTransparent = source.mTransparent;
  Change();
}

TGraphicClass TGraphic::EncodedClass() const {
  return mClass == TGraphicClass::GIF || mClass == TGraphicClass::None ? TGraphicClass::PNG
                                                                       : mClass;
}

QByteArray TGraphic::SaveToBytes(TGraphicClass format) const {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QImageWriter writer(&buffer, FormatOf(format));
  if (mImage.isNull() || !writer.write(mImage)) {
    throw ENorvaError(QStringLiteral("Cannot write the %1 picture: %2")
                          .arg(GraphicClassName(format), mImage.isNull()
                                                             ? QStringLiteral("it is empty")
                                                             : writer.errorString()));
  }
  return bytes;
}

void TGraphic::Change() {
  if (mOnChange) mOnChange();
}

}  // namespace norva
