#pragma once
/// \file
/// What the system itself writes for dates and times, in its own code page.

#include "tools/date.hpp"
#include "tools/time.hpp"
#include "tools/winapi.hpp"

#include <string>

namespace systemanswers {

inline std::string fact(LCID locale, LCTYPE type) {
  char text[256] = "";
  GetLocaleInfoA(locale, type | LOCALE_USE_CP_ACP, text, sizeof text);
  return text;
}

inline SYSTEMTIME moment(SV::Date const & date, SV::Time const & time = SV::Time(0)) {
  SYSTEMTIME moment{};
  moment.wDay = static_cast<WORD>(date.GetDay());
  moment.wMonth = static_cast<WORD>(date.GetMonth());
  moment.wYear = static_cast<WORD>(date.GetYear());
  moment.wHour = static_cast<WORD>(time.GetHour());
  moment.wMinute = static_cast<WORD>(time.GetMin());
  moment.wSecond = static_cast<WORD>(time.GetSec());
  return moment;
}

/// \param kind  DATE_SHORTDATE or DATE_LONGDATE
inline std::string date(LCID locale, SV::Date const & day, DWORD kind) {
  SYSTEMTIME const asked = moment(day);
  char text[256] = "";
  GetDateFormatA(locale, kind | LOCALE_USE_CP_ACP, &asked, nullptr, text, sizeof text);
  return text;
}

/// \param flags  0 or TIME_NOSECONDS
inline std::string time(LCID locale, SV::Time const & clock, DWORD flags = 0) {
  SYSTEMTIME const asked = moment(SV::Date(1, 1, 2000), clock);
  char text[256] = "";
  GetTimeFormatA(locale, flags | LOCALE_USE_CP_ACP, &asked, nullptr, text, sizeof text);
  return text;
}

} // namespace systemanswers
