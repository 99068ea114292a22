#include "tools/time.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <tuple>

using SV::Time;

namespace {

std::int32_t now() {
  SYSTEMTIME time;
  GetLocalTime(&time);
  return time.wHour * 1000000 + time.wMinute * 10000 + time.wSecond * 100 + time.wMilliseconds / 10;
}

} // namespace

TEST(Time, IsThePresentByDefault) {
  auto const before = now();
  Time const time;
  auto const after = now();
  if (before <= after) { // no midnight between
    EXPECT_LE(before, time.value());
    EXPECT_LE(time.value(), after);
  }
}

TEST(Time, IsOneSignedNumberOfHoursMinutesSecondsAndHundredths) {
  EXPECT_EQ(sizeof(Time), 4u);
  EXPECT_EQ(Time(15, 4, 5, 67).value(), 15040567);
  EXPECT_EQ(Time(0).value(), 0);
  EXPECT_EQ(Time(24).value(), 24000000);
  EXPECT_EQ(Time(100, 0, 1).value(), 100000100);
}

TEST(Time, FieldsBeyondTheirRangeCarry) {
  struct Row {
    Time time;
    std::int32_t value;
  } const rows[] = {
      {Time(1, 60), 2000000},           {Time(1, 59, 60), 2000000},   {Time(1, 59, 59, 100), 2000000},
      {Time(0, 0, 3600), 1000000},      {Time(0, 0, 0, 6000), 10000}, {Time(0, 119, 119, 199), 2010099},
      {Time(23, 59, 59, 99), 23595999},
  };
  for (Row const & row : rows)
    EXPECT_EQ(row.time.value(), row.value);
}

TEST(Time, WhatIsLargerThanTheLargestBecomesTheLargest) {
  EXPECT_EQ(Time(2146, 59, 59, 99).value(), 2146595999);
  EXPECT_EQ(Time(2147).value(), 2146595999);
  EXPECT_EQ(Time(0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF).value(), 2146595999);
}

TEST(Time, EachChangeSetsOneFieldAndGivesTheFormerValue) {
  Time time(15, 4, 5, 67);
  EXPECT_EQ(time.ChangeHour(9), 15u);
  EXPECT_EQ(time.value(), 9040567);
  EXPECT_EQ(time.ChangeMin(30), 4u);
  EXPECT_EQ(time.value(), 9300567);
  EXPECT_EQ(time.ChangeSec(59), 5u);
  EXPECT_EQ(time.value(), 9305967);
  EXPECT_EQ(std::make_tuple(time.GetHour(), time.GetMin(), time.GetSec(), time.Get100Sec()),
            std::make_tuple(9u, 30u, 59u, 67u));
}

TEST(Time, ChangesCutMinutesAndSecondsToTheirDigits) {
  Time time(15, 4, 5, 67);
  time.ChangeMin(175);
  time.ChangeSec(199);
  EXPECT_EQ(time.value(), 15759967);
  time.ChangeMin(0xFFFFFFFF);
  time.ChangeHour(0xFFFFFFFF);
  EXPECT_EQ(time.value(), 2146959967);
}

TEST(Time, DifferenceIsATime) {
  struct Row {
    Time a, b;
    std::int32_t difference;
  } const rows[] = {
      {Time(10), Time(9), 1000000},
      {Time(9), Time(10), -1000000},
      {Time(10, 0, 0, 0), Time(9, 59, 59, 99), 1},
      {Time(9, 59, 59, 99), Time(10), -1},
      {Time(9), Time(10, 30), -1300000},
      {Time(12, 34, 56, 78), Time(12, 34, 56, 78), 0},
      {Time(24), Time(0, 0, 0, 1), 23595999},
  };
  for (Row const & row : rows)
    EXPECT_EQ((row.a - row.b).value(), row.difference) << row.a.value() << " - " << row.b.value();
}

TEST(Time, FieldsAreThoseOfTheAbsoluteValue) {
  Time const negative = Time(9) - Time(10, 30, 15, 5);
  EXPECT_EQ(negative.value(), -1301505);
  EXPECT_EQ(std::make_tuple(negative.GetHour(), negative.GetMin(), negative.GetSec(), negative.Get100Sec()),
            std::make_tuple(1u, 30u, 15u, 5u));
}

TEST(Time, ChangesOfANegativeTimeKeepItsSign) {
  Time negative = Time(9) - Time(10, 30);
  EXPECT_EQ(negative.ChangeHour(5), 1u);
  EXPECT_EQ(negative.value(), -5300000);
}

TEST(Time, DifferenceOfNegativeTimesCountsTheirSigns) {
  Time const minusOneHour = Time(0) - Time(1);
  EXPECT_EQ((Time(1) - minusOneHour).value(), 2000000);
  EXPECT_EQ((minusOneHour - Time(1)).value(), -2000000);
  Time const smallest = minusOneHour - Time(2146, 59, 59, 99);
  EXPECT_EQ(smallest.value(), -2146595999);
}

TEST(Time, ComparesWithItsSign) {
  Time const negative = Time(0) - Time(1);
  EXPECT_TRUE(negative < Time(0));
  EXPECT_TRUE(Time(9, 59, 59, 99) < Time(10));
  EXPECT_FALSE(Time(10) < Time(10));
  EXPECT_TRUE(Time(24, 0, 0) == Time(23, 60, 0));
  EXPECT_FALSE(Time(24) == Time(0));
}
