#include <OrbGlobal/Xml/XmlCharacters.h>

#include <cstdint>
#include <cstring>

namespace norva {

namespace {

// One code point read from UTF-8; Length is 0 when the bytes are not UTF-8 (overlong forms and
// encoded surrogates included).
struct TCodePoint {
  char32_t Value;
  std::size_t Length;
};

// A multi-byte sequence as its lead byte announces it: length, the value bits the lead carries and
// the smallest value the length may encode (anything less is an overlong form). Length 0: no lead.
struct TLeadByte {
  std::size_t Length;
  char32_t Bits;
  char32_t Smallest;
};

TLeadByte ReadLeadByte(unsigned char lead) {
  if ((lead & 0xE0) == 0xC0) return {2, lead & 0x1Fu, 0x80};
  if ((lead & 0xF0) == 0xE0) return {3, lead & 0x0Fu, 0x800};
  if ((lead & 0xF8) == 0xF0) return {4, lead & 0x07u, 0x10000};
  return {0, 0, 0};
}

TCodePoint DecodeUtf8(std::string_view text, std::size_t at) {
  const auto first = static_cast<unsigned char>(text[at]);
  if (first < 0x80) return {first, 1};
  const TLeadByte lead = ReadLeadByte(first);
  if (lead.Length == 0 || text.size() - at < lead.Length) return {0, 0};
  char32_t value = lead.Bits;
  for (std::size_t i = 1; i < lead.Length; ++i) {
    const auto byte = static_cast<unsigned char>(text[at + i]);
    if ((byte & 0xC0) != 0x80) return {0, 0};
    value = value << 6 | (byte & 0x3Fu);
  }
  if (value < lead.Smallest || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) {
    return {0, 0};
  }
  return {value, lead.Length};
}

constexpr std::uint64_t Ones = 0x0101010101010101;
constexpr std::uint64_t HighBits = 0x8080808080808080;

// The high bit of each byte of `word` (all below 0x80) that equals `byte`: adding 0x7F to any other
// sets its high bit, and no sum carries into the next byte.
std::uint64_t BytesEqualTo(std::uint64_t word, std::uint8_t byte) {
  return ~((word ^ (byte * Ones)) + 0x7F * Ones) & HighBits;
}

// Eight bytes at once that are all ASCII XML characters: printable, tab, line feed or carriage
// return. Indented files have those every few bytes, so they are taken in the word too.
bool AllAsciiXmlCharacters(std::string_view text, std::size_t at) {
  std::uint64_t word = 0;
  std::memcpy(&word, text.data() + at, sizeof word);
  if ((word & HighBits) != 0) return false;
  // Bytes below 0x20 are those to which adding 0x60 leaves the high bit clear.
  const std::uint64_t controls = ~(word + 0x60 * Ones) & HighBits;
  if (controls == 0) return true;
  const std::uint64_t allowed =
      BytesEqualTo(word, '\t') | BytesEqualTo(word, '\n') | BytesEqualTo(word, '\r');
  return (controls & ~allowed) == 0;
}

// The common case, taken without decoding.
bool IsAsciiXmlCharacter(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 0x20 ? byte < 0x80 : (byte == '\t' || byte == '\n' || byte == '\r');
}

QString Hex(char32_t value, int digits) {
  return QString::number(value, 16).toUpper().rightJustified(digits, QLatin1Char('0'));
}

}  // namespace

bool IsXmlCharacter(char32_t c) {
  return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) ||
         (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

std::size_t FindCharacterXmlCannotHold(std::string_view utf8) {
  std::size_t at = 0;
  while (at < utf8.size()) {
    if (utf8.size() - at >= 8 && AllAsciiXmlCharacters(utf8, at)) {
      at += 8;
      continue;
    }
    if (IsAsciiXmlCharacter(utf8[at])) {
      ++at;
      continue;
    }
    const TCodePoint c = DecodeUtf8(utf8, at);
    if (c.Length == 0 || !IsXmlCharacter(c.Value)) return at;
    at += c.Length;
  }
  return std::string_view::npos;
}

QString DescribeCharacterXmlCannotHold(std::string_view utf8, std::size_t offset) {
  const TCodePoint c = DecodeUtf8(utf8, offset);
  if (c.Length == 0) {
    return QStringLiteral("Invalid UTF-8 byte 0x") +
           Hex(static_cast<unsigned char>(utf8[offset]), 2);
  }
  return QStringLiteral("Character U+%1 is not allowed in XML").arg(Hex(c.Value, 4));
}

std::string WithoutCharactersXmlCannotHold(std::string_view utf8) {
  std::string kept;
  kept.reserve(utf8.size());
  std::size_t at = 0;
  while (at < utf8.size()) {
    const TCodePoint c = DecodeUtf8(utf8, at);
    const std::size_t length = c.Length == 0 ? 1 : c.Length;
    if (c.Length != 0 && IsXmlCharacter(c.Value)) kept.append(utf8.substr(at, length));
    at += length;
  }
  return kept;
}

}  // namespace norva
