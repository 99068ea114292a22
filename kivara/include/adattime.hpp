#pragma once
/// \file
/// Dates and times of day: names of months and weekdays, facts of the calendar, formats, and the fixed text forms in which
/// files hold a date. Durations, in a calendar of the product's own, are in adattime_duration.hpp, which is included here.
///
/// \code
///   SV::Date const date(5, 3, 2024);
///   SV::String const day = KivDate::GetFormatedDate(date, "DDD, DD MMM YYYY"); // "Tuesday, 05 March 2024"
///
///   if (KivCoreDate::IsValidString("2024:03:05"))
///     show(KivCoreDate("2024:03:05").GetDisplayString(true)); // as the user writes dates
///
///   SV::Time time(0);
///   if (KivTimeFunctions::setTimeInUIRep("13:05:00", time))
///     seconds += KivTimeFunctions::getTimeInSeconds(time); // 47100
/// \endcode
///
/// Months count from 0 here, whereas an SV::Date counts them from 1. Times are read without their sign.
///
/// Threads: there are no locks. Names come from the active language pack, so what gives or reads a name belongs to the main
/// thread, and so does the American format. Any thread may call the rest.

#include "adattime_duration.hpp"
#include "export.hpp"
#include "tools/date.hpp"
#include "tools/string.hpp"
#include "tools/time.hpp"

namespace SV {
class ListBox;
}

/// Facts, names and formats of the calendar.
///
/// A name is loaded from the active language pack at each call, so that it follows the language. One that the pack lacks is
/// treated as every missing text: Application::Exception is called, and when it returns the name is empty.
class KIV_API KivDate {
public:
  /// \name The calendar
  /// @{
  static bool DayIsValid(int day);         ///< 1 to 31
  static bool MonthIsValid(int month);     ///< 0 to 11
  static bool WeekdayIsValid(int weekday); ///< 0 to 6
  static bool IsLeapYear(int year);        ///< by the Gregorian rule, for all years

  /// The number of days of a month, from 0; 255 and false for a month that is not valid.
  static bool GetMaxDayOfMonth(int month, int & maxDay, bool leapYear);
  /// Whether a month, from 0, has that day, from 1.
  static bool DayIsValidForMonth(int day, int month, bool leapYear);
  /// @}

  /// \name Names
  /// Months are from 0, January, to 11, weekdays from 0, Monday, to 6.
  /// @{

  /// \return false when there is no such month or weekday; \p name is then unchanged
  static bool MonthToStr(int month, SV::String & name);
  static bool WeekdayToStr(int weekday, SV::String & name);
  static bool WeekdayToStr(SV::DayOfWeek const & weekday, SV::String & name);

  /// The name; the empty string when there is no such month or weekday.
  static SV::String MonthToStr(int month);
  static SV::String WeekdayToStr(int weekday);
  static SV::String WeekdayToStr(SV::DayOfWeek const & weekday);

  /// The first month or weekday of that name, case-sensitive.
  /// \return false when none has it; the second argument is then unchanged
  static bool StrToMonth(SV::String const & name, int & month);
  static bool StrToWeekday(SV::String const & name, int & weekday);
  static bool StrToWeekday(SV::String const & name, SV::DayOfWeek & weekday);

  /// The length of the longest and of the shortest name, in bytes.
  static int GetMaximumMonthLength();
  static int GetMinimumMonthLength();
  static int GetMaximumWeekdayLength();
  static int GetMinimumWeekdayLength();

  /// Appends all names, in their order, to the entries that the list has.
  /// \return false for null, and when the system refuses an entry; those before it are then in the list
  static bool FillListBoxWithMonthNames(SV::ListBox * list);
  static bool FillListBoxWithWeekdayNames(SV::ListBox * list);
  /// @}

  /// \name Formats
  /// A format is a text in which runs of one letter stand for a field. A run of any other length, and every other character,
  /// is copied; letters are case-sensitive, and there is no way to quote one. A result beyond STRING_MAXLEN is cut.
  /// @{

