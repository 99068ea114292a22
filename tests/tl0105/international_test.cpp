#include "tools/international.hpp"

#include "support/imports/import_hook.hpp"
#include "systemanswers.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string>

using SV::Date;
using SV::International;
using SV::String;
using SV::Time;
namespace sys = systemanswers;

namespace {

constexpr SV::LanguageType kGerman = 1031;
constexpr SV::LanguageType kBritish = 2057;
constexpr SV::LanguageType kFrench = 1036;
constexpr SV::LanguageType kCanadian = 0x1009;
constexpr SV::LanguageType kAustrian = 0x0C07;
constexpr SV::LanguageType kPolish = 0x0415;

std::string text(String const & string) { return string.c_str(); }

/// The British short form.
std::string numbers(Date const & date, bool withCentury = true) {
  char digits[32];
  std::snprintf(digits, sizeof digits, withCentury ? "%02lu/%02lu/%04lu" : "%02lu/%02lu/%02lu", date.GetDay(),
                date.GetMonth(), withCentury ? date.GetYear() : date.GetYear() % 100);
  return digits;
}

bool isInCalendar2026(Date const & date) {
  unsigned const days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return date.GetMonth() >= 1 && date.GetMonth() <= 12 && date.GetDay() >= 1 &&
         date.GetDay() <= days[date.GetMonth() - 1];
}

std::string shortDate(International const & record) { return text(record.GetDate(Date(9, 7, 2026))); }
std::string longDate(International const & record) { return text(record.GetLongDate(Date(9, 7, 2026))); }

} // namespace

TEST(International, WritesDatesAndTimesAsTheUsersSystemDoes) {
  International const record;
  for (Date const & date : {Date(1, 1, 1601), Date(29, 2, 2024), Date(12, 11, 2026), Date(31, 12, 9999)}) {
    EXPECT_EQ(text(record.GetDate(date)), sys::date(LOCALE_USER_DEFAULT, date, DATE_SHORTDATE));
    EXPECT_EQ(text(record.GetLongDate(date)), sys::date(LOCALE_USER_DEFAULT, date, DATE_LONGDATE));
  }
  for (Time const & time : {Time(0), Time(9, 5, 7), Time(12), Time(23, 59, 59, 99)}) {
    EXPECT_EQ(text(record.GetTime(time)), sys::time(LOCALE_USER_DEFAULT, time));
    EXPECT_EQ(text(record.GetTime(time, false)), sys::time(LOCALE_USER_DEFAULT, time, TIME_NOSECONDS));
  }
}

TEST(International, NoCountryAndNoLanguageAreTheSystems) {
  International const record(SV::COUNTRY_SYSTEM, SV::LANGUAGE_SYSTEM);
  EXPECT_EQ(shortDate(record), shortDate(International()));
  EXPECT_EQ(longDate(record), longDate(International()));
}

TEST(International, ALanguageOfTheSystemSelectsItsLocale) {
  for (SV::LanguageType const language : {kGerman, kBritish, kFrench, kCanadian, kAustrian, kPolish}) {
    International const record(0, language);
    for (unsigned month = 1; month <= 12; ++month) {
      Date const date(9, month, 2026);
      EXPECT_EQ(text(record.GetDate(date)), sys::date(language, date, DATE_SHORTDATE)) << language;
    }
    EXPECT_EQ(text(record.GetTime(Time(15, 4, 5))), sys::time(language, Time(15, 4, 5))) << language;
    EXPECT_EQ(text(record.GetTime(Time(15, 4, 5), false)), sys::time(language, Time(15, 4, 5), TIME_NOSECONDS))
        << language;
  }
}

TEST(International, LongDatesHaveTheNamesOfTheLanguage) {
  for (SV::LanguageType const language : {kGerman, kBritish, kFrench, kCanadian, kAustrian}) {
    International const record(0, language);
    for (unsigned month = 1; month <= 12; ++month) {
      Date const date(9, month, 2026);
      EXPECT_EQ(text(record.GetLongDate(date)), sys::date(language, date, DATE_LONGDATE));
      EXPECT_NE(text(record.GetLongDate(date)).find(sys::fact(language, LOCALE_SMONTHNAME1 + month - 1)),
                std::string::npos);
    }
  }
}

TEST(International, ALanguageWithoutCountryIsThatOfItsMainCountry) {
  EXPECT_EQ(longDate(International(0, LANG_GERMAN)), longDate(International(0, kGerman)));
}

