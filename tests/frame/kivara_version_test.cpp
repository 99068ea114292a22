#include "kivara_version.hpp"

#include "aappinfo.hpp"

#include <gtest/gtest.h>

namespace {

constexpr int kHigh = KIVARA_VERSION_HIGH;
constexpr int kLow = KIVARA_VERSION_LOW;
constexpr int kUpdate = KIVARA_VERSION_UPDATE_LEVEL;

TEST(VersionHeader, HasTheNumbersOfTheLibrary) {
  EXPECT_EQ(KIVARA_VERSION_HIGH, Kiv_GetVersionHigh());
  EXPECT_EQ(KIVARA_VERSION_LOW, Kiv_GetVersionLow());
  EXPECT_EQ(KIVARA_VERSION_UPDATE_LEVEL, Kiv_GetVersionUL());
  EXPECT_EQ(KIVARA_VERSION_HOT_FIX, Kiv_GetVersionHF());
  EXPECT_EQ(KIVARA_VERSION_BUILD, Kiv_GetVersionBuild());
}

TEST(VersionHeader, HasTheIdentifierThatAPlugInReports) {
  EXPECT_EQ(KIVARA_VERSION_IDENTIFIER, Kiv_GetVersionIdentifier());
  EXPECT_TRUE(Kiv_HeadersMatchLibrary());
}

TEST(VersionHeader, IsAtLeastWhatComesBeforeIt) {
  EXPECT_TRUE(KIVARA_VERSION_AT_LEAST(kHigh, kLow, kUpdate));
  EXPECT_TRUE(KIVARA_VERSION_AT_LEAST(kHigh, kLow - 1, kUpdate + 1));
  EXPECT_TRUE(KIVARA_VERSION_AT_LEAST(kHigh - 1, kLow + 1, kUpdate + 1));
  EXPECT_FALSE(KIVARA_VERSION_AT_LEAST(kHigh, kLow, kUpdate + 1));
  EXPECT_FALSE(KIVARA_VERSION_AT_LEAST(kHigh, kLow + 1, 0));
  EXPECT_FALSE(KIVARA_VERSION_AT_LEAST(kHigh + 1, 0, 0));
}

// The preprocessor can ask both.
#if !KIVARA_VERSION_AT_LEAST(7, 2, 0) || KIVARA_VERSION_IDENTIFIER < 70000
#error "the version is older than any"
#endif

} // namespace
