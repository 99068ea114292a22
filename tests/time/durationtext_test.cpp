// The text form of durations: what is read, what is written, and both in turn.
#include "adattime.hpp"
#include "time/durationtext.hpp"

#include "diagnostics/internal_errors.hpp"
#include "durationmodel.hpp"
#include "support/data/random.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <string>

using kivtest::durationText;
using kivtest::modelText;

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

std::string shown(double seconds, double days = 365.0, double hours = 24.0) {
  return KivCoreTime(seconds, days, hours).asChar();
}

double read(std::string const & text, double days = 365.0, double hours = 24.0) {
  return KivCoreTime(text.c_str(), days, hours).asDouble();
}

struct ReadRow {
  std::string text;
  bool isTime;
  double seconds = 0.0;
};
std::ostream & operator<<(std::ostream & out, ReadRow const & row) { return out << '"' << row.text << '"'; }

class DurationText : public testing::TestWithParam<ReadRow> {};

TEST_P(DurationText, IsTimeOrCountsAsZero) {
  EXPECT_EQ(KivCoreTime::isTime(GetParam().text.c_str()), GetParam().isTime);
  EXPECT_EQ(read(GetParam().text), GetParam().seconds);
}

INSTANTIATE_TEST_SUITE_P(
    Accepted, DurationText,
    testing::Values(ReadRow{"00:000:00:00:00", true}, ReadRow{":000:00:00:00", true}, ReadRow{":000:00:00:01", true, 1},
                    ReadRow{"1:000:00:00:00", true, 31536000}, ReadRow{"01:001:01:01:01", true, 31536000 + 90061},
                    ReadRow{"00:364:23:59:59", true, 31535999}, ReadRow{"00:099:00:00:00", true, 99 * 86400},
                    ReadRow{"00:000:19:00:00", true, 68400}, ReadRow{"00:000:00:59:00", true, 3540},
                    ReadRow{"00:000:00:00:59", true, 59}, ReadRow{"123456:000:00:00:00", true, 123456 * 31536000.0},
                    ReadRow{std::string(299, '0') + "7:000:00:00:00", true, 7 * 31536000.0}));

INSTANTIATE_TEST_SUITE_P(RefusedForms, DurationText,
                         testing::Values(ReadRow{"", false}, ReadRow{"0", false}, ReadRow{":", false},
                                         ReadRow{"::::", false}, ReadRow{"00:000:00:00", false},
                                         ReadRow{"00:000:00:00:00:00", false}, ReadRow{"000:00:00:00", false},
                                         ReadRow{"00:00:00:00:00", false}, ReadRow{"00:0000:0:00:00", false},
                                         ReadRow{"00:000:0:000:00", false}, ReadRow{"00:000:00:0:000", false},
                                         ReadRow{"00:000:00:00:0", false}, ReadRow{"00:000:00:00:000", false},
                                         ReadRow{"00:000:00:00:00 ", false}, ReadRow{" 00:000:00:00:00", false},
                                         ReadRow{"-1:000:00:00:00", false}, ReadRow{"+1:000:00:00:00", false},
                                         ReadRow{"1.:000:00:00:00", false}, ReadRow{"/:000:00:00:00", false},
                                         ReadRow{"0;000:00:00:00", false}, ReadRow{"00:000;00:00:00", false},
                                         ReadRow{"00:000:00;00:00", false}, ReadRow{"00:000:00:00;00", false},
                                         ReadRow{std::string(301, '0') + ":000:00:00:00", false},
                                         ReadRow{"\xB2:000:00:00:00", false}));

INSTANTIATE_TEST_SUITE_P(RefusedFields, DurationText,
                         testing::Values(ReadRow{"00:365:00:00:00", false}, ReadRow{"00:370:00:00:00", false},
                                         ReadRow{"00:400:00:00:00", false}, ReadRow{"00:/00:00:00:00", false},
                                         ReadRow{"00:0/0:00:00:00", false}, ReadRow{"00:00/:00:00:00", false},
                                         ReadRow{"00:0a0:00:00:00", false}, ReadRow{"00:00a:00:00:00", false},
                                         ReadRow{"00: 10:00:00:00", false}, ReadRow{"00:000:24:00:00", false},
                                         ReadRow{"00:000:30:00:00", false}, ReadRow{"00:000:/0:00:00", false},
                                         ReadRow{"00:000:0/:00:00", false}, ReadRow{"00:000:1a:00:00", false},
                                         ReadRow{"00:000:00:60:00", false}, ReadRow{"00:000:00:/0:00", false},
                                         ReadRow{"00:000:00:0a:00", false}, ReadRow{"00:000:00:00:60", false},
                                         ReadRow{"00:000:00:00:/0", false}, ReadRow{"00:000:00:00:0:", false}));

