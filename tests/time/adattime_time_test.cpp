// Times of day in seconds, and in the two forms that users write.
#include "adattime.hpp"

#include "support/data/random.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <ostream>
#include <string>

using SV::String;
using SV::Time;

namespace {

constexpr long kSecondsPerDay = 86400;

TEST(TimeInSeconds, DropsHundredthsAndSign) {
  EXPECT_EQ(KivTimeFunctions::getTimeInSeconds(Time(0)), 0);
  EXPECT_EQ(KivTimeFunctions::getTimeInSeconds(Time(1, 2, 3, 99)), 3723);
  EXPECT_EQ(KivTimeFunctions::getTimeInSeconds(Time(24)), 86400);
  EXPECT_EQ(KivTimeFunctions::getTimeInSeconds(Time(2146, 59, 59, 99)), 2146 * 3600 + 3599);
  EXPECT_EQ(KivTimeFunctions::getTimeInSeconds(Time(0) - Time(1, 2, 3)), 3723);
}

TEST(TimeInSeconds, OfEachSecondIsReadBack) {
  for (long seconds = 0; seconds <= kSecondsPerDay; ++seconds) {
    Time const time = KivTimeFunctions::setTimeInSeconds(seconds);
    auto const count = static_cast<unsigned long>(seconds);
    ASSERT_EQ(time, Time(count / 3600, count / 60 % 60, count % 60));
    ASSERT_EQ(KivTimeFunctions::getTimeInSeconds(time), seconds);
  }
}

TEST(TimeInSeconds, MayHaveMoreThanADay) {
  EXPECT_EQ(KivTimeFunctions::setTimeInSeconds(100 * 3600 + 61), Time(100, 1, 1));
  EXPECT_EQ(KivTimeFunctions::setTimeInSeconds(2146 * 3600 + 3599), Time(2146, 59, 59));
}

TEST(TimeInSeconds, BeyondWhatATimeHoldsIsTheLargestOrZero) {
  EXPECT_EQ(KivTimeFunctions::setTimeInSeconds(LONG_MAX), Time(2146, 59, 59, 99));
  EXPECT_EQ(KivTimeFunctions::setTimeInSeconds(-1), Time(0));
  EXPECT_EQ(KivTimeFunctions::setTimeInSeconds(LONG_MIN), Time(0));
}

TEST(TimeDifference, HasTheWholeSecondsBetweenTheTwo) {
  EXPECT_EQ(KivTimeFunctions::getDiffTimeInSeconds(Time(9), Time(10)), 3600);
  EXPECT_EQ(KivTimeFunctions::getDiffTimeInSeconds(Time(9), Time(9)), 0);
  EXPECT_EQ(KivTimeFunctions::getDiffTimeInSeconds(Time(9, 0, 0, 90), Time(9, 0, 1, 10)), 0);
  EXPECT_EQ(KivTimeFunctions::getDiffTimeInSeconds(Time(9, 0, 0, 10), Time(9, 0, 1, 10)), 1);
  EXPECT_EQ(KivTimeFunctions::getDiffTimeInSeconds(Time(9, 59, 59, 99), Time(10, 0, 1, 98)), 1);
  EXPECT_EQ(KivTimeFunctions::getDiffTimeInSeconds(Time(9, 0, 0, 10), Time(9, 0, 0, 90)), 0);
}

TEST(TimeDifference, ToAnEarlierTimeIsZero) {
  EXPECT_EQ(KivTimeFunctions::getDiffTimeInSeconds(Time(10), Time(9)), 0);
  EXPECT_EQ(KivTimeFunctions::getDiffTimeInSeconds(Time(9, 0, 1), Time(9)), 0);
  EXPECT_EQ(KivTimeFunctions::getDiffTimeInSeconds(Time(9, 0, 0, 1), Time(9)), 0);
}

TEST(TimeDifference, IgnoresSigns) {
  EXPECT_EQ(KivTimeFunctions::getDiffTimeInSeconds(Time(0) - Time(1), Time(3)), 7200);
  EXPECT_EQ(KivTimeFunctions::getDiffTimeInSeconds(Time(0) - Time(3), Time(1)), 0);
}

/// The form belongs to the process.
class ShownTime : public testing::Test {
protected:
  ~ShownTime() override { KivTimeFunctions::SetAmericanTimeFormat(false); }
};

std::string shown(Time const & time) { return KivTimeFunctions::getTimeInUIRep(time).c_str(); }

TEST_F(ShownTime, IsIn24HoursAtFirst) {
  EXPECT_FALSE(KivTimeFunctions::IsAmericanTimeFormat());
  KivTimeFunctions::SetAmericanTimeFormat(true);
  EXPECT_TRUE(KivTimeFunctions::IsAmericanTimeFormat());
  KivTimeFunctions::SetAmericanTimeFormat(false);
  EXPECT_FALSE(KivTimeFunctions::IsAmericanTimeFormat());
}

TEST_F(ShownTime, Has24HoursAtTheEndOfTheDayAlone) {
  EXPECT_EQ(shown(Time(24)), "24:00:00");
  EXPECT_EQ(shown(Time(0)), "00:00:00");
  EXPECT_EQ(shown(Time(24, 0, 0, 1)), "00:00:00");
  EXPECT_EQ(shown(Time(24, 0, 1)), "00:00:01");
  EXPECT_EQ(shown(Time(25)), "01:00:00");
  EXPECT_EQ(shown(Time(48)), "00:00:00");
  EXPECT_EQ(shown(Time(0) - Time(24)), "24:00:00");
  EXPECT_EQ(shown(Time(0) - Time(1, 2, 3)), "01:02:03");
}

TEST_F(ShownTime, MayHaveMinutesThatNoClockHas) {
  Time time(1);
  time.ChangeMin(75);
  time.ChangeSec(99);
  EXPECT_EQ(shown(time), "01:75:99");
}

struct AmericanRow {
  unsigned long hour;
  char const * text;
};
std::ostream & operator<<(std::ostream & out, AmericanRow const & row) { return out << row.text; }

class AmericanTime : public ShownTime, public testing::WithParamInterface<AmericanRow> {
protected:
  AmericanTime() { KivTimeFunctions::SetAmericanTimeFormat(true); }
};

// Noon and midnight are exchanged; reader and writer agree.
TEST_P(AmericanTime, ShowsNoonAsTheMorningAndMidnightAsTheAfternoon) {
  EXPECT_EQ(shown(Time(GetParam().hour, 5, 9, 99)), GetParam().text);
  Time time(1);
  EXPECT_TRUE(KivTimeFunctions::setTimeInUIRep(GetParam().text, time));
  EXPECT_EQ(time, Time(GetParam().hour, 5, 9));
}

INSTANTIATE_TEST_SUITE_P(Table, AmericanTime,
                         testing::Values(AmericanRow{0, "12:05:09 PM"}, AmericanRow{1, "01:05:09 AM"},
                                         AmericanRow{11, "11:05:09 AM"}, AmericanRow{12, "12:05:09 AM"},
                                         AmericanRow{13, "01:05:09 PM"}, AmericanRow{23, "11:05:09 PM"}));

TEST_F(AmericanTime, ShowsTheEndOfTheDayAsMidnight) {
  EXPECT_EQ(shown(Time(24)), "12:00:00 PM");
  EXPECT_EQ(shown(Time(0)), "12:00:00 PM");
  EXPECT_EQ(shown(Time(13, 5)), "01:05:00 PM");
  EXPECT_EQ(shown(Time(25)), "01:00:00 AM");
}

TEST_F(ShownTime, OfEachSecondIsReadBack) {
  for (bool const isAmerican : {false, true}) {
    KivTimeFunctions::SetAmericanTimeFormat(isAmerican);
    for (long seconds = 0; seconds <= kSecondsPerDay; ++seconds) {
      Time const time = KivTimeFunctions::setTimeInSeconds(seconds);
      Time read(99);
      ASSERT_TRUE(KivTimeFunctions::setTimeInUIRep(KivTimeFunctions::getTimeInUIRep(time), read)) << seconds;
      bool const isMidnight = isAmerican && seconds == kSecondsPerDay;
      ASSERT_EQ(read, isMidnight ? Time(0) : time) << seconds;
    }
  }
}

TEST_F(ShownTime, OfEachSecondIsItsDigits) {
  for (long seconds = 0; seconds < kSecondsPerDay; ++seconds) {
    char digits[32];
    std::snprintf(digits, sizeof digits, "%02ld:%02ld:%02ld", seconds / 3600, seconds / 60 % 60, seconds % 60);
    ASSERT_EQ(shown(KivTimeFunctions::setTimeInSeconds(seconds)), digits);
  }
}

struct InputRow {
  String text;
  long seconds; ///< -1: refused
};
std::ostream & operator<<(std::ostream & out, InputRow const & row) { return out << '"' << row.text.c_str() << '"'; }

void expectRead(InputRow const & row) {
  Time const before(77, 7, 7, 7);
  Time time = before;
  EXPECT_EQ(KivTimeFunctions::setTimeInUIRep(row.text, time), row.seconds >= 0);
  EXPECT_EQ(time, row.seconds >= 0 ? KivTimeFunctions::setTimeInSeconds(row.seconds) : before);
}

class TimeInput : public testing::TestWithParam<InputRow> {};
TEST_P(TimeInput, IsTwoDigitsForEachFieldWithinTheDay) { expectRead(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Accepted, TimeInput,
                         testing::Values(InputRow{"00:00:00", 0}, InputRow{"01:02:03", 3723},
                                         InputRow{"23:59:59", 86399}, InputRow{"24:00:00", 86400}));
INSTANTIATE_TEST_SUITE_P(Refused, TimeInput,
                         testing::Values(InputRow{"", -1}, InputRow{"1:02:03", -1}, InputRow{"01:02", -1},
                                         InputRow{"01:02:3", -1}, InputRow{"01:02:033", -1}, InputRow{"01:02:03 ", -1},
                                         InputRow{" 01:02:03", -1}, InputRow{"01-02:03", -1}, InputRow{"01:02-03", -1},
                                         InputRow{"a1:02:03", -1}, InputRow{"0a:02:03", -1}, InputRow{"01:a2:03", -1},
                                         InputRow{"01:0a:03", -1}, InputRow{"01:02:a3", -1}, InputRow{"01:02:0a", -1},
                                         InputRow{"-1:02:03", -1}, InputRow{"0/:00:00", -1}, InputRow{"0::00:00", -1},
                                         InputRow{String("01:02:03\0", 9), -1}, InputRow{"25:00:00", -1},
                                         InputRow{"24:00:01", -1}, InputRow{"24:01:00", -1}, InputRow{"99:00:00", -1},
                                         InputRow{"00:60:00", -1}, InputRow{"00:00:60", -1},
                                         InputRow{"01:02:03 AM", -1}, InputRow{"01:02:03AM", -1}));

class AmericanInput : public ShownTime, public testing::WithParamInterface<InputRow> {
protected:
  AmericanInput() { KivTimeFunctions::SetAmericanTimeFormat(true); }
};
TEST_P(AmericanInput, MayHaveBlanksAndOneDigitForTheHour) { expectRead(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Accepted, AmericanInput,
                         testing::Values(InputRow{"1:05:00PM", 13 * 3600 + 300},
                                         InputRow{"01:05:00 PM", 13 * 3600 + 300}, InputRow{"1:05:00AM", 3900},
                                         InputRow{"12:00:00 AM", 43200}, InputRow{"12:00:00PM", 0},
                                         InputRow{"11:59:59PM", 86399}, InputRow{" 1 2 : 0 0 : 0 0 P M ", 0},
                                         InputRow{"1 :05:00AM", 3900}, InputRow{"01:00:00AM", 3600}));
INSTANTIATE_TEST_SUITE_P(
    Refused, AmericanInput,
    testing::Values(InputRow{"", -1}, InputRow{"AM", -1}, InputRow{"01:02:03", -1}, InputRow{"01:02:03M", -1},
                    InputRow{"01:02:03A", -1}, InputRow{"01:02:03am", -1}, InputRow{"01:02:03pm", -1},
                    InputRow{"01:02:03AMx", -1}, InputRow{"01:02:03XM", -1}, InputRow{"01:02:03\tAM", -1},
                    InputRow{"00:00:00AM", -1}, InputRow{"0:00:00AM", -1}, InputRow{"13:00:00AM", -1},
                    InputRow{"13:00:00PM", -1}, InputRow{"01:60:00AM", -1}, InputRow{"01:00:60AM", -1},
                    InputRow{"1:5:00AM", -1}, InputRow{":05:00AM", -1}, InputRow{"::05:00AM", -1},
                    InputRow{"101:00:00AM", -1}, InputRow{"24:00:00", -1}, InputRow{String("01:02:03AM\0", 11), -1}));

/// What a reader might take for a time.
String randomText(support::Random & random) {
  constexpr char kCharacters[] = "0123459:: APM";
  std::string text = random() % 2 == 0 ? "01:02:03 AM" : "10:20:30";
  for (unsigned changes = random() % 3; changes > 0 && !text.empty(); --changes)
    switch (random() % 3) {
    case 0: text[random() % text.size()] = kCharacters[random() % (sizeof kCharacters - 1)]; break;
    case 1: text.erase(random() % text.size(), 1); break;
    default: text.insert(random() % text.size(), 1, kCharacters[random() % (sizeof kCharacters - 1)]);
    }
  return text.c_str();
}

/// The form by the runtime's scanning.
bool isAccepted(std::string text, bool isAmerican) {
  if (isAmerican) {
    std::erase(text, ' ');
    if (text.size() > 1 && text[1] == ':')
      text = "0" + text;
    if (!text.ends_with("AM") && !text.ends_with("PM"))
      return false;
    text.resize(text.size() - 2);
  }
  unsigned hour = 0;
  unsigned minute = 0;
  unsigned second = 0;
  int end = 0;
  bool const isForm = text.size() == 8 && text.find_first_not_of("0123456789:") == std::string::npos &&
                      std::sscanf(text.c_str(), "%2u:%2u:%2u%n", &hour, &minute, &second, &end) == 3 && end == 8;
  bool const isWithin = minute < 60 && second < 60;
  if (isAmerican)
    return isForm && isWithin && hour >= 1 && hour <= 12;
  return isForm && ((isWithin && hour < 24) || (hour == 24 && minute == 0 && second == 0));
}

TEST(RandomTexts, AreTimesOnlyInTheirForm) {
  support::Random random(63);
  for (std::size_t i = 0; i < support::times(20'000); ++i) {
    bool const isAmerican = random() % 2 == 0;
    KivTimeFunctions::SetAmericanTimeFormat(isAmerican);
    String const text = randomText(random);
    Time time(77);
    bool const isRead = KivTimeFunctions::setTimeInUIRep(text, time);
    ASSERT_EQ(isRead, isAccepted(text.c_str(), isAmerican)) << text.c_str() << ' ' << isAmerican;
    if (!isRead) {
      ASSERT_EQ(time, Time(77));
    }
  }
}

} // namespace
