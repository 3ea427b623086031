#include <OrbGraphics/Gui/GraphicContainer.h>

#include <NorvaGlobal/Exceptions.h>
#include <Utils/Base64.h>

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace norva {

namespace {

QByteArray Base64Of(const QByteArray& bytes) {
  QBuffer in;
  in.setData(bytes);
  in.open(QIODevice::ReadOnly);
  QByteArray text;
  Base64Encode(in, text);
  return text;
}

QByteArray BytesOfBase64(const QByteArray& text) {
  QByteArray bytes;
  QBuffer out(&bytes);
  out.open(QIODevice::WriteOnly);
  Base64Decode(text, out);
  return bytes;
}

}  // namespace

template <typename F>
void TGraphicContainer::Quietly(F change) {
  mGraphic->SetOnChange(nullptr);
  try {
    change(*mGraphic);
  } catch (...) {
    mGraphic->SetOnChange([this] { Changed(); });
    throw;
  }
  mGraphic->SetOnChange([this] { Changed(); });
}

TGraphic* TGraphicContainer::GetGraphic() {
  if (mGraphic || !mBytes) return mGraphic.get();
  auto graphic = std::make_unique<TGraphic>(mGraphicClass);
  graphic->LoadFromBytes(*mBytes);
  graphic->SetTransparent(mTransparent);
  mGraphic = std::move(graphic);
  CacheProperties();
  mGraphic->SetOnChange([this] { Changed(); });
  return mGraphic.get();
}

void TGraphicContainer::SetGraphic(const TGraphic* graphic) {
  Clear();
  if (!graphic) return;
  mGraphic = std::make_unique<TGraphic>(graphic->GetClass());
  mGraphic->Assign(*graphic);
  CacheProperties();
  mGraphic->SetOnChange([this] { Changed(); });
}

void TGraphicContainer::Dormant() {
  if (!mGraphic) return;
  CacheProperties();
  if (!mBytes) {
    mBytes = mGraphic->SaveToBytes();
    mGraphicClass = mGraphic->EncodedClass();
  }
  mGraphic.reset();
}

TGraphicClass TGraphicContainer::GetGraphicClass() {
  if (mGraphicClass == TGraphicClass::None) LoadGraphicProperties();
  return mGraphicClass;
}

int TGraphicContainer::GetWidth() {
  if (mWidth < 1) LoadGraphicProperties();
  return mWidth;
}

int TGraphicContainer::GetHeight() {
  if (mHeight < 1) LoadGraphicProperties();
  return mHeight;
}

bool TGraphicContainer::GetTransparent() const {
  return mGraphic ? mGraphic->GetTransparent() : mTransparent;
}

void TGraphicContainer::SetTransparent(bool transparent) {
  mTransparent = transparent;
  if (mGraphic) Quietly([transparent](TGraphic& graphic) { graphic.SetTransparent(transparent); });
}

void TGraphicContainer::LoadFromFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    throw ENorvaError(QStringLiteral("Cannot read %1: %2").arg(path, file.errorString()));
  }
  TGraphicClass cls = GraphicClassOfFile(path);
  const QByteArray bytes = file.readAll();
  if (cls == TGraphicClass::None) cls = GraphicClassOfBytes(bytes);
  auto graphic = std::make_unique<TGraphic>(cls);
  try {
    graphic->LoadFromBytes(bytes);
  } catch (const ENorvaError& error) {
    throw ENorvaError(error.Message() + QStringLiteral(" in ") + path);
  }
  Clear();
  mGraphic = std::move(graphic);
  mBytes = bytes;
  CacheProperties();
  mGraphic->SetOnChange([this] { Changed(); });
}

void TGraphicContainer::SaveToFile(const QString& path) {
  const TGraphicClass format = GraphicClassOfFile(path);
  if (!GraphicClassWritable(format)) {
    const QString suffix = QFileInfo(path).suffix();
    throw ENorvaError(suffix.isEmpty()
                          ? QStringLiteral("Cannot save %1: a picture file needs an extension "
                                           "naming its format")
                                .arg(path)
                          : QStringLiteral("Cannot save %1: pictures cannot be written as .%2")
                                .arg(path, suffix));
  }
  const QByteArray bytes = GraphicToSave().SaveToBytes(format);
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
    throw ENorvaError(QStringLiteral("Cannot write %1: %2").arg(path, file.errorString()));
  }
}

