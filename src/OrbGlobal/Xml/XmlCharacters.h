#pragma once
// The characters an XML 1.0 document can hold, in UTF-8 text: tab, line feed, carriage return,
// U+0020 to U+D7FF, U+E000 to U+FFFD and U+10000 to U+10FFFF. Other control characters cannot be
// written even as character references, and bytes that are not UTF-8 are no characters at all.

#include <QString>

#include <cstddef>
#include <string>
#include <string_view>

namespace norva {

// Whether the code point is such a character.
bool IsXmlCharacter(char32_t c);

// Offset of the first byte of `utf8` that does not begin such a character, or npos.
std::size_t FindCharacterXmlCannotHold(std::string_view utf8);

// Names what lies at `offset` (found as above): "Invalid UTF-8 byte 0xC3" or "Character U+0001
// is not allowed in XML".
QString DescribeCharacterXmlCannotHold(std::string_view utf8, std::size_t offset);

// `utf8` without the characters XML cannot hold; bytes that are not UTF-8 go one by one.
std::string WithoutCharactersXmlCannotHold(std::string_view utf8);

}  // namespace norva
