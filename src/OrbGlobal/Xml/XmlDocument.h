#pragma once
// Loading and saving whole documents so that a file the helpers built, once loaded, saves back byte
// for byte: whitespace text (the "\r\n" and tab indentation) is kept as it stands, nothing is
// re-indented, and line ends are not normalised.
//
// Loading is strict: a document that is not well-formed XML 1.0 is refused (see XmlWellFormed.h),
// because the DOM parser would take it and the next save would write something else.
//
// Encoding: files are read in the encoding a byte-order mark gives, otherwise in the declared one,
// otherwise as UTF-8; they are always written as UTF-8 without a mark.
//
// Declaration: saving never invents an XML declaration. The bytes written are the document's
// nodes, so a file has a declaration when its document holds one (kept from loading, or added by
// the code that owns that file format); a declaration naming another encoding is written naming
// UTF-8, which is what the file holds. Whitespace beside the document element is kept too. An
// element without children is always written in the short form "<a/>", which is what the helpers
// produce; a foreign "<a></a>" therefore comes back shortened.
//
// Characters XML 1.0 cannot hold (control characters other than tab, line feed and carriage
// return, U+FFFE, U+FFFF, bytes that are not UTF-8) are left out of what is written, wherever they
// are in the document; the document itself keeps them. They cannot be written even as character
// references, and a save must not fail over a character nobody can see.

#include <QByteArray>
#include <QString>

#include <pugixml.hpp>

namespace norva {

// Replaces the content of `document` by the parsed bytes. A document that is not well formed
// raises EXMLParseError (reason, 1-based line and column) and leaves `document` empty.
void LoadXMLDocument(pugi::xml_document& document, const QByteArray& bytes);

// As LoadXMLDocument, from a file; the parse error's message then names the file. A file that
// cannot be read raises EXMLError.
void LoadXMLDocumentFromFile(pugi::xml_document& document, const QString& path);

// The document's bytes as they are written to a file.
QByteArray SaveXMLDocument(const pugi::xml_document& document);

// Writes the document beside `path` and then renames it over `path`, so a failed save leaves the
// previous file untouched. Raises EXMLError when the file cannot be written.
void SaveXMLDocumentToFile(const pugi::xml_document& document, const QString& path);

}  // namespace norva
