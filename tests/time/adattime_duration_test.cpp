// Construction of durations, their base, and what they are read as.
#include "adattime.hpp"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdint>
#include <cstring>
#include <limits>
#include <ostream>
#include <string>
#include <type_traits>

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr long long kSmallest64 = std::numeric_limits<long long>::min();

static_assert(!std::is_polymorphic_v<KivCoreTime>);
static_assert(sizeof(KivCoreTime) == 48);

// A plain int could be either number: the caller says which.
static_assert(!std::is_constructible_v<KivCoreTime, int>);
static_assert(!std::is_assignable_v<KivCoreTime &, int>);
static_assert(std::is_constructible_v<KivCoreTime, double>);
static_assert(std::is_constructible_v<KivCoreTime, long long>);

/// A year shows the days and hours of a base.
constexpr char kYear[] = "01:000:00:00:00";
constexpr char kDay[] = "00:001:00:00:00";

void expectBase(KivCoreTime time, double days, double hours) {
  time.setAsChar(kDay);
  EXPECT_EQ(time.asDouble(), hours * 3600);
  time.setAsChar(kYear);
  EXPECT_EQ(time.asDouble(), hours * 3600 * days);
}

/// The number that lies so many bytes into the object.
double numberAt(KivCoreTime const & time, std::size_t offset) {
  double number;
  std::memcpy(&number, reinterpret_cast<char const *>(&time) + offset, sizeof number);
  return number;
}

/// The defaults are those of the process.
class Duration : public testing::Test {
protected:
  ~Duration() override { KivCoreTime::SetStaticTimeBase(365.0, 24.0); }
};

TEST_F(Duration, WithoutArgumentsIsZeroInTheDefaultBase) {
  KivCoreTime const time;
  EXPECT_EQ(time.asDouble(), 0.0);
  EXPECT_FALSE(time.overFlow());
  expectBase(time, 365, 24);
}

TEST_F(Duration, IsMadeOfATextInTheDefaultBase) {
  EXPECT_EQ(KivCoreTime("00:001:01:01:01").asDouble(), 90061.0);
  EXPECT_EQ(KivCoreTime("nonsense").asDouble(), 0.0);
  expectBase(KivCoreTime("00:001:01:01:01"), 365, 24);
}

TEST_F(Duration, IsMadeOfNumbersInTheDefaultBase) {
  EXPECT_EQ(KivCoreTime(1234567890123LL).asDouble(), 1234567890123.0);
  EXPECT_EQ(KivCoreTime(0.25).asDouble(), 0.25);
  expectBase(KivCoreTime(1LL), 365, 24);
  expectBase(KivCoreTime(1.0), 365, 24);
}

TEST_F(Duration, IsMadeInABaseOfItsOwn) {
  expectBase(KivCoreTime(1LL, 220.0, 8.0), 220, 8);
  expectBase(KivCoreTime(1.0, 220.0, 8.0), 220, 8);
  expectBase(KivCoreTime(kYear, 220.0, 8.0), 220, 8);
  expectBase(KivCoreTime(kYear, "220", "8"), 220, 8);
  EXPECT_EQ(KivCoreTime(7LL, 220.0, 8.0).asDouble(), 7.0);
  EXPECT_EQ(KivCoreTime(7.5, 220.0, 8.0).asDouble(), 7.5);
}

TEST_F(Duration, ReadsItsTextInItsOwnBase) {
  EXPECT_EQ(KivCoreTime(kYear, 220.0, 8.0).asDouble(), 6336000.0);
  EXPECT_EQ(KivCoreTime(kYear, "220", "8").asDouble(), 6336000.0);
}

TEST_F(Duration, ReadsItsBaseAsKivAtofDoes) {
  expectBase(KivCoreTime(0.0, 200, 7.75), 200, 7.75);
  std::setlocale(LC_ALL, "German_Germany.1252");
  expectBase(KivCoreTime(kYear, "200", "7,75"), 200, 7.75);
  EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
  expectBase(KivCoreTime(kYear, "x", static_cast<char const *>(nullptr)), 365, 24);
}

