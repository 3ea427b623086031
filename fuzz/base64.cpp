// Arbitrary bytes as Base64 text: decoding never fails, both forms agree, and encoding what was
// decoded decodes back to the same bytes.
#include <Utils/Base64.h>

#include <QBuffer>

#include <cstdint>
#include <cstdlib>

namespace {

QByteArray DecodeText(const QByteArray& text) {
  QBuffer out;
  out.open(QIODevice::WriteOnly);
  norva::Base64Decode(text, out);
  return out.data();
}

QByteArray DecodeStream(const QByteArray& text) {
  QBuffer in;
  in.setData(text);
  in.open(QIODevice::ReadOnly);
  QBuffer out;
  out.open(QIODevice::WriteOnly);
  norva::Base64Decode(in, out);
  return out.data();
}

QByteArray Encode(const QByteArray& bytes) {
  QBuffer in;
  in.setData(bytes);
  in.open(QIODevice::ReadOnly);
  QByteArray text;
  norva::Base64Encode(in, text);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const QByteArray decoded = DecodeText(text);
  if (DecodeStream(text) != decoded) std::abort();
  const QByteArray reencoded = Encode(decoded);
  if (reencoded.size() % 4 != 0 || DecodeText(reencoded) != decoded) std::abort();
  if (reencoded != decoded.toBase64()) std::abort();
  return 0;
}
