#include <OrbGlobal/XmlBuilding.h>
#include <OrbGlobal/XmlDocument.h>
#include <OrbGlobal/XmlErrors.h>

#include <gtest/gtest.h>

namespace norva {
namespace {

QByteArray Saved(const pugi::xml_document& document) { return SaveXMLDocument(document); }

TEST(AddXMLDOMElement, IndentsEachLevelWithOneMoreTab) {
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("root");
  pugi::xml_node child = AddXMLDOMElement(root, QStringLiteral("child"));
  AddXMLDOMElement(child, QStringLiteral("grandchild"));
  EXPECT_EQ(Saved(document), "<root>\r\n\t<child>\r\n\t\t<grandchild/></child></root>");
}

TEST(AddXMLDOMElement, PutsTheEndTagRightAfterTheLastChild) {
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("root");
  for (const char* name : {"a", "b", "c"}) AddXMLDOMElement(root, QString::fromLatin1(name));
  EXPECT_EQ(Saved(document), "<root>\r\n\t<a/>\r\n\t<b/>\r\n\t<c/></root>");
}

TEST(AddXMLDOMElement, AddedToTheDocumentGetsALineBreakWithoutTab) {
  pugi::xml_document document;
  pugi::xml_node root = AddXMLDOMElement(document, QStringLiteral("root"));
  AddXMLDOMElement(root, QStringLiteral("child"));
  EXPECT_EQ(Saved(document), "\r\n<root>\r\n\t<child/></root>");
}

TEST(AddXMLDOMElement, ReturnsTheNewElementNamedInUtf8) {
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("root");
  pugi::xml_node element = AddXMLDOMElement(root, QStringLiteral("Küche"));
  EXPECT_EQ(element, root.last_child());
  EXPECT_STREQ(element.name(),
               "K\xC3\xBC"
               "che");
}

TEST(AddXMLDOMElement, RefusesNamesThatWouldBreakTheFile) {
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("root");
  const QString badNames[] = {QString(),
                              QStringLiteral("1st"),
                              QStringLiteral("two words"),
                              QStringLiteral("a<b"),
                              QStringLiteral("a&b"),
                              QStringLiteral("-dash"),
                              QString(QChar(0xD800)) + u'x'};
  for (const QString& name : badNames) {
    EXPECT_THROW(AddXMLDOMElement(root, name), EXMLError) << name.toStdString();
  }
  EXPECT_FALSE(root.first_child()) << "nothing is added for a refused name";
}

TEST(AddXMLDOMElement, AcceptsNamesOfTheFullNameProduction) {
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("root");
  for (const QString& name :
       {QStringLiteral("_x"), QStringLiteral("ns:item"), QStringLiteral("a-b.c9"),
        QStringLiteral("\u00e9t\u00e9"), QString::fromUcs4(U"\U00010000x")}) {
    EXPECT_NO_THROW(AddXMLDOMElement(root, name)) << name.toStdString();
  }
}

TEST(AddXMLDOMElement, RefusesParentsThatHoldNoElements) {
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("root");
  pugi::xml_node text = root.append_child(pugi::node_pcdata);
  EXPECT_THROW(AddXMLDOMElement(text, QStringLiteral("a")), EXMLError);
  EXPECT_THROW(AddXMLDOMElement(pugi::xml_node(), QStringLiteral("a")), EXMLError);
}

TEST(SetXMLDOMText, ReplacesAllChildrenByOneText) {
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("root");
  AddXMLDOMElement(root, QStringLiteral("old"));
  SetXMLDOMText(root, QStringLiteral("new"));
  EXPECT_EQ(Saved(document), "<root>new</root>");
  SetXMLDOMText(root, QString());
  EXPECT_FALSE(root.first_child());
}

TEST(SetXMLDOMText, WritesCarriageReturnsRawAndEscapesMarkup) {
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("root");
  SetXMLDOMText(root, QStringLiteral("a\r\nb <&> \u00fc"));
  EXPECT_EQ(Saved(document), "<root>a\r\nb &lt;&amp;&gt; \xC3\xBC</root>");
}

}  // namespace
}  // namespace norva
