// Facts of the calendar.
#include "adattime.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <climits>

namespace {

TEST(Calendar, KnowsItsRanges) {
  for (int const number : {INT_MIN, -1, 0, 1, 6, 7, 11, 12, 31, 32, INT_MAX}) {
    EXPECT_EQ(KivDate::DayIsValid(number), number >= 1 && number <= 31) << number;
    EXPECT_EQ(KivDate::MonthIsValid(number), number >= 0 && number <= 11) << number;
    EXPECT_EQ(KivDate::WeekdayIsValid(number), number >= 0 && number <= 6) << number;
  }
}

TEST(Calendar, HasTheLeapYearsOfTheGregorianRule) {
  for (int year = -9999; year <= 9999; ++year)
    ASSERT_EQ(KivDate::IsLeapYear(year), std::chrono::year(year).is_leap()) << year;
  EXPECT_TRUE(KivDate::IsLeapYear(2000));
  EXPECT_FALSE(KivDate::IsLeapYear(1900));
  EXPECT_TRUE(KivDate::IsLeapYear(2024));
  EXPECT_FALSE(KivDate::IsLeapYear(2023));
}

TEST(Calendar, GivesTheDaysOfEachMonth) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  for (int month = 0; month < 12; ++month)
    for (bool const isLeap : {false, true}) {
      int days = 0;
      EXPECT_TRUE(KivDate::GetMaxDayOfMonth(month, days, isLeap));
      EXPECT_EQ(days, kDays[month] + (isLeap && month == 1 ? 1 : 0)) << month;
    }
}

TEST(Calendar, GivesAMonthThatDoesNotExist255Days) {
  for (int const month : {INT_MIN, -1, 12, INT_MAX}) {
    int days = 0;
    EXPECT_FALSE(KivDate::GetMaxDayOfMonth(month, days, false)) << month;
    EXPECT_EQ(days, 255) << month;
  }
}

TEST(Calendar, KnowsTheDaysOfEachMonth) {
  for (int year : {2023, 2024})
    for (int month = -1; month <= 12; ++month)
      for (int day = -1; day <= 32; ++day) {
        std::chrono::year_month_day const date{std::chrono::year(year),
                                               std::chrono::month(static_cast<unsigned>(month + 1)),
                                               std::chrono::day(static_cast<unsigned>(day))};
        EXPECT_EQ(KivDate::DayIsValidForMonth(day, month, year == 2024), day > 0 && month >= 0 && date.ok())
            << year << '-' << month << '-' << day;
      }
  EXPECT_FALSE(KivDate::DayIsValidForMonth(255, 12, false));
}

} // namespace
