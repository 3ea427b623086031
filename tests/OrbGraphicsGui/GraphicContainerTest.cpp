// Pictures kept in documents: data strings of every class written and read back, pictures that
// stay dormant until needed, the rule that only changes by others make the kept bytes stale, the
// names a data string may carry, damaged pictures, and files.

#include <NorvaGlobal/Exceptions.h>
#include <OrbGraphics/OrbGraphics.h>
#include <support/QtPrinters.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace norva {
namespace {

// A small picture with a different colour in every pixel, so that any mix-up shows.
QImage Sample(int width = 7, int height = 5) {
  QImage image(width, height, QImage::Format_RGB32);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) image.setPixel(x, y, qRgb(x * 30, y * 50, 255 - x * y));
  return image;
}

bool SamePixels(const QImage& a, const QImage& b) {
  return a.convertToFormat(QImage::Format_RGB32) == b.convertToFormat(QImage::Format_RGB32);
}

// The smallest GIF: one pixel. Qt reads GIF but cannot write it.
const QByteArray OnePixelGif =
    QByteArray::fromBase64("R0lGODlhAQABAIAAAAAAAP///yH5BAEAAAAALAAAAAABAAEAAAIBRAA7");

TEST(GraphicContainer, DataStringsOfEveryClassReadBackAsTheSamePicture) {
  const struct {
    TGraphicClass Class;
    const char* Prefix;
    bool Lossless;
  } cases[] = {
      {TGraphicClass::Bitmap, "TBitmap=", true},
      {TGraphicClass::PNG, "TPNGObject=", true},  // whatever the class is called
      {TGraphicClass::JPEG, "TJPEGImage=", false},
  };
  for (const auto& c : cases) {
    const TGraphic picture(c.Class, Sample());
    TGraphicContainer written;
    written.SetGraphic(&picture);
    const QByteArray text = written.GetDataString();
    ASSERT_TRUE(text.startsWith(c.Prefix)) << text.left(20).constData();

    TGraphicContainer read;
    read.SetDataString(text);
    EXPECT_TRUE(read.GetGraphicAssigned());
    EXPECT_EQ(read.GetWidth(), 7) << c.Prefix;  // decoded on demand
    EXPECT_EQ(read.GetHeight(), 5) << c.Prefix;
    EXPECT_EQ(read.GetGraphicClass(), c.Class) << c.Prefix;
    if (c.Lossless) {
      EXPECT_TRUE(SamePixels(read.GetGraphic()->GetImage(), Sample())) << c.Prefix;
    }
    EXPECT_EQ(read.GetDataString(), text) << "the kept bytes are written as they were read";

    // Dormant and woken again: the same picture and the same text.
    const QImage decoded = read.GetGraphic()->GetImage();
    read.Dormant();
    EXPECT_EQ(read.GetWidth(), 7);
    EXPECT_EQ(read.GetDataString(), text);
    EXPECT_EQ(read.GetGraphic()->GetImage(), decoded);
  }
  TGraphicContainer empty;
  EXPECT_EQ(empty.GetDataString(), QByteArray());
  EXPECT_EQ(empty.GetGraphic(), nullptr);
  EXPECT_EQ(empty.GetWidth(), 0);
}

TEST(GraphicContainer, OnlyChangesByOthersMakeTheKeptBytesStale) {
  TGraphicContainer container;
  container.SetDataString("TGIFImage=" + OnePixelGif.toBase64());
  const QByteArray text = container.GetDataString();
  TGraphic* picture = container.GetGraphic();
  ASSERT_NE(picture, nullptr);
  EXPECT_EQ(picture->GetClass(), TGraphicClass::GIF);

  // The container's own change keeps the bytes; and the flag reaches the picture.
  container.SetTransparent(true);
  EXPECT_TRUE(picture->GetTransparent());
  EXPECT_EQ(container.GetDataString(), text);

  // A change through the picture: sizes recached, bytes dropped, the GIF now written as PNG.
  picture->SetImage(Sample(3, 2));
  EXPECT_EQ(container.GetWidth(), 3);
  EXPECT_EQ(container.GetHeight(), 2);
  const QByteArray changed = container.GetDataString();
  EXPECT_TRUE(changed.startsWith("TPNGObject=")) << changed.left(20).constData();
  TGraphicContainer read;
  read.SetDataString(changed);
  EXPECT_TRUE(SamePixels(read.GetGraphic()->GetImage(), Sample(3, 2)));
}

TEST(GraphicContainer, DataStringNamesPickTheClassAndTheBytesSettleTheRest) {
  const TGraphic png(TGraphicClass::PNG, Sample());
  TGraphicContainer source;
  source.SetGraphic(&png);
  const QByteArray base64 = source.GetDataString().mid(qsizetype(sizeof("TPNGObject")));
  const struct {
    QByteArray Text;
    TGraphicClass Class;
  } cases[] = {
      {"tpngimage=" + base64, TGraphicClass::PNG},
      {"TPNGOBJECT=" + base64, TGraphicClass::PNG},
      {"TPngImage:" + base64, TGraphicClass::PNG},
      {base64, TGraphicClass::PNG},                 // no name: the signature decides
      {"TMetafile=" + base64, TGraphicClass::PNG},  // unknown name: likewise
      {"TBitmap=" + base64,
       TGraphicClass::Bitmap},  // a wrong name: the class stays, it still shows
  };
  for (const auto& c : cases) {
    TGraphicContainer read;
    read.SetDataString(c.Text);
    EXPECT_EQ(read.GetGraphicClass(), c.Class) << c.Text.left(12).constData();
    EXPECT_EQ(read.GetWidth(), 7) << c.Text.left(12).constData();
  }
}

