#include <OrbGlobal/Xml/XmlCharacters.h>

#include <gtest/gtest.h>

#include <string>

namespace norva {
namespace {

using namespace std::string_literals;

// Every place in and around the eight-byte steps of the scan, for each kind of fault.
TEST(XmlCharacters, FindTheFirstFaultWhereverItIs) {
  const std::string faults[] = {
      "\x01",     "\x1F",         "\0"s,          "\x80",         "\xC3",
      "\xC0\x80", "\xED\xA0\x80", "\xEF\xBF\xBE", "\xEF\xBF\xBF", "\xF4\x90\x80\x80",
      "\xFF"};
  for (const std::string& fault : faults) {
    for (std::size_t at = 0; at <= 20; ++at) {
      const std::string text = std::string(at, 'x') + fault + "\xC3\xA9 tail \x01";
      EXPECT_EQ(FindCharacterXmlCannotHold(text), at)
          << at << " before byte 0x" << std::hex << int(static_cast<unsigned char>(fault[0]));
    }
  }
  EXPECT_EQ(FindCharacterXmlCannotHold("\t\r\n ~\x7F \xC2\x85 \xEF\xBF\xBD \xF0\x9F\x8E\xB5 "
                                       "\xF4\x8F\xBF\xBF long enough for several steps"),
            std::string_view::npos);
  EXPECT_EQ(FindCharacterXmlCannotHold("ends in half a character \xE2\x82"), 25u);
}

TEST(XmlCharacters, DescribeAndDropWhatXmlCannotHold) {
  EXPECT_EQ(DescribeCharacterXmlCannotHold("a\x01", 1),
            QStringLiteral("Character U+0001 is not allowed in XML"));
  EXPECT_EQ(DescribeCharacterXmlCannotHold("\xEF\xBF\xBE", 0),
            QStringLiteral("Character U+FFFE is not allowed in XML"));
  EXPECT_EQ(DescribeCharacterXmlCannotHold("caf\xE9", 3),
            QStringLiteral("Invalid UTF-8 byte 0xE9"));
  EXPECT_EQ(WithoutCharactersXmlCannotHold("a\x01\xC3\xA9\xFF\xEF\xBF\xBE\xE2\x82\xAC\tb\xE2\x82"),
            "a\xC3\xA9\xE2\x82\xAC\tb");
}

}  // namespace
}  // namespace norva
