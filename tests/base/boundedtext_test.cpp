#include "base/boundedtext.hpp"

#include <gtest/gtest.h>

#include <cstring>

using kivara::BoundedText;

namespace {

TEST(BoundedText, HoldsOneCharacterLessThanItsSize) { EXPECT_STREQ(BoundedText<4>("%s", "abc").c_str(), "abc"); }

TEST(BoundedText, IsCutAndTerminatedWhenItIsLonger) {
  EXPECT_STREQ(BoundedText<4>("%s", "abcd").c_str(), "abc");
  EXPECT_STREQ(BoundedText<4>("%s%d", "ab", 12345).c_str(), "ab1");
}

TEST(BoundedText, IsReplaced) {
  BoundedText<8> text("%s", "first");
  text.set("%d", 2);
  EXPECT_STREQ(text.c_str(), "2");
  text.set("%s", "much longer");
  EXPECT_STREQ(text.c_str(), "much lo");
}

TEST(OrEmpty, IsTheEmptyStringForNullAlone) {
  char const * const text = "x";
  EXPECT_STREQ(kivara::orEmpty(nullptr), "");
  EXPECT_EQ(kivara::orEmpty(text), text);
}

} // namespace