void TGraphicContainer::LoadFromStream(TGraphicClass cls, QIODevice& stream) {
  Clear();
  mGraphicClass = cls;
  mBytes = stream.readAll();
}

void TGraphicContainer::SaveToStream(QIODevice& stream) {
  const QByteArray bytes = GraphicToSave().SaveToBytes();
  if (stream.write(bytes) != bytes.size()) {
    throw ENorvaError(QStringLiteral("Cannot write the picture: ") + stream.errorString());
  }
}

QByteArray TGraphicContainer::GetDataString() {
  TGraphicClass cls = mGraphicClass;
  QByteArray bytes;
  if (mBytes) {
    bytes = *mBytes;
  } else if (mGraphic) {
    bytes = mGraphic->SaveToBytes();
    cls = mGraphic->EncodedClass();
  }
  const QByteArray text = Base64Of(bytes);
  if (text.isEmpty()) return QByteArray();
  if (cls == TGraphicClass::PNG) return "TPNGObject=" + text;
  return GraphicClassName(cls).toLatin1() + '=' + text;
}

void TGraphicContainer::SetDataString(const QByteArray& text) {
  Clear();
  if (text.isEmpty()) return;
  qsizetype separator = -1;
  for (qsizetype i = 0; i < text.size() && separator < 0; ++i) {
    if (text[i] == '=' || text[i] == ':') separator = i;
  }
  const QByteArray base64 = separator < 0 ? text : text.mid(separator + 1);
  QByteArray bytes = BytesOfBase64(base64);
  if (bytes.isEmpty()) return;  // a name and no picture: as empty as no text at all
  mBytes = std::move(bytes);
  mGraphicClass = separator < 0 ? TGraphicClass::None : GraphicClassFromName(text.left(separator));
  if (mGraphicClass == TGraphicClass::None) mGraphicClass = GraphicClassOfBytes(*mBytes);
}

void TGraphicContainer::Assign(const TGraphicContainer& source) {
  if (&source == this) return;
  Clear();
  mWidth = source.mWidth;
  mHeight = source.mHeight;
  mGraphicClass = source.mGraphicClass;
  mBytes = source.mBytes;
  mTransparent = source.mTransparent;
  if (source.mGraphic) {
    mGraphic = std::make_unique<TGraphic>(source.mGraphic->GetClass());
    mGraphic->Assign(*source.mGraphic);
    mGraphic->SetOnChange([this] { Changed(); });
  }
}

void TGraphicContainer::AssignTo(TGraphic& dest) {
  const TGraphic* graphic = GetGraphic();
  if (graphic) {
    dest.Assign(*graphic);
  } else {
    dest.SetTransparent(false);
    dest.SetImage(QImage());
  }
}

void TGraphicContainer::LoadGraphicProperties() {
  if (GetGraphicAssigned() && GetGraphic()) CacheProperties();
}

void TGraphicContainer::Changed() {
  mWidth = 0;
  mHeight = 0;
  mGraphicClass = TGraphicClass::None;
  mTransparent = false;
  mBytes.reset();
  CacheProperties();
}

void TGraphicContainer::Clear() {
  mGraphic.reset();
  mBytes.reset();
  mWidth = 0;
  mHeight = 0;
  mGraphicClass = TGraphicClass::None;
  mTransparent = false;
}

TGraphic& TGraphicContainer::GraphicToSave() {
  TGraphic* graphic = GetGraphic();
  if (!graphic) throw ENorvaError(QStringLiteral("There is no picture to save"));
  return *graphic;
}

void TGraphicContainer::CacheProperties() {
  if (!mGraphic) return;
  mWidth = mGraphic->GetWidth();
  mHeight = mGraphic->GetHeight();
  mGraphicClass = mGraphic->GetClass();
  mTransparent = mGraphic->GetTransparent();
}

}  // namespace norva
