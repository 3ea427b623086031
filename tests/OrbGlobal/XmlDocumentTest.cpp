#include "ThrownMessage.h"

#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlDocument.h>
#include <OrbGlobal/Xml/XmlErrors.h>
#include <OrbGlobal/Xml/XmlLookup.h>

#include <QDir>
#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

namespace norva {
namespace {

const QByteArray SampleFile =
    "<?xml version=\"1.0\"?>\r\n<!-- keypad -->\r\n<keypad_configuration>\r\n\t<Name>Living "
    "&amp; dining</Name>\r\n\t<Zones>\r\n\t\t<Zone>3</Zone>\r\n\t\t<Zone> 4 </Zone></Zones>"
    "\r\n\t<Notes>one\r\ntwo\n</Notes>\r\n\t<Empty/></keypad_configuration>\r\n";

QByteArray ReadFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size())
      << path.toStdString();
}

EXMLParseError ParseErrorOf(const QByteArray& bytes) {
  pugi::xml_document document;
  try {
    LoadXMLDocument(document, bytes);
  } catch (const EXMLParseError& error) {
    EXPECT_FALSE(document.first_child()) << "a failed load leaves the document empty";
    return error;
  }
  ADD_FAILURE() << "parsed without error: " << bytes.toStdString();
  return EXMLParseError(QString(), 0, 0);
}

// A loaded file saves back byte for byte, except a byte-order mark: files are written plain UTF-8.
TEST(XmlDocumentLoadSave, ALoadedFileSavesBackByteForByteInPlainUtf8) {
  const struct {
    QByteArray Loaded;
    QByteArray Saved;
  } cases[] = {
      {SampleFile, SampleFile},
      {"\xEF\xBB\xBF<r>\xC3\xBC</r>", "<r>\xC3\xBC</r>"},
      {QByteArray("\xFF\xFE<\0r\0>\0\xFC\0<\0/\0r\0>\0", 18), "<r>\xC3\xBC</r>"},
  };
  for (const auto& c : cases) {
    pugi::xml_document document;
    LoadXMLDocument(document, c.Loaded);
    EXPECT_EQ(SaveXMLDocument(document), c.Saved) << c.Loaded.toHex().constData();
  }
  pugi::xml_document document;
  LoadXMLDocument(document, SampleFile);
  EXPECT_EQ(GetXMLDOMNodeText(document.document_element(), "Notes", true), "one\r\ntwo\n");
}

TEST(XmlDocumentLoadSave, ABuiltDocumentSurvivesSaveAndLoad) {
  pugi::xml_document built;
  pugi::xml_node make = AddXMLDOMElement(built.append_child("ir_database"), QStringLiteral("Make"));
  SetXMLDOMText(AddXMLDOMElement(make, QStringLiteral("Name")), QStringLiteral("A\rB & \u00e9"));
  const QByteArray bytes = SaveXMLDocument(built);
  EXPECT_FALSE(bytes.startsWith("<?xml")) << "no declaration is invented";

  pugi::xml_document loaded;
  LoadXMLDocument(loaded, bytes);
  EXPECT_EQ(SaveXMLDocument(loaded), bytes);
  EXPECT_EQ(GetXMLDOMNodeText(GetXMLDOMNode(loaded.document_element(), "Make", true), "Name", true),
            QStringLiteral("A\rB & \u00e9"));
}

// XML 1.0 cannot hold these even as character references: the save leaves them out, wherever they
// are, so that what is written always loads again. The document itself keeps them.
TEST(XmlDocumentLoadSave, SaveLeavesOutWhatXmlCannotHold) {
  const struct {
    QString Text;
    QString Written;
  } texts[] = {
      {QStringLiteral("a\x01"
                      "b\x1F"),
       QStringLiteral("ab")},
      {QStringLiteral("x\uFFFEy\uFFFF"), QStringLiteral("xy")},
      {QStringLiteral("tab\tcr\rlf\n\x7F\x85\uFFFD"),
       QStringLiteral("tab\tcr\rlf\n\x7F\x85\uFFFD")},
  };
  for (const auto& c : texts) {
    pugi::xml_document document;
    SetXMLDOMText(document.append_child("root"), c.Text);
    const QByteArray saved = SaveXMLDocument(document);
    EXPECT_FALSE(saved.contains("&#")) << saved.toStdString();
    pugi::xml_document loaded;
    LoadXMLDocument(loaded, saved);
    EXPECT_EQ(GetXMLDOMText(loaded), c.Written);
    EXPECT_EQ(GetXMLDOMText(document), c.Text);
  }

  pugi::xml_document document;
  pugi::xml_node root = document.append_child("root");
  root.append_attribute("note").set_value(
      "a\x02"
      "b\tc");
  root.append_child(pugi::node_comment)
      .set_value(
          "c\x03"
          "d");
  root.append_child(pugi::node_pcdata).set_value("caf\xE9 \x1B[0m");
  EXPECT_EQ(SaveXMLDocument(document), "<root note=\"ab&#09;c\"><!--cd-->caf [0m</root>");
}

