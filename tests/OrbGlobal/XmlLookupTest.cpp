#include "ThrownMessage.h"

#include <OrbGlobal/Xml/XmlDocument.h>
#include <OrbGlobal/Xml/XmlLookup.h>

#include <NorvaGlobal/Exceptions.h>
#include <NorvaGlobal/Vocabulary.h>

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

TEST_F(XmlLookup, FindsTheFirstDirectChildElementWithExactlyThatNameOrRaisesItsName) {
  EXPECT_STREQ(Child("Zone").child_value(), "first");
  EXPECT_STREQ(Child("zone").child_value(), "lower");
  EXPECT_FALSE(GetXMLDOMNode(mRoot, QStringLiteral("ZONE"), false));
  EXPECT_FALSE(GetXMLDOMNode(mRoot, QStringLiteral("Inner"), false)) << "grandchildren never match";
  EXPECT_FALSE(GetXMLDOMNode(mRoot, QString(), false)) << "text nodes have no element name";

  EXPECT_EQ(ThrownMessage([&] { GetXMLDOMNode(mRoot, QStringLiteral("Preset"), true); }),
            "Preset element not found");
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

// A number the value's type cannot hold reads as none, so a reader falls back rather than wraps.
TEST(XmlLookupText, NumbersOnlyWhereTheTypeHoldsThem) {
  EXPECT_EQ(NumberOf<quint8>("255"), 255);
  EXPECT_EQ(NumberOf<quint8>("256"), std::nullopt);
  EXPECT_EQ(NumberOf<quint8>("-1"), std::nullopt);
  EXPECT_EQ(NumberOf<qint16>("-32768"), -32768);
  EXPECT_EQ(NumberOf<qint16>("32768"), std::nullopt);
  EXPECT_EQ(NumberOf<quint32>("4294967295"), 4294967295u);
  EXPECT_EQ(NumberOf<int>(" 12 "), 12);
}

class XmlValues : public testing::Test {
 protected:
  void SetUp() override {
    LoadXMLDocument(mDocument,
                    "<root name='K\xC3\xBC"
                    "che' index='7' group='x'><n>300</n><b>-1</b>"
                    "<b>0</b><b>TRUE</b><b>False</b><b>yes</b><e>errNoAck</e><e>errNone</e>"
                    "<e/></root>");
    mRoot = mDocument.document_element();
  }
  pugi::xml_node Nth(const char* name, int n) {
    pugi::xml_node node = mRoot.child(name);
    while (n-- > 0) node = node.next_sibling(name);
    return node;
  }

  pugi::xml_document mDocument;
  pugi::xml_node mRoot;
};

TEST_F(XmlValues, NumbersBooleansEnumerationsAndNamesFromElementsAndAttributes) {
  EXPECT_EQ(ElementNumber<int>(mRoot.child("n")), 300);
  EXPECT_EQ(ElementNumber<quint8>(mRoot.child("n"), 9), 9);
  EXPECT_EQ(ElementNumber<int>(mRoot.child("missing")), std::nullopt);
  EXPECT_EQ(AttributeNumber<int>(mRoot.attribute("index")), 7);
  EXPECT_EQ(AttributeNumber<int>(mRoot.attribute("group")), std::nullopt);
  EXPECT_EQ(AttributeNumber<int>(mRoot.attribute("missing")), std::nullopt);
  // Booleans are numbers, or true and false in any case.
  EXPECT_TRUE(ElementBoolean(Nth("b", 0)));
  EXPECT_FALSE(ElementBoolean(Nth("b", 1)));
  EXPECT_TRUE(ElementBoolean(Nth("b", 2)));
  EXPECT_FALSE(ElementBoolean(Nth("b", 3)));
  EXPECT_THROW(ElementBoolean(Nth("b", 4)), EConvertError);
  // Enumerations by their value names only.
  EXPECT_EQ(ElementEnum<TError>(Nth("e", 0)), errNoAck);
  EXPECT_THROW(ElementEnum<TError>(Nth("e", 1)), EConvertError);
  EXPECT_THROW(ElementEnum<TError>(Nth("e", 2)), EConvertError);
  EXPECT_EQ(NameAttribute(mRoot), QStringLiteral("K\u00fcche"));
  EXPECT_EQ(NameAttribute(mRoot.child("n")), QString());
}

}  // namespace
}  // namespace norva
