#include "adattime.hpp"

#include "base/textids.hpp"
#include "sv/listbox.hpp"
#include "sv/resource.hpp"

#include <algorithm>

using SV::DayOfWeek;
using SV::String;

namespace {

namespace texts = kivara::texts;

constexpr int kNoDay = 255;

/// The names of months or of weekdays, in the active language pack.
struct Names {
  texts::Id first;
  int count;
};
constexpr Names kMonths = {texts::kJanuary, 12};
constexpr Names kWeekdays = {texts::kMonday, 7};

bool isIn(Names const & names, int index) { return index >= 0 && index < names.count; }

String nameOf(Names const & names, int index) {
  return isIn(names, index) ? SV::Resource::LoadString(names.first + static_cast<texts::Id>(index)) : String();
}

bool toName(Names const & names, int index, String & name) {
  if (!isIn(names, index))
    return false;
  name = nameOf(names, index);
  return true;
}

bool toIndex(Names const & names, String const & name, int & index) {
  for (int each = 0; each < names.count; ++each)
    if (nameOf(names, each) == name) {
      index = each;
      return true;
    }
  return false;
}

struct Lengths {
  int shortest;
  int longest;
};

Lengths lengthsOf(Names const & names) {
  int const first = nameOf(names, 0).Len();
  Lengths lengths{first, first};
  for (int index = 1; index < names.count; ++index) {
    int const length = nameOf(names, index).Len();
    lengths = {std::min(lengths.shortest, length), std::max(lengths.longest, length)};
  }
  return lengths;
}

bool fill(SV::ListBox * list, Names const & names) {
  if (list == nullptr)
    return false;
  for (int index = 0; index < names.count; ++index)
    if (list->InsertEntry(nameOf(names, index)) == SV::LISTBOX_ENTRY_NOTFOUND)
      return false;
  return true;
}

} // namespace

bool KivDate::DayIsValid(int day) { return day >= 1 && day <= 31; }
bool KivDate::MonthIsValid(int month) { return isIn(kMonths, month); }
bool KivDate::WeekdayIsValid(int weekday) { return isIn(kWeekdays, weekday); }

bool KivDate::IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

bool KivDate::GetMaxDayOfMonth(int month, int & maxDay, bool leapYear) {
  constexpr int kFebruary = 1;
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (!MonthIsValid(month)) {
    maxDay = kNoDay;
    return false;
  }
  maxDay = kDays[month] + (month == kFebruary && leapYear ? 1 : 0);
  return true;
}

bool KivDate::DayIsValidForMonth(int day, int month, bool leapYear) {
  int maxDay = 0;
  return GetMaxDayOfMonth(month, maxDay, leapYear) && day >= 1 && day <= maxDay;
}

bool KivDate::MonthToStr(int month, String & name) { return toName(kMonths, month, name); }
String KivDate::MonthToStr(int month) { return nameOf(kMonths, month); }

bool KivDate::WeekdayToStr(int weekday, String & name) { return toName(kWeekdays, weekday, name); }
bool KivDate::WeekdayToStr(DayOfWeek const & weekday, String & name) { return toName(kWeekdays, weekday, name); }
String KivDate::WeekdayToStr(int weekday) { return nameOf(kWeekdays, weekday); }
String KivDate::WeekdayToStr(DayOfWeek const & weekday) { return nameOf(kWeekdays, weekday); }

bool KivDate::StrToMonth(String const & name, int & month) { return toIndex(kMonths, name, month); }
bool KivDate::StrToWeekday(String const & name, int & weekday) { return toIndex(kWeekdays, name, weekday); }

bool KivDate::StrToWeekday(String const & name, DayOfWeek & weekday) {
  int index = 0;
  if (!toIndex(kWeekdays, name, index))
    return false;
  weekday = static_cast<DayOfWeek>(index);
  return true;
}

int KivDate::GetMaximumMonthLength() { return lengthsOf(kMonths).longest; }
int KivDate::GetMinimumMonthLength() { return lengthsOf(kMonths).shortest; }
int KivDate::GetMaximumWeekdayLength() { return lengthsOf(kWeekdays).longest; }
int KivDate::GetMinimumWeekdayLength() { return lengthsOf(kWeekdays).shortest; }

bool KivDate::FillListBoxWithMonthNames(SV::ListBox * list) { return fill(list, kMonths); }
bool KivDate::FillListBoxWithWeekdayNames(SV::ListBox * list) { return fill(list, kWeekdays); }
