#pragma once
// Where the choices of an edit sequence come from: a seeded generator in the test suite, the
// fuzzer's bytes in the fuzz target. The same choices always give the same sequence, so a failure
// replays from its seed or its input.

#include <QList>

#include <cstddef>
#include <cstdint>
#include <random>

namespace norva::edits {

class TEditChoices {
 public:
  virtual ~TEditChoices() = default;
  // A number in 0..count-1; 0 when count is 0.
  virtual unsigned Below(unsigned count) = 0;

  int Between(int first, int last) {
    return first + static_cast<int>(Below(static_cast<unsigned>(last - first + 1)));
  }
  bool Percent(unsigned percent) { return Below(100) < percent; }
  template <typename T>
  const T& Pick(const QList<T>& values) {
    return values.at(static_cast<qsizetype>(Below(static_cast<unsigned>(values.size()))));
  }
};

class TSeededChoices : public TEditChoices {
 public:
  explicit TSeededChoices(std::uint32_t seed) : mEngine(seed) {}
  unsigned Below(unsigned count) override {
    return count == 0 ? 0 : static_cast<unsigned>(mEngine() % count);
  }

 private:
  std::mt19937 mEngine;
};

// Takes the bytes in order, as many as the count needs; once they run out every choice is 0.
class TByteChoices : public TEditChoices {
 public:
  TByteChoices(const std::uint8_t* data, std::size_t size) : mData(data), mSize(size) {}
  unsigned Below(unsigned count) override {
    if (count <= 1) return 0;
    std::uint32_t value = 0;
    for (unsigned range = count - 1; range != 0; range >>= 8) value = value << 8 | NextByte();
    return value % count;
  }

 private:
  std::uint8_t NextByte() { return mPosition < mSize ? mData[mPosition++] : 0; }

  const std::uint8_t* mData;
  std::size_t mSize;
  std::size_t mPosition = 0;
};

}  // namespace norva::edits
