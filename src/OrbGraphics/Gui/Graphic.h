#pragma once
// A decoded picture of one of the classes the application stores (bitmap, PNG, JPEG, GIF) on
// Qt's QImage, with the transparency flag it is drawn with and a handler told of every change
// made through it.

#include <QByteArray>
#include <QByteArrayView>
#include <QImage>
#include <QString>

#include <cstdint>
#include <functional>

namespace norva {

enum class TGraphicClass : std::uint8_t { None, Bitmap, PNG, JPEG, GIF };

// "TBitmap", "TPngImage", "TJPEGImage", "TGIFImage"; "" for None.
QString GraphicClassName(TGraphicClass cls);
// By the lower-cased name: "tbitmap", "tpngimage" or "tpngobject", "tjpegimage", "tgifimage";
// None for any other.
TGraphicClass GraphicClassFromName(QByteArrayView name);
// By the signature the encoded bytes begin with; None when they carry none of the four.
TGraphicClass GraphicClassOfBytes(QByteArrayView bytes);
// By the file name's extension (.bmp, .png, .jpg or .jpeg, .gif, any case); None for others.
TGraphicClass GraphicClassOfFile(const QString& path);
// Whether pictures can be encoded in the format of `cls`: not GIF, which Qt reads but cannot
// write, nor None, nor a format whose image plugin is missing.
bool GraphicClassWritable(TGraphicClass cls);

class TGraphic {
 public:
  explicit TGraphic(TGraphicClass cls, QImage image = QImage());

  TGraphicClass GetClass() const { return mClass; }
  const QImage& GetImage() const { return mImage; }
  int GetWidth() const { return mImage.width(); }
  int GetHeight() const { return mImage.height(); }
  bool GetEmpty() const { return mImage.isNull(); }
  bool GetTransparent() const { return mTransparent; }

  // Changes, each told to the change handler.
  void SetImage(const QImage& image);
  void SetTransparent(bool transparent);
  // Decodes `bytes` (whatever of the four formats they hold); raises ENorvaError naming the class
  // and the reason when they are no picture, and then nothing changed.
  void LoadFromBytes(const QByteArray& bytes);
  // Copies picture and transparency from `source`; the class stays.
  void Assign(const TGraphic& source);

  // The class the picture is written in: its own, except GIF, which Qt reads but cannot write, and
  // a picture of no class, both written as PNG.
  TGraphicClass EncodedClass() const;
  // The picture encoded in EncodedClass's format; raises ENorvaError when it cannot be.
  QByteArray SaveToBytes() const { return SaveToBytes(EncodedClass()); }
  // The picture encoded in the format of `format`, whatever its own class; raises ENorvaError
  // when it cannot be (an empty picture, a format that is not GraphicClassWritable).
  QByteArray SaveToBytes(TGraphicClass format) const;

  void SetOnChange(std::function<void()> handler) { mOnChange = std::move(handler); }
  const std::function<void()>& GetOnChange() const { return mOnChange; }

 private:
  void Change();

  TGraphicClass mClass;
  QImage mImage;
  bool mTransparent = false;
  std::function<void()> mOnChange;
};

}  // namespace norva