TEST(DurationText, OfNullIsNone) {
  EXPECT_FALSE(KivCoreTime::isTime(nullptr));
  EXPECT_EQ(KivCoreTime(static_cast<char const *>(nullptr)).asDouble(), 0.0);
  EXPECT_EQ(KivCoreTime(static_cast<char const *>(nullptr), 220.0, 8.0).asDouble(), 0.0);
}

TEST(DurationText, IsTheSameFormForEachBase) {
  EXPECT_EQ(read("00:001:09:00:00", 220, 8), (8 + 9) * 3600.0);
  EXPECT_EQ(read("00:300:00:00:00", 220, 8), 300 * 8 * 3600.0);
  EXPECT_EQ(read("00:365:00:00:00", 400, 24), 0.0);
  EXPECT_EQ(read("00:000:24:00:00", 365, 48), 0.0);
  EXPECT_EQ(shown(365 * 86400.0, 400, 24), "00:365:00:00:00");
  EXPECT_EQ(shown(24 * 3600.0, 365, 48), "00:000:24:00:00");
}

// The years are a long of the runtime: what it does with more digits is what counts.
TEST(DurationText, ReadsTheYearsAsALong) {
  EXPECT_EQ(read("2147483647:000:00:00:00"), 2147483647 * 31536000.0);
  for (char const * const digits : {"2147483648", "4294967297", "99999999999999999999"})
    EXPECT_EQ(read(std::string(digits) + ":000:00:00:00"), std::atol(digits) * 31536000.0) << digits;
}

struct ShownRow {
  double seconds;
  char const * text;
  double days = 365.0;
  double hours = 24.0;
};
std::ostream & operator<<(std::ostream & out, ShownRow const & row) { return out << row.seconds << " as " << row.text; }

class ShownDuration : public testing::TestWithParam<ShownRow> {};

