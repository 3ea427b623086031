#include <Utils/PatternMatch.h>

#include <QChar>

#include <algorithm>
#include <array>

namespace norva {

namespace {

bool SameIgnoringCase(char16_t a, char16_t b) {
  return a == b || QChar::toUpper(char32_t{a}) == QChar::toUpper(char32_t{b});
}

}  // namespace

// One text against the tokens. Between stars the match is a plain walk; at a star or plus the
// result is whether the rest matches from some later text position, which depends only on that
// position being at most the last one from which the rest matches. Those last positions are found
// for every star from the right, each by walking its segment from the end of the text backwards.
class TWildcardPattern::TMatch {
 public:
  TMatch(const std::vector<TToken>& tokens, QStringView text, bool ignoreCase)
      : mTokens(tokens),
        mText(text),
        mIgnoreCase(ignoreCase),
        mCount(static_cast<int>(tokens.size())),
        mLength(static_cast<int>(text.size())) {}

  bool Run() { return Walk(0, 0); }

 private:
  bool IsStar(int p) const {
    return mTokens[static_cast<std::size_t>(p)].Kind == TKind::Star ||
           mTokens[static_cast<std::size_t>(p)].Kind == TKind::Plus;
  }

  bool MatchesOne(const TToken& token, char16_t c) const {
    switch (token.Kind) {
      case TKind::AnyOne: return true;
      case TKind::Digit: return c >= u'0' && c <= u'9';
      case TKind::Char: return token.Char == c || (mIgnoreCase && SameIgnoringCase(token.Char, c));
      case TKind::Star:
      case TKind::Plus: break;
    }
    return false;
  }

  // The text from t against the tokens from p, as a fresh match of those two rests.
  bool Walk(int t, int p) {
    if (p == mCount) return t == mLength;
    for (;;) {
      if (p == mCount) return false;  // text left over
      const TToken& token = mTokens[static_cast<std::size_t>(p)];
      if (token.Kind == TKind::Star || token.Kind == TKind::Plus) {
        int from = t;
        if (token.Kind == TKind::Plus) {
          if (t == mLength) return false;
          ++from;
        }
        if (p + 1 == mCount) return true;
        // Most texts fail before the first star; only those that reach one need the table.
        if (!mPrepared) PrepareStars();
        return from <= LastStart(p);
      }
      if (t == mLength || !MatchesOne(token, mText[t].unicode())) return false;
      ++t;
      ++p;
      // The text is used up: only the end of the pattern, or a last lone star, still matches.
      if (t == mLength)
        return p == mCount || (p + 1 == mCount && mTokens.back().Kind == TKind::Star);
    }
  }

  // The last text position (below the end) from which the tokens after star p match, or -1.
  int LastStart(int p) const {
    return p < Inline ? mInline[static_cast<std::size_t>(p)]
                      : mMore[static_cast<std::size_t>(p - Inline)];
  }
  int& LastStartSlot(int p) {
    return p < Inline ? mInline[static_cast<std::size_t>(p)]
                      : mMore[static_cast<std::size_t>(p - Inline)];
  }

  // From the right, so that each star's segment can rely on the next star's answer: the rest
  // after star p is its segment of single-character tokens, then star q (or the end). A start k
  // can only succeed if the segment fits before q's last start, which bounds the search.
  void PrepareStars() {
    mPrepared = true;
    if (mCount > Inline) mMore.resize(static_cast<std::size_t>(mCount - Inline));
    int q = mCount;
    for (int p = mCount - 1; p >= 0; --p) {
      if (!IsStar(p)) continue;
      if (p + 1 < mCount) LastStartSlot(p) = FindLastStart(p, q);
      q = p;
    }
  }

  int FindLastStart(int p, int q) {
    const int segment = q - p - 1;
    int highest = mLength - 1;
    int lowest = 0;
    if (q == mCount) {
      // The segment ends the pattern, so it must end the text.
      highest = lowest = mLength - segment;
    } else {
      const bool plus = mTokens[static_cast<std::size_t>(q)].Kind == TKind::Plus;
      const int reach = q + 1 == mCount ? mLength : LastStart(q);
      highest = std::min(highest, reach - segment - (plus ? 1 : 0));
    }
    for (int k = highest; k >= lowest && k >= 0; --k)
      if (Walk(k, p + 1)) return k;
    return -1;
  }

  static constexpr int Inline = 16;

  const std::vector<TToken>& mTokens;
  QStringView mText;
  bool mIgnoreCase;
  int mCount;
  int mLength;
  std::array<int, Inline> mInline{};
  std::vector<int> mMore;
  bool mPrepared = false;
};

TWildcardPattern::TWildcardPattern(QStringView pattern) {
  mTokens.reserve(static_cast<std::size_t>(pattern.size()));
  for (qsizetype i = 0; i < pattern.size(); ++i) {
    const char16_t c = pattern[i].unicode();
    switch (c) {
      case u'*': mTokens.push_back({TKind::Star, c}); break;
      case u'+': mTokens.push_back({TKind::Plus, c}); break;
      case u'?': mTokens.push_back({TKind::AnyOne, c}); break;
      case u'#': mTokens.push_back({TKind::Digit, c}); break;
      case u'\\':
        // The next character literally; a lone trailing backslash stands for itself.
        mTokens.push_back({TKind::Char, i + 1 < pattern.size() ? pattern[++i].unicode() : c});
        break;
      default: mTokens.push_back({TKind::Char, c}); break;
    }
  }
}

bool TWildcardPattern::Match(QStringView text, bool ignoreCase) const {
  TMatch match(mTokens, text, ignoreCase);
  return match.Run();
}

bool PatternMatch(QStringView text, QStringView pattern, bool ignoreCase) {
  return TWildcardPattern(pattern).Match(text, ignoreCase);
}

}  // namespace norva
