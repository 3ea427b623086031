#include <OrbGlobal/StreamStrings.h>

#include <NorvaGlobal/Exceptions.h>

#include <QBuffer>

#include <gtest/gtest.h>

namespace norva {
namespace {

QByteArray Saved(const QString& text) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  SaveStringToStream(text, buffer);
  return buffer.data();
}

// Reads one string from `bytes` and reports how far the read went.
QString Loaded(const QByteArray& bytes, qint64* position = nullptr) {
  QBuffer buffer;
  buffer.setData(bytes);
  buffer.open(QIODevice::ReadOnly);
  QString text = LoadStringFromStream(buffer);
  if (position) *position = buffer.pos();
  return text;
}

TEST(SaveStringToStream, WritesTheByteCountThenUtf16LittleEndian) {
  EXPECT_EQ(Saved(QStringLiteral("abc")), QByteArray("\x06\0\0\0a\0b\0c\0", 10));
  EXPECT_EQ(Saved(QString()), QByteArray(4, '\0'));
  EXPECT_EQ(Saved(QStringLiteral("\u20ac")), QByteArray("\x02\0\0\0\xAC\x20", 6));
}

TEST(SaveStringToStream, WritesAtTheCurrentPosition) {
  QBuffer buffer;
  buffer.open(QIODevice::ReadWrite);
  buffer.write("head");
  SaveStringToStream(QStringLiteral("x"), buffer);
  EXPECT_EQ(buffer.data(), QByteArray("head\x02\0\0\0x\0", 10));
}

TEST(SaveStringToStream, RaisesWhenTheStreamRefusesTheBytes) {
  QBuffer readOnly;
  readOnly.open(QIODevice::ReadOnly);
  EXPECT_THROW(SaveStringToStream(QStringLiteral("x"), readOnly), ENorvaError);
}

TEST(LoadStringFromStream, ReadsBackEveryCodeUnitInSequence) {
  const QString unusual = QStringLiteral("K\u00fcche ") + QString::fromUcs4(U"\U0001F3B5") +
                          QChar(0xDC00) + QChar(0) + u'!';
  QBuffer buffer;
  buffer.open(QIODevice::ReadWrite);
  SaveStringToStream(unusual, buffer);
  SaveStringToStream(QString(), buffer);
  SaveStringToStream(QStringLiteral("last"), buffer);
  buffer.seek(0);
  EXPECT_EQ(LoadStringFromStream(buffer), unusual);
  EXPECT_EQ(LoadStringFromStream(buffer), QString());
  EXPECT_EQ(LoadStringFromStream(buffer), QStringLiteral("last"));
  EXPECT_TRUE(buffer.atEnd());
}

TEST(LoadStringFromStream, ShortStreamsGiveWhatIsThere) {
  qint64 position = 0;
  EXPECT_EQ(Loaded(QByteArray("\x06\0\0\0a\0b", 7), &position), QStringLiteral("a"));
  EXPECT_EQ(position, 7);
  EXPECT_EQ(Loaded(QByteArray("\x06\0", 2)), QString());
  EXPECT_EQ(Loaded(QByteArray()), QString());
}

TEST(LoadStringFromStream, OddCountDropsTheHalfCodeUnit) {
  qint64 position = 0;
  EXPECT_EQ(Loaded(QByteArray("\x03\0\0\0a\0bc\0", 9), &position), QStringLiteral("a"));
  EXPECT_EQ(position, 7) << "the count's bytes are consumed, the next field starts after them";
}

TEST(LoadStringFromStream, ZeroNegativeAndAbsurdCountsAreHarmless) {
  qint64 position = 0;
  EXPECT_EQ(Loaded(QByteArray("\0\0\0\0a\0", 6), &position), QString());
  EXPECT_EQ(position, 4);
  EXPECT_EQ(Loaded(QByteArray("\xFE\xFF\xFF\xFF"
                              "a\0",
                              6)),
            QString());
  EXPECT_EQ(Loaded(QByteArray("\x00\x00\x00\x80"
                              "a\0",
                              6)),
            QString());
  EXPECT_EQ(Loaded(QByteArray("\xFF\xFF\xFF\x7Fh\0i\0", 8)), QStringLiteral("hi"));
}

}  // namespace
}  // namespace norva
