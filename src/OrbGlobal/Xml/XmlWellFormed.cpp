#include <OrbGlobal/Xml/XmlWellFormed.h>

#include <OrbGlobal/Xml/XmlCharacters.h>
#include <OrbGlobal/Xml/XmlErrors.h>
#include <OrbGlobal/Xml/XmlQuickCheck.h>

#include <QStringDecoder>
#include <QXmlStreamReader>

#include <algorithm>
#include <optional>
#include <string_view>

namespace norva {

namespace {

const QByteArray Utf8Mark("\xEF\xBB\xBF");

// Reads the whole document (up to the first fault) and returns the encoding its declaration names,
// "" when it has none.
QString ReadToTheEnd(QXmlStreamReader& reader) {
  QString declared;
  while (!reader.atEnd()) {
    const QXmlStreamReader::TokenType token = reader.readNext();
    if (token == QXmlStreamReader::StartDocument) {
      declared = reader.documentEncoding().toString();
    } else if (token == QXmlStreamReader::DTD && !reader.entityDeclarations().isEmpty()) {
      reader.raiseError(QStringLiteral("Entity declarations are not supported."));
    } else if (token == QXmlStreamReader::EntityReference) {
      reader.raiseError(QStringLiteral("Entity '%1' not declared.").arg(reader.name()));
    }
  }
  return declared;
}

// A byte-order mark (or the UTF-16 and UTF-32 forms of '<') wins over the declaration, as in the
// reader; nullopt stands for an encoding known only by its declared name.
std::optional<QStringConverter::Encoding> DocumentEncoding(const QByteArray& bytes,
                                                           const QString& declared) {
  if (const auto marked = QStringDecoder::encodingForData(bytes, u'<')) return marked;
  if (declared.isEmpty()) return QStringConverter::Utf8;
  return QStringConverter::encodingForName(declared.toLatin1().constData());
}

// The document's text in UTF-8, as the reader read it (so empty in an encoding nobody knows).
QByteArray AsUtf8(const QByteArray& bytes, const QString& declared) {
  const auto encoding = DocumentEncoding(bytes, declared);
  if (encoding == QStringConverter::Utf8) {
    return bytes.startsWith(Utf8Mark) ? bytes.mid(Utf8Mark.size()) : bytes;
  }
  QStringDecoder decoder =
      encoding ? QStringDecoder(*encoding) : QStringDecoder(declared.toLatin1().constData());
  return decoder.isValid() ? QString(decoder.decode(bytes)).toUtf8() : QByteArray();
}

// The reader places a decoding fault only roughly and leaves a control character out of its
// reason, so a character XML cannot hold is looked for first and reported exactly.
[[noreturn]] void RaiseReaderError(const QXmlStreamReader& reader, const QByteArray& utf8) {
  const std::string_view text(utf8.constData(), static_cast<std::size_t>(utf8.size()));
  if (const std::size_t offset = FindCharacterXmlCannotHold(text); offset != text.npos) {
    throw EXMLParseError::AtOffset(DescribeCharacterXmlCannotHold(text, offset), utf8,
                                   static_cast<qsizetype>(offset));
  }
  throw EXMLParseError(reader.errorString(), static_cast<int>(reader.lineNumber()),
                       static_cast<int>(std::max<qint64>(reader.columnNumber(), 1)));
}

}  // namespace

QByteArray WellFormedUtf8(const QByteArray& bytes) {
  QByteArray body = bytes.startsWith(Utf8Mark) ? bytes.mid(Utf8Mark.size()) : bytes;
  if (IsCertainlyWellFormedUtf8(
          std::string_view(body.constData(), static_cast<std::size_t>(body.size()))))
    return body;
  return ReadWellFormedUtf8(bytes);
}

QByteArray ReadWellFormedUtf8(const QByteArray& bytes) {
  QXmlStreamReader reader(bytes);
  reader.setNamespaceProcessing(false);  // XML 1.0 as such: a prefix needs no declaration
  const QString declared = ReadToTheEnd(reader);
  QByteArray utf8 = AsUtf8(bytes, declared);
  if (reader.hasError()) RaiseReaderError(reader, utf8);
  return utf8;
}

}  // namespace norva