TEST_F(Duration, TakesTheDefaultsForABaseOfZero) {
  KivCoreTime::SetStaticTimeBase(200, 7);
  expectBase(KivCoreTime(1.0, 0.0, 8.0), 200, 8);
  expectBase(KivCoreTime(1.0, 220.0, 0.0), 220, 7);
  expectBase(KivCoreTime(1LL, 0.0, -0.0), 200, 7);
  expectBase(KivCoreTime(kYear, 0.0, 0.0), 200, 7);
  expectBase(KivCoreTime(kYear, "0", "0"), 200, 7);
}

TEST_F(Duration, TakesTheDefaultsOfTheTimeWhenItIsMade) {
  KivCoreTime const before;
  KivCoreTime::SetStaticTimeBase(220, 8);
  EXPECT_EQ(KivCoreTime::GetStaticDaysPerYear(), 220);
  EXPECT_EQ(KivCoreTime::GetStaticHoursPerDay(), 8);
  expectBase(before, 365, 24);
  expectBase(KivCoreTime(), 220, 8);
  expectBase(KivCoreTime(kYear), 220, 8);
  EXPECT_EQ(KivCoreTime(kYear).asDouble(), 6336000.0);
  expectBase(KivCoreTime(1.0), 220, 8);
  expectBase(KivCoreTime(1LL), 220, 8);
}

TEST_F(Duration, HasADefaultBaseOf365DaysOf24Hours) {
  EXPECT_EQ(KivCoreTime::GetStaticDaysPerYear(), 365.0);
  EXPECT_EQ(KivCoreTime::GetStaticHoursPerDay(), 24.0);
}

TEST_F(Duration, IsShownAnewWhenTheBaseChanges) {
  KivCoreTime time(6336000.0);
  EXPECT_STREQ(time.asChar(), "00:073:08:00:00");
  time.setBase(220L, 8L);
  EXPECT_STREQ(time.asChar(), "01:000:00:00:00");
  EXPECT_EQ(time.asDouble(), 6336000.0);
  time.setBase(200.0, 7.75);
  expectBase(time, 200, 7.75);
}

TEST_F(Duration, SetsABaseOfZeroToTheDefaults) {
  KivCoreTime time(0.0, 220, 8);
  KivCoreTime::SetStaticTimeBase(200, 7);
  time.setBase(0L, 5L);
  expectBase(time, 200, 5);
  time.setBase(9L, 0L);
  expectBase(time, 9, 7);
  time.setBase(0.0, 5.0);
  expectBase(time, 200, 5);
  time.setBase(9.0, 0.0);
  expectBase(time, 9, 7);
}

struct FlagRow {
  double seconds;
  bool overflow;
};
std::ostream & operator<<(std::ostream & out, FlagRow const & row) { return out << row.seconds; }

class DurationFlag : public testing::TestWithParam<FlagRow> {};

TEST_P(DurationFlag, IsSetForANegativeOrInfiniteValue) {
  EXPECT_EQ(KivCoreTime(GetParam().seconds).overFlow(), GetParam().overflow);
  EXPECT_EQ(KivCoreTime(GetParam().seconds, 220.0, 8.0).overFlow(), GetParam().overflow);
}

INSTANTIATE_TEST_SUITE_P(Table, DurationFlag,
                         testing::Values(FlagRow{0.0, false}, FlagRow{-0.0, false}, FlagRow{1.0, false},
                                         FlagRow{kLargest, false}, FlagRow{-1e-300, true}, FlagRow{-1.0, true},
                                         FlagRow{kInfinity, true}, FlagRow{-kInfinity, true},
                                         FlagRow{kNoNumber, false}));

TEST(DurationFlag, IsThatOfTheTextsValueToo) {
  EXPECT_FALSE(KivCoreTime(kYear, 220.0, 8.0).overFlow());
  EXPECT_TRUE(KivCoreTime(kYear, -220.0, 8.0).overFlow());
  EXPECT_TRUE(KivCoreTime(kYear, "-220", "8").overFlow());
  EXPECT_TRUE(KivCoreTime(kYear, kLargest, 8.0).overFlow());
  EXPECT_TRUE(KivCoreTime(-1LL).overFlow());
  EXPECT_TRUE(KivCoreTime(-1LL, 220.0, 8.0).overFlow());
  EXPECT_FALSE(KivCoreTime(std::numeric_limits<long long>::max()).overFlow());
}

