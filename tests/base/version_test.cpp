#include "base/version.hpp"

#include <gtest/gtest.h>

#include <ostream>

using kivara::VersionTexts;

namespace {

VersionTexts initial() { return {"7", "2", "0", "0", "5050"}; }

struct ShortForm {
  char const * high;
  char const * low;
  char const * text;
};
std::ostream & operator<<(std::ostream & out, ShortForm const & row) { return out << row.high << ' ' << row.low; }

class VersionString : public testing::TestWithParam<ShortForm> {};
TEST_P(VersionString, CutsZerosButNotTheFirstDigitAfterThePoint) {
  VersionTexts version = initial();
  version.high = GetParam().high;
  version.low = GetParam().low;
  EXPECT_STREQ(kivara::versionString(version).c_str(), GetParam().text);
}
INSTANTIATE_TEST_SUITE_P(Version, VersionString,
                         testing::Values(ShortForm{"7", "2", "7.2"}, ShortForm{"7", "20", "7.2"},
                                         ShortForm{"7", "0", "7.0"}, ShortForm{"7", "000", "7.0"},
                                         ShortForm{"7", "12", "7.12"}, ShortForm{"10", "0", "10.0"},
                                         ShortForm{"10", "200", "10.2"}, ShortForm{"7", "", "7."}));

TEST(Version, BuildFormOfTheInitialTexts) {
  VersionTexts version = initial();
  EXPECT_STREQ(kivara::buildVersionString(version).c_str(), "7.2_5050");
}

TEST(Version, PatchFormOfTheInitialTexts) { EXPECT_STREQ(kivara::patchVersionString(initial()).c_str(), "7.20.00"); }

TEST(Version, PatchBuildFormOfTheInitialTexts) {
  VersionTexts version = initial();
  EXPECT_STREQ(kivara::patchBuildVersionString(version).c_str(), "7.20.00.5050");
}

TEST(Version, AHotFixOfTwoCharactersStaysAsItIs) {
  VersionTexts version = initial();
  version.updateLevel = "3";
  version.hotFix = "12";
  EXPECT_STREQ(kivara::patchVersionString(version).c_str(), "7.23.12");
}

TEST(Version, BothBuildFormsPadTheStoredBuildText) {
  VersionTexts version = initial();
  version.build = "50";
  EXPECT_STREQ(kivara::buildVersionString(version).c_str(), "7.2_0050");
  EXPECT_STREQ(version.build.c_str(), "0050");
  EXPECT_EQ(SV::h_atoi(version.build.c_str()), 50) << "zeros in front do not make it octal";
  version.build = "7";
  EXPECT_STREQ(kivara::patchBuildVersionString(version).c_str(), "7.20.00.0007");
  EXPECT_STREQ(version.build.c_str(), "0007");
}

TEST(Version, ABuildTextOfFiveCharactersIsNotPadded) {
  VersionTexts version = initial();
  version.build = "12345";
  EXPECT_STREQ(kivara::buildVersionString(version).c_str(), "7.2_12345");
}

TEST(Version, IdentifierLeavesUpdateLevelAndHotFixOut) {
  VersionTexts version = initial();
  version.updateLevel = "5";
  version.hotFix = "6";
  EXPECT_EQ(kivara::versionIdentifier(version), 77050);
}

TEST(Version, IdentifierOfAPaddedBuildStaysTheSame) {
  VersionTexts version = initial();
  version.build = "50";
  EXPECT_EQ(kivara::versionIdentifier(version), 72050);
  kivara::buildVersionString(version);
  EXPECT_EQ(kivara::versionIdentifier(version), 72050);
}

TEST(Version, SevenTwelveAndEightTwoShareAnIdentifier) {
  VersionTexts seven = initial();
  seven.low = "12";
  VersionTexts eight = initial();
  eight.high = "8";
  EXPECT_EQ(kivara::versionIdentifier(seven), kivara::versionIdentifier(eight));
}

} // namespace
