// Runs with LC_ALL=de_DE.UTF-8.
#include "atools.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

namespace {

class GermanUser : public testing::Test {
protected:
  void SetUp() override {
    if (GetUserDefaultLCID() != 1031)
      GTEST_SKIP() << "the system does not take the user's locale from LC_ALL";
    // Wine writes the formats of a new locale to the registry, but the first process still has the old ones in memory.
    SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, ",");
  }
};

TEST_F(GermanUser, MayWriteNumbersWithCommaAndWithPoint) {
  for (char const * text : {"1,5", "1.5", ",5", "-1,"})
    EXPECT_TRUE(Kiv_Valid_Double(text)) << text;
  for (char const * text : {"1,5.2", "1.5,2", "1,5,2", "1e5"})
    EXPECT_FALSE(Kiv_Valid_Double(text)) << text;
}

TEST_F(GermanUser, FindsUmlautsBesideTheirLetters) {
  EXPECT_EQ(kiv_lexcmp("\xC4pfel", "Banane"), -1);
  EXPECT_EQ(kiv_lexcmp("Zebra", "\xC4pfel"), 1);
  EXPECT_EQ(kiv_lexcmp("\xFC"
                       "ber",
                       "\xDC"
                       "BER"),
            1);
  EXPECT_TRUE(Kiv_IsLexGreater("z", "\xF6"));
}

} // namespace
