#include <OrbGlobal/Model/StreamStrings.h>

#include <NorvaGlobal/Exceptions.h>

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace norva {

namespace {

constexpr qsizetype ReadChunkSize = qsizetype{64} * 1024;

void WriteAll(QIODevice& stream, const char* data, qsizetype size) {
  if (stream.write(data, size) != size) throw ENorvaError(QStringLiteral("Stream write error"));
}

// Up to `count` bytes, in chunks, so that an absurd count allocates no more than the stream holds.
QByteArray ReadUpTo(QIODevice& stream, qint32 count) {
  QByteArray bytes;
  while (bytes.size() < count) {
    const qsizetype wanted = std::min<qsizetype>(count - bytes.size(), ReadChunkSize);
    const QByteArray chunk = stream.read(wanted);
    if (chunk.isEmpty()) break;
    bytes.append(chunk);
  }
  return bytes;
}

}  // namespace

void SaveStringToStream(const QString& text, QIODevice& stream) {
  if (text.size() > std::numeric_limits<qint32>::max() / 2) throw EIntOverflow();
  const auto byteCount = static_cast<qint32>(text.size() * 2);
  char countField[4];
  qToLittleEndian(byteCount, countField);
  WriteAll(stream, countField, sizeof countField);
  QByteArray units(byteCount, Qt::Uninitialized);
  for (qsizetype i = 0; i < text.size(); ++i) {
    qToLittleEndian(text.at(i).unicode(), units.data() + 2 * i);
  }
  WriteAll(stream, units.constData(), units.size());
}

QString LoadStringFromStream(QIODevice& stream) {
  const QByteArray countField = stream.read(4);
  if (countField.size() < 4) return QString();
  const auto byteCount = qFromLittleEndian<qint32>(countField.constData());
  if (byteCount <= 0) return QString();
  const QByteArray bytes = ReadUpTo(stream, byteCount);
  QString text(bytes.size() / 2, Qt::Uninitialized);
  for (qsizetype i = 0; i < text.size(); ++i) {
    text[i] = QChar(qFromLittleEndian<char16_t>(bytes.constData() + 2 * i));
  }
  return text;
}

}  // namespace norva
