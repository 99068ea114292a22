// Built once for each of some users: KIVTEST_SUITE names the suite, KIVTEST_LOCALE is the locale identifier that the process
// runs under.
#include "alocale.hpp"

#include "locale/locale_facts.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

using kivtest::Fact;
using kivtest::Form;
using kivtest::kFacts;
using kivtest::told;
using SV::String;

namespace {

constexpr LCID kUser = KIVTEST_LOCALE;

/// The whole text of the system.
std::string whole(LCTYPE type) {
  char text[512] = "";
  GetLocaleInfoA(LOCALE_USER_DEFAULT, type, text, sizeof text);
  return text;
}

/// What the system leaves in a cleared buffer of that size.
std::string leftIn(int size, LCTYPE type) {
  std::string buffer(static_cast<std::size_t>(size) + 1, '\0');
  GetLocaleInfoA(LOCALE_USER_DEFAULT, type, buffer.data(), size);
  return buffer.c_str();
}

std::string expected(Fact const & fact) {
  switch (fact.form) {
  case Form::Sized: return whole(fact.type);
  case Form::Fixed: return leftIn(fact.size, fact.type);
  case Form::Number: break;
  }
  long const number = std::atol(leftIn(fact.size, fact.type).c_str());
  return std::to_string(kivtest::isYesOrNo(fact) ? static_cast<long>(number != 0) : number);
}

/// Words and numbers that each of these users knows.
struct User {
  LCID locale;
  char const * monday;
  char const * decimalSeparator;
  char const * currency;
  unsigned long country;
  unsigned long language;
} const kUsers[] = {
    {0x0407, "Montag", ",", "\x80", 49, 407},
    {0x0809, "Monday", ".", "\xA3", 44, 809},
    {0x040C, "lundi", ",", "\x80", 33, 40},
    {0x280C, "lundi", ",", "F?CFA", 221, 280}, // a narrow blank that the code page lacks
};

} // namespace

class KIVTEST_SUITE : public testing::Test {
protected:
  void SetUp() override {
    if (GetUserDefaultLCID() != kUser)
      GTEST_SKIP() << "the system does not take the user's locale from LC_ALL";
  }
};

TEST_F(KIVTEST_SUITE, AreAllThoseOfTheSystem) {
  EXPECT_EQ(std::size(kFacts), 108u);
  for (Fact const & fact : kFacts)
    EXPECT_EQ(fact.told(), expected(fact)) << fact.name;
}

TEST_F(KIVTEST_SUITE, OfAFixedSizeAreWholeWhereTheyFitAndCutOrEmptyWhereNot) {
  for (Fact const & fact : kFacts) {
    if (fact.form != Form::Fixed)
      continue;
    std::string const text = whole(fact.type);
    std::string const told = fact.told();
    bool const fits = static_cast<int>(text.size()) < fact.size;
    EXPECT_TRUE(fits ? told == text : text.starts_with(told) && static_cast<int>(told.size()) <= fact.size)
        << fact.name << ": " << told << " of " << text;
  }
}

TEST_F(KIVTEST_SUITE, BeginTheWeekWithMonday) {
  // 4 January 2027 is a Monday.
  SYSTEMTIME monday{};
  monday.wYear = 2027;
  monday.wMonth = 1;
  monday.wDay = 4;
  char text[100] = "";
  GetDateFormatA(LOCALE_USER_DEFAULT, 0, &monday, "dddd", text, sizeof text);
  EXPECT_STREQ(Locale::Kiv_GetDayName1().c_str(), text);
  GetDateFormatA(LOCALE_USER_DEFAULT, 0, &monday, "ddd", text, sizeof text);
  EXPECT_STREQ(Locale::Kiv_GetAbbreviatedDayName1().c_str(), text);
}

TEST_F(KIVTEST_SUITE, HaveNoMonth13WhereAYearHas12) {
  EXPECT_EQ(Locale::Kiv_GetMonthName13().Len(), 0);
  EXPECT_EQ(Locale::Kiv_GetAbbreviatedMonthName13().Len(), 0);
  EXPECT_GT(Locale::Kiv_GetMonthName12().Len(), 0);
}

TEST_F(KIVTEST_SUITE, GiveTheCurrencySymbolAsDateSeparator) {
  std::string const symbol = whole(LOCALE_SCURRENCY);
  std::string const separator = told(Locale::Kiv_GetDateSeparator());
  EXPECT_NE(separator, whole(LOCALE_SDATE));
  if (symbol.size() <= 3)
    EXPECT_EQ(separator, symbol);
  else
    EXPECT_TRUE(symbol.starts_with(separator)) << separator;
}

TEST_F(KIVTEST_SUITE, GiveASortNameOnlyWhereItHasAtMost3Characters) {
  std::string const name = whole(LOCALE_SSORTNAME);
  EXPECT_EQ(told(Locale::Kiv_GetSortName()), leftIn(4, LOCALE_SSORTNAME));
  EXPECT_EQ(told(Locale::Kiv_GetSortName()) == name, name.size() <= 3);
}

TEST_F(KIVTEST_SUITE, ReadLanguageNumbersInHexadecimalAsDecimalDigits) {
  unsigned long number = 0;
  char digits[8];
  std::snprintf(digits, sizeof digits, "%04x", static_cast<unsigned>(kUser));
  for (char const * at = digits; *at >= '0' && *at <= '9'; ++at)
    number = number * 10 + static_cast<unsigned long>(*at - '0');
  EXPECT_EQ(Locale::Kiv_GetLanguage(), number);
  std::string const other = whole(LOCALE_IDEFAULTLANGUAGE);
  EXPECT_EQ(std::to_string(Locale::Kiv_GetDefaultLanguage()), std::to_string(std::atol(other.c_str())));
}

TEST_F(KIVTEST_SUITE, AreWhatTheUserKnows) {
  for (User const & user : kUsers) {
    if (user.locale != kUser)
      continue;
    EXPECT_EQ(told(Locale::Kiv_GetDayName1()), user.monday);
    EXPECT_EQ(told(Locale::Kiv_GetDecimalSeparator()), user.decimalSeparator);
    EXPECT_EQ(told(Locale::Kiv_GetCurrencyName()), user.currency);
    EXPECT_EQ(Locale::Kiv_GetCountryCode(), user.country);
    EXPECT_EQ(Locale::Kiv_GetLanguage(), user.language);
    EXPECT_EQ(Locale::Kiv_GetDateType(), KIV_DATE_DAY_MONTH_YEAR);
    EXPECT_EQ(Locale::Kiv_GetTimeFormatType(), KIV_TIME_24_HOURS);
    EXPECT_EQ(Locale::Kiv_GetDefaultANSICodepage(), 1252u);
    EXPECT_EQ(Locale::Kiv_GetCalendarType(), KIV_CALENDAR_GREGORIAN);
  }
}

TEST_F(KIVTEST_SUITE, AskTheSystemAnewEachTime) {
  String const first = Locale::Kiv_GetCountryName();
  String const second = Locale::Kiv_GetCountryName();
  EXPECT_TRUE(first == second);
  EXPECT_NE(first.block(), second.block());
}