TEST(GraphicContainer, ADamagedPictureIsReportedAndKept) {
  for (const QByteArray& text : {QByteArray("TPNGObject=AAAA"), QByteArray("TJPEGImage=/9j/"),
                                 "TGIFImage=" + OnePixelGif.left(20).toBase64()}) {
    TGraphicContainer container;
    container.SetDataString(text);
    EXPECT_THROW(container.GetGraphic(), ENorvaError) << text.constData();
    EXPECT_THROW(container.GetWidth(), ENorvaError) << text.constData();
    EXPECT_TRUE(container.GetGraphicAssigned());
    EXPECT_EQ(container.GetDataString(), text) << "kept as it came";
  }
  TGraphicContainer nameOnly;
  nameOnly.SetDataString("TBitmap=");
  EXPECT_FALSE(nameOnly.GetGraphicAssigned());
  EXPECT_EQ(nameOnly.GetGraphic(), nullptr);
}

TEST(GraphicContainer, FilesStreamsAndCopies) {
  QTemporaryDir folder;
  ASSERT_TRUE(folder.isValid());
  const TGraphic bitmap(TGraphicClass::Bitmap, Sample());
  TGraphicContainer container;
  container.SetGraphic(&bitmap);
  container.SaveToFile(folder.filePath("sample.png"));

  TGraphicContainer loaded;
  loaded.LoadFromFile(folder.filePath("sample.png"));
  EXPECT_EQ(loaded.GetGraphicClass(), TGraphicClass::PNG) << "the extension decides";
  EXPECT_TRUE(SamePixels(loaded.GetGraphic()->GetImage(), Sample()));
  EXPECT_TRUE(loaded.GetDataString().startsWith("TPNGObject="));

  // A file that is missing or no picture: reported, and the container keeps what it had.
  QFile text(folder.filePath("notes.png"));
  ASSERT_TRUE(text.open(QIODevice::WriteOnly));
  text.write("not a picture");
  text.close();
  for (const QString& bad : {folder.filePath("missing.png"), folder.filePath("notes.png")}) {
    EXPECT_THROW(loaded.LoadFromFile(bad), ENorvaError);
    EXPECT_EQ(loaded.GetWidth(), 7);
  }

  // A stream is kept dormant as it is; saving one writes the decoded picture in its format.
  QFile file(folder.filePath("sample.png"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  TGraphicContainer streamed;
  streamed.LoadFromStream(TGraphicClass::PNG, file);
  QByteArray saved;
  QBuffer out(&saved);
  out.open(QIODevice::WriteOnly);
  streamed.SaveToStream(out);
  EXPECT_TRUE(saved.startsWith("\x89PNG"));

  TGraphicContainer copy;
  copy.Assign(loaded);
  EXPECT_EQ(copy.GetDataString(), loaded.GetDataString());
  TGraphic target(TGraphicClass::PNG);
  copy.AssignTo(target);
  EXPECT_TRUE(SamePixels(target.GetImage(), Sample()));
  TGraphicContainer().AssignTo(target);
  EXPECT_TRUE(target.GetEmpty());
}

// The extension names the format written, whatever the picture's class; one no writer has is
// refused before anything is written.
TEST(GraphicContainer, SavedFilesAreInTheFormatTheirExtensionNames) {
  QTemporaryDir folder;
  ASSERT_TRUE(folder.isValid());
  const struct {
    TGraphicClass Class;
    const char* Name;
    TGraphicClass Written;
  } saved[] = {
      {TGraphicClass::PNG, "png.bmp", TGraphicClass::Bitmap},
      {TGraphicClass::PNG, "png.JPG", TGraphicClass::JPEG},
      {TGraphicClass::PNG, "png.jpeg", TGraphicClass::JPEG},
      {TGraphicClass::Bitmap, "bitmap.png", TGraphicClass::PNG},
      {TGraphicClass::JPEG, "jpeg.Bmp", TGraphicClass::Bitmap},
  };
  for (const auto& c : saved) {
    const TGraphic picture(c.Class, Sample());
    TGraphicContainer container;
    container.SetGraphic(&picture);
    const QString path = folder.filePath(c.Name);
    container.SaveToFile(path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << c.Name;
    EXPECT_EQ(GraphicClassOfBytes(file.readAll()), c.Written) << c.Name;
    TGraphicContainer loaded;
    loaded.LoadFromFile(path);
    EXPECT_EQ(loaded.GetWidth(), 7) << c.Name;
  }

  const TGraphic picture(TGraphicClass::PNG, Sample());
  TGraphicContainer container;
  container.SetGraphic(&picture);
  const QStringList before = QDir(folder.path()).entryList(QDir::Files);
  for (const char* name : {"notes.txt", "moving.gif", "no-extension"}) {
    const QString path = folder.filePath(name);
    try {
      container.SaveToFile(path);
      ADD_FAILURE() << name << ": saved";
    } catch (const ENorvaError& error) {
      EXPECT_TRUE(error.Message().contains(path)) << error.what();
      const QString suffix = QFileInfo(path).suffix();
      if (!suffix.isEmpty()) {
        EXPECT_TRUE(error.Message().contains(suffix)) << error.what();
      }
    }
  }
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), before) << "nothing written";
}

}  // namespace
}  // namespace norva