  /// | run    | gives                        |
  /// |--------|------------------------------|
  /// | `DD`   | the day, two digits          |
  /// | `DDD`  | the name of the weekday      |
  /// | `MM`   | the month, two digits        |
  /// | `MMM`  | the name of the month        |
  /// | `YY`   | the last two digits of the year |
  /// | `YYYY` | the year, without leading zeros |
  ///
  /// The empty format gives the short form of the user's regional settings. The month of a date that is in no calendar may
  /// have no name: it is then empty.
  static SV::String GetFormatedDate(SV::Date const & date, SV::String const & format);

  /// `HH`, `MM` and `SS` give hour, minute and second with two digits, more if there are more hours. The empty format gives
  /// the time with seconds in the form of the user's regional settings.
  static SV::String GetFormatedTime(SV::Time const & time, SV::String const & format);
  /// @}
};

/// A time of day in seconds, and in the form in which the user sees and writes it.
class KIV_API KivTimeFunctions {
public:
  /// \name Seconds
  /// @{

  /// Since midnight; hundredths are dropped.
  static long getTimeInSeconds(SV::Time const & time);

  /// The opposite. Hours go on beyond 23, up to the most that an SV::Time holds, 2146; a larger number becomes the largest
  /// time, a negative one 0.
  static SV::Time setTimeInSeconds(long seconds);

  /// The whole seconds that lie between \p a and \p b; 0 when \p a is the later one.
  static long getDiffTimeInSeconds(SV::Time const & a, SV::Time const & b);
  /// @}

  /// \name The user's form
  /// In 24 hours "HH:MM:SS", up to "24:00:00" for the end of the day. In the American form hours are from 1 to 12, with " AM"
  /// or " PM" after the seconds. There, hours 1 to 12 are AM and 13 to 24 are PM, so that noon is "12:00:00 AM" and midnight
  /// "12:00:00 PM": the two are exchanged.
  /// @{

  /// The time; hours beyond 24, and 24 with minutes, seconds or hundredths, are taken modulo 24.
  static SV::String getTimeInUIRep(SV::Time const & time);

  /// Reads that form, with two digits for each field. The American one may have blanks anywhere and one digit for the hour:
  /// "1:05:00PM". "AM" and "PM" are case-sensitive, and "12:00:00 PM" gives 0 hours, not 24.
  /// \return false for any other text and for a time that does not exist; \p time is then unchanged
  static bool setTimeInUIRep(SV::String const & text, SV::Time & time);

  /// Which of the two it is, for the whole process; at first 24 hours.
  static void SetAmericanTimeFormat(bool american);
  static bool IsAmericanTimeFormat();
  /// @}

private:
  static bool bAmericanTimeFormat;
};

/// A date that is read from "YYYY:MM:DD", for the years 1 to 9999.
class KIV_API KivCoreDate : public SV::Date {
public:
  /// The date of the text. A null pointer, another form or a day that does not exist gives today; ask IsValidString first.
  KivCoreDate(char const * text);

  static bool IsValidString(char const * text); ///< false for null

  /// As the user writes it, by the regional settings.
  /// \param longForm  true: the long form, with four digits of the year and, where the settings have them, names. False: the
  ///                  short form
  SV::String GetDisplayString(bool longForm) const;

protected:
  /// \param out  set to the date of a valid text, otherwise unchanged; may be null
  /// \return whether the text is valid
  static bool _ImpParse(char const * text, SV::Date * out);
};

/// A date with a time of day that is read from "YYYY:MM:DD HH:MM:SS".
class KIV_API KivCoreDateTime : public SV::Date, public SV::Time {
public:
  /// The moment of the text, with the current hundredth of a second; the current moment when the text is not valid.
  KivCoreDateTime(char const * text);

  static bool IsValidString(char const * text); ///< false for null

  /// The date as KivCoreDate gives it, a blank, and the time with its seconds.
  SV::String GetDisplayString(bool longForm) const;

protected:
  /// \param date, time  each set if the text is valid, otherwise unchanged; each may be null
  static bool _ImpParse(char const * text, SV::Date * date, SV::Time * time);
};
