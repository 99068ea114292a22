// Runs with LC_ALL=de_DE.UTF-8.
#include "adattime.hpp"

#include "tl0105/systemanswers.hpp"

#include <gtest/gtest.h>

#include <string>

namespace sys = systemanswers;

namespace {

constexpr LCID kGerman = 1031;

class GermanSettings : public testing::Test {
protected:
  void SetUp() override {
    if (GetUserDefaultLCID() != kGerman)
      GTEST_SKIP() << "the system does not take the user's locale from LC_ALL";
  }
};

TEST_F(GermanSettings, AreThoseOfADisplayedDate) {
  KivCoreDate const date("2026:12:09");
  EXPECT_EQ(date.GetDisplayString(false).c_str(), sys::date(LOCALE_USER_DEFAULT, date, DATE_SHORTDATE));
  std::string const text = date.GetDisplayString(true).c_str();
  EXPECT_EQ(text, sys::date(LOCALE_USER_DEFAULT, date, DATE_LONGDATE));
  EXPECT_NE(text.find("Dezember 2026"), std::string::npos);
}

TEST_F(GermanSettings, AreThoseOfADisplayedMoment) {
  KivCoreDateTime const moment("2026:12:09 15:04:05");
  std::string const time = sys::time(LOCALE_USER_DEFAULT, moment);
  EXPECT_EQ(moment.GetDisplayString(false).c_str(),
            sys::date(LOCALE_USER_DEFAULT, moment, DATE_SHORTDATE) + " " + time);
  EXPECT_EQ(time, "15:04:05");
}

TEST_F(GermanSettings, AreThoseOfTheEmptyFormat) {
  SV::Date const date(9, 12, 2026);
  EXPECT_EQ(KivDate::GetFormatedDate(date, "").c_str(), sys::date(LOCALE_USER_DEFAULT, date, DATE_SHORTDATE));
  EXPECT_STREQ(KivDate::GetFormatedTime(SV::Time(15, 4, 5), "").c_str(), "15:04:05");
}

} // namespace
