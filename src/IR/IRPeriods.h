#pragma once
// The pulse vocabulary of an infra-red stream: period IDs, on/off pairs, and the analysis that
// turns raw on/off durations into a table of at most 16 lengths and the pairs that refer to it.
//
// Units: lengths of IDs 0..13 count 1/3 us (4 ticks of the 12 MHz clock); IDs 14 and 15, the gaps
// that end a word, count 256/3 us, because word gaps are long.

#include <array>
#include <cstdint>

namespace norva {

class TIRStream;

using TPeriodID = std::uint8_t;

inline constexpr int PeriodIDCount = 16;
inline constexpr int MaxPeriodIDPairs = 160;
// The ordinary IDs are 0..13; the last two end a word.
inline constexpr TPeriodID FirstWordEndID = 14;
inline constexpr TPeriodID SecondWordEndID = 15;
// Word-end lengths are kept this many times coarser than ordinary ones.
inline constexpr std::uint32_t WordEndUnitFactor = 256;

struct TPeriodIDPair {
  TPeriodID OnID = 0;   // the carrier burst
  TPeriodID OffID = 0;  // the silence after it

  void Clear() { *this = {}; }
  bool Equal(const TPeriodIDPair& other) const { return *this == other; }
  bool IsWordEnd() const { return OffID >= FirstWordEndID; }
  friend bool operator==(const TPeriodIDPair&, const TPeriodIDPair&) = default;
};

using TPeriodLengths = std::array<std::uint16_t, PeriodIDCount>;
using TPeriodIDPairs = std::array<TPeriodIDPair, MaxPeriodIDPairs>;

// Collects a stream's pulses one on/off pair at a time. Durations within 1/16 of each other (of
// the new duration) share an ID, whose length is the average of its samples. Every failure is an
// ENorvaError raised before the stream is touched: the stream only changes in LoadStream.
class TIRPeriodsLoadHelper {
 public:
  TIRPeriodsLoadHelper() { Clear(); }

  void Clear();
  // `on` and `off` in 1/3 us; a word-end `off` is stored in coarse units (off / 256). Raises
  // "Infra-red stream is too long." for the 161st pair, "Too many different period lengths in
  // infra-red stream." for a 15th ordinary length, and a length failure for a duration that does
  // not fit its 16-bit slot.
  void AddOnOffPeriod(std::uint32_t on, std::uint32_t off, bool wordEnd);
  // Repairs a two-word capture whose first word gap was recorded as an ordinary off time.
  void FixFirstWordEnding();
  // Copies the averaged lengths and all pairs into the stream's raw fields; callers wrap it in
  // BeginUpdate/EndUpdate.
  void LoadStream(TIRStream& stream) const;

  // The ID whose average lies within d / 16 of `d` (1/3 us), taking `d` as a sample, or a new ID.
  TPeriodID FindID(std::uint32_t d);
  std::uint16_t GetPeriodLength(TPeriodID id) const;
  TPeriodLengths GetPeriodLengths() const;
  const TPeriodIDPairs& GetPairs() const { return mPairs; }
  int GetPairCount() const { return mPairCount; }

 private:
  void AddSample(TPeriodID id, std::uint32_t d);

  std::array<std::uint32_t, PeriodIDCount> mSums{};
  std::array<std::uint8_t, PeriodIDCount> mCounts{};
  TPeriodIDPairs mPairs{};
  int mIDCount = 0;
  int mPairCount = 0;
};

}  // namespace norva
