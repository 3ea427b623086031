#pragma once
// Wildcard patterns over 16-bit characters, anchored at both ends:
//   *  any run of characters, possibly empty      +  any run of at least one character
//   ?  exactly one character                      #  exactly one decimal digit
//   \  takes the next pattern character literally (a lone trailing backslash is itself)
// A star (or plus) decides the whole match from where it stands: the rest of the pattern is tried
// at each later text position, but never against the empty end of the text, so "a*b*" does not
// match "ab" while "a*" matches "a".
//
// Answered in at most (text length x pattern length) steps without recursion, however many stars
// the pattern holds.

#include <QString>
#include <QStringView>

#include <cstdint>
#include <vector>

namespace norva {

bool PatternMatch(QStringView text, QStringView pattern, bool ignoreCase);

// A pattern read once, for matching many texts.
class TWildcardPattern {
 public:
  explicit TWildcardPattern(QStringView pattern);
  bool Match(QStringView text, bool ignoreCase) const;

 private:
  enum class TKind : std::uint8_t { Char, AnyOne, Digit, Star, Plus };
  struct TToken {
    TKind Kind;
    char16_t Char;
  };
  class TMatch;

  std::vector<TToken> mTokens;
};

}  // namespace norva