TEST(XmlDocumentParseErrors, CarryTheReasonAndAOneBasedPositionInCharacters) {
  const EXMLParseError error = ParseErrorOf("<a>\r\n\t<b></a>");
  EXPECT_EQ(error.Reason(), QStringLiteral("Opening and ending tag mismatch."));
  EXPECT_EQ(error.Line(), 2);
  EXPECT_EQ(error.Column(), 8) << "at the end of \"\\t<b></a>\"";
  EXPECT_EQ(QString::fromUtf8(error.what()),
            QStringLiteral("Opening and ending tag mismatch.\r\nLine: 2, position: 8"));
}

// Documents that are broken, or that the DOM parser alone would take and the next save would
// change; a position counts characters, not bytes.
TEST(XmlDocumentParseErrors, RefuseWhatIsNotWellFormedXml) {
  const struct {
    QByteArray Bytes;
    int Line;
    int Column;
    const char* Reason;
  } cases[] = {
      {"<r>\n<\xC3\xBC\xC3\xBC></r>", 2, 8, "Opening and ending tag mismatch."},  // 10 bytes
      {"  \r\n<!-- only a comment -->", 2, 23, "Premature end of document."},
      {"<a/>\n<b/>", 2, 4, "Extra content at end of document."},
      {"<a/>stray", 1, 5, "Extra content at end of document."},
      {"", 1, 1, "Premature end of document."},
      {"stray<a/>", 1, 1, "Start tag expected."},
      {"<a>", 1, 1, "Premature end of document."},
      {"<a x=1/>", 1, 6, "Expected ''' or '\"', but got '[0-9]'."},
      {"<1a/>", 1, 2, "Expected '?', '!', or '[a-zA-Z]', but got '[0-9]'."},
      {"<a><</a>", 1, 5, "Unexpected '<'."},
      {"<a x='1' x='2'/>", 1, 16, "Attribute 'x' redefined"},
      {"<r>\r\n\t<a>&nbsp;</a></r>", 2, 10, "Entity 'nbsp' not declared"},
      {"<!DOCTYPE a SYSTEM 'a.dtd'><a>&e;</a>", 1, 33, "Entity 'e' not declared"},
      {"<!DOCTYPE a [<!ENTITY e 'x'>]>\n<a>&e;</a>", 1, 30, "Entity declarations"},
      {"<a>fish & chips</a>", 1, 10, "Expected '#'"},
      {"<a title='a<b'/>", 1, 12, "Unexpected '<'"},
      {"<a>]]></a>", 1, 6, "']]>' not allowed"},
      {"<a><!-- a--b --></a>", 1, 12, "Expected '>'"},
      {"<a>&#1;</a>", 1, 7, "Invalid character reference"},
      {"<a>\x01</a>", 1, 4, "Character U+0001 is not allowed"},
      {"<a x='\x1F'/>", 1, 7, "Character U+001F is not allowed"},
      {"<a>\xEF\xBF\xBE</a>", 1, 4, "Character U+FFFE is not allowed"},
      {"<r>\n<a>caf\xE9</a></r>", 2, 7, "Invalid UTF-8 byte 0xE9"},
      {"<a>\xED\xA0\x80</a>", 1, 4, "Invalid UTF-8 byte 0xED"},
      {"<?xml version='1.0' encoding='ISO-8859-1'?><a>\x01</a>", 1, 47, "U+0001"},
      {QByteArray("\xFF\xFE<\0a\0>\0\x02\0<\0/\0a\0>\0", 18), 1, 4, "U+0002"},
      {"<?xml version='1.0' encoding='bogus'?><a/>", 1, 38, "Encoding bogus is unsupported"},
  };
  for (const auto& c : cases) {
    const EXMLParseError error = ParseErrorOf(c.Bytes);
    EXPECT_TRUE(error.Reason().contains(QLatin1String(c.Reason)))
        << c.Bytes.toStdString() << ": " << error.Reason().toStdString();
    EXPECT_EQ(error.Line(), c.Line) << c.Bytes.toStdString();
    EXPECT_EQ(error.Column(), c.Column) << c.Bytes.toStdString();
  }
}

