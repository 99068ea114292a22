#include "aappinfo.hpp"

#include <gtest/gtest.h>

TEST(AppInfo, PartsOfTheVersionAsNumbers) {
  EXPECT_EQ(Kiv_GetVersionHigh(), 7);
  EXPECT_EQ(Kiv_GetVersionLow(), 2);
  EXPECT_EQ(Kiv_GetVersionUL(), 0);
  EXPECT_EQ(Kiv_GetVersionHF(), 0);
  EXPECT_EQ(Kiv_GetVersionBuild(), 5050);
  EXPECT_EQ(Kiv_GetVersionIdentifier(), 77050);
}

TEST(AppInfo, FormsOfTheVersion) {
  EXPECT_STREQ(Kiv_GetVersionString().c_str(), "7.2");
  EXPECT_STREQ(Kiv_GetBuildVersionString().c_str(), "7.2_5050");
  EXPECT_STREQ(Kiv_GetPatchVersionString().c_str(), "7.20.00");
  EXPECT_STREQ(Kiv_GetPatchBuildVersionString().c_str(), "7.20.00.5050");
}
