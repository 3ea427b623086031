#include <IR/IRStreamData.h>

#include <NorvaGlobal/HexDigits.h>
#include <OrbGlobal/Model/OrbErrors.h>

#include <algorithm>
#include <cmath>

namespace norva {

namespace {

// A hexadecimal digit as an ID; anything else reads as 0.
TPeriodID IDOfDigit(QChar c) {
  return static_cast<TPeriodID>(std::max(0, HexDigitValue(c.unicode())));
}

QChar DigitOfID(TPeriodID id) { return QLatin1Char(HexDigitChar(id)); }

QString CycleMessage(int n, const char* suffix) {
  return QStringLiteral("Cycle %1%2").arg(n).arg(QLatin1String(suffix));
}

}  // namespace

double RoundToEven(double value) { return std::nearbyint(value); }

int TIRStreamData::GetEndPos(bool bothWords) const {
  for (int i = 0; i < MaxPeriodIDPairs; ++i) {
    const TPeriodIDPair& pair = Pairs[static_cast<std::size_t>(i)];
    if (pair.OnID == SecondWordEndID) {
      i += 2;
      if (i > MaxPeriodIDPairs) return -1;
      continue;
    }
    if (OneWord() || bothWords) {
      if (pair.IsWordEnd()) return i;
    } else if (pair.OffID == SecondWordEndID) {
      return i;
    }
  }
  return -1;
}

bool TIRStreamData::IsPeriodUsed(TPeriodID id, int endPos) const {
  for (int i = 0; i <= endPos && i < MaxPeriodIDPairs; ++i) {
    const TPeriodIDPair& pair = Pairs[static_cast<std::size_t>(i)];
    if (pair.OnID == id || pair.OffID == id) return true;
  }
  return false;
}

QString TIRStreamData::Status() const {
  if (IsEmpty()) return QStringLiteral("Undefined");
  bool seen14 = false;
  bool seen15 = false;
  for (int i = 0; i < MaxPeriodIDPairs; ++i) {
    const TPeriodIDPair& pair = Pairs[static_cast<std::size_t>(i)];
    const int n = i + 1;
    if (Lengths[pair.OnID] == 0) return CycleMessage(n, ": on time has zero length");
    if (pair.OnID >= FirstWordEndID)
      return CycleMessage(n, ": ID 14 or 15 cannot be used for on time");
    if (Lengths[pair.OffID] == 0) return CycleMessage(n, ": off time has zero length");
    if (pair.OffID == FirstWordEndID) {
      if (seen14) return CycleMessage(n, ": ID 14 already used");
      seen14 = true;
    } else if (pair.OffID == SecondWordEndID) {
      if (!seen14) return CycleMessage(n, ": ID 14 must be used before 15");
      if (seen15) return CycleMessage(n, ": ID 15 already used");
      seen15 = true;
    }
  }
  if (!seen14 && !seen15) return QStringLiteral("No word endings (ID 14 or 15)");
  if (seen14 && !seen15 && !OneWord())
    return QStringLiteral("One word found but format specifies two");
  if (seen15 && OneWord()) return QStringLiteral("Two words found but format specifies one");
  if (GetEndPos(false) < 3) return QStringLiteral("Too short to have meaning");
  return QStringLiteral("OK");
}

QString TIRStreamData::GetPeriodLengthsString() const {
  const int endPos = GetEndPos(false);
  QString text;
  for (int id = 0; id < PeriodIDCount; ++id) {
    if (id > 0) text += u',';
    const bool used = IsPeriodUsed(static_cast<TPeriodID>(id), endPos);
    text += QString::number(used ? Lengths[static_cast<std::size_t>(id)] : 0);
  }
  return text;
}

void TIRStreamData::SetPeriodLengthsString(QStringView text) {
  TPeriodLengths lengths{};
  qsizetype start = 0;
  for (std::uint16_t& length : lengths) {
    qsizetype end = text.indexOf(u',', start);
    if (end < 0) end = text.size();
    const QStringView field = text.mid(start, end - start);
    bool ok = false;
    const qlonglong value = field.toLongLong(&ok);
    if (!ok) throw EConvertError(QStringLiteral("'%1' is not a valid integer value").arg(field));
    // A stream never holds a wrapped length.
    if (value < 0 || value > NoModulationPeriod)
      throw EConvertError(QStringLiteral("Period length %1 does not fit 16 bits").arg(value));
    length = static_cast<std::uint16_t>(value);
    // A field without a comma after it runs to the end; the next one starts again at the front.
    start = end < text.size() ? end + 1 : 0;
  }
  Lengths = lengths;
}

QString TIRStreamData::GetPeriodIDPairsString() const {
  const int endPos = GetEndPos(false);
  if (IsEmpty() || endPos < 0) return QString();
  QString text;
  text.reserve(3 * (static_cast<qsizetype>(endPos) + 1));
  for (int i = 0; i <= endPos; ++i) {
    if (i > 0) text += u',';
    const TPeriodIDPair& pair = Pairs[static_cast<std::size_t>(i)];
    text += DigitOfID(pair.OnID);
    text += DigitOfID(pair.OffID);
  }
  return text;
}

void TIRStreamData::SetPeriodIDPairsString(QStringView text) {
  for (TPeriodIDPair& pair : Pairs) pair.Clear();
  std::size_t next = 0;
  // 0-based p = 0, 3, 6, ... while a character follows it, as the 1-based positions 1, 4, 7, ...
  // strictly below the length; a last pair with no off digit is left unread.
  for (qsizetype p = 0; p + 1 < text.size() && next < Pairs.size(); p += 3) {
    Pairs[next].OnID = IDOfDigit(text[p]);
    Pairs[next].OffID = IDOfDigit(text[p + 1]);
    ++next;
  }
}

}  // namespace norva
