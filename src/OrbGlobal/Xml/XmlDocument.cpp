#include <OrbGlobal/Xml/XmlDocument.h>

#include <OrbGlobal/Xml/XmlCharacters.h>
#include <OrbGlobal/Xml/XmlErrors.h>
#include <OrbGlobal/Xml/XmlWellFormed.h>

#include <QFile>
#include <QSaveFile>
#include <QStringConverter>

#include <string>
#include <string_view>
#include <vector>

namespace norva {

namespace {

// Kept as written: no end-of-line normalisation (parse_eol), whitespace-only text kept, and text
// beside the document element allowed (parse_fragment) so that it survives a load and save; the
// strict reading has already made sure there is one document element and no other text.
constexpr unsigned ParseOptions =
    (pugi::parse_full & ~pugi::parse_eol) | pugi::parse_ws_pcdata | pugi::parse_fragment;
constexpr unsigned SaveFlags = pugi::format_raw | pugi::format_no_declaration;

bool HoldsCharacterXmlCannotHold(const char* text) {
  return FindCharacterXmlCannotHold(text) != std::string_view::npos;
}

// A declaration naming another encoding than the UTF-8 the document is written in.
bool DeclaresForeignEncoding(pugi::xml_node node) {
  if (node.type() != pugi::node_declaration) return false;
  const pugi::xml_attribute encoding = node.attribute("encoding");
  return encoding && QStringConverter::encodingForName(encoding.value()) != QStringConverter::Utf8;
}

bool DeclaresForeignEncoding(const pugi::xml_document& document) {
  for (const pugi::xml_node node : document.children()) {
    if (DeclaresForeignEncoding(node)) return true;
  }
  return false;
}

// pugixml writes a control character in text or an attribute value as a two-digit character
// reference ("&#01;"), which XML allows only for tab, line feed and carriage return. Text gives
// "&#" in no other way ('&' is written "&amp;"); a comment might, and then the document is merely
// cleaned for nothing.
bool HoldsForbiddenReference(std::string_view written) {
  for (std::size_t at = written.find("&#"); at != written.npos; at = written.find("&#", at + 2)) {
    const std::string_view reference = written.substr(at, 5);
    if (reference != "&#09;" && reference != "&#10;" && reference != "&#13;") return true;
  }
  return false;
}

// Whether the bytes pugixml wrote are XML as they stand. Looking at them is far quicker than
// visiting every node of the document.
bool IsWrittenXml(const QByteArray& bytes) {
  const std::string_view written(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  return FindCharacterXmlCannotHold(written) == written.npos && !HoldsForbiddenReference(written);
}

template <typename TNameAndValue>
void DropCharactersXmlCannotHold(TNameAndValue item) {
  if (HoldsCharacterXmlCannotHold(item.name())) {
    item.set_name(WithoutCharactersXmlCannotHold(item.name()).c_str());
  }
  if (HoldsCharacterXmlCannotHold(item.value())) {
    item.set_value(WithoutCharactersXmlCannotHold(item.value()).c_str());
  }
}

// Makes a copy of the document writable: what XML cannot hold is dropped, and the declaration
// names UTF-8. The walk is pugixml's, which does not recurse.
class TWritableMaker : public pugi::xml_tree_walker {
 public:
  bool for_each(pugi::xml_node& node) override {
    DropCharactersXmlCannotHold(node);
    for (const pugi::xml_attribute attribute : node.attributes()) {
      DropCharactersXmlCannotHold(attribute);
    }
    if (DeclaresForeignEncoding(node)) node.attribute("encoding").set_value("UTF-8");
    return true;
  }
};

// Keeps pugixml's output in the pieces it comes in and joins them once at the end: growing one
// array instead copied a large document over and over as it grew.
class TByteArrayWriter : public pugi::xml_writer {
 public:
  void write(const void* data, size_t size) override {
    mPieces.emplace_back(static_cast<const char*>(data), size);
    mSize += size;
  }
  QByteArray Take() {
    QByteArray bytes;
    bytes.reserve(static_cast<qsizetype>(mSize));
    for (const std::string& piece : mPieces) bytes.append(piece.data(), std::ssize(piece));
    mPieces.clear();
    return bytes;
  }

 private:
  std::vector<std::string> mPieces;
  std::size_t mSize = 0;
};

QByteArray WriteAsItIs(const pugi::xml_document& document) {
  TByteArrayWriter writer;
  document.save(writer, "", SaveFlags, pugi::encoding_utf8);
  return writer.Take();
}

}  // namespace

void LoadXMLDocument(pugi::xml_document& document, const QByteArray& bytes) {
  document.reset();
  const QByteArray utf8 = WellFormedUtf8(bytes);
  const pugi::xml_parse_result result = document.load_buffer(
      utf8.constData(), static_cast<size_t>(utf8.size()), ParseOptions, pugi::encoding_utf8);
  if (!result) {
    document.reset();
    throw EXMLParseError::AtOffset(QString::fromUtf8(result.description()), utf8, result.offset);
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
  try {
    LoadXMLDocument(document, bytes);
  } catch (const EXMLParseError& error) {
    throw EXMLParseError(error.Reason(), error.Line(), error.Column(), path);
  }
}

QByteArray SaveXMLDocument(const pugi::xml_document& document) {
  QByteArray written = WriteAsItIs(document);
  if (IsWrittenXml(written) && !DeclaresForeignEncoding(document)) return written;
  pugi::xml_document writable;
  writable.reset(document);
  TWritableMaker maker;
  writable.traverse(maker);
  return WriteAsItIs(writable);
}

void SaveXMLDocumentToFile(const pugi::xml_document& document, const QString& path) {
  const QByteArray bytes = SaveXMLDocument(document);
  QSaveFile file(path);
  // Unbuffered, so that every write says what reached the file: through the buffer a write cut
  // short (a full disk, a file size limit) went unnoticed and the commit renamed a truncated file
  // over the old one.
  bool written = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
  for (qsizetype done = 0; written && done < bytes.size();) {
    const qint64 count = file.write(bytes.constData() + done, bytes.size() - done);
    written = count > 0;
    done += written ? count : 0;
  }
  if (!written || !file.commit()) {
    throw EXMLError(QStringLiteral("Cannot write %1: %2").arg(path, file.errorString()));
  }
}

}  // namespace norva
