#include "tools/date.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

using SV::Date;

namespace {

std::uint32_t today() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  return now.wYear * 10000u + now.wMonth * 100u + now.wDay;
}

/// The system's weekday of a day in the calendar, with Monday as 0; -1 for a day that is in none.
int systemWeekday(unsigned day, unsigned month, unsigned year) {
  SYSTEMTIME asked{};
  asked.wDay = static_cast<WORD>(day);
  asked.wMonth = static_cast<WORD>(month);
  asked.wYear = static_cast<WORD>(year);
  FILETIME moment;
  if (!SystemTimeToFileTime(&asked, &moment) || !FileTimeToSystemTime(&moment, &asked))
    return -1;
  return (asked.wDayOfWeek + 6) % 7;
}

} // namespace

TEST(Date, IsTodayByDefault) {
  auto const before = today();
  Date const date;
  EXPECT_LE(before, date.value());
  EXPECT_LE(date.value(), today());
}

TEST(Date, IsOneNumberOf32Bits) {
  EXPECT_EQ(sizeof(Date), 4u);
  EXPECT_EQ(Date(12, 11, 2026).value(), 20261112u);
  EXPECT_EQ(Date(31, 12, 9999).value(), 99991231u);
  EXPECT_EQ(Date(0, 0, 0).value(), 0u);
}

TEST(Date, KeepsWhatTheDigitsOfAFieldHold) {
  Date const date(101, 113, 12026);
  EXPECT_EQ(date.value(), 20261301u);
  EXPECT_EQ(Date(31, 2, 2026).value(), 20260231u);
  EXPECT_EQ(Date(0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF).value(), 72959595u);
}

TEST(Date, EachChangeSetsOneFieldAndGivesTheFormerValue) {
  Date date(12, 11, 2026);
  EXPECT_EQ(date.ChangeDay(5), 12u);
  EXPECT_EQ(date.value(), 20261105u);
  EXPECT_EQ(date.ChangeMonth(3), 11u);
  EXPECT_EQ(date.value(), 20260305u);
  EXPECT_EQ(date.ChangeYear(987), 2026u);
  EXPECT_EQ(date.value(), 9870305u);
  EXPECT_EQ(date.GetDay(), 5u);
  EXPECT_EQ(date.GetMonth(), 3u);
  EXPECT_EQ(date.GetYear(), 987u);
}

TEST(Date, ChangesCutValuesBeyondTheDigits) {
  Date date(12, 11, 2026);
  date.ChangeDay(100);
  date.ChangeMonth(199);
  date.ChangeYear(10001);
  EXPECT_EQ(date.value(), 19900u);
}

TEST(Date, WeekdaysAreThoseOfTheSystemFromMonday0) {
  EXPECT_EQ(Date(23, 11, 2026).GetDayOfWeek(), SV::MONDAY);
  EXPECT_EQ(static_cast<int>(SV::MONDAY), 0);
  for (unsigned year = 1601; year <= 2420; ++year) {
    for (unsigned month = 1; month <= 12; ++month) {
      for (unsigned day = 1; day <= 31; ++day) {
        int const expected = systemWeekday(day, month, year);
        if (expected >= 0) {
          ASSERT_EQ(Date(day, month, year).GetDayOfWeek(), expected) << Date(day, month, year).value();
        }
      }
    }
  }
}

TEST(Date, WeekdaysRepeatEvery400YearsDownToYear0) {
  for (unsigned year = 0; year < 1601; ++year) {
    for (unsigned month = 1; month <= 12; ++month)
      ASSERT_EQ(Date(1, month, year).GetDayOfWeek(), Date(1, month, year + 400 * 5).GetDayOfWeek())
          << year << ' ' << month;
  }
}

TEST(Date, WeekdayOfAnImpossibleDayCountsOn) {
  struct Row {
    Date impossible, real;
  } const rows[] = {
      {Date(31, 2, 2026), Date(3, 3, 2026)},  {Date(30, 2, 2024), Date(1, 3, 2024)},
      {Date(32, 12, 2026), Date(1, 1, 2027)}, {Date(1, 13, 2026), Date(1, 1, 2027)},
      {Date(1, 0, 2026), Date(1, 12, 2025)},  {Date(0, 1, 2026), Date(31, 12, 2025)},
      {Date(99, 99, 2026), Date(7, 6, 2034)}, {Date(1, 0, 2000), Date(1, 12, 1999)},
      {Date(0, 3, 2000), Date(29, 2, 2000)},  {Date(0, 3, 2001), Date(28, 2, 2001)},
  };
  for (Row const & row : rows)
    EXPECT_EQ(row.impossible.GetDayOfWeek(), row.real.GetDayOfWeek()) << row.impossible.value();
}

TEST(Date, EveryStoredNumberHasAWeekday) {
  for (unsigned year : {0u, 1u, 4u, 100u, 1600u, 9999u}) {
    for (unsigned rest = 0; rest < 10000; ++rest) {
      int const weekday = Date(rest % 100, rest / 100, year).GetDayOfWeek();
      ASSERT_TRUE(weekday >= SV::MONDAY && weekday <= SV::SUNDAY) << year << ' ' << rest;
    }
  }
}

TEST(Date, LeapYearsFollowTheGregorianRule) {
  struct Row {
    unsigned year;
    bool isLeap;
  } const rows[] = {{0, true},    {1, false},    {4, true},    {100, false},  {400, true},  {1900, false},
                    {2000, true}, {2023, false}, {2024, true}, {2100, false}, {9996, true}, {9999, false}};
  for (Row const & row : rows)
    EXPECT_EQ(Date(1, 1, row.year).IsLeapYear(), row.isLeap) << row.year;
}

TEST(Date, ComparesByTheCalendar) {
  EXPECT_TRUE(Date(31, 12, 2025) < Date(1, 1, 2026));
  EXPECT_FALSE(Date(1, 1, 2026) < Date(1, 1, 2026));
  EXPECT_TRUE(Date(1, 1, 2026) == Date(1, 1, 2026));
  EXPECT_TRUE(Date(1, 1, 2026) != Date(2, 1, 2026));
}
