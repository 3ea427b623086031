#include <Utils/StringUtils.h>

#include <gtest/gtest.h>

namespace norva {
namespace {

TEST(RemoveExtension, CutsAtTheFirstFullStop) {
  EXPECT_EQ(RemoveExtension("a.b.c"), "a");
  EXPECT_EQ(RemoveExtension("noextension"), "noextension");
  EXPECT_EQ(RemoveExtension(".hidden"), "");
}

TEST(SplitString, TakesTheHeadAndLeavesTheRest) {
  QString list = "x;y;z";
  EXPECT_EQ(SplitString(list, ";"), "x");
  EXPECT_EQ(list, "y;z");
  EXPECT_EQ(SplitString(list, ","), "y;z") << "no delimiter: everything is the head";
  EXPECT_EQ(list, "");
  list = "a, b, , c";
  EXPECT_EQ(SplitString(list, ", "), "a");
  EXPECT_EQ(SplitString(list, ", "), "b");
  EXPECT_EQ(SplitString(list, ", "), "");
  EXPECT_EQ(list, "c");
  list = "Power";
  EXPECT_EQ(SplitString(list, "power"), "Power") << "case-sensitive";
  list = "abc";
  EXPECT_EQ(SplitString(list, ""), "abc") << "an empty delimiter never matches";
  EXPECT_EQ(list, "");
}

TEST(SelectSubString, PicksFieldsKeepingEmptyOnes) {
  EXPECT_EQ(SelectSubString("x;;z", ";", 0), "x");
  EXPECT_EQ(SelectSubString("x;;z", ";", 1), "");
  EXPECT_EQ(SelectSubString("x;;z", ";", 2), "z");
  EXPECT_EQ(SelectSubString("x;;z", ";", 3), "");
  EXPECT_EQ(SelectSubString("x;;z", ";", -1), "");
  EXPECT_EQ(SelectSubString("one::two::three", "::", 1), "two");
  EXPECT_EQ(SelectSubString("a;b", "", 0), "a;b");
}

}  // namespace
}  // namespace norva