TEST_P(ShownDuration, IsRoundedOnceToTheNearestSecond) {
  EXPECT_EQ(shown(GetParam().seconds, GetParam().days, GetParam().hours), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ShownDuration,
    testing::Values(ShownRow{0.0, "00:000:00:00:00"}, ShownRow{90061.0, "00:001:01:01:01"},
                    ShownRow{59.5, "00:000:00:01:00"}, ShownRow{59.4, "00:000:00:00:59"},
                    ShownRow{0.4999, "00:000:00:00:00"}, ShownRow{0.5, "00:000:00:00:01"},
                    ShownRow{3599.5, "00:000:01:00:00"}, ShownRow{86399.5, "00:001:00:00:00"},
                    ShownRow{31535999.4, "00:364:23:59:59"}, ShownRow{31535999.5, "01:000:00:00:00"},
                    ShownRow{123 * 31536000.0, "123:000:00:00:00"}, ShownRow{6336000.0, "01:000:00:00:00", 220, 8},
                    ShownRow{6335999.0, "00:219:07:59:59", 220, 8}, ShownRow{36000.0, "00:001:02:15:00", 200, 7.75},
                    ShownRow{31536000.0, "00:500:00:00:00", 1000, 17.52},
                    ShownRow{86400.0 * 250.25, "01:000:06:00:00", 250, 24}));

// 200.5 days: the year is longer than its whole days.
TEST(ShownDuration, MayHaveAYearOfPartOfADay) {
  EXPECT_EQ(shown(200.5 * 86400, 200.5, 24), "01:000:00:00:00");
  EXPECT_EQ(shown(200.5 * 86400 - 1, 200.5, 24), "00:200:11:59:59");
}

void expectBothWays(std::uint64_t seconds, std::string const & text, double days, double hours) {
  ASSERT_EQ(shown(static_cast<double>(seconds), days, hours), text);
  ASSERT_EQ(read(text, days, hours), static_cast<double>(seconds));
}

TEST(ShownDuration, HasEachDayAndHour) {
  for (unsigned day = 0; day < 365; ++day)
    for (unsigned hour = 0; hour < 24; ++hour)
      expectBothWays(day * 86400 + hour * 3600 + 61, durationText(0, day, hour, 1, 1), 365, 24);
  for (unsigned day = 0; day < 220; ++day)
    for (unsigned hour = 0; hour < 8; ++hour)
      expectBothWays(day * 28800 + hour * 3600 + 61, durationText(0, day, hour, 1, 1), 220, 8);
}

TEST(ShownDuration, HasEachMinuteAndSecond) {
  for (unsigned minute = 0; minute < 60; ++minute)
    for (unsigned second = 0; second < 60; ++second) {
      unsigned const seconds = minute * 60 + second;
      expectBothWays(86400 + seconds, durationText(0, 1, 0, minute, second), 365, 24);
      expectBothWays(28800 + seconds, durationText(0, 1, 0, minute, second), 220, 8);
    }
}

// Every second of both years takes minutes, so that is left to the long run.
TEST(ShownDuration, OfEachSecondOfAYearIsReadBack) {
  std::uint64_t const step = support::times(1) > 1 ? 1 : 1009;
  for (std::uint64_t seconds = 0; seconds < 31536000; seconds += step)
    expectBothWays(seconds, modelText(seconds, 365, 24), 365, 24);
  for (std::uint64_t seconds = 0; seconds < 6336000; seconds += step)
    expectBothWays(seconds, modelText(seconds, 220, 8), 220, 8);
}

TEST(RandomDurations, AreThoseOfWholeNumbers) {
  support::Random64 random(23);
  for (std::size_t i = 0; i < support::times(20'000); ++i) {
    std::uint64_t const seconds = random() >> (14 + random() % 50);
    std::uint64_t const days = random() % 1000 + 1;
    std::uint64_t const hours = random() % 100 + 1;
    double const fraction = static_cast<double>(random() % 8) / 8;
    std::uint64_t const rounded = seconds + (fraction >= 0.5 ? 1 : 0);
    std::string const text = modelText(rounded, days, hours);
    ASSERT_EQ(shown(static_cast<double>(seconds) + fraction, static_cast<double>(days), static_cast<double>(hours)),
              text)
        << seconds << '+' << fraction << ' ' << days << ' ' << hours;
    bool const isReadable = KivCoreTime::isTime(text.c_str()) && rounded / 3600 / hours / days <= 0x7FFFFFFF;
    if (isReadable) {
      ASSERT_EQ(read(text, static_cast<double>(days), static_cast<double>(hours)), static_cast<double>(rounded));
    }
  }
}

/// The rule step by step, for bases that no calendar has.
std::string textByRule(double seconds, double daysPerYear, double hoursPerDay) {
  auto const number = [](double field) {
    return field >= -2147483648.0 && field < 2147483648.0 ? static_cast<int>(field) : std::numeric_limits<int>::min();
  };
  double const day = hoursPerDay * 3600.0;
  double const year = day * daysPerYear;
  double rest = seconds + 0.5;
  double const years = std::floor(rest / year);
  rest -= years * year;
  double const days = std::floor(rest / day);
  rest -= days * day;
  double const hours = std::floor(rest / 3600.0);
  rest -= hours * 3600.0;
  double const minutes = std::floor(rest / 60.0);
  char text[1024];
  _snprintf(text, sizeof text, "%02.0f:%03d:%02d:%02d:%02d", years, number(days), number(hours), number(minutes),
            number(std::floor(rest - minutes * 60.0)));
  return text;
}

TEST(StrangeBase, FollowsTheRuleWithoutAFault) {
  for (double const days :
       {1e-300, 5e-324, 0.001, 1.0, 365.0, 1e300, kLargest, -220.0, -1e-300, kInfinity, -kInfinity, kNoNumber})
    for (double const hours : {1e-300, 0.001, 1.0 / 3600, 24.0, 1e300, kLargest, -8.0, kInfinity, kNoNumber})
      for (double const seconds : {0.0, 0.25, 1.0, 90061.0, 1e15, 1e17, kLargest, -0.5, -0.75, -1.0, -90061.0,
                                   -kLargest, kInfinity, kNoNumber})
        ASSERT_EQ(shown(seconds, days, hours), textByRule(seconds, days, hours))
            << seconds << ' ' << days << ' ' << hours;
}

// The defaults may be set to it.
TEST(StrangeBase, OfZeroFollowsTheRuleWithoutAFault) {
  for (double const seconds : {0.0, 1.0, 90061.0, kLargest, -1.0, kInfinity, kNoNumber}) {
    EXPECT_EQ(std::string(kivara::textOf(seconds, 0.0, 0.0).c_str()), textByRule(seconds, 0.0, 0.0)) << seconds;
    EXPECT_EQ(std::string(kivara::textOf(seconds, 0.0, 24.0).c_str()), textByRule(seconds, 0.0, 24.0)) << seconds;
  }
  EXPECT_EQ(kivara::secondsOf("01:002:00:00:03", 0.0, 0.0), 3.0);
}

TEST(StrangeBase, OfADaysLengthInAYearHasTheLongestText) {
  std::string const text = shown(kLargest, 1.0, 1.0 / 3600);
  EXPECT_EQ(text.find(':'), 309u);
  EXPECT_EQ(text.substr(309), ":000:00:00:00");
  char digits[400];
  _snprintf(digits, sizeof digits, "%.0f", kLargest);
  EXPECT_EQ(text.substr(0, 309), digits);
}

TEST(StrangeBase, OfTheLongestFieldsIsWrittenWhole) {
  std::string const text = kivara::textOf(-kLargest, 1e-300, -1.0).c_str();
  EXPECT_EQ(text, textByRule(-kLargest, 1e-300, -1.0));
  char longest[400];
  int const length =
      _snprintf(longest, sizeof longest, "%02.0f:%03d:%02d:%02d:%02d", -kLargest, INT_MIN, INT_MIN, INT_MIN, INT_MIN);
  EXPECT_EQ(sizeof(kivara::DurationText), static_cast<std::size_t>(length) + 1);
}

// Up to nine digits of years are written without the runtime's formatting.
TEST(StrangeBase, HasTheSameTextOnBothSidesOfTheShortWay) {
  for (double const years : {0.0, 9.0, 99.0, 100.0, 999'999'999.0, 1e9, 1e9 + 1, 12'345'678'901.0})
    EXPECT_EQ(shown(years * 3600, 1, 1), textByRule(years * 3600, 1, 1)) << years;
  EXPECT_EQ(shown(4e9, 1, 2e6), textByRule(4e9, 1, 2e6)) << "days or hours of many digits";
  EXPECT_EQ(shown(-0.5, -1, 24), textByRule(-0.5, -1, 24)) << "a zero with a sign";
}

TEST(StrangeBase, ReadsByTheSameFormula) {
  EXPECT_EQ(read("01:002:00:00:03", -220, 8), 3 + 2 * 28800.0 - 220 * 28800.0);
  EXPECT_EQ(read("01:000:00:00:00", kLargest, 24), kInfinity);
  EXPECT_TRUE(std::isnan(read("01:000:00:00:00", kNoNumber, 24)));
}

// Both are for callers inside the library alone, who have not asked isDuration.
TEST(SecondsOfDuration, ReportsAYearOfMoreThan300Characters) {
  kivtest::InternalErrors const errors;
  EXPECT_EQ(kivara::secondsOf((std::string(301, '0') + ":000:00:00:01").c_str(), 365, 24), 0.0);
  EXPECT_EQ(errors.places(), std::vector<std::string>{"atools.cpp (2688)"});
  EXPECT_EQ(kivara::secondsOf((std::string(300, '0') + ":000:00:00:01").c_str(), 365, 24), 1.0);
  EXPECT_EQ(errors.places().size(), 1u);
}

TEST(SecondsOfDuration, ReportsAMissingColon) {
  kivtest::InternalErrors const errors;
  EXPECT_EQ(kivara::secondsOf("12", 365, 24), 0.0);
  EXPECT_EQ(kivara::secondsOf("", 365, 24), 0.0);
  EXPECT_EQ(kivara::secondsOf(std::string(300, '1').c_str(), 365, 24), 0.0);
  EXPECT_EQ(errors.places(), std::vector<std::string>(3, "atools.cpp (2694)"));
}

TEST(SecondsOfDuration, ReportsNothingForWhatIsNoDuration) {
  kivtest::InternalErrors const errors;
  EXPECT_EQ(KivCoreTime(std::string(400, '1').c_str()).asDouble(), 0.0);
  EXPECT_EQ(KivCoreTime("x").asDouble(), 0.0);
  EXPECT_TRUE(errors.places().empty());
}

} // namespace
