// Formats of dates and times, by table and by a model.
#include "adattime.hpp"

#include "support/data/random.hpp"
#include "tools/international.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <ostream>
#include <string>

using SV::Date;
using SV::String;
using SV::Time;

namespace {

std::string textOf(String const & text) { return {text.c_str(), static_cast<std::size_t>(text.Len())}; }

struct DateRow {
  char const * format;
  char const * text;
  Date date = Date(5, 3, 2024);
};
std::ostream & operator<<(std::ostream & out, DateRow const & row) { return out << row.format; }

class FormattedDate : public testing::TestWithParam<DateRow> {};

TEST_P(FormattedDate, ReplacesRunsOfLetters) {
  EXPECT_EQ(textOf(KivDate::GetFormatedDate(GetParam().date, GetParam().format)), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Table, FormattedDate,
                         testing::Values(DateRow{"DD.MM.YYYY", "05.03.2024"}, DateRow{"YY-MM", "24-03"},
                                         DateRow{"D.M.Y", "D.M.Y"}, DateRow{"DD", "05"}, DateRow{"DDDD", "DDDD"},
                                         DateRow{"DDDDD", "DDDDD"}, DateRow{"M", "M"}, DateRow{"MM", "03"},
                                         DateRow{"MMMM", "MMMM"}, DateRow{"Y", "Y"}, DateRow{"YY", "24"},
                                         DateRow{"YYY", "YYY"}, DateRow{"YYYY", "2024"}, DateRow{"YYYYY", "YYYYY"},
                                         DateRow{"DDMMYYYY", "05032024"}, DateRow{"dd.mm.yyyy", "dd.mm.yyyy"},
                                         DateRow{"'DD'", "'05'"}, DateRow{"HH:SS", "HH:SS"}, DateRow{" ", " "},
                                         DateRow{"DD D DD", "05 D 05"}, DateRow{"%02i%s", "%02i%s"},
                                         DateRow{"YYYY", "7", Date(1, 1, 7)}, DateRow{"YY", "07", Date(1, 1, 2007)},
                                         DateRow{"YY", "00", Date(1, 1, 1900)},
                                         DateRow{"DD.MM.YYYY", "31.12.9999", Date(31, 12, 9999)},
                                         DateRow{"DD.MM.YYYY", "45.17.2024", Date(45, 17, 2024)},
                                         DateRow{"DD.MM.YYYY", "00.00.0", Date(0, 0, 0)}));

struct TimeRow {
  char const * format;
  char const * text;
  Time time = Time(9, 5, 7, 99);
};
std::ostream & operator<<(std::ostream & out, TimeRow const & row) { return out << row.format; }

class FormattedTime : public testing::TestWithParam<TimeRow> {};

TEST_P(FormattedTime, ReplacesRunsOfTwoLetters) {
  EXPECT_EQ(textOf(KivDate::GetFormatedTime(GetParam().time, GetParam().format)), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Table, FormattedTime,
                         testing::Values(TimeRow{"HH:MM:SS", "09:05:07"}, TimeRow{"HH.MM", "09.05"},
                                         TimeRow{"HHMMSS", "090507"}, TimeRow{"H:M:S", "H:M:S"}, TimeRow{"HHH", "HHH"},
                                         TimeRow{"HHHH", "HHHH"}, TimeRow{"MMM", "MMM"}, TimeRow{"SSS", "SSS"},
                                         TimeRow{"hh:mm:ss", "hh:mm:ss"}, TimeRow{"DD YY", "DD YY"},
                                         TimeRow{"HH HH", "09 09"}, TimeRow{"HH:MM:SS", "23:59:59", Time(23, 59, 59)},
                                         TimeRow{"HH:MM:SS", "24:00:00", Time(24)},
                                         TimeRow{"HH:MM", "2146:00", Time(2146)},
                                         TimeRow{"HH:MM:SS", "01:02:03", Time(0) - Time(1, 2, 3)}));

TEST(FormattedDate, WithoutAFormatIsTheShortOneOfTheSettings) {
  Date const date(5, 3, 2024);
  EXPECT_EQ(KivDate::GetFormatedDate(date, ""), SV::International().GetDate(date));
}

TEST(FormattedTime, WithoutAFormatIsThatOfTheSettingsWithSeconds) {
  Time const time(21, 5, 7, 50);
  EXPECT_EQ(KivDate::GetFormatedTime(time, ""), SV::International().GetTime(time, true, false));
  EXPECT_NE(KivDate::GetFormatedTime(time, ""), SV::International().GetTime(time, false, false));
}

TEST(FormattedDate, MayHoldANul) {
  EXPECT_EQ(textOf(KivDate::GetFormatedDate(Date(5, 3, 2024), String("DD\0\0MM", 6))), std::string("05\0\00003", 6));
}

std::string number(char const * format, unsigned long value) {
  char text[16];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

std::string dateField(Date const & date, std::string const & run) {
  if (run == "DD")
    return number("%02lu", date.GetDay());
  if (run == "MM")
    return number("%02lu", date.GetMonth());
  if (run == "YY")
    return number("%02lu", date.GetYear() % 100);
  return run == "YYYY" ? number("%lu", date.GetYear()) : run;
}

std::string timeField(Time const & time, std::string const & run) {
  if (run == "HH")
    return number("%02lu", time.GetHour());
  if (run == "MM")
    return number("%02lu", time.GetMin());
  return run == "SS" ? number("%02lu", time.GetSec()) : run;
}

/// Each run of one character replaced by its field.
template <class Value, class Field> std::string modelOf(Value const & value, std::string const & format, Field field) {
  std::string text;
  for (std::size_t start = 0; start < format.size();) {
    std::size_t const end = std::min(format.find_first_not_of(format[start], start), format.size());
    text += field(value, format.substr(start, end - start));
    start = end;
  }
  return text;
}

/// Of few characters, so that there are runs. Names are tested in both languages by themselves.
std::string randomFormat(support::Random & random, std::string const & letters) {
  std::string format;
  for (std::size_t length = random() % 30 + 1; format.size() < length;)
    format += std::string(random() % 5 + 1, letters[random() % letters.size()]);
  return format;
}

bool hasName(std::string const & format) {
  for (char const letter : {'D', 'M'})
    for (std::size_t at = format.find(letter); at != std::string::npos; at = format.find(letter, at)) {
      std::size_t const end = std::min(format.find_first_not_of(letter, at), format.size());
      if (end - at == 3)
        return true;
      at = end;
    }
  return false;
}

TEST(RandomFormats, GiveTheDateOfTheModel) {
  support::Random random(61);
  for (std::size_t i = 0; i < support::times(20'000); ++i) {
    std::string const format = randomFormat(random, "DMYdH. ");
    if (hasName(format))
      continue;
    Date const date(random() % 40, random() % 20, random() % 10000);
    ASSERT_EQ(textOf(KivDate::GetFormatedDate(date, format.c_str())), modelOf(date, format, dateField))
        << format << ' ' << date.value();
  }
}

TEST(RandomFormats, GiveTheTimeOfTheModel) {
  support::Random random(62);
  for (std::size_t i = 0; i < support::times(20'000); ++i) {
    std::string const format = randomFormat(random, "HMSsY: ");
    Time const time(random() % 2000, random() % 60, random() % 60, random() % 100);
    ASSERT_EQ(textOf(KivDate::GetFormatedTime(time, format.c_str())), modelOf(time, format, timeField))
        << format << ' ' << time.value();
  }
}

} // namespace
