// Assignment and arithmetic of durations: what each operator checks, and what it leaves.
#include "adattime.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr char kDay[] = "00:001:00:00:00";

void expect(KivCoreTime const & time, double seconds, bool overflow) {
  EXPECT_EQ(time.asDouble(), seconds);
  EXPECT_EQ(time.overFlow(), overflow);
}

TEST(DurationAssignment, OfAnotherOneTakesItsValueAlone) {
  KivCoreTime time(1.0, 220, 8);
  KivCoreTime const negative(-2.0);
  time = negative;
  expect(time, -2.0, false);
  EXPECT_EQ((time = kDay).asDouble(), 8 * 3600.0);
  KivCoreTime flagged(-1.0);
  flagged = KivCoreTime(3.0);
  expect(flagged, 3.0, true);
}

TEST(DurationAssignment, OfItselfLeavesIt) {
  KivCoreTime time(7.0, 220, 8);
  KivCoreTime const & same = time;
  time = same;
  expect(time, 7.0, false);
}

TEST(DurationAssignment, LeavesTheTextOfTheLastAnswer) {
  KivCoreTime time(61.0);
  char const * const text = time.asChar();
  KivCoreTime other(3.0);
  other.asChar();
  time = other;
  EXPECT_STREQ(text, "00:000:00:01:01");
  EXPECT_STREQ(time.asChar(), "00:000:00:00:03");
}

TEST(DurationAssignment, OfANumberIsNotChecked) {
  KivCoreTime time;
  expect(time = -1.5, -1.5, false);
  expect(time = kInfinity, kInfinity, false);
  expect(time = -7L, -7.0, false);
  expect(time = std::numeric_limits<long>::max(), 2147483647.0, false);
  expect(time = -1LL, -1.0, false);
  expect(time = std::numeric_limits<long long>::max(), 9223372036854775808.0, false);
}

TEST(DurationAssignment, OfATextReadsItInTheBase) {
  KivCoreTime time(1.0, 220, 8);
  expect(time = kDay, 28800.0, false);
  expect(time = "1 day", 0.0, false);
  expect(time = static_cast<char const *>(nullptr), 0.0, false);
}

TEST(DurationSum, OfAnotherOneIsNotChecked) {
  KivCoreTime time(5.0);
  expect(time += KivCoreTime(2.5), 7.5, false);
  expect(time += KivCoreTime(-10.0), -2.5, false);
  time = kLargest;
  expect(time += KivCoreTime(kLargest), kInfinity, false);
}

TEST(DurationSum, OfANumberBeyondTheRangeSetsTheFlagAndLeavesTheValue) {
  KivCoreTime time(5.0);
  expect(time += 2.5, 7.5, false);
  expect(time += -0.0, 7.5, false);
  expect(time += -1e-9, 7.5, true);
  KivCoreTime large(kLargest);
  expect(large += 1.0, kLargest, false); // the sum is the same double
  expect(large += kLargest, kLargest, true);
  KivCoreTime half(kLargest / 2);
  expect(half += kLargest / 2, kLargest, false);
  KivCoreTime infinite(1.0);
  expect(infinite += kInfinity, 1.0, true);
}

TEST(DurationSum, OfAWholeNumberSetsTheFlagInTheSameWay) {
  KivCoreTime time(5.0);
  expect(time += 3LL, 8.0, false);
  expect(time += -1LL, 8.0, true);
  expect(time += 1LL, 9.0, true);
  KivCoreTime large(kLargest);
  expect(large += std::numeric_limits<long long>::max(), kLargest, false);
  KivCoreTime infinite(kInfinity);
  infinite = kInfinity;
  expect(infinite += 1LL, kInfinity, true);
}

TEST(DurationSum, OfWhatIsNoNumberIsNone) {
  KivCoreTime time(5.0);
  time += kNoNumber;
  EXPECT_TRUE(std::isnan(time.asDouble()));
  EXPECT_FALSE(time.overFlow());
}

TEST(DurationSum, OfATextIsNotChecked) {
  KivCoreTime time(5.0, 220, 8);
  expect(time += kDay, 28805.0, false);
  expect(time += "nonsense", 28805.0, false);
  KivCoreTime negative(5.0, 220, -8);
  expect(negative += kDay, 5 - 28800.0, false);
  KivCoreTime large(kLargest, 365, kLargest);
  expect(large += "01:000:00:00:00", kInfinity, false);
}

