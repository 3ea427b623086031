#pragma once
// Loading and saving whole documents so that a file the helpers built, once loaded, saves back byte
// for byte: whitespace text (the "\r\n" and tab indentation) is kept as it stands, nothing is
// re-indented, and line ends are not normalised.
//
// Encoding: files are read as UTF-8 (a UTF-8 byte-order mark is skipped) or, when they start with
// a UTF-16 byte-order mark, as UTF-16; they are always written as UTF-8 without a mark.
//
// Declaration: saving never invents an XML declaration. The bytes written are exactly the
// document's nodes, so a file has a declaration when its document holds one (kept from loading, or
// added by the code that owns that file format). Whitespace beside the document element is kept
// too. An element without children is always written in the short form "<a/>", which is what the
// helpers produce; a foreign "<a></a>" therefore comes back shortened.

#include <QByteArray>
#include <QString>

#include <pugixml.hpp>

namespace norva {

// Replaces the content of `document` by the parsed bytes. A document that is not well formed, or
// that has no single document element, raises EXMLParseError (reason, 1-based line and column)
// and leaves `document` empty.
void LoadXMLDocument(pugi::xml_document& document, const QByteArray& bytes);

// As LoadXMLDocument, from a file; a file that cannot be read raises EXMLError.
void LoadXMLDocumentFromFile(pugi::xml_document& document, const QString& path);

// The document's bytes as they are written to a file.
QByteArray SaveXMLDocument(const pugi::xml_document& document);

// Writes the document beside `path` and then renames it over `path`, so a failed save leaves the
// previous file untouched. Raises EXMLError when the file cannot be written.
void SaveXMLDocumentToFile(const pugi::xml_document& document, const QString& path);

}  // namespace norva
