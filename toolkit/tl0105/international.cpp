#include "tools/international.hpp"

#include "picture.hpp"
#include "systemlocale.hpp"

#include <algorithm>
#include <utility>

namespace SV {
namespace {

/// Up to two letters mean the year without the century.
constexpr std::size_t kLongestShortYear = 2;

/// The first year that the system can format. Earlier years are formatted as one with the same calendar, which repeats every
/// 400 years.
constexpr unsigned long kFirstSystemYear = 1601;
constexpr unsigned long kStandInYears = 2000;

bool showsCentury(std::wstring const & picture) {
  bool shows = false;
  picture::withRuns(picture, [&shows](wchar_t letter, std::size_t count) {
    shows = shows || (letter == L'y' && count > kLongestShortYear);
    return std::wstring();
  });
  return shows;
}

std::wstring withCentury(std::wstring const & picture, bool century) {
  return picture::withRuns(picture, [century](wchar_t letter, std::size_t count) {
    if (letter != L'y' || century == (count > kLongestShortYear))
      return picture::run(letter, count);
    return picture::run(letter, century ? 4 : 2);
  });
}

std::wstring literalYear(unsigned long year, std::size_t count) {
  return count > kLongestShortYear ? picture::number(year, 4) : picture::number(year % 100, count);
}

std::wstring withLiteralYear(std::wstring const & picture, unsigned long year) {
  return picture::withRuns(picture, [year](wchar_t letter, std::size_t count) {
    return letter == L'y' ? literalYear(year, count) : picture::run(letter, count);
  });
}

/// The fields as numbers, for a day that is in no calendar. Names of weekdays and eras are left out.
std::wstring withLiteralFields(std::wstring const & picture, Date const & date) {
  return picture::withRuns(picture, [&date](wchar_t letter, std::size_t count) {
    std::size_t const digits = std::min<std::size_t>(count, 2);
    switch (letter) {
    case L'd': return count > 2 ? std::wstring() : picture::number(date.GetDay(), digits);
    case L'M': return picture::number(date.GetMonth(), digits);
    case L'y': return literalYear(date.GetYear(), count);
    default: return std::wstring();
    }
  });
}

SYSTEMTIME dayInYear(Date const & date, unsigned long year) {
  SYSTEMTIME day{};
  day.wYear = static_cast<WORD>(year);
  day.wMonth = static_cast<WORD>(date.GetMonth());
  day.wDay = static_cast<WORD>(date.GetDay());
  return day;
}

/// The system does not check: it may take the 30th of February for the 2nd of March.
bool isInCalendar(Date const & date) {
  constexpr unsigned long kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  unsigned long const month = date.GetMonth();
  if (month < 1 || month > 12)
    return false;
  unsigned long const days = kDays[month - 1] + (month == 2 && date.IsLeapYear() ? 1 : 0);
  return date.GetDay() >= 1 && date.GetDay() <= days;
}

std::wstring numericDate(LCID locale, Date const & date, std::wstring const & picture) {
  SYSTEMTIME const any = dayInYear(Date(1, 1, kStandInYears), kStandInYears);
  return systemlocale::date(locale, any, withLiteralFields(picture, date));
}

/// The date in a picture of the locale. If the day is in no calendar, or if the system's code page lacks letters of the names,
/// \p numericPicture is used, and only for numbers.
String formattedDate(LCID locale, Date const & date, std::wstring const & picture,
                     std::wstring const & numericPicture) {
  unsigned long const year = date.GetYear();
  std::wstring text;
  if (isInCalendar(date) && year >= kFirstSystemYear)
    text = systemlocale::date(locale, dayInYear(date, year), picture);
  else if (isInCalendar(date))
    text = systemlocale::date(locale, dayInYear(date, kStandInYears + year % 400), withLiteralYear(picture, year));
  bool const isReadable = !text.empty() && systemlocale::isInCodePage(text);
  return systemlocale::narrow(isReadable ? text : numericDate(locale, date, numericPicture));
}

std::wstring withHundredthsAfterSeconds(std::wstring const & picture, std::wstring const & sign, Time const & time) {
  std::wstring const hundredths = sign + picture::number(time.Get100Sec(), 2);
  return picture::withRuns(picture, [&](wchar_t letter, std::size_t count) {
    return letter == L's' ? picture::run(letter, count) + hundredths : picture::run(letter, count);
  });
}

/// The fields as numbers in 24 hours, for a value that is not a time of day.
std::wstring withLiteralFields(std::wstring const & picture, Time const & time) {
  return picture::withRuns(picture, [&time](wchar_t letter, std::size_t count) {
    switch (letter) {
    case L'h':
    case L'H': return picture::number(time.GetHour(), count);
    case L'm': return picture::number(time.GetMin(), count);
    case L's': return picture::number(time.GetSec(), count);
    default: return std::wstring();
    }
  });
}

bool isTimeOfDay(Time const & time) {
  return time.value() >= 0 && time.GetHour() < 24 && time.GetMin() < 60 && time.GetSec() < 60;
}

/// The time in numbers, with a sign if it is negative.
std::wstring numericTime(LCID locale, Time const & time, std::wstring const & picture) {
  std::wstring const size = systemlocale::time(locale, SYSTEMTIME{}, withLiteralFields(picture, time));
  return time.value() < 0 ? L"-" + size : size;
}

} // namespace

International::International() : International(COUNTRY_SYSTEM, LANGUAGE_SYSTEM) {}

International::International(CountryType country, LanguageType language)
    : locale_(systemlocale::find(country, language)),
      century_(showsCentury(systemlocale::fact(locale_, LOCALE_SSHORTDATE))),
      longCentury_(showsCentury(systemlocale::fact(locale_, LOCALE_SLONGDATE))), okText_("OK") {
  bool const isGerman = PRIMARYLANGID(LANGIDFROMLCID(ConvertDefaultLocale(locale_))) == LANG_GERMAN;
  cancelText_ = isGerman ? "Abbrechen" : "Cancel";
  helpText_ = isGerman ? "Hilfe" : "Help";
}

String International::ChangeOKButtonText(String const & text) { return std::exchange(okText_, String(text)); }
String International::ChangeCancelButtonText(String const & text) { return std::exchange(cancelText_, String(text)); }
String International::ChangeHelpButtonText(String const & text) { return std::exchange(helpText_, String(text)); }

bool International::ChangeDateCentury(bool withCentury) { return std::exchange(century_, withCentury); }
bool International::ChangeLongDateCentury(bool withCentury) { return std::exchange(longCentury_, withCentury); }

String International::GetDate(Date const & date) const {
  std::wstring const picture = withCentury(systemlocale::fact(locale_, LOCALE_SSHORTDATE), century_);
  return formattedDate(locale_, date, picture, picture);
}

String International::GetLongDate(Date const & date) const {
  std::wstring const picture = withCentury(systemlocale::fact(locale_, LOCALE_SLONGDATE), longCentury_);
  std::wstring const numeric = withCentury(systemlocale::fact(locale_, LOCALE_SSHORTDATE), longCentury_);
  return formattedDate(locale_, date, picture, numeric);
}

String International::GetTime(Time const & time, bool withSeconds, bool withHundredths) const {
  std::wstring picture = systemlocale::fact(locale_, withSeconds ? LOCALE_STIMEFORMAT : LOCALE_SSHORTTIME);
  if (withSeconds && withHundredths)
    picture = withHundredthsAfterSeconds(picture, systemlocale::fact(locale_, LOCALE_SDECIMAL), time);
  std::wstring text;
  if (isTimeOfDay(time)) {
    SYSTEMTIME moment{};
    moment.wHour = static_cast<WORD>(time.GetHour());
    moment.wMinute = static_cast<WORD>(time.GetMin());
    moment.wSecond = static_cast<WORD>(time.GetSec());
    text = systemlocale::time(locale_, moment, picture);
  }
  bool const isReadable = !text.empty() && systemlocale::isInCodePage(text);
  return systemlocale::narrow(isReadable ? text : numericTime(locale_, time, picture));
}

} // namespace SV
