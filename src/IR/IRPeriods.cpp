#include <IR/IRPeriods.h>

#include <NorvaGlobal/Exceptions.h>

#include <limits>

namespace norva {

namespace {

constexpr std::uint32_t MaxLength = std::numeric_limits<std::uint16_t>::max();
constexpr int OrdinaryIDCount = FirstWordEndID;

// Lengths in 1/3 us as microseconds, for messages.
QString Microseconds(std::uint64_t thirds) { return QString::number(thirds / 3); }

[[noreturn]] void PulseTooLong(std::uint32_t d) {
  throw ENorvaError(QStringLiteral("Infra-red period of %1 us is too long (at most %2 us).")
                        .arg(Microseconds(d), Microseconds(MaxLength)));
}

[[noreturn]] void GapTooLong(std::uint32_t off) {
  throw ENorvaError(
      QStringLiteral("Infra-red word gap of %1 us is too long (at most %2 us).")
          .arg(Microseconds(off),
               Microseconds(std::uint64_t{MaxLength} * WordEndUnitFactor + WordEndUnitFactor - 1)));
}

}  // namespace

void TIRPeriodsLoadHelper::Clear() {
  mSums.fill(0);
  mCounts.fill(1);
  for (TPeriodIDPair& pair : mPairs) pair.Clear();
  mIDCount = 0;
  mPairCount = 0;
}

std::uint16_t TIRPeriodsLoadHelper::GetPeriodLength(TPeriodID id) const {
  if (id >= PeriodIDCount) return 0;
  return static_cast<std::uint16_t>(mSums[id] / mCounts[id]);
}

TPeriodLengths TIRPeriodsLoadHelper::GetPeriodLengths() const {
  TPeriodLengths lengths{};
  for (int id = 0; id < PeriodIDCount; ++id)
    lengths[static_cast<std::size_t>(id)] = GetPeriodLength(static_cast<TPeriodID>(id));
  return lengths;
}

void TIRPeriodsLoadHelper::AddSample(TPeriodID id, std::uint32_t d) {
  // At most 320 samples of at most 65535 each: the sum cannot overflow, the 8-bit count can.
  if (mCounts[id] == std::numeric_limits<std::uint8_t>::max())
    throw ENorvaError(QStringLiteral("Too many pulses of one period length in infra-red stream."));
  mSums[id] += d;
  ++mCounts[id];
}

TPeriodID TIRPeriodsLoadHelper::FindID(std::uint32_t d) {
  if (d > MaxLength) PulseTooLong(d);
  const std::uint32_t tolerance = d / 16;
  for (int id = 0; id < mIDCount; ++id) {
    const std::uint32_t average = GetPeriodLength(static_cast<TPeriodID>(id));
    if (average + tolerance >= d && average <= d + tolerance) {
      AddSample(static_cast<TPeriodID>(id), d);
      return static_cast<TPeriodID>(id);
    }
  }
  if (mIDCount == OrdinaryIDCount)
    throw ENorvaError(QStringLiteral("Too many different period lengths in infra-red stream."));
  mSums[static_cast<std::size_t>(mIDCount)] = d;
  return static_cast<TPeriodID>(mIDCount++);
}

void TIRPeriodsLoadHelper::AddOnOffPeriod(std::uint32_t on, std::uint32_t off, bool wordEnd) {
  if (mPairCount == MaxPeriodIDPairs)
    throw ENorvaError(QStringLiteral("Infra-red stream is too long."));
  // Check both lengths before either takes an ID, so a failed pair leaves no trace.
  if (on > MaxLength) PulseTooLong(on);
  if (wordEnd ? off / WordEndUnitFactor > MaxLength : off > MaxLength)
    wordEnd ? GapTooLong(off) : PulseTooLong(off);
  TPeriodIDPair& pair = mPairs[static_cast<std::size_t>(mPairCount)];
  pair.OnID = FindID(on);
  if (wordEnd) {
    const TPeriodID id = mSums[FirstWordEndID] == 0 ? FirstWordEndID : SecondWordEndID;
    mSums[id] = off / WordEndUnitFactor;
    pair.OffID = id;
  } else {
    pair.OffID = FindID(off);
  }
  ++mPairCount;
}

void TIRPeriodsLoadHelper::FixFirstWordEnding() {
  if (mSums[SecondWordEndID] != 0 || mSums[FirstWordEndID] == 0) return;
  std::uint32_t largest = 0;
  TPeriodID largestID = 0;
  for (int i = 1; i < mPairCount; ++i) {
    const TPeriodIDPair& pair = mPairs[static_cast<std::size_t>(i)];
    if (pair.IsWordEnd()) continue;
    const std::uint32_t length = GetPeriodLength(pair.OffID);
    if (length > largest) {
      largest = length;
      largestID = pair.OffID;
    }
  }
  if (largest < mSums[FirstWordEndID] * WordEndUnitFactor / 2) return;
  mSums[SecondWordEndID] = mSums[FirstWordEndID];
  mSums[FirstWordEndID] = largest / WordEndUnitFactor;
  mSums[largestID] = 0;
  for (int i = 0; i < mPairCount; ++i) {
    TPeriodIDPair& pair = mPairs[static_cast<std::size_t>(i)];
    if (pair.OffID == FirstWordEndID)
      pair.OffID = SecondWordEndID;
    else if (pair.OffID == largestID)
      pair.OffID = FirstWordEndID;
  }
}

}  // namespace norva
