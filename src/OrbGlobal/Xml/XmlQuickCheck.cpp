#include <OrbGlobal/Xml/XmlQuickCheck.h>

#include <OrbGlobal/Xml/XmlCharacters.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace norva {

namespace {

// More attributes on one element than this are left to the conforming reader, so that the
// duplicate check stays cheap.
constexpr std::size_t MaxAttributes = 64;

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// The ASCII bytes names are made of here: letters and '_' begin one, digits, '-' and '.' may
// follow. Looked up in a table, as names make up much of a document.
enum TNameByte : std::uint8_t { NotInName = 0, NameStart = 1, NameChar = 2 };

constexpr std::array<std::uint8_t, 256> NameBytes = [] {
  std::array<std::uint8_t, 256> bytes{};
  for (int c = 'a'; c <= 'z'; ++c) bytes[c] = NameStart | NameChar;
  for (int c = 'A'; c <= 'Z'; ++c) bytes[c] = NameStart | NameChar;
  bytes['_'] = NameStart | NameChar;
  for (int c = '0'; c <= '9'; ++c) bytes[c] = NameChar;
  bytes['-'] = NameChar;
  bytes['.'] = NameChar;
  return bytes;
}();

bool Is(char c, TNameByte kind) { return (NameBytes[static_cast<unsigned char>(c)] & kind) != 0; }

// The first of `a`, `b` or `c` at or after `from`. The runs searched are short (a value, the
// indentation between two tags), where a plain loop beats find_first_of's memchr per byte.
std::size_t FindFirstOf(std::string_view text, std::size_t from, char a, char b, char c) {
  for (std::size_t at = from; at < text.size(); ++at) {
    const char here = text[at];
    if (here == a || here == b || here == c) return at;
  }
  return std::string_view::npos;
}

// Every step returns false as soon as the document is anything but plainly well-formed.
class TQuickCheck {
 public:
  explicit TQuickCheck(std::string_view text) : mText(text) {}

  bool Document() {
    if (Starts("<?xml") && mPosition + 5 < mText.size() && IsSpace(mText[mPosition + 5]) &&
        !Declaration())
      return false;
    if (!Miscellany()) return false;
    if (Peek() != '<' || !Element()) return false;
    return Miscellany() && AtEnd();
  }

 private:
  bool AtEnd() const { return mPosition >= mText.size(); }
  char Peek(std::size_t ahead = 0) const {
    return mPosition + ahead < mText.size() ? mText[mPosition + ahead] : '\0';
  }
  bool Starts(std::string_view prefix) const {
    return mText.substr(mPosition, prefix.size()) == prefix;
  }
  bool Take(std::string_view prefix) {
    if (!Starts(prefix)) return false;
    mPosition += prefix.size();
    return true;
  }
  bool SkipSpace() {
    const std::size_t start = mPosition;
    while (!AtEnd() && IsSpace(mText[mPosition])) ++mPosition;
    return mPosition > start;
  }
  // Moves past the next `end`; false when there is none.
  bool SkipPast(std::string_view end) {
    const std::size_t at = mText.find(end, mPosition);
    if (at == std::string_view::npos) return false;
    mPosition = at + end.size();
    return true;
  }

  // Names of ASCII letters, digits, '_', '-' and '.', not beginning with a digit, '-' or '.'.
  // Others (colons, other scripts) are left to the conforming reader, whose name rules differ in
  // their details from the letter of XML 1.0.
  bool Name(std::string_view& name) {
    const std::size_t start = mPosition;
    if (!Is(Peek(), NameStart)) return false;
    ++mPosition;
    while (mPosition < mText.size() && Is(mText[mPosition], NameChar)) ++mPosition;
    const char next = Peek();
    if (static_cast<unsigned char>(next) >= 0x80 || next == ':') return false;
    name = mText.substr(start, mPosition - start);
    return true;
  }

  bool Equals() {
    SkipSpace();
    if (!Take("=")) return false;
    SkipSpace();
    return true;
  }

  // After '&': one of the five predefined entities or a character reference of an XML character.
  bool Reference() {
    if (Take("#")) {
      const bool hex = Take("x");
      char32_t value = 0;
      std::size_t digits = 0;
      for (char c = Peek(); c != ';'; c = Peek()) {
        int digit = -1;
        if (c >= '0' && c <= '9') digit = c - '0';
        if (hex && c >= 'a' && c <= 'f') digit = c - 'a' + 10;
        if (hex && c >= 'A' && c <= 'F') digit = c - 'A' + 10;
        if (digit < 0 || ++digits > 8) return false;
        value = value * (hex ? 16 : 10) + static_cast<char32_t>(digit);
        ++mPosition;
      }
      ++mPosition;
      return digits > 0 && IsXmlCharacter(value);
    }
    std::string_view name;
    if (!Name(name) || !Take(";")) return false;
    return name == "lt" || name == "gt" || name == "amp" || name == "apos" || name == "quot";
  }

