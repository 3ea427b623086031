#include <OrbGlobal/XmlDocument.h>
#include <OrbGlobal/XmlLookup.h>

#include <NorvaGlobal/Exceptions.h>

#include <gtest/gtest.h>

namespace norva {
namespace {

class XmlLookup : public testing::Test {
 protected:
  void SetUp() override {
    LoadXMLDocument(mDocument,
                    "<root>\r\n\t<!--Zone-->text<Zone>first</Zone>\r\n\t<zone>lower</zone>"
                    "\r\n\t<Zone>second</Zone>\r\n\t<Group><Inner>deep</Inner></Group>"
                    "\r\n\t<Mixed>a<b>b<c>c</c></b><![CDATA[d]]>e</Mixed>"
                    "\r\n\t<Empty/>\r\n\t<Spaced>  x \r\n</Spaced></root>");
    mRoot = mDocument.document_element();
  }

  pugi::xml_document mDocument;
  pugi::xml_node mRoot;
};

TEST_F(XmlLookup, FindsTheFirstDirectChildWithExactlyThatName) {
  pugi::xml_node zone = GetXMLDOMNode(mRoot, QStringLiteral("Zone"), true);
  EXPECT_STREQ(zone.child_value(), "first");
  EXPECT_STREQ(GetXMLDOMNode(mRoot, QStringLiteral("zone"), true).child_value(), "lower");
}

TEST_F(XmlLookup, MissingOptionalChildIsANullNode) {
  EXPECT_FALSE(GetXMLDOMNode(mRoot, QStringLiteral("ZONE"), false));
  EXPECT_FALSE(GetXMLDOMNode(mRoot, QStringLiteral("Inner"), false)) << "grandchildren never match";
  EXPECT_FALSE(GetXMLDOMNode(mRoot, QString(), false)) << "text nodes have no element name";
}

TEST_F(XmlLookup, MissingRequiredChildRaisesItsName) {
  try {
    GetXMLDOMNode(mRoot, QStringLiteral("Preset"), true);
    FAIL() << "no exception";
  } catch (const ENorvaError& error) {
    EXPECT_EQ(error.Message(), QStringLiteral("Preset element not found"));
  }
  EXPECT_THROW(GetXMLDOMNodeText(mRoot, QStringLiteral("Preset"), true), ENorvaError);
  EXPECT_THROW(GetXMLDOMNode(pugi::xml_node(), QStringLiteral("Zone"), true), ENorvaError);
}

TEST_F(XmlLookup, NodeTextConcatenatesAllDescendantTextInOrder) {
  EXPECT_EQ(GetXMLDOMNodeText(mRoot, QStringLiteral("Mixed"), true), QStringLiteral("abcde"));
  EXPECT_EQ(GetXMLDOMNodeText(mRoot, QStringLiteral("Group"), true), QStringLiteral("deep"));
  EXPECT_EQ(GetXMLDOMNodeText(mRoot, QStringLiteral("Spaced"), true), QStringLiteral("  x \r\n"));
  EXPECT_EQ(GetXMLDOMNodeText(mRoot, QStringLiteral("Empty"), true), QString());
  EXPECT_EQ(GetXMLDOMNodeText(mRoot, QStringLiteral("Absent"), false), QString());
}

TEST_F(XmlLookup, ElementTextIsTheFirstChildsValueOnly) {
  EXPECT_EQ(GetElementText(GetXMLDOMNode(mRoot, QStringLiteral("Zone"), true)),
            QStringLiteral("first"));
  EXPECT_EQ(GetElementText(GetXMLDOMNode(mRoot, QStringLiteral("Empty"), true)), QString());
  EXPECT_EQ(GetElementText(GetXMLDOMNode(mRoot, QStringLiteral("Group"), true)), QString())
      << "a nested element's node value is empty";
  EXPECT_EQ(GetElementText(GetXMLDOMNode(mRoot, QStringLiteral("Mixed"), true)),
            QStringLiteral("a"));
  EXPECT_EQ(GetElementText(mRoot), QStringLiteral("\r\n\t")) << "indentation is a text node too";
  EXPECT_EQ(GetElementText(pugi::xml_node()), QString());
}

TEST(XmlLookupText, DecodesUtf8) {
  pugi::xml_document document;
  LoadXMLDocument(document,
                  "<root><Name>K\xC3\xBC"
                  "che \xF0\x9F\x8E\xB5</Name></root>");
  EXPECT_EQ(GetXMLDOMNodeText(document.document_element(), QStringLiteral("Name"), true),
            QStringLiteral("K\u00fcche ") + QString::fromUcs4(U"\U0001F3B5"));
}

TEST(XmlLookupText, WalksDeepNestingWithoutRecursion) {
  QByteArray text;
  constexpr int Depth = 100000;
  for (int i = 0; i < Depth; ++i) text += "<a>";
  text += "x";
  for (int i = 0; i < Depth; ++i) text += "</a>";
  pugi::xml_document document;
  LoadXMLDocument(document, "<root>" + text + "</root>");
  EXPECT_EQ(GetXMLDOMNodeText(document.document_element(), QStringLiteral("a"), true),
            QStringLiteral("x"));
}

}  // namespace
}  // namespace norva
