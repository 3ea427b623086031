#include <Utils/Base64.h>

#include <NorvaGlobal/Exceptions.h>

#include <algorithm>
#include <array>

namespace norva {

namespace {

constexpr char Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char Padding = '=';
constexpr qsizetype ChunkSize = qsizetype{48} * 1024;  // a multiple of 3: whole groups per chunk
constexpr signed char NotInAlphabet = -1;

constexpr std::array<signed char, 256> MakeSextetTable() {
  std::array<signed char, 256> table{};
  table.fill(NotInAlphabet);
  for (int i = 0; i < 64; ++i)
    table[static_cast<unsigned char>(Alphabet[i])] = static_cast<signed char>(i);
  return table;
}

constexpr std::array<signed char, 256> SextetOf = MakeSextetTable();

void WriteAll(QIODevice& out, const QByteArray& bytes) {
  if (bytes.isEmpty()) return;
  if (out.write(bytes) != bytes.size()) throw ENorvaError(QStringLiteral("Stream write error"));
}

// Calls consume(data, size) for the rest of `in`, chunk by chunk.
template <typename Consume>
void ForEachChunk(QIODevice& in, Consume consume) {
  QByteArray buffer(ChunkSize, Qt::Uninitialized);
  for (;;) {
    const qint64 got = in.read(buffer.data(), ChunkSize);
    if (got <= 0) return;
    consume(buffer.constData(), static_cast<qsizetype>(got));
  }
}

template <typename Consume>
void ForEachChunk(const QByteArray& bytes, Consume consume) {
  for (qsizetype at = 0; at < bytes.size(); at += ChunkSize) {
    consume(bytes.constData() + at, std::min(ChunkSize, bytes.size() - at));
  }
}

// Encodes a byte stream fed in pieces of any size, holding back up to two bytes between pieces.
class TBase64Encoder {
 public:
  // Appends the characters of every complete group to `text`.
  void Feed(const char* data, qsizetype size, QByteArray& text) {
    const qsizetype groups = (mHeldCount + size) / 3;
    const qsizetype start = text.size();
    text.resize(start + groups * 4);
    char* out = text.data() + start;
    qsizetype at = 0;
    for (qsizetype group = 0; group < groups; ++group) {
      std::array<unsigned char, 3> bytes{};
      int filled = 0;
      for (; filled < mHeldCount; ++filled) bytes[filled] = mHeld[filled];
      mHeldCount = 0;
      for (; filled < 3; ++filled) bytes[filled] = static_cast<unsigned char>(data[at++]);
      out = WriteGroup(bytes, 3, out);
    }
    while (at < size) mHeld[mHeldCount++] = static_cast<unsigned char>(data[at++]);
  }

  // Appends the padded last group, if bytes are held back.
  void Finish(QByteArray& text) {
    if (mHeldCount == 0) return;
    const unsigned char second = mHeldCount > 1 ? mHeld[1] : 0;  // mHeld[1] may be stale
    std::array<unsigned char, 3> bytes{mHeld[0], second, 0};
    char last[4];
    WriteGroup(bytes, mHeldCount, last);
    text.append(last, 4);
    mHeldCount = 0;
  }

 private:
  // Writes the 4 characters of `count` (1-3) bytes, padding the missing ones with '='.
  static char* WriteGroup(const std::array<unsigned char, 3>& bytes, int count, char* out) {
    const unsigned group = unsigned(bytes[0]) << 16 | unsigned(bytes[1]) << 8 | bytes[2];
    out[0] = Alphabet[group >> 18 & 0x3F];
    out[1] = Alphabet[group >> 12 & 0x3F];
    out[2] = count > 1 ? Alphabet[group >> 6 & 0x3F] : Padding;
    out[3] = count > 2 ? Alphabet[group & 0x3F] : Padding;
    return out + 4;
  }

  std::array<unsigned char, 2> mHeld{};
  int mHeldCount = 0;
};

// Decodes text fed in pieces of any size; bits carry over between pieces.
class TBase64Decoder {
 public:
  // Appends the bytes completed by `data` to `bytes`.
  void Feed(const char* data, qsizetype size, QByteArray& bytes) {
    if (mEnded) return;
    const qsizetype start = bytes.size();
    bytes.resize(start + size * 3 / 4 + 3);
    char* out = bytes.data() + start;
    for (qsizetype at = 0; at < size; ++at) {
      if (data[at] == Padding) {
        mEnded = true;
        break;
      }
      const signed char sextet = SextetOf[static_cast<unsigned char>(data[at])];
      if (sextet == NotInAlphabet) continue;
      mBits = mBits << 6 | static_cast<unsigned>(sextet);
      mBitCount += 6;
      if (mBitCount >= 8) {
        mBitCount -= 8;
        *out++ = static_cast<char>(mBits >> mBitCount);
        mBits &= (1u << mBitCount) - 1;
      }
    }
    bytes.resize(out - bytes.constData());
  }

 private:
  unsigned mBits = 0;
  int mBitCount = 0;
  bool mEnded = false;
};

template <typename Source>
void DecodeTo(Source& source, QIODevice& out) {
  TBase64Decoder decoder;
  QByteArray bytes;
  ForEachChunk(source, [&](const char* data, qsizetype size) {
    bytes.clear();
    decoder.Feed(data, size, bytes);
    WriteAll(out, bytes);
  });
}

}  // namespace

void Base64Encode(QIODevice& in, QIODevice& out) {
  TBase64Encoder encoder;
  QByteArray text;
  ForEachChunk(in, [&](const char* data, qsizetype size) {
    text.clear();
    encoder.Feed(data, size, text);
    WriteAll(out, text);
  });
  text.clear();
  encoder.Finish(text);
  WriteAll(out, text);
}

void Base64Encode(QIODevice& in, QByteArray& text) {
  TBase64Encoder encoder;
  text.clear();
  ForEachChunk(in, [&](const char* data, qsizetype size) { encoder.Feed(data, size, text); });
  encoder.Finish(text);
}

void Base64Decode(QIODevice& in, QIODevice& out) { DecodeTo(in, out); }

void Base64Decode(const QByteArray& text, QIODevice& out) { DecodeTo(text, out); }

}  // namespace norva
