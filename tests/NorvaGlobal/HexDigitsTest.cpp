#include <NorvaGlobal/HexDigits.h>

#include <gtest/gtest.h>

namespace norva {
namespace {

// Every digit both ways and nothing else; pairs make bytes only when both are digits.
TEST(HexDigits, EveryDigitBothWaysAndPairsOfDigitsOnly) {
  for (unsigned value = 0; value < 16; ++value) {
    const char digit = HexDigitChar(value);
    EXPECT_EQ(HexDigitValue(static_cast<char32_t>(digit)), static_cast<int>(value)) << digit;
    const char lower = static_cast<char>(digit >= 'A' ? digit + ('a' - 'A') : digit);
    EXPECT_EQ(HexDigitValue(static_cast<char32_t>(lower)), static_cast<int>(value)) << lower;
  }
  EXPECT_EQ(HexDigitChar(0x1F), 'F');  // only the low four bits count
  // The neighbours of the digit ranges, and a full-width digit, are no digits.
  for (const char32_t c : {U'/', U':', U'@', U'G', U'`', U'g', U' ', U'\uFF11'})
    EXPECT_EQ(HexDigitValue(c), -1) << static_cast<unsigned>(c);
  EXPECT_EQ(HexPairValue(U'0', U'0'), 0x00);
  EXPECT_EQ(HexPairValue(U'f', U'E'), 0xFE);
  EXPECT_EQ(HexPairValue(U'7', U'g'), -1);
  EXPECT_EQ(HexPairValue(U'x', U'1'), -1);
}

}  // namespace
}  // namespace norva
