#include <OrbGlobal/Xml/XmlNames.h>

namespace norva {

namespace {

bool InRange(char32_t c, char32_t first, char32_t last) { return c >= first && c <= last; }

bool IsNameStartChar(char32_t c) {
  return c == U':' || c == U'_' || InRange(c, U'A', U'Z') || InRange(c, U'a', U'z') ||
         InRange(c, 0xC0, 0xD6) || InRange(c, 0xD8, 0xF6) || InRange(c, 0xF8, 0x2FF) ||
         InRange(c, 0x370, 0x37D) || InRange(c, 0x37F, 0x1FFF) || InRange(c, 0x200C, 0x200D) ||
         InRange(c, 0x2070, 0x218F) || InRange(c, 0x2C00, 0x2FEF) || InRange(c, 0x3001, 0xD7FF) ||
         InRange(c, 0xF900, 0xFDCF) || InRange(c, 0xFDF0, 0xFFFD) || InRange(c, 0x10000, 0xEFFFF);
}

bool IsNameChar(char32_t c) {
  return IsNameStartChar(c) || c == U'-' || c == U'.' || InRange(c, U'0', U'9') || c == 0xB7 ||
         InRange(c, 0x300, 0x36F) || InRange(c, 0x203F, 0x2040);
}

// Next code point of `text` at `index`, advancing it; an unpaired surrogate yields 0 (never valid).
char32_t NextCodePoint(const QString& text, qsizetype& index) {
  const QChar unit = text.at(index++);
  if (!unit.isSurrogate()) return unit.unicode();
  if (unit.isHighSurrogate() && index < text.size() && text.at(index).isLowSurrogate()) {
    return QChar::surrogateToUcs4(unit, text.at(index++));
  }
  return 0;
}

}  // namespace

bool IsValidXMLName(const QString& name) {
  qsizetype index = 0;
  if (name.isEmpty() || !IsNameStartChar(NextCodePoint(name, index))) return false;
  while (index < name.size()) {
    if (!IsNameChar(NextCodePoint(name, index))) return false;
  }
  return true;
}

}  // namespace norva
