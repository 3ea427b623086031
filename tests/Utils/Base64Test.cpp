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

QByteArray Decoded(const QByteArray& text) {
  QBuffer out;
  out.open(QIODevice::WriteOnly);
  Base64Decode(text, out);
  return out.data();
}

// Runs one stream operation from `in` into a buffer.
template <typename Operation>
QByteArray Streamed(Operation operation, QIODevice& in) {
  QBuffer out;
  out.open(QIODevice::WriteOnly);
  operation(in, out);
  return out.data();
}

const auto EncodeStream = [](QIODevice& in, QIODevice& out) { Base64Encode(in, out); };
const auto DecodeStream = [](QIODevice& in, QIODevice& out) { Base64Decode(in, out); };

TEST(Base64Encode, MatchesTheStandardVectorsFromTheCurrentPosition) {
  EXPECT_EQ(Encoded("Man"), "TWFu");
  EXPECT_EQ(Encoded("M"), "TQ==");
  EXPECT_EQ(Encoded(""), "");
  EXPECT_EQ(Encoded("fooba"), "Zm9vYmE=");
  EXPECT_EQ(Encoded(QByteArray("\xFB\xFF\xBF", 3)), "+/+/");
  QBuffer in;
  in.setData("skipMan");
  in.open(QIODevice::ReadOnly);
  in.seek(4);
  EXPECT_EQ(Streamed(EncodeStream, in), "TWFu");
}

TEST(Base64, StreamsAgreeWithTheTextFormWhateverTheReadSizes) {
  // Sizes around the 48 KiB chunk, and devices that hand out a few bytes per read, exercise the
  // bytes and bits carried from one read to the next.
  QRandomGenerator generator(42);
  for (qsizetype size : {qsizetype(1000), qsizetype(49151), qsizetype(100001)}) {
    QByteArray bytes(size, Qt::Uninitialized);
    for (char& byte : bytes) byte = static_cast<char>(generator.bounded(256));
    const QByteArray text = bytes.toBase64();
    EXPECT_EQ(Encoded(bytes), text) << size;
    EXPECT_EQ(Decoded(text), bytes) << size;
    for (qint64 step : {qint64(1), qint64(5), qint64(65536)}) {
      if (size > 1000 && step < 5) continue;
      TTrickleDevice plain(bytes, step);
      EXPECT_EQ(Streamed(EncodeStream, plain), text) << size << " by " << step;
      TTrickleDevice encoded(text, step);
      EXPECT_EQ(Streamed(DecodeStream, encoded), bytes) << size << " by " << step;
    }
  }
}

// Foreign characters are skipped, padding ends the text, and an incomplete last group gives what
// bytes it can.
TEST(Base64Decode, SkipsForeignCharactersStopsAtPaddingAndReadsIncompleteGroups) {
  EXPECT_EQ(Decoded(" T W\r\nF u \t"), "Man");
  EXPECT_EQ(Decoded("T-W_F*u\xC3\xA4"), "Man");
  EXPECT_EQ(Decoded("TQ==TWFu"), "M");
  EXPECT_EQ(Decoded("=TWFu"), "");
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
