#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlDocument.h>
#include <OrbGlobal/Xml/XmlErrors.h>

#include <NorvaGlobal/Vocabulary.h>

#include <limits>

#include <gtest/gtest.h>

namespace norva {
namespace {

// Under the document an element gets a line break without tab.
TEST(AddXMLDOMElement, IndentsOneTabPerLevelAndNothingAfterTheLastChild) {
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("root");
  pugi::xml_node first = AddXMLDOMElement(root, QStringLiteral("a"));
  AddXMLDOMElement(first, QStringLiteral("inner"));
  AddXMLDOMElement(root, QStringLiteral("b"));
  EXPECT_EQ(first, root.child("a"));
  EXPECT_EQ(SaveXMLDocument(document), "<root>\r\n\t<a>\r\n\t\t<inner/></a>\r\n\t<b/></root>");

  pugi::xml_document top;
  AddXMLDOMElement(AddXMLDOMElement(top, QStringLiteral("root")), QStringLiteral("K\u00fcche"));
  EXPECT_EQ(SaveXMLDocument(top),
            "\r\n<root>\r\n\t<K\xC3\xBC"
            "che/></root>");
}

TEST(AddXMLDOMElement, RefusesWhatWouldBreakTheFile) {
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("root");
  for (const QString& name :
       {QString(), QStringLiteral("1st"), QStringLiteral("two words"), QStringLiteral("a<b"),
        QStringLiteral("-x"), QString(QChar(0xD800))}) {
    EXPECT_THROW(AddXMLDOMElement(root, name), EXMLError) << name.toStdString();
  }
  EXPECT_FALSE(root.first_child()) << "nothing is added for a refused name";
  for (const QString& name : {QStringLiteral("_x"), QStringLiteral("ns:a-b.c9"),
                              QStringLiteral("\u00e9t\u00e9"), QString::fromUcs4(U"\U00010000")}) {
    EXPECT_NO_THROW(AddXMLDOMElement(root, name)) << name.toStdString();
  }
  EXPECT_THROW(AddXMLDOMElement(root.first_child(), QStringLiteral("a")), EXMLError);
  EXPECT_THROW(AddXMLDOMElement(pugi::xml_node(), QStringLiteral("a")), EXMLError);
}

TEST(SetXMLDOMText, ReplacesChildrenWritingCarriageReturnsRaw) {
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("root");
  AddXMLDOMElement(root, QStringLiteral("old"));
  SetXMLDOMText(root, QStringLiteral("a\r\nb <&> \u00fc"));
  EXPECT_EQ(SaveXMLDocument(document), "<root>a\r\nb &lt;&amp;&gt; \xC3\xBC</root>");
  SetXMLDOMText(root, QString());
  EXPECT_FALSE(root.first_child());
}

TEST(ValueElements, NumbersInDecimalEnumerationsByNameAndTheNameAttribute) {
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("root");
  SetNameAttribute(root, QStringLiteral("K\u00fcche & <Bad>"));
  AddTextElement(root, "t", QStringLiteral("\u00fc"));
  AddNumberElement(root, "n", std::numeric_limits<long long>::min());
  AddNumberElement(root, "z", 0);
  AddEnumElement(root, "e", errEEPROMFull);
  AddEnumElement(root, "u", static_cast<TError>(200));
  EXPECT_EQ(SaveXMLDocument(document).toStdString(),
            "<root name=\"K\xC3\xBC"
            "che &amp; &lt;Bad>\">\r\n\t<t>\xC3\xBC</t>"
            "\r\n\t<n>-9223372036854775808</n>\r\n\t<z>0</z>\r\n\t<e>errEEPROMFull</e>"
            "\r\n\t<u/></root>");
}

}  // namespace
}  // namespace norva
