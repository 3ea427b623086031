#pragma once
// A fixed-width set of enumeration values (or small integers), the counterpart of a Pascal set.

#include <bitset>
#include <cstddef>
#include <initializer_list>

namespace norva {

template <typename E, std::size_t N>
class TEnumSet {
 public:
  static constexpr std::size_t Width = N;

  constexpr TEnumSet() = default;
  TEnumSet(std::initializer_list<E> items) {
    for (E item : items) Include(item);
  }
  // All values from first to last, both included.
  static TEnumSet Range(E first, E last) {
    TEnumSet result;
    for (auto i = Index(first); i <= Index(last); ++i) result.mBits.set(i);
    return result;
  }

  // Values outside the set's width are never members.
  bool Contains(E item) const { return Index(item) < N && mBits.test(Index(item)); }
  // Including a value outside the width is a programming error: throws std::out_of_range.
  void Include(E item) { mBits.set(Index(item)); }
  void Exclude(E item) {
    if (Index(item) < N) mBits.reset(Index(item));
  }
  bool IsEmpty() const { return mBits.none(); }
  std::size_t Count() const { return mBits.count(); }

  template <typename F>
  void ForEach(F&& visit) const {
    for (std::size_t i = 0; i < N; ++i)
      if (mBits.test(i)) visit(static_cast<E>(i));
  }

  const std::bitset<N>& Bits() const { return mBits; }

  friend TEnumSet operator|(TEnumSet a, const TEnumSet& b) {
    a.mBits |= b.mBits;
    return a;
  }
  friend TEnumSet operator&(TEnumSet a, const TEnumSet& b) {
    a.mBits &= b.mBits;
    return a;
  }
  friend TEnumSet operator-(TEnumSet a, const TEnumSet& b) {
    a.mBits &= ~b.mBits;
    return a;
  }
  friend bool operator==(const TEnumSet& a, const TEnumSet& b) = default;

 private:
  static constexpr std::size_t Index(E item) { return static_cast<std::size_t>(item); }
  std::bitset<N> mBits;
};

}  // namespace norva
