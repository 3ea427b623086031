#include <Utils/Geometry.h>

#include <NorvaGlobal/Exceptions.h>

#include <gtest/gtest.h>

#include <limits>

namespace norva {
namespace {

constexpr int IntMax = std::numeric_limits<int>::max();
constexpr int IntMin = std::numeric_limits<int>::min();

TEST(SqrInt, RaisesBeyondThirtyTwoBits) {
  EXPECT_EQ(SqrInt(-7), 49);
  EXPECT_EQ(SqrInt(46340), 2147395600);
  EXPECT_THROW(SqrInt(46341), EIntOverflow);
  EXPECT_THROW(SqrInt(IntMin), EIntOverflow);
}

TEST(OffsetPoint, MovesOrRaisesInsteadOfWrapping) {
  EXPECT_EQ(OffsetPoint(QPoint(3, 4), 10, -20), QPoint(13, -16));
  EXPECT_EQ(OffsetPoint(QPoint(3, 4), QPoint(-3, 6)), QPoint(0, 10));
  EXPECT_THROW(OffsetPoint(QPoint(IntMax, 0), 1, 0), EIntOverflow);
  EXPECT_THROW(OffsetPoint(QPoint(0, IntMin), QPoint(0, -1)), EIntOverflow);
  EXPECT_TRUE(EqualPoint(QPoint(1, 2), QPoint(1, 2)));
  EXPECT_FALSE(EqualPoint(QPoint(1, 2), QPoint(1, 3)));
}

TEST(TRect, ConvertsFromQRectWithExclusiveRightAndBottom) {
  EXPECT_EQ(ToTRect(QRect(10, 20, 30, 40)), (TRect{10, 20, 40, 60}));
  EXPECT_EQ(ToQRect(TRect{10, 20, 40, 60}), QRect(10, 20, 30, 40));
  EXPECT_THROW(ToTRect(QRect(QPoint(0, 0), QPoint(IntMax, 5))), EIntOverflow);
}

TEST(RectInRect, CountsOutersRightAndBottomEdgesAsInside) {
  const TRect outer{0, 0, 10, 10};
  EXPECT_TRUE(RectInRect(outer, outer));
  EXPECT_TRUE(RectInRect(TRect{5, 5, 10, 10}, outer));
  EXPECT_FALSE(RectInRect(TRect{5, 5, 11, 10}, outer));
  EXPECT_FALSE(RectInRect(TRect{5, 5, 10, 11}, outer));
  EXPECT_FALSE(RectInRect(TRect{-1, 5, 8, 8}, outer));
  EXPECT_FALSE(RectInRect(TRect{5, -1, 8, 8}, outer));
  EXPECT_TRUE(RectInRect(TRect{IntMax, IntMax, IntMax, IntMax}, TRect{0, 0, IntMax, IntMax}))
      << "the widened edge must not overflow";
}

}  // namespace
}  // namespace norva
