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
    "\r\n\t<Notes>line one\r\nline two\n</Notes>\r\n\t<Empty/>"
    "</keypad_configuration>\r\n";

QByteArray ReadFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  ASSERT_EQ(file.write(bytes), bytes.size());
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
}

TEST(XmlDocumentLoadSave, KeepsWhitespaceTextAsItStands) {
  pugi::xml_document document;
  LoadXMLDocument(document, SampleFile);
  pugi::xml_node root = document.document_element();
  EXPECT_EQ(GetXMLDOMNodeText(root, QStringLiteral("Notes"), true),
            QStringLiteral("line one\r\nline two\n"));
  EXPECT_EQ(GetElementText(root), QStringLiteral("\r\n\t"));
}

TEST(XmlDocumentLoadSave, ABuiltDocumentSurvivesSaveAndLoad) {
  pugi::xml_document built;
  pugi::xml_node root = built.append_child("ir_database");
  pugi::xml_node make = AddXMLDOMElement(root, QStringLiteral("Make"));
  SetXMLDOMText(AddXMLDOMElement(make, QStringLiteral("Name")), QStringLiteral("A\rB & \u00e9"));
  const QByteArray bytes = SaveXMLDocument(built);

  pugi::xml_document loaded;
  LoadXMLDocument(loaded, bytes);
  EXPECT_EQ(SaveXMLDocument(loaded), bytes);
  EXPECT_EQ(GetXMLDOMNodeText(GetXMLDOMNode(loaded.document_element(), "Make", true), "Name", true),
            QStringLiteral("A\rB & \u00e9"));
}

TEST(XmlDocumentLoadSave, NeverAddsADeclaration) {
  pugi::xml_document document;
  document.append_child("root");
  EXPECT_EQ(SaveXMLDocument(document), "<root/>");
}

TEST(XmlDocumentLoadSave, WritesElementsWithoutChildrenInTheShortForm) {
  pugi::xml_document document;
  LoadXMLDocument(document, "<root><a></a><b> </b></root>");
  EXPECT_EQ(SaveXMLDocument(document), "<root><a/><b> </b></root>");
}

TEST(XmlDocumentLoadSave, ReadsByteOrderMarkedFiles) {
  pugi::xml_document document;
  LoadXMLDocument(document, "\xEF\xBB\xBF<root>\xC3\xBC</root>");
  EXPECT_EQ(SaveXMLDocument(document), "<root>\xC3\xBC</root>");

  QByteArray utf16("\xFF\xFE");
  for (char16_t unit : u"<root>\u00fc</root>") {
    if (unit == 0) break;
    utf16.append(static_cast<char>(unit & 0xFF)).append(static_cast<char>(unit >> 8));
  }
  LoadXMLDocument(document, utf16);
  EXPECT_EQ(SaveXMLDocument(document), "<root>\xC3\xBC</root>");
}

TEST(XmlDocumentParseErrors, CarryTheReasonAndAOneBasedPosition) {
  const EXMLParseError error = ParseErrorOf("<a>\r\n\t<b></a>");
  EXPECT_FALSE(error.Reason().isEmpty());
  EXPECT_EQ(error.Line(), 2);
  EXPECT_EQ(error.Column(), 7) << "at the end tag's name, after \"\\t<b></\"";
  EXPECT_TRUE(QString::fromUtf8(error.what()).contains(QStringLiteral("line 2, column 7")));
}

TEST(XmlDocumentParseErrors, CountColumnsInCharactersNotBytes) {
  const EXMLParseError error = ParseErrorOf("<r>\n<\xC3\xBC\xC3\xBC></r>");
  EXPECT_EQ(error.Line(), 2);
  EXPECT_EQ(error.Column(), 7) << "six characters (eight bytes) precede the end tag's name";
}

TEST(XmlDocumentParseErrors, RequireExactlyOneDocumentElement) {
  EXPECT_EQ(ParseErrorOf("").Line(), 1);
  EXPECT_EQ(ParseErrorOf("  \r\n<!-- only a comment -->").Line(), 2);
  const EXMLParseError twoRoots = ParseErrorOf("<a/>\n<b/>");
  EXPECT_EQ(twoRoots.Line(), 2);
  EXPECT_EQ(twoRoots.Column(), 2);
  EXPECT_EQ(ParseErrorOf("<a/>stray").Column(), 5);
  ParseErrorOf("stray<a/>");
}

TEST(XmlDocumentParseErrors, RejectBrokenMarkup) {
  for (const char* broken : {"<a>", "<a></b>", "<a x=1/>", "<1a/>", "<a><</a>"}) {
    ParseErrorOf(broken);
  }
}

class XmlDocumentFiles : public testing::Test {
 protected:
  QString PathOf(const QString& name) const { return mFolder.filePath(name); }
  QTemporaryDir mFolder;
};

TEST_F(XmlDocumentFiles, SaveAndLoadThroughAFile) {
  pugi::xml_document document;
  LoadXMLDocument(document, SampleFile);
  SaveXMLDocumentToFile(document, PathOf("sample.keycfg"));
  EXPECT_EQ(ReadFile(PathOf("sample.keycfg")), SampleFile);

  pugi::xml_document loaded;
  LoadXMLDocumentFromFile(loaded, PathOf("sample.keycfg"));
  EXPECT_EQ(SaveXMLDocument(loaded), SampleFile);
}

TEST_F(XmlDocumentFiles, SaveReplacesTheFileInsteadOfRewritingIt) {
  // A second link to the old file still sees the old bytes only if the save wrote a new file
  // beside it and renamed it over the target.
  const QString target = PathOf("doc.xml");
  const QString secondLink = PathOf("previous.xml");
  WriteFile(target, "<old/>");
  ASSERT_EQ(
      ::link(QFile::encodeName(target).constData(), QFile::encodeName(secondLink).constData()), 0);

  pugi::xml_document document;
  document.append_child("new");
  SaveXMLDocumentToFile(document, target);
  EXPECT_EQ(ReadFile(target), "<new/>");
  EXPECT_EQ(ReadFile(secondLink), "<old/>");
  EXPECT_EQ(QDir(mFolder.path()).entryList(QDir::Files).size(), 2) << "no temporary file left";
}

TEST_F(XmlDocumentFiles, FailedSaveRaisesAndWritesNothing) {
  pugi::xml_document document;
  document.append_child("root");
  EXPECT_THROW(SaveXMLDocumentToFile(document, PathOf("missing/doc.xml")), EXMLError);
  EXPECT_TRUE(QDir(mFolder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).isEmpty());
}

TEST_F(XmlDocumentFiles, LoadingAMissingOrBrokenFileRaises) {
  pugi::xml_document document;
  EXPECT_THROW(LoadXMLDocumentFromFile(document, PathOf("absent.xml")), EXMLError);
  WriteFile(PathOf("broken.xml"), "<a>\n<b>");
  EXPECT_THROW(LoadXMLDocumentFromFile(document, PathOf("broken.xml")), EXMLParseError);
}

}  // namespace
}  // namespace norva