TEST(International, WhatTheSystemDoesNotKnowFallsBackToTheUsers) {
  struct Row {
    SV::CountryType country;
    SV::LanguageType language;
  } const rows[] = {{0, 0x7FFF}, {9999, 0}, {9999, 0x7FFF}, {0, 0xFFFF}, {0xFFFF, 0}, {0, 0x0400}};
  for (Row const & row : rows) {
    International const record(row.country, row.language);
    EXPECT_EQ(longDate(record), longDate(International())) << row.country << ' ' << row.language;
    EXPECT_EQ(shortDate(record), shortDate(International())) << row.country << ' ' << row.language;
  }
}

TEST(International, ACountrySelectsALocaleByItsTelephoneNumber) {
  EXPECT_EQ(longDate(International(49, 0)), longDate(International(0, kGerman)));
  EXPECT_EQ(longDate(International(44, 0)), longDate(International(0, kBritish)));
  EXPECT_EQ(longDate(International(33, 0)), longDate(International(0, kFrench)));
}

TEST(International, CountryAndLanguageTogetherSelectTheLanguageAsItIsThere) {
  Date const january(1, 1, 2026);
  International const austria(43, kGerman);
  EXPECT_EQ(text(austria.GetLongDate(january)), sys::date(kAustrian, january, DATE_LONGDATE));
  EXPECT_NE(text(austria.GetLongDate(january)), text(International(0, kGerman).GetLongDate(january)));
  EXPECT_EQ(longDate(International(9999, kGerman)), longDate(International(0, kGerman)));
  EXPECT_EQ(longDate(International(81, kGerman)), longDate(International(0, kGerman)));
  EXPECT_EQ(longDate(International(44, 0x7FFF)), longDate(International(0, kBritish)));
}

TEST(International, CenturySwitchesTheShortYear) {
  International record(0, kGerman);
  EXPECT_EQ(text(record.GetDate(Date(24, 12, 2026))), "24.12.2026");
  EXPECT_TRUE(record.ChangeDateCentury(false));
  EXPECT_EQ(text(record.GetDate(Date(24, 12, 2026))), "24.12.26");
  EXPECT_EQ(text(record.GetDate(Date(24, 12, 1905))), "24.12.05");
  EXPECT_FALSE(record.ChangeDateCentury(false));
  EXPECT_FALSE(record.ChangeDateCentury(true));
  EXPECT_EQ(text(record.GetDate(Date(24, 12, 2026))), "24.12.2026");
  EXPECT_TRUE(record.ChangeDateCentury(true));
}

TEST(International, LongCenturySwitchesTheLongYearAlone) {
  International record(0, kGerman);
  std::string const before = longDate(record);
  EXPECT_TRUE(record.ChangeLongDateCentury(false));
  std::string const withoutCentury = longDate(record);
  EXPECT_EQ(before.substr(before.size() - 4), "2026");
  EXPECT_EQ(withoutCentury, before.substr(0, before.size() - 4) + "26");
  EXPECT_EQ(shortDate(record), sys::date(kGerman, Date(9, 7, 2026), DATE_SHORTDATE));
  EXPECT_FALSE(record.ChangeLongDateCentury(true));
  EXPECT_EQ(longDate(record), before);
}

TEST(International, ALocaleWithShortYearsGetsTheCenturyWhenAsked) {
  International record(0, kPolish);
  bool const hadCentury = record.ChangeDateCentury(true);
  EXPECT_NE(shortDate(record).find("2026"), std::string::npos);
  EXPECT_EQ(hadCentury, sys::fact(kPolish, LOCALE_SSHORTDATE).find("yyyy") != std::string::npos);
}

TEST(International, SwitchesOfACopyAreItsOwn) {
  International const original(0, kGerman);
  International copy(original);
  copy.ChangeDateCentury(false);
  copy.ChangeOKButtonText("Ja");
  EXPECT_EQ(shortDate(original), sys::date(kGerman, Date(9, 7, 2026), DATE_SHORTDATE));
  EXPECT_EQ(text(original.GetOKButtonText()), "OK");
}

