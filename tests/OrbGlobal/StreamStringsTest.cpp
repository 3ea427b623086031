#include <OrbGlobal/Model/StreamStrings.h>

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

TEST(SaveStringToStream, WritesTheByteCountThenUtf16LittleEndian) {
  EXPECT_EQ(Saved(QStringLiteral("abc")), QByteArray("\x06\0\0\0a\0b\0c\0", 10));
  EXPECT_EQ(Saved(QString()), QByteArray(4, '\0'));
  EXPECT_EQ(Saved(QStringLiteral("\u20ac")), QByteArray("\x02\0\0\0\xAC\x20", 6));
  QBuffer readOnly;
  readOnly.open(QIODevice::ReadOnly);
  EXPECT_THROW(SaveStringToStream(QStringLiteral("x"), readOnly), ENorvaError);
}

TEST(LoadStringFromStream, ReadsBackEveryCodeUnitInSequence) {
  const QString unusual = QStringLiteral("K\u00fcche ") + QString::fromUcs4(U"\U0001F3B5") +
                          QChar(0xDC00) + QChar(0) + u'!';
  QBuffer buffer;
  buffer.open(QIODevice::ReadWrite);
  buffer.write("head");
  for (const QString& text : {unusual, QString(), QStringLiteral("last")}) {
    SaveStringToStream(text, buffer);
  }
  buffer.seek(4);
  EXPECT_EQ(LoadStringFromStream(buffer), unusual);
  EXPECT_EQ(LoadStringFromStream(buffer), QString());
  EXPECT_EQ(LoadStringFromStream(buffer), QStringLiteral("last"));
  EXPECT_TRUE(buffer.atEnd());
}

TEST(LoadStringFromStream, ShortOddOrAbsurdCountsGiveWhatIsThere) {
  struct {
    QByteArray stored;
    const char* text;
    qint64 end;
  } const cases[] = {
      {QByteArray("\x06\0\0\0a\0b", 7), "a", 7},     // short stream
      {QByteArray("\x03\0\0\0a\0bc\0", 9), "a", 7},  // odd count: half unit dropped
      {QByteArray("\x06\0", 2), "", 2},              // short count
      {QByteArray("\0\0\0\0a\0", 6), "", 4},         // empty
      {QByteArray("\xFE\xFF\xFF\xFF"
                  "a\0",
                  6),
       "", 4},  // negative
      {QByteArray("\0\0\0\x80"
                  "a\0",
                  6),
       "", 4},                                             // most negative
      {QByteArray("\xFF\xFF\xFF\x7Fh\0i\0", 8), "hi", 8},  // absurd: reads only what is there
  };
  for (const auto& c : cases) {
    QBuffer buffer;
    buffer.setData(c.stored);
    buffer.open(QIODevice::ReadOnly);
    EXPECT_EQ(LoadStringFromStream(buffer), QString::fromLatin1(c.text)) << c.stored.toHex().data();
    EXPECT_EQ(buffer.pos(), c.end) << c.stored.toHex().data();
  }
}

}  // namespace
}  // namespace norva
