// Runs with LC_ALL=de_DE.UTF-8.
#include "tools/international.hpp"

#include "systemanswers.hpp"

#include <gtest/gtest.h>

#include <string>

using SV::Date;
using SV::International;
using SV::Time;
namespace sys = systemanswers;

namespace {

constexpr LCID kGerman = 1031;

} // namespace

class GermanUser : public testing::Test {
protected:
  void SetUp() override {
    if (GetUserDefaultLCID() != kGerman)
      GTEST_SKIP() << "the system does not take the user's locale from LC_ALL";
  }
};

TEST_F(GermanUser, GetsDatesAndTimesOfTheSystemWithoutAsking) {
  International const record;
  Date const date(9, 12, 2026);
  EXPECT_EQ(record.GetDate(date).c_str(), sys::date(LOCALE_USER_DEFAULT, date, DATE_SHORTDATE));
  EXPECT_EQ(record.GetLongDate(date).c_str(), sys::date(LOCALE_USER_DEFAULT, date, DATE_LONGDATE));
  EXPECT_EQ(record.GetTime(Time(15, 4, 5)).c_str(), sys::time(LOCALE_USER_DEFAULT, Time(15, 4, 5)));
  EXPECT_NE(std::string(record.GetLongDate(date).c_str()).find("Dezember"), std::string::npos);
}

TEST_F(GermanUser, GetsGermanButtonTexts) { EXPECT_STREQ(International().GetCancelButtonText().c_str(), "Abbrechen"); }

TEST_F(GermanUser, IsWhoUnknownLanguagesAndCountriesFallBackTo) {
  Date const date(9, 12, 2026);
  std::string const own = International().GetLongDate(date).c_str();
  EXPECT_EQ(International(0, 0x7FFF).GetLongDate(date).c_str(), own);
  EXPECT_EQ(International(9999, 0).GetLongDate(date).c_str(), own);
}

TEST_F(GermanUser, GetsTheOwnLanguageInACountryThatSpeaksIt) {
  Date const date(9, 1, 2026);
  EXPECT_EQ(International(43, 0).GetLongDate(date).c_str(), sys::date(0x0C07, date, DATE_LONGDATE));
  EXPECT_EQ(International(41, 0).GetLongDate(date).c_str(), sys::date(0x0807, date, DATE_LONGDATE));
}

TEST_F(GermanUser, MaySelectAnotherLanguage) {
  Date const date(9, 12, 2026);
  EXPECT_EQ(International(0, 2057).GetLongDate(date).c_str(), sys::date(2057, date, DATE_LONGDATE));
  EXPECT_EQ(International(0, 2057).GetDate(date).c_str(), sys::date(2057, date, DATE_SHORTDATE));
}