TEST(International, HundredthsFollowTheSecondsAfterTheDecimalSign) {
  EXPECT_EQ(text(International(0, kGerman).GetTime(Time(15, 4, 5, 7), true, true)), "15:04:05,07");
  EXPECT_EQ(text(International(0, kGerman).GetTime(Time(15, 4, 5, 7), true, false)), "15:04:05");
  EXPECT_EQ(text(International(0, kBritish).GetTime(Time(15, 4, 5, 67), true, true)), "15:04:05.67");
  std::string const twelveHours = text(International(0, kCanadian).GetTime(Time(15, 4, 5, 67), true, true));
  EXPECT_NE(twelveHours.find("04:05.67 "), std::string::npos) << twelveHours;
}

TEST(International, HundredthsNeedSeconds) {
  International const record(0, kGerman);
  EXPECT_EQ(text(record.GetTime(Time(15, 4, 5, 67), false, true)), "15:04");
}

TEST(International, TimesThatAreNoneOfTheDayAreShownIn24Hours) {
  Time oddMinutes(1, 2, 3);
  oddMinutes.ChangeMin(75);
  struct Row {
    Time time;
    char const * german;
  } const rows[] = {
      {Time(24), "24:00:00"},
      {Time(100, 5, 6), "100:05:06"},
      {Time(9) - Time(10, 30), "-01:30:00"},
      {Time(0) - Time(0, 0, 0, 1), "-00:00:00"},
      {oddMinutes, "01:75:03"},
      {Time(0xFFFFFFFF), "2146:59:59"},
  };
  for (Row const & row : rows)
    EXPECT_EQ(text(International(0, kGerman).GetTime(row.time)), row.german);
  EXPECT_EQ(text(International(0, kGerman).GetTime(Time(9) - Time(10, 30), false)), "-01:30");
  EXPECT_EQ(text(International(0, kGerman).GetTime(Time(9) - Time(10, 30), true, true)), "-01:30:00,00");
  EXPECT_EQ(text(International(0, kCanadian).GetTime(Time(24))), "24:00:00");
}

TEST(International, EveryYearHasAShortForm) {
  International record(0, kBritish);
  for (unsigned year = 0; year <= 9999; ++year) {
    ASSERT_EQ(text(record.GetDate(Date(28, 2, year))), numbers(Date(28, 2, year)));
    ASSERT_EQ(text(record.GetDate(Date(29, 2, year))), numbers(Date(29, 2, year)));
  }
  record.ChangeDateCentury(false);
  for (unsigned year = 0; year <= 9999; year += 7)
    ASSERT_EQ(text(record.GetDate(Date(28, 2, year))), numbers(Date(28, 2, year), false));
}

TEST(International, LongDatesBeforeTheSystemsFirstYearHaveTheirWeekday) {
  International const record(0, kGerman);
  for (unsigned year = 0; year < 1601; ++year) {
    Date const date(24, 12, year);
    std::string const written = text(record.GetLongDate(date));
    std::string const weekday = sys::fact(kGerman, LOCALE_SDAYNAME1 + date.GetDayOfWeek());
    ASSERT_EQ(written.substr(0, weekday.size()), weekday) << year;
    ASSERT_EQ(written.substr(written.size() - 5), " " + numbers(date).substr(6)) << year;
  }
}

TEST(International, ImpossibleDaysAreShownInNumbers) {
  International const record(0, kBritish);
  for (unsigned rest = 0; rest < 10000; ++rest) {
    Date const date(rest % 100, rest / 100, 2026);
    ASSERT_EQ(text(record.GetDate(date)), numbers(date));
    ASSERT_EQ(text(record.GetLongDate(date)) == numbers(date), !isInCalendar2026(date));
  }
  EXPECT_EQ(text(record.GetDate(Date(0, 0, 0))), "00/00/0000");
  EXPECT_EQ(text(record.GetLongDate(Date(29, 2, 1900))), "29/02/1900");
}

TEST(International, NamesThatTheCodePageLacksGiveWayToNumbers) {
  constexpr SV::LanguageType kRussian = 0x0419;
  if (GetACP() != 1252)
    GTEST_SKIP() << "code page 1252 is the one without these letters";
  EXPECT_EQ(longDate(International(0, kRussian)), shortDate(International(0, kRussian)));
}

void play(char const * function, void * replacement) {
  support::replaceImports(GetModuleHandleA("TL0105.dll"), "KERNEL32.dll", {{function, replacement}});
}

UINT WINAPI answerUTF8() { return CP_UTF8; }