TEST_F(Duration, CopiesValueBaseAndFlagButNotTheText) {
  KivCoreTime original(-5.0, 220, 8);
  std::string const text = original.asChar();
  KivCoreTime copy(original);
  EXPECT_EQ(copy.asDouble(), -5.0);
  EXPECT_TRUE(copy.overFlow());
  expectBase(copy, 220, 8);
  EXPECT_EQ(copy.asString().c_str(), text);
  EXPECT_NE(copy.asString().block(), original.asString().block());
}

TEST_F(Duration, HasItsFieldsInTheirOrder) {
  KivCoreTime time(-5.0, 220.0, 8.0);
  auto const * const bytes = reinterpret_cast<char const *>(&time);
  EXPECT_EQ(numberAt(time, 0), -5.0);
  EXPECT_EQ(reinterpret_cast<char const *>(&time.asString()), bytes + 8);
  EXPECT_EQ(numberAt(time, 16), kLargest);
  EXPECT_EQ(numberAt(time, 24), 220.0);
  EXPECT_EQ(numberAt(time, 32), 8.0);
  EXPECT_EQ(bytes[40], 1);
  EXPECT_EQ(numberAt(KivCoreTime(), 16), kLargest);
  EXPECT_EQ(numberAt(KivCoreTime(time), 16), kLargest);
  EXPECT_EQ(numberAt(KivCoreTime(kYear, "220", "8"), 16), kLargest);
}

TEST_F(Duration, KeepsItsTextUntilTheNextQuestion) {
  KivCoreTime time(61.0);
  SV::String const & text = time.asString();
  char const * const characters = time.asChar();
  EXPECT_EQ(text.c_str(), characters);
  time.setTime(90061.0);
  EXPECT_EQ(text, "00:000:00:01:01");
  EXPECT_EQ(&time.asString(), &text);
  EXPECT_EQ(text, "00:001:01:01:01");
}

TEST_F(Duration, IsSetFromATextOrANumberWithoutChecks) {
  KivCoreTime time(0.0, 220, 8);
  time.setAsChar(kYear);
  EXPECT_EQ(time.asDouble(), 6336000.0);
  time.setAsChar("00:000:00:00:60");
  EXPECT_EQ(time.asDouble(), 0.0);
  time.setTime(-3.0);
  EXPECT_EQ(time.asDouble(), -3.0);
  time.setTime(kInfinity);
  EXPECT_EQ(time.asDouble(), kInfinity);
  EXPECT_FALSE(time.overFlow());
}

struct WholeRow {
  double seconds;
  long long asSeconds;
  long asLong;
};
std::ostream & operator<<(std::ostream & out, WholeRow const & row) { return out << row.seconds; }

class WholeSeconds : public testing::TestWithParam<WholeRow> {};

TEST_P(WholeSeconds, AreRoundedAndThoseThatDoNotFitInALongAreZero) {
  EXPECT_EQ(KivCoreTime(GetParam().seconds).asSeconds(), GetParam().asSeconds);
  EXPECT_EQ(KivCoreTime(GetParam().seconds).asLong(), GetParam().asLong);
}

INSTANTIATE_TEST_SUITE_P(
    Table, WholeSeconds,
    testing::Values(WholeRow{0.0, 0, 0}, WholeRow{0.49, 0, 0}, WholeRow{0.5, 1, 1}, WholeRow{1.5, 2, 2},
                    WholeRow{2147483646.5, 2147483647, 2147483647}, WholeRow{2147483647.0, 2147483647, 2147483647},
                    WholeRow{2147483647.25, 2147483647, 0}, WholeRow{2147483648.0, 2147483648, 0},
                    WholeRow{1e15, 1000000000000000, 0}, WholeRow{9223372036854774784.0, 9223372036854774784, 0},
                    WholeRow{9223372036854775808.0, kSmallest64, 0}, WholeRow{kLargest, kSmallest64, 0},
                    WholeRow{kInfinity, kSmallest64, 0}, WholeRow{-1.0, 0, 0}, WholeRow{-1.5, -1, -1},
                    WholeRow{-1.6, -1, -1}, WholeRow{-2147483648.5, -2147483648, LONG_MIN},
                    WholeRow{-2147483649.6, -2147483649, LONG_MIN}, WholeRow{-kLargest, kSmallest64, LONG_MIN},
                    WholeRow{kNoNumber, kSmallest64, LONG_MIN}));

} // namespace
