#include <OrbGlobal/Model/OrbGuid.h>

#include <NorvaGlobal/HexDigits.h>
#include <OrbGlobal/Model/OrbErrors.h>

#include <cstdint>

namespace norva {

namespace {

constexpr qsizetype RegistryFormLength = 38;

bool IsHyphenPosition(qsizetype i) { return i == 9 || i == 14 || i == 19 || i == 24; }

char32_t CodeAt(QStringView text, qsizetype i) { return text[i].unicode(); }
char32_t CodeAt(QLatin1StringView text, qsizetype i) { return text[i].unicode(); }
// A byte of a multi-byte character is no ASCII character either.
char32_t CodeAt(QUtf8StringView text, qsizetype i) { return static_cast<unsigned char>(text[i]); }

// QUuid alone would also take the form without braces; files and the registry always have them.
// Any other character than an ASCII one fails, in whichever encoding the text comes.
template <typename TView>
bool IsRegistryForm(TView text) {
  if (text.size() != RegistryFormLength) return false;
  const auto at = [&text](qsizetype i) { return CodeAt(text, i); };
  if (at(0) != u'{' || at(RegistryFormLength - 1) != u'}') return false;
  for (qsizetype i = 1; i < RegistryFormLength - 1; ++i) {
    const bool ok = IsHyphenPosition(i) ? at(i) == u'-' : HexDigitValue(at(i)) >= 0;
    if (!ok) return false;
  }
  return true;
}

// `digits` upper-case hexadecimal digits of `value`, most significant first; returns the end.
char* PutHex(char* out, std::uint32_t value, int digits) {
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) *out++ = HexDigitChar(value >> shift);
  return out;
}

}  // namespace

QString GUIDToString(const QUuid& guid) {
  const std::array<char, 39> text = GUIDToUtf8(guid);
  return QString::fromLatin1(text.data(), 38);
}

std::array<char, 39> GUIDToUtf8(const QUuid& guid) {
  std::array<char, 39> text{};
  char* out = text.data();
  *out++ = '{';
  out = PutHex(out, guid.data1, 8);
  *out++ = '-';
  out = PutHex(out, guid.data2, 4);
  *out++ = '-';
  out = PutHex(out, guid.data3, 4);
  *out++ = '-';
  out = PutHex(out, guid.data4[0] << 8 | guid.data4[1], 4);
  *out++ = '-';
  for (int i = 2; i < 8; ++i) out = PutHex(out, guid.data4[i], 2);
  *out = '}';
  return text;
}

QUuid StringToGUID(QAnyStringView text) {
  if (!text.visit([](auto view) { return IsRegistryForm(view); })) {
    throw EConvertError(QStringLiteral("'%1' is not a valid GUID value").arg(text.toString()));
  }
  return QUuid::fromString(text);
}

}  // namespace norva
