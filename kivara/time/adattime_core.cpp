#include "adattime.hpp"

#include "base/boundedtext.hpp"
#include "time/textfields.hpp"
#include "tools/international.hpp"

#include <cstring>

using SV::Date;
using SV::String;
using SV::Time;

namespace {

constexpr char kDatePicture[] = "9999:99:99";
constexpr char kMomentPicture[] = "9999:99:99 99:99:99";

enum Field { kYear, kMonth, kDay, kHour, kMinute, kSecond, kFieldCount };

/// The whole text by a picture of ours.
template <std::size_t Size> bool readWhole(char const * text, char const (&picture)[Size], int * fields) {
  text = kivara::orEmpty(text);
  return kivara::readFields(text, picture, fields) && text[Size - 1] == '\0';
}

bool isDate(int const * fields) {
  if (fields[kYear] < 1 || !KivDate::MonthIsValid(fields[kMonth] - 1))
    return false;
  Date const year(1, 1, static_cast<unsigned long>(fields[kYear]));
  return KivDate::DayIsValidForMonth(fields[kDay], fields[kMonth] - 1, year.IsLeapYear());
}

bool isTimeOfDay(int const * fields) { return fields[kHour] < 24 && fields[kMinute] < 60 && fields[kSecond] < 60; }

void set(Date * date, int const * fields) {
  if (date == nullptr)
    return;
  date->ChangeYear(static_cast<unsigned long>(fields[kYear]));
  date->ChangeMonth(static_cast<unsigned long>(fields[kMonth]));
  date->ChangeDay(static_cast<unsigned long>(fields[kDay]));
}

void set(Time * time, int const * fields) {
  if (time == nullptr)
    return;
  time->ChangeHour(static_cast<unsigned long>(fields[kHour]));
  time->ChangeMin(static_cast<unsigned long>(fields[kMinute]));
  time->ChangeSec(static_cast<unsigned long>(fields[kSecond]));
}

String displayed(SV::International & settings, Date const & date, bool longForm) {
  settings.ChangeLongDateCentury(true);
  return longForm ? settings.GetLongDate(date) : settings.GetDate(date);
}

} // namespace

KivCoreDate::KivCoreDate(char const * text) { _ImpParse(text, this); }

bool KivCoreDate::IsValidString(char const * text) { return _ImpParse(text, nullptr); }

String KivCoreDate::GetDisplayString(bool longForm) const {
  SV::International settings;
  return displayed(settings, *this, longForm);
}

bool KivCoreDate::_ImpParse(char const * text, Date * out) {
  int fields[kFieldCount];
  if (!readWhole(text, kDatePicture, fields) || !isDate(fields))
    return false;
  set(out, fields);
  return true;
}

KivCoreDateTime::KivCoreDateTime(char const * text) { _ImpParse(text, this, this); }

bool KivCoreDateTime::IsValidString(char const * text) { return _ImpParse(text, nullptr, nullptr); }

String KivCoreDateTime::GetDisplayString(bool longForm) const {
  SV::International settings;
  return displayed(settings, *this, longForm) + " " + settings.GetTime(*this, true, false);
}

bool KivCoreDateTime::_ImpParse(char const * text, Date * date, Time * time) {
  int fields[kFieldCount];
  if (!readWhole(text, kMomentPicture, fields) || !isDate(fields) || !isTimeOfDay(fields))
    return false;
  set(date, fields);
  set(time, fields);
  return true;
}
