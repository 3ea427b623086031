#include <OrbGlobal/Xml/XmlDocument.h>
#include <OrbGlobal/Xml/XmlLookup.h>

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
                    "\r\n\t<Empty/>\r\n\t<Name>K\xC3\xBC"
                    "che \r\n</Name></root>");
    mRoot = mDocument.document_element();
  }
  pugi::xml_node Child(const char* name) { return GetXMLDOMNode(mRoot, name, true); }

  pugi::xml_document mDocument;
  pugi::xml_node mRoot;
};

TEST_F(XmlLookup, FindsTheFirstDirectChildElementWithExactlyThatName) {
  EXPECT_STREQ(Child("Zone").child_value(), "first");
  EXPECT_STREQ(Child("zone").child_value(), "lower");
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
  EXPECT_EQ(GetXMLDOMNodeText(mRoot, QStringLiteral("Name"), true),
            QStringLiteral("K\u00fcche \r\n"));
  EXPECT_EQ(GetXMLDOMNodeText(mRoot, QStringLiteral("Absent"), false), QString());
}

TEST_F(XmlLookup, ElementTextIsTheFirstChildsValueOnly) {
  EXPECT_EQ(GetElementText(Child("Zone")), QStringLiteral("first"));
  EXPECT_EQ(GetElementText(Child("Empty")), QString());
  EXPECT_EQ(GetElementText(Child("Group")), QString()) << "a nested element's value is empty";
  EXPECT_EQ(GetElementText(Child("Mixed")), QStringLiteral("a"));
  EXPECT_EQ(GetElementText(mRoot), QStringLiteral("\r\n\t")) << "indentation is a text node too";
}

TEST(XmlLookupText, AValueBeginningWithU_FEFFKeepsIt) {
  pugi::xml_document document;
  LoadXMLDocument(document, "<a n=\"\xEF\xBB\xBFx\">\xEF\xBB\xBFy</a>");
  const pugi::xml_node a = document.document_element();
  EXPECT_EQ(GetElementText(a), QStringLiteral("\uFEFFy"));
  EXPECT_EQ(GetXMLDOMText(a), QStringLiteral("\uFEFFy"));
  EXPECT_EQ(XMLValue(a.attribute("n").value()), QStringLiteral("\uFEFFx"));
}

TEST(XmlLookupText, WalksDeepNestingWithoutRecursion) {
  constexpr int Depth = 100000;
  const QByteArray nested =
      QByteArray("<a>").repeated(Depth) + "x" + QByteArray("</a>").repeated(Depth);
  pugi::xml_document document;
  LoadXMLDocument(document, "<root>" + nested + "</root>");
  EXPECT_EQ(GetXMLDOMNodeText(document.document_element(), QStringLiteral("a"), true),
            QStringLiteral("x"));
}

// Plain digits are read at once; everything else as Qt reads numbers, so both ways must agree.
TEST(XmlLookupText, DecimalsReadAsQtReadsThem) {
  const struct {
    const char* Text;
    std::optional<long long> Value;
  } cases[] = {
      {"19200", 19200},
      {"-5", -5},
      {"007", 7},
      {" 12\t", 12},
      {"+7", 7},
      {"123456789012345678", 123456789012345678},
      {"1234567890123456789", 1234567890123456789},
      {"99999999999999999999", std::nullopt},
      {"", std::nullopt},
      {"-", std::nullopt},
      {"12a", std::nullopt},
      {"0x10", std::nullopt},
  };
  for (const auto& c : cases) EXPECT_EQ(DecimalOf(c.Text), c.Value) << c.Text;
}

}  // namespace
}  // namespace norva
