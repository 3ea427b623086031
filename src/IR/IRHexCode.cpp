#include <IR/IRHexCode.h>

#include <NorvaGlobal/Exceptions.h>
#include <NorvaGlobal/HexDigits.h>

#include <QList>

#include <algorithm>
#include <limits>

namespace norva {

namespace {

// The stream's units per frequency word: carrier ticks, 1/3 us lengths, 256/3 us lengths, and
// microseconds.
constexpr double TicksPerF = 2.894952;
constexpr double ThirdsPerF = 0.723738;
constexpr double WordEndUnitsPerF = 0.0028271015625;
constexpr double MicrosecondsPerF = 0.241246;
constexpr int MaxLastWord = 320;
// The preamble of a learnt code sent without carrier; its frequency word is only the time base.
constexpr std::uint32_t UnmodulatedPreamble = 0x0100;

// Upper-case hexadecimal with at least four digits, appended.
void AppendHexWord(QString& text, std::uint32_t value) {
  char16_t digits[8];
  int count = 0;
  do {
    digits[count++] = static_cast<char16_t>(HexDigitChar(value));
    value >>= 4;
  } while (value != 0 || count < 4);
  while (count > 0) text += QChar(digits[--count]);
}

QString HexWord(std::uint32_t value) {
  QString text;
  AppendHexWord(text, value);
  return text;
}

bool HasHexCodeShape(QStringView text) {
  for (qsizetype p = 0; p < text.size(); ++p) {
    if (p % 5 == 4 ? text[p] != u' ' : HexDigitValue(text[p].unicode()) < 0) return false;
  }
  return true;
}

std::uint32_t ToWord(double value) {
  const double rounded = RoundToEven(value);
  return rounded >= std::numeric_limits<std::uint32_t>::max()
             ? std::numeric_limits<std::uint32_t>::max()
             : static_cast<std::uint32_t>(rounded);
}

struct TCounts {
  int Once = 0;
  int Repeat = 0;
};

TCounts CountsOf(const TIRStreamData& stream) {
  const int end = stream.GetEndPos(false);
  if (stream.Format == RepeatWord1 || stream.Format == RepeatBothWords) return {0, end + 1};
  const int firstEnd = stream.GetEndPos(true);
  return {firstEnd + 1, end - firstEnd};
}

[[noreturn]] void Fail(const char* message) { throw ENorvaError(QString::fromLatin1(message)); }

// The indexes of the words that end a word of the stream, and the format they give.
struct TWordEnds {
  QList<int> Indexes;
  TIRStreamFormat Format = RepeatWord1;
};

TWordEnds FindWordEnds(const QList<std::uint32_t>& words, std::uint32_t f) {
  const int last = static_cast<int>(words.size()) - 1;
  const auto once = static_cast<int>(words[2]);
  const auto repeat = static_cast<int>(words[3]);
  if (once == 0 && repeat == 0) Fail("Stream has zero length");
  if (once != 0 && repeat != 0) {
    if (last != 2 * once + 2 * repeat + 3) Fail("Invalid Total number of tokens detected.");
    if (last > MaxLastWord) Fail("Hex code is too long.");
    return {{2 * once + 3, last}, RepeatWord2};
  }
  if (last != 2 * std::max(once, repeat) + 3) Fail("Invalid Total number of tokens detected.");
  if (last > MaxLastWord) Fail("Hex code is too long.");
  for (int i = 5; i <= last - 2; i += 2) {
    if (words[i] * MicrosecondsPerF * f > WordSplitMicroseconds)
      return {{i, last}, RepeatBothWords};
  }
  return {{last}, RepeatWord1};
}

// The coarse word-end length ParseHexCode reads from `word`.
std::uint32_t WordEndRead(std::uint32_t word, std::uint32_t f) {
  return ToWord(word * ThirdsPerF * f) / WordEndUnitFactor;
}

// `word`, moved by as little as needed to read back as `length`; unchanged when no word does
// (a carrier so slow that one word spans more than a coarse unit).
std::uint32_t WordReadingAs(std::uint32_t word, std::uint32_t length, std::uint32_t f) {
  while (word > 0 && WordEndRead(word, f) > length) --word;
  while (WordEndRead(word, f) < length && WordEndRead(word + 1, f) <= length) ++word;
  return word;
}

QString HexCodeText(const TIRStreamData& stream, bool faithful) {
  if (stream.IsEmpty()) return QString();
  const std::uint32_t f = ToWord(stream.ModulationPeriod / TicksPerF);
  if (f == 0) Fail("Hex code unavailable for non-modulated IR codes.");
  // Without an end the counts would come out negative: refuse rather than write nonsense.
  if (stream.GetEndPos(false) < 0)
    Fail("Hex code unavailable for an infra-red stream without end.");
  const TCounts counts = CountsOf(stream);
  const int end = stream.GetEndPos(false);
  QString text;
  text.reserve(5 * (4 + 2 * (static_cast<qsizetype>(end) + 1)));
  text += QStringLiteral("0000");
  for (const std::uint32_t word :
       {f, static_cast<std::uint32_t>(counts.Once), static_cast<std::uint32_t>(counts.Repeat)}) {
    text += u' ';
    AppendHexWord(text, word);
  }
  for (int i = 0; i <= end; ++i) {
    const TPeriodIDPair& pair = stream.Pairs[static_cast<std::size_t>(i)];
    const double offUnit = pair.IsWordEnd() ? WordEndUnitsPerF : ThirdsPerF;
    std::uint32_t off = ToWord(stream.Lengths[pair.OffID] / (f * offUnit));
    if (faithful && pair.IsWordEnd()) off = WordReadingAs(off, stream.Lengths[pair.OffID], f);
    text += u' ';
    AppendHexWord(text, ToWord(stream.Lengths[pair.OnID] / (f * ThirdsPerF)));
    text += u' ';
    AppendHexWord(text, off);
  }
  return text;
}

}  // namespace

QString HexCodeOf(const TIRStreamData& stream) { return HexCodeText(stream, false); }

QString FaithfulHexCodeOf(const TIRStreamData& stream) { return HexCodeText(stream, true); }

std::optional<TIRStreamData> ParseHexCode(QStringView text) {
  text = text.trimmed();
  if (!HasHexCodeShape(text)) Fail("Invalid hex code string.");
  const qsizetype wordCount = (text.size() + 1) / 5;
  if (wordCount < 5) return std::nullopt;
  QList<std::uint32_t> words(wordCount);
  for (qsizetype i = 0; i < wordCount; ++i) {
    std::uint32_t word = 0;
    // HasHexCodeShape has accepted every digit.
    for (qsizetype d = 5 * i; d < 5 * i + 4; ++d)
      word = word << 4 | static_cast<std::uint32_t>(HexDigitValue(text[d].unicode()));
    words[i] = word;
  }

  const std::uint32_t f = words[1];
  TIRStreamData stream;
  const TWordEnds ends = FindWordEnds(words, f);
  stream.Format = ends.Format;
  const double period = RoundToEven(f * TicksPerF);
  // The period must fit its field without meaning "no stream".
  if (period >= NoModulationPeriod)
    throw ENorvaError(QStringLiteral("Carrier frequency word %1 is out of range (at most %2).")
                          .arg(HexWord(f), HexWord(static_cast<std::uint32_t>(
                                               (NoModulationPeriod - 1) / TicksPerF))));
  stream.ModulationPeriod =
      words[0] == UnmodulatedPreamble ? 0 : static_cast<std::uint16_t>(period);
  TIRPeriodsLoadHelper periods;
  std::uint32_t on = 0;
  for (int i = 4; i < wordCount; ++i) {
    const std::uint32_t value = ToWord(words[i] * ThirdsPerF * f);
    if (i % 2 == 0)
      on = value;
    else
      periods.AddOnOffPeriod(on, value, ends.Indexes.contains(i));
  }
  stream.Lengths = periods.GetPeriodLengths();
  stream.Pairs = periods.GetPairs();
  return stream;
}

bool LooksLikeHexCode(QStringView text) {
  text = text.trimmed();
  return text.size() >= 4 && HasHexCodeShape(text);
}

}  // namespace norva