  bool AttributeValue() {
    const char quote = Peek();
    if (quote != '"' && quote != '\'') return false;
    ++mPosition;
    for (;;) {
      const std::size_t at = FindFirstOf(mText, mPosition, quote, '<', '&');
      if (at == std::string_view::npos || mText[at] == '<') return false;
      mPosition = at + 1;
      if (mText[at] == quote) return true;
      if (!Reference()) return false;
    }
  }

  bool Declaration() {
    mPosition += 5;
    SkipSpace();
    if (!Take("version") || !Equals() || !(Take("\"1.0\"") || Take("'1.0'"))) return false;
    const bool spaced = SkipSpace();
    if (spaced && Take("encoding")) {
      if (!Equals() ||
          !(Take("\"UTF-8\"") || Take("'UTF-8'") || Take("\"utf-8\"") || Take("'utf-8'")))
        return false;
      SkipSpace();
    }
    return Take("?>");
  }

  // After "<?": a processing instruction whose target is not "xml" in any case.
  bool ProcessingInstruction() {
    std::string_view target;
    if (!Name(target)) return false;
    if (target.size() == 3 && (target[0] | 0x20) == 'x' && (target[1] | 0x20) == 'm' &&
        (target[2] | 0x20) == 'l')
      return false;
    if (Take("?>")) return true;
    return SkipSpace() && SkipPast("?>");
  }

  // After "<!--": no "--" before the closing "-->".
  bool Comment() {
    const std::size_t at = mText.find("--", mPosition);
    if (at == std::string_view::npos || at + 2 >= mText.size() || mText[at + 2] != '>')
      return false;
    mPosition = at + 3;
    return true;
  }

  // Whitespace, comments and processing instructions, around the document element.
  bool Miscellany() {
    for (;;) {
      SkipSpace();
      if (Take("<!--")) {
        if (!Comment()) return false;
      } else if (Starts("<?")) {
        mPosition += 2;
        if (!ProcessingInstruction()) return false;
      } else {
        return true;
      }
    }
  }

  // After '<': the name and attributes of a start tag; `empty` tells whether it closed itself.
  bool StartTag(bool& empty) {
    std::string_view name;
    if (!Name(name)) return false;
    mOpen.push_back(name);
    mAttributes.clear();
    for (;;) {
      const bool spaced = SkipSpace();
      if (Take("/>")) {
        mOpen.pop_back();
        empty = true;
        return true;
      }
      if (Take(">")) {
        empty = false;
        return true;
      }
      std::string_view attribute;
      if (!spaced || !Name(attribute) || !Equals() || !AttributeValue()) return false;
      if (mAttributes.size() == MaxAttributes ||
          std::find(mAttributes.begin(), mAttributes.end(), attribute) != mAttributes.end())
        return false;
      mAttributes.push_back(attribute);
    }
  }

  // Character data up to the next markup: no "]]>" in it.
  bool Text() {
    for (; mPosition < mText.size(); ++mPosition) {
      const char c = mText[mPosition];
      if (c == '<' || c == '&') return true;
      if (c == ']' && Starts("]]>")) return false;
    }
    return true;
  }

  // After "</": the name of the innermost open element, then '>'.
  bool EndTag() {
    std::string_view name;
    if (!Name(name) || name != mOpen.back()) return false;
    SkipSpace();
    if (!Take(">")) return false;
    mOpen.pop_back();
    return true;
  }

  // At '<': the markup that begins there. Start and end tags, by far the most of it, are told
  // apart by their second byte before anything rarer is tried.
  bool Markup(bool& empty) {
    const char second = Peek(1);
    if (Is(second, NameStart)) {
      ++mPosition;
      return StartTag(empty);
    }
    if (second == '/') {
      mPosition += 2;
      return EndTag();
    }
    if (Take("<!--")) return Comment();
    if (Take("<![CDATA[")) return SkipPast("]]>");
    if (Take("<?")) return ProcessingInstruction();
    return false;
  }

  // The document element and everything in it, without recursion.
  bool Element() {
    ++mPosition;
    bool empty = false;
    if (!StartTag(empty)) return false;
    while (!mOpen.empty()) {
      if (AtEnd()) return false;
      const char c = mText[mPosition];
      if (c == '<') {
        if (!Markup(empty)) return false;
      } else if (c == '&') {
        ++mPosition;
        if (!Reference()) return false;
      } else if (!Text()) {
        return false;
      }
    }
    return true;
  }

  std::string_view mText;
  std::size_t mPosition = 0;
  std::vector<std::string_view> mOpen;
  std::vector<std::string_view> mAttributes;
};

}  // namespace

bool IsCertainlyWellFormedUtf8(std::string_view utf8) {
  if (FindCharacterXmlCannotHold(utf8) != std::string_view::npos) return false;
  TQuickCheck check(utf8);
  return check.Document();
}

}  // namespace norva
