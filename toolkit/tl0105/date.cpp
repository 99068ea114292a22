#include "tools/date.hpp"

#include "tools/winapi.hpp"

#include <utility>

namespace SV {
namespace {

std::uint32_t packed(unsigned long day, unsigned long month, unsigned long year) {
  return static_cast<std::uint32_t>(year % 10000 * 10000 + month % 100 * 100 + day % 100);
}

/// The number of days since the first of March of the year 0, a Wednesday. Months after December belong to later years.
long daysSinceMarch0(long day, long month, long year) {
  long const monthsFromMarch = year * 12 + month - 3;
  long const marchYear = monthsFromMarch >= 0 ? monthsFromMarch / 12 : -1;
  long const monthOfYear = monthsFromMarch - marchYear * 12;
  long const leapDays = marchYear >= 0 ? marchYear / 4 - marchYear / 100 + marchYear / 400 : -1;
  return marchYear * 365 + leapDays + (153 * monthOfYear + 2) / 5 + day - 1;
}

} // namespace

Date::Date() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  nDate_ = packed(now.wDay, now.wMonth, now.wYear);
}

Date::Date(unsigned long day, unsigned long month, unsigned long year) : nDate_(packed(day, month, year)) {}

unsigned long Date::ChangeDay(unsigned long day) {
  return std::exchange(*this, Date(day, GetMonth(), GetYear())).GetDay();
}

unsigned long Date::ChangeMonth(unsigned long month) {
  return std::exchange(*this, Date(GetDay(), month, GetYear())).GetMonth();
}

unsigned long Date::ChangeYear(unsigned long year) {
  return std::exchange(*this, Date(GetDay(), GetMonth(), year)).GetYear();
}

DayOfWeek Date::GetDayOfWeek() const {
  long const days =
      daysSinceMarch0(static_cast<long>(GetDay()), static_cast<long>(GetMonth()), static_cast<long>(GetYear()));
  return static_cast<DayOfWeek>(((days + WEDNESDAY) % 7 + 7) % 7);
}

} // namespace SV