TEST(International, NoNameIsLackingInACodePageThatHasEveryLetter) {
  constexpr SV::LanguageType kRussian = 0x0419;
  play("GetACP", reinterpret_cast<void *>(answerUTF8));
  EXPECT_NE(longDate(International(0, kRussian)), shortDate(International(0, kRussian)));
}

int WINAPI refuseFormat(LCID, DWORD, SYSTEMTIME const *, wchar_t const *, wchar_t *, int) { return 0; }
int WINAPI refuseBytes(UINT, DWORD, wchar_t const *, int, char *, int, char const *, BOOL *) { return 0; }

void expectEmptyTexts() {
  International const record(0, kBritish);
  for (Date const & date : {Date(9, 7, 2026), Date(29, 2, 1600), Date(31, 2, 2026)}) {
    EXPECT_EQ(text(record.GetDate(date)), "");
    EXPECT_EQ(text(record.GetLongDate(date)), "");
  }
  EXPECT_EQ(text(record.GetTime(Time(15, 4, 5), true, true)), "");
}

TEST(International, WritesNothingWhenTheSystemRefusesToFormat) {
  play("GetDateFormatW", reinterpret_cast<void *>(refuseFormat));
  play("GetTimeFormatW", reinterpret_cast<void *>(refuseFormat));
  expectEmptyTexts();
}

TEST(International, WritesNothingWhenTheSystemRefusesTheBytes) {
  play("WideCharToMultiByte", reinterpret_cast<void *>(refuseBytes));
  expectEmptyTexts();
}

int WINAPI answerWithEra(LCID locale, LCTYPE type, wchar_t * text, int size) {
  static constexpr wchar_t kPicture[] = L"gg ddd dd/MM/yyyy";
  if (type != LOCALE_SSHORTDATE)
    return GetLocaleInfoW(locale, type, text, size);
  if (text != nullptr)
    std::copy(std::begin(kPicture), std::end(kPicture), text);
  return static_cast<int>(std::size(kPicture));
}

TEST(International, ErasAndWeekdaysFallAwayOnDaysThatNoCalendarHas) {
  play("GetLocaleInfoW", reinterpret_cast<void *>(answerWithEra));
  EXPECT_EQ(text(International(0, kBritish).GetDate(Date(31, 2, 2026))), "31/02/2026");
}

TEST(International, EveryLocaleOfTheSystemWritesEveryKindOfText) {
  for (SV::LanguageType language = 1; language < 0x80; ++language) {
    for (SV::LanguageType country = 0; country < 0x20; ++country) {
      International record(0, static_cast<SV::LanguageType>(country << 10 | language));
      for (bool const century : {false, true}) {
        record.ChangeDateCentury(century);
        record.ChangeLongDateCentury(century);
        for (Date const & date : {Date(9, 7, 2026), Date(29, 2, 1600), Date(31, 2, 2026)}) {
          ASSERT_GT(record.GetDate(date).Len(), 5) << language << ' ' << country;
          ASSERT_GT(record.GetLongDate(date).Len(), 5) << language << ' ' << country;
        }
      }
      ASSERT_GT(record.GetTime(Time(15, 4, 5, 67), true, true).Len(), 8) << language << ' ' << country;
      ASSERT_GT(record.GetTime(Time(0) - Time(15, 4), false).Len(), 4) << language << ' ' << country;
    }
  }
}

TEST(International, EachButtonTextIsSetAndTheOldOneGiven) {
  International record(0, kBritish);
  EXPECT_EQ(text(record.ChangeOKButtonText("Accept")), "OK");
  EXPECT_EQ(text(record.ChangeCancelButtonText("Abort")), "Cancel");
  EXPECT_EQ(text(record.ChangeHelpButtonText("Explain")), "Help");
  EXPECT_EQ(text(record.ChangeOKButtonText("")), "Accept");
  EXPECT_EQ(text(record.GetOKButtonText()), "");
  EXPECT_EQ(text(record.GetCancelButtonText()), "Abort");
  EXPECT_EQ(text(record.GetHelpButtonText()), "Explain");
}

TEST(International, ButtonTextsAreGermanForGerman) {
  International const record(0, kGerman);
  EXPECT_EQ(text(record.GetOKButtonText()), "OK");
  EXPECT_EQ(text(record.GetCancelButtonText()), "Abbrechen");
  EXPECT_EQ(text(record.GetHelpButtonText()), "Hilfe");
}
