// The wildcard matcher against a literal transcription of its rules (small inputs, where the
// literal one's cost does not matter), and the rules users meet.

#include <Utils/PatternMatch.h>

#include <gtest/gtest.h>

#include <QRandomGenerator>

using namespace norva;

namespace {

bool Same(QChar a, QChar b, bool ignoreCase) {
  return a == b || (ignoreCase && a.toUpper() == b.toUpper());
}

// The rules step by step, retrying the rest of the pattern after a star at every later position.
bool LiteralMatch(QStringView text, QStringView pattern, bool ignoreCase) {
  if (pattern.isEmpty()) return text.isEmpty();
  qsizetype t = 0;
  qsizetype p = 0;
  for (;;) {
    const QChar c = p < pattern.size() ? pattern[p] : QChar(u'\0');
    const bool textEnd = t == text.size();
    if (c == u'+' || c == u'*') {
      if (c == u'+') {
        if (textEnd) return false;
        ++t;
      }
      ++p;
      if (p == pattern.size()) return true;
      for (; t < text.size(); ++t)
        if (LiteralMatch(text.mid(t), pattern.mid(p), ignoreCase)) return true;
      return false;
    }
    if (textEnd) return false;
    if (c == u'#') {
      if (text[t] < u'0' || text[t] > u'9') return false;
    } else if (c == u'?') {
    } else if (c == u'\\') {
      const QChar literal = p + 1 < pattern.size() ? pattern[++p] : c;
      if (!Same(literal, text[t], ignoreCase)) return false;
    } else if (p == pattern.size() || !Same(c, text[t], ignoreCase)) {
      return false;
    }
    ++t;
    ++p;
    if (t == text.size())
      return p == pattern.size() || LiteralMatch(QStringView(), pattern.mid(p), ignoreCase);
  }
}

QString RandomText(QRandomGenerator& random, QStringView alphabet, int maxLength) {
  QString text;
  const int length = static_cast<int>(random.bounded(maxLength + 1));
  for (int i = 0; i < length; ++i) text += alphabet[random.bounded(alphabet.size())];
  return text;
}

}  // namespace

TEST(PatternMatch, AgreesWithTheRulesTakenLiterally) {
  QRandomGenerator random(20261123);
  int matches = 0;
  for (int i = 0; i < 200000; ++i) {
    const QString pattern = RandomText(random, u"ab*+?#\\Aa1", 7);
    const QString text = RandomText(random, u"abAB1+*", 10);
    const bool ignoreCase = (i & 1) != 0;
    const bool expected = LiteralMatch(text, pattern, ignoreCase);
    matches += expected ? 1 : 0;
    ASSERT_EQ(PatternMatch(text, pattern, ignoreCase), expected)
        << "text \"" << text.toStdString() << "\" pattern \"" << pattern.toStdString() << "\"";
  }
  EXPECT_GT(matches, 10000);  // the generator reaches both answers often
}

TEST(PatternMatch, WildcardsEscapesAndTheEndOfTheText) {
  const struct {
    const char16_t* Text;
    const char16_t* Pattern;
    bool IgnoreCase;
    bool Expected;
  } cases[] = {
      {u"VOLUME UP", u"Volume Up", true, true},
      {u"VOLUME UP", u"Volume Up", false, false},
      {u"Vol+", u"Vol*\\+", true, true},
      {u"Vol", u"Vol*\\+", true, false},
      {u"A7", u"A#", false, true},
      {u"AB", u"A#", false, false},
      {u"A", u"A?", false, false},
      {u"ab", u"a+", false, true},
      {u"a", u"a+", false, false},
      {u"a", u"a*", false, true},
      {u"a", u"a**", false, false},  // the rest after a star never meets the empty end
      {u"ab", u"a*b**", false, false},
      {u"ab", u"a*b*", false, true},
      {u"", u"", false, true},
      {u"", u"*", false, true},
      {u"x", u"", false, false},
      {u"a*", u"a\\*", false, true},
      {u"ab", u"a\\*", false, false},
      {u"a\\", u"a\\", false, true},  // a lone trailing backslash is itself
      {u"\u00e9t\u00e9", u"\u00c9T\u00c9", true, true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(PatternMatch(c.Text, c.Pattern, c.IgnoreCase), c.Expected)
        << QString::fromUtf16(c.Text).toStdString() << " ~ "
        << QString::fromUtf16(c.Pattern).toStdString();
    EXPECT_EQ(LiteralMatch(c.Text, c.Pattern, c.IgnoreCase), c.Expected)
        << QString::fromUtf16(c.Text).toStdString() << " ~ "
        << QString::fromUtf16(c.Pattern).toStdString();
  }
}

TEST(PatternMatch, ManyStarsOnALongTextNeitherHangNorExhaustTheStack) {
  const QString text(10000, u'a');
  QString stars;
  for (int i = 0; i < 50; ++i) stars += QStringLiteral("a*");
  EXPECT_FALSE(PatternMatch(text, stars + u'b', false));
  EXPECT_TRUE(PatternMatch(text, stars + u'a', false));
  EXPECT_FALSE(PatternMatch(text, QString(100000, u'*') + u'b', false));
}
