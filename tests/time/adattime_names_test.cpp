// Names of months and weekdays, in both languages, and lists that are filled with them.
#include "adattime.hpp"

#include "sv/listbox.hpp"
#include "sv0105/application/testapplication.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <string>
#include <vector>

using SV::DayOfWeek;
using SV::String;

namespace {

using Names = std::vector<std::string>;

struct Language {
  char const * number;
  Names months;
  Names weekdays;
};

Language const kEnglish = {"2057",
                           {"January", "February", "March", "April", "May", "June", "July", "August", "September",
                            "October", "November", "December"},
                           {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"}};
Language const kGerman = {"1031",
                          {"Januar", "Februar", "M\xE4rz", "April", "Mai", "Juni", "Juli", "August", "September",
                           "Oktober", "November", "Dezember"},
                          {"Montag", "Dienstag", "Mittwoch", "Donnerstag", "Freitag", "Samstag", "Sonntag"}};

/// With the library's pack of a language.
class NamesOf : public ToolkitTest, public testing::WithParamInterface<Language const *> {
protected:
  NamesOf() { SV::Resource::SetResManager(&pack); }
  ~NamesOf() override { SV::Resource::SetResManager(nullptr); }

  Names const & months = GetParam()->months;
  Names const & weekdays = GetParam()->weekdays;
  SV::ResMgr pack{String("language\\") + GetParam()->number + "\\kivara72.dll"};
};

INSTANTIATE_TEST_SUITE_P(Language, NamesOf, testing::Values(&kEnglish, &kGerman),
                         [](auto const & row) { return std::string(row.param->number); });

TEST_P(NamesOf, MonthsStandInTheirOrder) {
  for (int month = 0; month < 12; ++month) {
    String name;
    EXPECT_TRUE(KivDate::MonthToStr(month, name));
    EXPECT_EQ(textOf(name), months[static_cast<std::size_t>(month)]);
    EXPECT_EQ(KivDate::MonthToStr(month), name);
  }
}

TEST_P(NamesOf, WeekdaysBeginWithMonday) {
  for (int weekday = 0; weekday < 7; ++weekday) {
    auto const day = static_cast<DayOfWeek>(weekday);
    String name;
    EXPECT_TRUE(KivDate::WeekdayToStr(weekday, name));
    EXPECT_EQ(textOf(name), weekdays[static_cast<std::size_t>(weekday)]);
    String sameName;
    EXPECT_TRUE(KivDate::WeekdayToStr(day, sameName));
    EXPECT_EQ(sameName, name);
    EXPECT_EQ(KivDate::WeekdayToStr(weekday), name);
    EXPECT_EQ(KivDate::WeekdayToStr(day), name);
  }
}

TEST_P(NamesOf, WeekdaysAreThoseOfADate) {
  EXPECT_EQ(textOf(KivDate::WeekdayToStr(SV::Date(5, 3, 2024).GetDayOfWeek())), weekdays[1]);
  EXPECT_EQ(textOf(KivDate::WeekdayToStr(SV::Date(10, 3, 2024).GetDayOfWeek())), weekdays[6]);
}

TEST_P(NamesOf, WhatDoesNotExistLeaveTheTextUnchangedAndAreEmpty) {
  for (int const number : {INT_MIN, -1, 12, INT_MAX}) {
    String name("before");
    EXPECT_FALSE(KivDate::MonthToStr(number, name)) << number;
    EXPECT_EQ(name, "before");
    EXPECT_EQ(KivDate::MonthToStr(number), "");
  }
  for (int const number : {INT_MIN, -1, 7, INT_MAX}) {
    String name("before");
    EXPECT_FALSE(KivDate::WeekdayToStr(number, name)) << number;
    EXPECT_FALSE(KivDate::WeekdayToStr(static_cast<DayOfWeek>(number), name)) << number;
    EXPECT_EQ(name, "before");
    EXPECT_EQ(KivDate::WeekdayToStr(number), "");
    EXPECT_EQ(KivDate::WeekdayToStr(static_cast<DayOfWeek>(number)), "");
  }
  EXPECT_TRUE(application.exceptions.empty());
}

TEST_P(NamesOf, AreReadBack) {
  for (int month = 0; month < 12; ++month) {
    int found = -5;
    EXPECT_TRUE(KivDate::StrToMonth(months[static_cast<std::size_t>(month)].c_str(), found));
    EXPECT_EQ(found, month);
  }
  for (int weekday = 0; weekday < 7; ++weekday) {
    String const name = weekdays[static_cast<std::size_t>(weekday)].c_str();
    int found = -5;
    EXPECT_TRUE(KivDate::StrToWeekday(name, found));
    EXPECT_EQ(found, weekday);
    auto day = static_cast<DayOfWeek>(-5);
    EXPECT_TRUE(KivDate::StrToWeekday(name, day));
    EXPECT_EQ(day, weekday);
  }
}

TEST_P(NamesOf, AreCaseSensitiveAndWholeWhenTheyAreRead) {
  for (char const * const text : {"", "april", "APRIL", "Apri", "April ", " April", "M\xC4RZ", "montag", "Mon", "13"}) {
    int number = -5;
    EXPECT_FALSE(KivDate::StrToMonth(text, number)) << text;
    EXPECT_FALSE(KivDate::StrToWeekday(text, number)) << text;
    EXPECT_EQ(number, -5);
    DayOfWeek day = SV::SUNDAY;
    EXPECT_FALSE(KivDate::StrToWeekday(text, day)) << text;
    EXPECT_EQ(day, SV::SUNDAY);
  }
  int number = -5;
  EXPECT_FALSE(KivDate::StrToMonth(weekdays[0].c_str(), number));
  EXPECT_FALSE(KivDate::StrToWeekday(months[0].c_str(), number));
}

// Without a pack all names are empty.
TEST_P(NamesOf, OfEqualOnesTheFirstIsFound) {
  SV::Resource::SetResManager(nullptr);
  int month = -5;
  EXPECT_TRUE(KivDate::StrToMonth("", month));
  EXPECT_EQ(month, 0);
  int weekday = -5;
  EXPECT_TRUE(KivDate::StrToWeekday("", weekday));
  EXPECT_EQ(weekday, 0);
  DayOfWeek day = SV::SUNDAY;
  EXPECT_TRUE(KivDate::StrToWeekday("", day));
  EXPECT_EQ(day, SV::MONDAY);
}

TEST_P(NamesOf, HaveAShortestAndALongest) {
  bool const isGerman = GetParam() == &kGerman;
  EXPECT_EQ(KivDate::GetMinimumMonthLength(), 3);
  EXPECT_EQ(KivDate::GetMaximumMonthLength(), 9);
  EXPECT_EQ(KivDate::GetMinimumWeekdayLength(), 6);
  EXPECT_EQ(KivDate::GetMaximumWeekdayLength(), isGerman ? 10 : 9);
}

void expectEntries(SV::ListBox const & list, Names const & names, std::size_t before = 0) {
  ASSERT_EQ(list.GetEntryCount(), static_cast<long>(before + names.size()));
  for (std::size_t i = 0; i < names.size(); ++i)
    EXPECT_EQ(textOf(list.GetEntry(static_cast<long>(before + i))), names[i]);
}

TEST_P(NamesOf, FillListBoxesInTheirOrder) {
  SV::Window window(nullptr, SV::WB_TITLE);
  SV::ListBox list(&window);
  EXPECT_TRUE(KivDate::FillListBoxWithMonthNames(&list));
  expectEntries(list, months);
  EXPECT_TRUE(KivDate::FillListBoxWithWeekdayNames(&list));
  expectEntries(list, weekdays, 12);
  SV::ListBox dropDown(&window, SV::WB_DROPDOWN);
  EXPECT_TRUE(KivDate::FillListBoxWithWeekdayNames(&dropDown));
  expectEntries(dropDown, weekdays);
}

TEST_P(NamesOf, FillNoListBoxThatIsNullOrRefuses) {
  EXPECT_FALSE(KivDate::FillListBoxWithMonthNames(nullptr));
  EXPECT_FALSE(KivDate::FillListBoxWithWeekdayNames(nullptr));
  SV::Window window(nullptr, SV::WB_TITLE);
  SV::ListBox list(&window);
  DestroyWindow(list.GethWnd());
  EXPECT_FALSE(KivDate::FillListBoxWithMonthNames(&list));
  EXPECT_FALSE(KivDate::FillListBoxWithWeekdayNames(&list));
}

TEST_P(NamesOf, StandInFormats) {
  SV::Date const date(5, 3, 2024);
  EXPECT_EQ(textOf(KivDate::GetFormatedDate(date, "DDD, DD MMM YYYY")), weekdays[1] + ", 05 " + months[2] + " 2024");
  EXPECT_EQ(textOf(KivDate::GetFormatedDate(date, "MMMDDD")), months[2] + weekdays[1]);
  EXPECT_EQ(textOf(KivDate::GetFormatedDate(SV::Date(1, 0, 2024), "[MMM]")), "[]");
  EXPECT_EQ(textOf(KivDate::GetFormatedDate(SV::Date(1, 13, 2024), "[MMM]")), "[]");
}

// A program may change its language while it runs.
TEST_P(NamesOf, FollowTheLanguage) {
  EXPECT_EQ(textOf(KivDate::MonthToStr(11)), months[11]);
  Language const & other = GetParam() == &kGerman ? kEnglish : kGerman;
  SV::ResMgr otherPack(String("language\\") + other.number + "\\kivara72.dll");
  SV::Resource::SetResManager(&otherPack);
  EXPECT_EQ(textOf(KivDate::MonthToStr(11)), other.months[11]);
  EXPECT_EQ(textOf(KivDate::WeekdayToStr(6)), other.weekdays[6]);
  int month = 0;
  EXPECT_TRUE(KivDate::StrToMonth(other.months[9].c_str(), month));
  EXPECT_EQ(month, 9);
  SV::Resource::SetResManager(&pack);
}

TEST_P(NamesOf, AreAskedOfTheApplicationWhenThePackLacksThem) {
  SV::Resource::SetResManager(nullptr);
  EXPECT_EQ(KivDate::MonthToStr(2), "");
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, SV::EXC_RESOURCE_NOT_LOADED);
  EXPECT_EQ(application.exceptions[0].arg, 0x2000000ul + 25102);
  EXPECT_EQ(KivDate::WeekdayToStr(0), "");
  EXPECT_EQ(application.exceptions.back().arg, 0x2000000ul + 25112);
}

} // namespace
