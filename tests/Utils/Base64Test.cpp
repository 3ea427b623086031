#include <Utils/Base64.h>

#include <NorvaGlobal/Exceptions.h>

#include <QBuffer>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <algorithm>

namespace norva {
namespace {

// A sequential device that hands out at most a few bytes per read, as pipes and sockets do.
class TTrickleDevice : public QIODevice {
 public:
  TTrickleDevice(QByteArray bytes, qint64 step) : mBytes(std::move(bytes)), mStep(step) {
    open(QIODevice::ReadOnly);
  }
  bool isSequential() const override { return true; }

 protected:
  qint64 readData(char* data, qint64 maxSize) override {
    const qint64 count = std::min({maxSize, mStep, qint64(mBytes.size()) - mAt});
    std::copy_n(mBytes.constData() + mAt, count, data);
    mAt += count;
    return count;
  }
  qint64 writeData(const char*, qint64) override { return -1; }

 private:
  QByteArray mBytes;
  qint64 mStep;
  qint64 mAt = 0;
};

QByteArray Encoded(const QByteArray& bytes) {
  QBuffer in;
  in.setData(bytes);
  in.open(QIODevice::ReadOnly);
  QByteArray text = "previous content is replaced";
  Base64Encode(in, text);
  return text;
}

QByteArray EncodedToStream(QIODevice& in) {
  QBuffer out;
  out.open(QIODevice::WriteOnly);
  Base64Encode(in, out);
  return out.data();
}

QByteArray Decoded(const QByteArray& text) {
  QBuffer out;
  out.open(QIODevice::WriteOnly);
  Base64Decode(text, out);
  return out.data();
}

QByteArray DecodedFromStream(QIODevice& in) {
  QBuffer out;
  out.open(QIODevice::WriteOnly);
  Base64Decode(in, out);
  return out.data();
}

QByteArray RandomBytes(qsizetype size) {
  QByteArray bytes(size, Qt::Uninitialized);
  QRandomGenerator generator(42);
  for (char& byte : bytes) byte = static_cast<char>(generator.bounded(256));
  return bytes;
}

TEST(Base64Encode, MatchesTheStandardVectors) {
  EXPECT_EQ(Encoded("Man"), "TWFu");
  EXPECT_EQ(Encoded("M"), "TQ==");
  EXPECT_EQ(Encoded(""), "");
  EXPECT_EQ(Encoded("f"), "Zg==");
  EXPECT_EQ(Encoded("fo"), "Zm8=");
  EXPECT_EQ(Encoded("foo"), "Zm9v");
  EXPECT_EQ(Encoded("foob"), "Zm9vYg==");
  EXPECT_EQ(Encoded("fooba"), "Zm9vYmE=");
  EXPECT_EQ(Encoded("foobar"), "Zm9vYmFy");
  EXPECT_EQ(Encoded(QByteArray("\xFB\xFF\xBF", 3)), "+/+/");
}

TEST(Base64Encode, ReadsFromTheCurrentPosition) {
  QBuffer in;
  in.setData("skipMan");
  in.open(QIODevice::ReadOnly);
  in.seek(4);
  EXPECT_EQ(EncodedToStream(in), "TWFu");
}

TEST(Base64Encode, StreamAndTextFormsAgreeAcrossChunkBoundaries) {
  for (qsizetype size : {qsizetype(49151), qsizetype(49152), qsizetype(100001)}) {
    const QByteArray bytes = RandomBytes(size);
    QBuffer in;
    in.setData(bytes);
    in.open(QIODevice::ReadOnly);
    const QByteArray text = EncodedToStream(in);
    EXPECT_EQ(text, Encoded(bytes)) << size;
    EXPECT_EQ(text, bytes.toBase64()) << size;
  }
}

TEST(Base64Encode, HoldsBackPartialGroupsBetweenShortReads) {
  const QByteArray bytes = RandomBytes(1000);
  for (qint64 step : {1, 2, 4, 5, 7}) {
    TTrickleDevice in(bytes, step);
    EXPECT_EQ(EncodedToStream(in), bytes.toBase64()) << step;
  }
}

TEST(Base64Decode, ReversesEncodingOfEveryByteValue) {
  QByteArray bytes;
  for (int value = 0; value < 256; ++value) bytes.append(static_cast<char>(value));
  for (qsizetype length = 0; length <= bytes.size(); length += 37) {
    EXPECT_EQ(Decoded(Encoded(bytes.left(length))), bytes.left(length)) << length;
  }
}

TEST(Base64Decode, StreamFormCarriesBitsAcrossShortReads) {
  const QByteArray bytes = RandomBytes(70000);
  const QByteArray text = bytes.toBase64();
  for (qint64 step : {1, 3, 5, 65536}) {
    TTrickleDevice in(text, step);
    EXPECT_EQ(DecodedFromStream(in), bytes) << step;
  }
}

TEST(Base64Decode, SkipsCharactersOutsideTheAlphabet) {
  EXPECT_EQ(Decoded("TW\r\nFu"), "Man");
  EXPECT_EQ(Decoded(" T W F u \t"), "Man");
  EXPECT_EQ(Decoded("T-W_F*u\xC3\xA4"), "Man");
  EXPECT_EQ(Decoded("Zm9v\r\nYmFy\r\n"), "foobar");
}

TEST(Base64Decode, TheFirstPaddingSignEndsTheData) {
  EXPECT_EQ(Decoded("TQ==TWFu"), "M");
  EXPECT_EQ(Decoded("TWE=garbage"), "Ma");
  EXPECT_EQ(Decoded("=TWFu"), "");
}

TEST(Base64Decode, IncompleteLastGroupsGiveWhatBytesTheyCan) {
  EXPECT_EQ(Decoded("TQ"), "M") << "padding is optional";
  EXPECT_EQ(Decoded("TWE"), "Ma");
  EXPECT_EQ(Decoded("TWFuT"), "Man") << "a lone sextet cannot make a byte";
  EXPECT_EQ(Decoded("T"), "");
  EXPECT_EQ(Decoded("TR=="), "M") << "unused low bits are ignored";
}

TEST(Base64, RaisesWhenTheOutputRefusesBytes) {
  QBuffer in;
  in.setData("Man");
  in.open(QIODevice::ReadOnly);
  QBuffer readOnly;
  readOnly.open(QIODevice::ReadOnly);
  EXPECT_THROW(Base64Encode(in, readOnly), ENorvaError);
  EXPECT_THROW(Base64Decode(QByteArray("TWFu"), readOnly), ENorvaError);
}

}  // namespace
}  // namespace norva
