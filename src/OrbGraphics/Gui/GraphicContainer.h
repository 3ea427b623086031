#pragma once
// One picture inside a document: kept dormant as its encoded bytes and decoded only when needed,
// with its size, class and transparency cached, and written into XML files as one line of text
// (the data string): the class name, "=", the encoded bytes in Base64.
//
// Reading a data string: the class name ends at the first "=" or ":" (neither occurs in a class
// name or in Base64 before its padding). The name picks the class as GraphicClassFromName does;
// a name it does not know, or no name at all (bare Base64), leaves the choice to the signature the
// bytes begin with. Bytes that are no picture are kept as they are and reported when decoded.

#include <OrbGraphics/Gui/Graphic.h>

#include <QIODevice>

#include <memory>
#include <optional>

namespace norva {

class TGraphicContainer {
 public:
  TGraphicContainer() = default;
  TGraphicContainer(const TGraphicContainer&) = delete;
  TGraphicContainer& operator=(const TGraphicContainer&) = delete;

  // A decoded picture or kept bytes.
  bool GetGraphicAssigned() const { return mGraphic || mBytes; }
  // The decoded picture, decoded now if only its bytes are kept; nullptr when empty. Raises
  // ENorvaError when the kept bytes are no picture of a known class (the bytes stay).
  TGraphic* GetGraphic();
  // Drops the picture and its bytes; with `graphic`, keeps a copy of it.
  void SetGraphic(const TGraphic* graphic);
  // Keeps the picture as its encoded bytes only, freeing the decoded one.
  void Dormant();

  TGraphicClass GetGraphicClass();
  int GetWidth();
  int GetHeight();
  bool GetTransparent() const;
  void SetTransparent(bool transparent);

  // By the file's extension; raises ENorvaError for a file that cannot be read or is no picture
  // of that class, and keeps what it had.
  void LoadFromFile(const QString& path);
  // In the format the extension names (.bmp, .png, .jpg or .jpeg), whatever the picture's class.
  // Raises ENorvaError naming the file and the extension, with nothing written, when no format
  // that can be written has that extension (.gif among them); and when there is no picture or it
  // cannot be written.
  void SaveToFile(const QString& path);
  // Keeps the rest of `stream` as the encoded bytes of a `cls` picture, dormant.
  void LoadFromStream(TGraphicClass cls, QIODevice& stream);
  // Writes the decoded picture, encoded in its class's format, to `stream`.
  void SaveToStream(QIODevice& stream);

  // "TPNGObject=" for PNG, the class name and "=" for the others, then Base64; "" when empty.
  QByteArray GetDataString();
  // See the header's note; "" or a name without picture bytes empties the container.
  void SetDataString(const QByteArray& text);

  // Copies between containers (bytes, decoded picture, cached properties) and pictures.
  void Assign(const TGraphicContainer& source);
  void Assign(const TGraphic& source) { SetGraphic(&source); }
  // Copies the picture into `dest` (decoding it if needed); an empty container empties `dest`.
  void AssignTo(TGraphic& dest);

  // With a picture: decodes it if needed and caches width, height, class and transparency.
  void LoadGraphicProperties();

 private:
  // A change made by others through the decoded picture: the kept bytes are stale.
  void Changed();
  void Clear();
  void CacheProperties();
  // The decoded picture; raises ENorvaError when there is none.
  TGraphic& GraphicToSave();
  // Runs `change` on the decoded picture without Changed hearing of it.
  template <typename F>
  void Quietly(F change);

  std::unique_ptr<TGraphic> mGraphic;
  int mWidth = 0;
  int mHeight = 0;
  TGraphicClass mGraphicClass = TGraphicClass::None;
  std::optional<QByteArray> mBytes;
  bool mTransparent = false;
};

}  // namespace norva
