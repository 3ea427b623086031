#include <OrbGlobal/XmlBuilding.h>
#include <OrbGlobal/XmlDocument.h>
#include <OrbGlobal/XmlErrors.h>
#include <OrbGlobal/XmlLookup.h>

#include <QDir>
#include <QFile>
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

TEST(XmlDocumentLoadSave, ALoadedFileSavesBackByteForByte) {
  pugi::xml_document document;
  LoadXMLDocument(document, SampleFile);
  EXPECT_EQ(SaveXMLDocument(document), SampleFile);
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

TEST(XmlDocumentLoadSave, ReadsByteOrderMarkedFilesAndWritesPlainUtf8) {
  pugi::xml_document document;
  LoadXMLDocument(document, "\xEF\xBB\xBF<r>\xC3\xBC</r>");
  EXPECT_EQ(SaveXMLDocument(document), "<r>\xC3\xBC</r>");
  LoadXMLDocument(document, QByteArray("\xFF\xFE<\0r\0>\0\xFC\0<\0/\0r\0>\0", 18));
  EXPECT_EQ(SaveXMLDocument(document), "<r>\xC3\xBC</r>");
}

TEST(XmlDocumentParseErrors, CarryTheReasonAndAOneBasedPositionInCharacters) {
  const EXMLParseError error = ParseErrorOf("<a>\r\n\t<b></a>");
  EXPECT_FALSE(error.Reason().isEmpty());
  EXPECT_EQ(error.Line(), 2);
  EXPECT_EQ(error.Column(), 7) << "at the end tag's name, after \"\\t<b></\"";
  EXPECT_TRUE(QString::fromUtf8(error.what()).contains(QStringLiteral("line 2, column 7")));
  EXPECT_EQ(ParseErrorOf("<r>\n<\xC3\xBC\xC3\xBC></r>").Column(), 7) << "6 characters, 8 bytes";
}

TEST(XmlDocumentParseErrors, RequireOneDocumentElementAndNoStrayText) {
  EXPECT_EQ(ParseErrorOf("  \r\n<!-- only a comment -->").Line(), 2);
  const EXMLParseError twoRoots = ParseErrorOf("<a/>\n<b/>");
  EXPECT_EQ(twoRoots.Line(), 2);
  EXPECT_EQ(twoRoots.Column(), 2);
  EXPECT_EQ(ParseErrorOf("<a/>stray").Column(), 5);
  for (const char* broken : {"", "stray<a/>", "<a>", "<a x=1/>", "<1a/>", "<a><</a>"}) {
    ParseErrorOf(broken);
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

TEST(XmlDocumentFiles, FailuresRaise) {
  QTemporaryDir folder;
  pugi::xml_document document;
  document.append_child("root");
  EXPECT_THROW(SaveXMLDocumentToFile(document, folder.filePath("missing/doc.xml")), EXMLError);
  EXPECT_THROW(LoadXMLDocumentFromFile(document, folder.filePath("absent.xml")), EXMLError);
  EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

}  // namespace
}  // namespace norva
