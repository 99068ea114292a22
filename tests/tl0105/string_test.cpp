#include "tools/string.hpp"

#include <gtest/gtest.h>

using SV::String;

TEST(String, BuiltFromASingleNulCharacterIsTheEmptyString) { EXPECT_EQ(String('\0').block(), SV::GetEmptyStrData()); }

TEST(String, AppendingToACopyLeavesTheFirstUnchanged) {
  String const first("text");
  String copy(first);
  EXPECT_EQ(copy.block(), first.block());
  EXPECT_EQ(first.block()->nRefCount, 1u);
  copy += "ure";
  EXPECT_STREQ(first.c_str(), "text");
  EXPECT_STREQ(copy.c_str(), "texture");
  EXPECT_EQ(first.block()->nRefCount, 0u);
}