TEST(DurationDifference, BelowZeroIsZeroWithoutAFlag) {
  KivCoreTime time(28802.0, 220, 8);
  expect(time -= kDay, 2.0, false);
  expect(time -= "nonsense", 2.0, false);
  expect(time -= "00:000:00:00:02", 0.0, false);
  expect(time -= kDay, 0.0, false);
}

TEST(DurationProduct, OfANegativeNumberSetsTheFlagAndStays) {
  KivCoreTime time(5.0);
  expect(time *= 1.5, 7.5, false);
  expect(time *= -1.0, 7.5, true);
  expect(time *= 2.0, 15.0, true);
  expect(KivCoreTime(5.0) *= -0.0, 0.0, false);
}

TEST(DurationProduct, BeyondTheLargestSetsTheFlagAndIsTaken) {
  KivCoreTime time(kLargest);
  expect(time *= 1.0, kLargest, false);
  expect(time *= 2.0, kInfinity, true);
}

// The test of the value comes after, also where nothing was multiplied.
TEST(DurationProduct, OfAValueThatIsTooLargeAlreadySetsTheFlag) {
  KivCoreTime time;
  time = kInfinity;
  expect(time *= 1.0, kInfinity, true);
}

TEST(DurationQuotient, ByZeroSetsTheFlagAndStays) {
  KivCoreTime time(5.0);
  expect(time /= 2.0, 2.5, false);
  expect(time /= 0.0, 2.5, true);
  KivCoreTime other(5.0);
  expect(other /= -0.0, 5.0, true);
}

TEST(DurationQuotient, ByANegativeNumberSetsTheFlagAndIsTaken) {
  KivCoreTime time(5.0);
  expect(time /= -2.0, -2.5, true);
}

TEST(DurationQuotient, BeyondTheLargestHasNoFlag) {
  KivCoreTime time(kLargest);
  expect(time /= 0.5, kInfinity, false);
}

TEST(DurationSumOfTwo, HasTheBaseOfTheFirstAndAFlagOfItsOwn) {
  KivCoreTime const working(28800.0, 220, 8);
  KivCoreTime const plain(86400.0);
  KivCoreTime sum = working + plain;
  expect(sum, 115200.0, false);
  EXPECT_STREQ(sum.asChar(), "00:004:00:00:00");
  KivCoreTime other = plain + working;
  EXPECT_STREQ(other.asChar(), "00:001:08:00:00");
  expect(KivCoreTime(-5.0) + KivCoreTime(7.0), 2.0, false);
  expect(KivCoreTime(-5.0) + KivCoreTime(2.0), -3.0, true);
  expect(KivCoreTime(kLargest) + KivCoreTime(kLargest), kInfinity, true);
}

TEST(DurationSumOfTwo, TakesNumbersAndTexts) {
  expect(KivCoreTime(5.0) + 2.5, 7.5, false);
  expect(KivCoreTime(5.0) + kDay, 86405.0, false);
}

TEST(DurationFlagOfOperations, IsTakenBackByNone) {
  KivCoreTime time(-1.0);
  time = 1.0;
  time = 1L;
  time = 1LL;
  time = kDay;
  time = KivCoreTime(1.0);
  time += 1.0;
  time += 1LL;
  time += kDay;
  time += KivCoreTime(1.0);
  time -= kDay;
  time *= 1.0;
  time /= 1.0;
  time.setTime(1.0);
  time.setAsChar(kDay);
  time.setBase(220L, 8L);
  time.asString();
  EXPECT_TRUE(time.overFlow());
}

// An integer sum never gets where a double ends; it may wrap before.
TEST(SumOverflow, IsNeverForeseen) {
  constexpr long long most = std::numeric_limits<long long>::max();
  EXPECT_FALSE(KivCoreTime::WillBeSumOverflow(1, 2));
  EXPECT_FALSE(KivCoreTime::WillBeSumOverflow(most, most));
  EXPECT_FALSE(KivCoreTime::WillBeSumOverflow(most, 1));
  EXPECT_FALSE(KivCoreTime::WillBeSumOverflow(-most, -most));
}

} // namespace
