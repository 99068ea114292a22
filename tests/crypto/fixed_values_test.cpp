// A build with other fixed values than the default ones: those that tests/crypto/CMakeLists.txt sets.

#include "ades.hpp"

#include "fixed_values.hpp"

#include <gtest/gtest.h>

#include <string>

TEST(FixedValues, TheDesKeyOfTheBuildEncryptsTheOldTextForm) {
  // The well-known answer of DES for this text under 0123456789abcdef.
  char hex[17] = "";
  Kiv_Encrypt("Now is t", hex);
  EXPECT_STREQ(hex, "3fa40e8a984d4815");
  unsigned char * text = nullptr;
  Kiv_Decrypt(hex, text);
  EXPECT_STREQ(reinterpret_cast<char *>(text), "Now is t");
  delete[] text;
}

TEST(FixedValues, TheAesKeyAndVectorOfTheBuildComeOutAsTheyWereSet) {
  auto const key = kivara::fixed::kAesKey.revealed();
  ASSERT_EQ(key.size(), 32u);
  for (std::size_t i = 0; i < key.size(); ++i)
    EXPECT_EQ(key[i], 0x20 + i) << i;
  auto const vector = kivara::fixed::kAesVector.revealed();
  ASSERT_EQ(vector.size(), 16u);
  for (std::size_t i = 0; i < vector.size(); ++i)
    EXPECT_EQ(vector[i], i) << i;
}

TEST(FixedValues, TheMasksOfTheBuildAreSingleBytes) {
  EXPECT_EQ(kivara::fixed::kReportKey, 0x00);
  EXPECT_EQ(kivara::fixed::kStringMask, 0xff);
}
