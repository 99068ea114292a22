// The text forms of dates and moments.
#include "adattime.hpp"

#include "support/imports/import_spy.hpp"
#include "tools/international.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

using SV::Date;
using SV::Time;

namespace {

static_assert(!std::is_polymorphic_v<KivCoreDate> && !std::is_polymorphic_v<KivCoreDateTime>);
static_assert(sizeof(KivCoreDate) == sizeof(Date));
static_assert(sizeof(KivCoreDateTime) == sizeof(Date) + sizeof(Time));

/// What derived classes see.
struct DateParser : KivCoreDate {
  using KivCoreDate::_ImpParse;
};
struct MomentParser : KivCoreDateTime {
  using KivCoreDateTime::_ImpParse;
};

struct Row {
  char const * text;
  bool isValid;
};
std::ostream & operator<<(std::ostream & out, Row const & row) {
  return out << (row.text != nullptr ? row.text : "null");
}

class CoreDate : public testing::TestWithParam<Row> {};

TEST_P(CoreDate, HasItsFormAndExists) { EXPECT_EQ(KivCoreDate::IsValidString(GetParam().text), GetParam().isValid); }

INSTANTIATE_TEST_SUITE_P(Table, CoreDate,
                         testing::Values(Row{"2024:02:29", true}, Row{"2023:02:29", false}, Row{"2023:02:28", true},
                                         Row{"2023-02-28", false}, Row{"0000:01:01", false}, Row{"0001:01:01", true},
                                         Row{"9999:12:31", true}, Row{"2000:02:29", true}, Row{"1900:02:29", false},
                                         Row{"2024:00:01", false}, Row{"2024:13:01", false}, Row{"2024:01:00", false},
                                         Row{"2024:01:32", false}, Row{"2024:04:31", false}, Row{nullptr, false},
                                         Row{"", false}, Row{"2024:02:2", false}, Row{"2024:02:290", false},
                                         Row{"2024:02:29 ", false}, Row{" 2024:02:29", false}, Row{"24:02:29", false},
                                         Row{"2024:2:029", false}, Row{"2024:02-29", false}, Row{"2024.02:29", false},
                                         Row{"a024:02:29", false}, Row{"2a24:02:29", false}, Row{"20a4:02:29", false},
                                         Row{"202a:02:29", false}, Row{"2024:a2:29", false}, Row{"2024:0a:29", false},
                                         Row{"2024:02:a9", false}, Row{"2024:02:2a", false}, Row{"-024:02:29", false},
                                         Row{"202/:02:29", false}, Row{"202::02:29", false},
                                         Row{"\xB2"
                                             "024:02:29",
                                             false}));

// All dates that the form can have, and some that it cannot.
TEST(CoreDateExhaustive, AcceptsTheDatesOfTheCalendar) {
  char text[16];
  for (int year = 0; year <= 9999; ++year)
    for (unsigned month = 1; month <= 12; ++month)
      for (unsigned const day : {0u, 1u, 28u, 29u, 30u, 31u, 32u}) {
        std::snprintf(text, sizeof text, "%04d:%02u:%02u", year, month, day);
        std::chrono::year_month_day const date{std::chrono::year(year), std::chrono::month(month),
                                               std::chrono::day(day)};
        ASSERT_EQ(KivCoreDate::IsValidString(text), year >= 1 && date.ok()) << text;
      }
}

TEST(CoreDateExhaustive, ReadsEachDayFromYear1To9999) {
  using std::chrono::sys_days;
  using std::chrono::year;
  sys_days const last = year(9999) / 12 / 31;
  char text[16];
  for (sys_days day = year(1) / 1 / 1; day <= last; day += std::chrono::days(1)) {
    std::chrono::year_month_day const date(day);
    std::snprintf(text, sizeof text, "%04d:%02u:%02u", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    KivCoreDate const read(text);
    ASSERT_EQ(read, Date(static_cast<unsigned>(date.day()), static_cast<unsigned>(date.month()),
                         static_cast<unsigned long>(static_cast<int>(date.year()))));
    ASSERT_EQ(read.GetDayOfWeek(), static_cast<int>(std::chrono::weekday(day).iso_encoding()) - 1) << text;
  }
}

TEST(CoreDate, OfABadTextIsToday) {
  for (char const * const text : {"2023:02:29", "", "2024-01-01", static_cast<char const *>(nullptr)}) {
    Date before;
    KivCoreDate date(text);
    if (!(before == Date())) // midnight came between
      date = KivCoreDate(text);
    EXPECT_EQ(date, Date());
  }
}

TEST(CoreDate, IsParsedIntoAnyDateOrNone) {
  Date date(1, 2, 1999);
  EXPECT_TRUE(DateParser::_ImpParse("2024:02:29", &date));
  EXPECT_EQ(date, Date(29, 2, 2024));
  EXPECT_FALSE(DateParser::_ImpParse("2024:02:30", &date));
  EXPECT_FALSE(DateParser::_ImpParse("2025:03:3", &date));
  EXPECT_EQ(date, Date(29, 2, 2024));
  EXPECT_TRUE(DateParser::_ImpParse("2024:02:29", nullptr));
}

TEST(CoreDate, IsDisplayedByTheSettingsWithTheWholeYearInTheLongForm) {
  SV::International settings;
  Date const date(5, 3, 2024);
  EXPECT_EQ(KivCoreDate("2024:03:05").GetDisplayString(false), settings.GetDate(date));
  settings.ChangeLongDateCentury(true);
  EXPECT_EQ(KivCoreDate("2024:03:05").GetDisplayString(true), settings.GetLongDate(date));
  EXPECT_NE(std::string(settings.GetLongDate(date).c_str()).find("2024"), std::string::npos);
}

// The settings here have four digits anyway, so the text would not show it.
TEST(CoreDate, AsksForTheWholeYearInTheLongForm) {
  static std::vector<bool> asked; // spies stay as long as the process
  ASSERT_TRUE(support::spyOnImport("kivara.dll", "ChangeLongDateCentury", [](support::SpiedCall & call) {
    asked.push_back((call.arguments[1] & 0xFF) != 0);
  }));
  KivCoreDate const date("2024:03:05");
  date.GetDisplayString(true);
  date.GetDisplayString(false);
  KivCoreDateTime("2024:03:05 21:05:07").GetDisplayString(true);
  EXPECT_EQ(asked, std::vector<bool>(3, true));
}

class CoreDateTime : public testing::TestWithParam<Row> {};

TEST_P(CoreDateTime, HasItsFormAndExists) {
  EXPECT_EQ(KivCoreDateTime::IsValidString(GetParam().text), GetParam().isValid);
}

INSTANTIATE_TEST_SUITE_P(Table, CoreDateTime,
                         testing::Values(Row{"2024:02:29 23:59:59", true}, Row{"2024:02:29 24:00:00", false},
                                         Row{"0001:01:01 00:00:00", true}, Row{"2023:02:29 00:00:00", false},
                                         Row{"0000:01:01 00:00:00", false}, Row{"2024:02:29 23:60:00", false},
                                         Row{"2024:02:29 23:00:60", false}, Row{"2024:02:29", false},
                                         Row{"2024:02:29 ", false}, Row{"2024:02:29  3:59:59", false},
                                         Row{"2024:02:29_23:59:59", false}, Row{"2024:02:29 23:59:5", false},
                                         Row{"2024:02:29 23:59:590", false}, Row{"2024:02:29 23-59:59", false},
                                         Row{"2024:02:29 23:59-59", false}, Row{"2024:02:29 a3:59:59", false},
                                         Row{"2024:02:29 2a:59:59", false}, Row{"2024:02:29 23:a9:59", false},
                                         Row{"2024:02:29 23:5a:59", false}, Row{"2024:02:29 23:59:a9", false},
                                         Row{"2024:02:29 23:59:5a", false}, Row{"2024:13:29 23:59:59", false},
                                         Row{nullptr, false}, Row{"", false}));

TEST(CoreDateTime, ReadsDateAndTime) {
  KivCoreDateTime const moment("2024:02:29 23:58:57");
  EXPECT_EQ(static_cast<Date const &>(moment), Date(29, 2, 2024));
  EXPECT_EQ(moment.GetHour(), 23u);
  EXPECT_EQ(moment.GetMin(), 58u);
  EXPECT_EQ(moment.GetSec(), 57u);
}

TEST(CoreDateTime, OfABadTextIsNow) {
  for (char const * const text : {"2024:02:29 24:00:00", "", static_cast<char const *>(nullptr)}) {
    Date date;
    Time before;
    KivCoreDateTime moment(text);
    Time after;
    while (after < before) { // midnight came between
      date = Date();
      before = Time();
      moment = KivCoreDateTime(text);
      after = Time();
    }
    EXPECT_EQ(static_cast<Date const &>(moment), date);
    EXPECT_FALSE(static_cast<Time const &>(moment) < before);
    EXPECT_FALSE(after < static_cast<Time const &>(moment));
  }
}

TEST(CoreDateTime, IsParsedIntoEachOfTheTwoByItself) {
  constexpr char kText[] = "2024:02:29 01:02:03";
  Date date(1, 2, 1999);
  Time time(9, 8, 7, 65);
  EXPECT_TRUE(MomentParser::_ImpParse(kText, &date, nullptr));
  EXPECT_EQ(date, Date(29, 2, 2024));
  EXPECT_TRUE(MomentParser::_ImpParse(kText, nullptr, &time));
  EXPECT_EQ(time, Time(1, 2, 3, 65));
  EXPECT_TRUE(MomentParser::_ImpParse(kText, nullptr, nullptr));
  EXPECT_FALSE(MomentParser::_ImpParse("2025:01:01 25:02:03", &date, &time));
  EXPECT_FALSE(MomentParser::_ImpParse("2025:01:32 05:02:03", &date, &time));
  EXPECT_EQ(date, Date(29, 2, 2024));
  EXPECT_EQ(time, Time(1, 2, 3, 65));
}

TEST(CoreDateTime, ReadsEachSecondOfTheDay) {
  char text[32];
  for (unsigned second = 0; second < 86400; ++second) {
    std::snprintf(text, sizeof text, "2024:02:29 %02u:%02u:%02u", second / 3600, second / 60 % 60, second % 60);
    Time time(0);
    ASSERT_TRUE(MomentParser::_ImpParse(text, nullptr, &time)) << text;
    ASSERT_EQ(time, Time(second / 3600, second / 60 % 60, second % 60)) << text;
  }
}

TEST(CoreDateTime, IsDisplayedAsDateAndTimeWithSeconds) {
  SV::International settings;
  settings.ChangeLongDateCentury(true);
  Date const date(5, 3, 2024);
  Time const time(21, 5, 7);
  KivCoreDateTime const moment("2024:03:05 21:05:07");
  EXPECT_EQ(moment.GetDisplayString(false), settings.GetDate(date) + " " + settings.GetTime(time, true, false));
  EXPECT_EQ(moment.GetDisplayString(true), settings.GetLongDate(date) + " " + settings.GetTime(time, true, false));
}

} // namespace
