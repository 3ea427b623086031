#include <OrbGlobal/XmlDocument.h>

#include <OrbGlobal/XmlErrors.h>

#include <QFile>
#include <QSaveFile>

#include <algorithm>

namespace norva {

namespace {

// Kept as written: no end-of-line normalisation (parse_eol), whitespace-only text kept, and text
// beside the document element allowed (parse_fragment) so that it survives a load and save; the
// single document element is checked afterwards.
constexpr unsigned ParseOptions =
    (pugi::parse_full & ~pugi::parse_eol) | pugi::parse_ws_pcdata | pugi::parse_fragment;
constexpr unsigned SaveFlags = pugi::format_raw | pugi::format_no_declaration;

bool StartsWith(const QByteArray& bytes, const char* mark) { return bytes.startsWith(mark); }

// The bytes the parser sees: UTF-8 without a byte-order mark.
QByteArray AsUtf8(const QByteArray& bytes) {
  if (StartsWith(bytes, "\xEF\xBB\xBF")) return bytes.mid(3);
  const bool littleEndian = StartsWith(bytes, "\xFF\xFE");
  if (!littleEndian && !StartsWith(bytes, "\xFE\xFF")) return bytes;
  QString text;
  text.reserve((bytes.size() - 2) / 2);
  for (qsizetype i = 2; i + 1 < bytes.size(); i += 2) {
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto second = static_cast<unsigned char>(bytes[i + 1]);
    text.append(QChar(littleEndian ? (second << 8 | first) : (first << 8 | second)));
  }
  return text.toUtf8();
}

bool IsUtf8ContinuationByte(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

[[noreturn]] void RaiseParseError(const QString& reason, const QByteArray& utf8, qsizetype offset) {
  offset = std::clamp<qsizetype>(offset, 0, utf8.size());
  int line = 1;
  int column = 1;
  for (qsizetype i = 0; i < offset; ++i) {
    if (utf8[i] == '\n') {
      ++line;
      column = 1;
    } else if (!IsUtf8ContinuationByte(utf8[i])) {
      ++column;
    }
  }
  throw EXMLParseError(reason, line, column);
}

bool IsWhitespaceText(pugi::xml_node node) {
  if (node.type() != pugi::node_pcdata) return false;
  for (const char* c = node.value(); *c != '\0'; ++c) {
    if (*c != ' ' && *c != '\t' && *c != '\r' && *c != '\n') return false;
  }
  return true;
}

// What the fragment parse lets through but a document must not have: text beside the document
// element, and no document element or more than one.
void CheckDocumentLevel(const pugi::xml_document& document, const QByteArray& utf8) {
  pugi::xml_node documentElement;
  for (pugi::xml_node node = document.first_child(); node; node = node.next_sibling()) {
    if (node.type() == pugi::node_element) {
      if (documentElement) {
        RaiseParseError(QStringLiteral("Only one top level element is allowed"), utf8,
                        node.offset_debug());
      }
      documentElement = node;
    } else if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) {
      if (!IsWhitespaceText(node)) {
        RaiseParseError(QStringLiteral("Text is not allowed outside the document element"), utf8,
                        node.offset_debug());
      }
    }
  }
  if (!documentElement) {
    RaiseParseError(QStringLiteral("No document element found"), utf8, utf8.size());
  }
}

class TByteArrayWriter : public pugi::xml_writer {
 public:
  void write(const void* data, size_t size) override {
    mBytes.append(static_cast<const char*>(data), static_cast<qsizetype>(size));
  }
  QByteArray Take() { return std::move(mBytes); }

 private:
  QByteArray mBytes;
};

}  // namespace

void LoadXMLDocument(pugi::xml_document& document, const QByteArray& bytes) {
  const QByteArray utf8 = AsUtf8(bytes);
  const pugi::xml_parse_result result = document.load_buffer(
      utf8.constData(), static_cast<size_t>(utf8.size()), ParseOptions, pugi::encoding_utf8);
  try {
    if (!result) {
      RaiseParseError(QString::fromUtf8(result.description()), utf8, result.offset);
    }
    CheckDocumentLevel(document, utf8);
  } catch (...) {
    document.reset();
    throw;
  }
}

void LoadXMLDocumentFromFile(pugi::xml_document& document, const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    throw EXMLError(QStringLiteral("Cannot read %1: %2").arg(path, file.errorString()));
  }
  const QByteArray bytes = file.readAll();
  if (file.error() != QFileDevice::NoError) {
    throw EXMLError(QStringLiteral("Cannot read %1: %2").arg(path, file.errorString()));
  }
  LoadXMLDocument(document, bytes);
}

QByteArray SaveXMLDocument(const pugi::xml_document& document) {
  TByteArrayWriter writer;
  document.save(writer, "", SaveFlags, pugi::encoding_utf8);
  return writer.Take();
}

void SaveXMLDocumentToFile(const pugi::xml_document& document, const QString& path) {
  const QByteArray bytes = SaveXMLDocument(document);
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
    throw EXMLError(QStringLiteral("Cannot write %1: %2").arg(path, file.errorString()));
  }
}

}  // namespace norva