QString NameDocument(const char* declaredEncoding, const QString& name) {
  return QStringLiteral("<?xml version=\"1.0\" encoding=\"%1\"?>\r\n<Name>%2</Name>")
      .arg(QLatin1String(declaredEncoding), name);
}

// A file keeps its text whatever it was encoded in, and is written in UTF-8 (without a byte-order
// mark) under a declaration that says so; a UTF-8 declaration stays as it was written.
TEST(XmlDocumentFiles, AreReadInTheirEncodingAndSavedAsUtf8SayingSo) {
  const QString latin1Name = QStringLiteral("Caf\u00e9\r\n");
  const QString name = QStringLiteral("Caf\u00e9 \U0001F3B5\r\n");
  const struct {
    QStringConverter::Encoding FileEncoding;
    const char* Declared;
    QString Name;
    const char* SavedDeclaration;
  } cases[] = {
      {QStringConverter::Latin1, "ISO-8859-1", latin1Name, "UTF-8"},
      {QStringConverter::Utf16LE, "UTF-16", name, "UTF-8"},
      {QStringConverter::Utf16BE, "UTF-16", name, "UTF-8"},
      {QStringConverter::Utf8, "utf-8", name, "utf-8"},
  };
  QTemporaryDir folder;
  for (const auto& c : cases) {
    QStringEncoder encoder(c.FileEncoding, QStringConverter::Flag::WriteBom);
    WriteFile(folder.filePath("in.xml"), encoder.encode(NameDocument(c.Declared, c.Name)));
    pugi::xml_document document;
    LoadXMLDocumentFromFile(document, folder.filePath("in.xml"));
    EXPECT_EQ(GetElementText(document.document_element()), c.Name) << c.Declared;
    SaveXMLDocumentToFile(document, folder.filePath("out.xml"));
    EXPECT_EQ(ReadFile(folder.filePath("out.xml")),
              NameDocument(c.SavedDeclaration, c.Name).toUtf8())
        << c.Declared;
  }
}

TEST(XmlDocumentFiles, SaveReplacesTheFileWhichLoadsBack) {
  // A second link to the old file keeps the old bytes only if the save wrote a new file beside it
  // and renamed it over the target.
  QTemporaryDir folder;
  const QString target = folder.filePath("doc.keycfg");
  const QString previous = folder.filePath("previous.keycfg");
  QFile old(target);
  ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("<old/>") == 6);
  old.close();
  ASSERT_EQ(::link(QFile::encodeName(target).constData(), QFile::encodeName(previous).constData()),
            0);

  pugi::xml_document document;
  LoadXMLDocument(document, SampleFile);
  SaveXMLDocumentToFile(document, target);
  EXPECT_EQ(ReadFile(target), SampleFile);
  EXPECT_EQ(ReadFile(previous), "<old/>");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 2) << "no temporary file left";

  pugi::xml_document loaded;
  LoadXMLDocumentFromFile(loaded, target);
  EXPECT_EQ(SaveXMLDocument(loaded), SampleFile);
}

TEST(XmlDocumentFiles, FailuresRaiseAndAParseErrorNamesTheFile) {
  QTemporaryDir folder;
  const QString path = folder.filePath("broken.xml");
  WriteFile(path, "<a>\n<b x='1' x='2'/></a>");
  pugi::xml_document document;
  EXPECT_EQ(
      ThrownMessage<EXMLParseError>([&] { LoadXMLDocumentFromFile(document, path); }),
      QStringLiteral("Error loading %1\r\n\r\nAttribute 'x' redefined.\r\nLine: 2, position: 16")
          .arg(path));

  document.reset();
  document.append_child("root");
  EXPECT_THROW(SaveXMLDocumentToFile(document, folder.filePath("missing/doc.xml")), EXMLError);
  EXPECT_THROW(LoadXMLDocumentFromFile(document, folder.filePath("absent.xml")), EXMLError);
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
            QStringList({"broken.xml"}));
}

}  // namespace
}  // namespace norva
