#pragma once
/// \file
/// The user's regional settings, one function for each: names of days and months, separators, formats of numbers, currency,
/// dates and times, code pages, calendar.
///
/// They are the settings of the user, whatever language the program runs in. Nothing is cached, each call asks the system,
/// and any thread may call. No function reports a failure: a number that the system does not give is 0, a string is empty.
///
/// \code
///   SV::String const monday = Locale::Kiv_GetDayName1();
///   if (Locale::Kiv_GetDateType() == KIV_DATE_DAY_MONTH_YEAR) ...
/// \endcode
///
/// The functions are declared from the table in detail/alocale_facts.inc. Some strings have a fixed, small size, such as 3
/// characters for a separator; a longer one is returned empty or cut. Callers rely on these oddities:
/// - Kiv_GetDateSeparator returns the currency symbol, as far as it fits.
/// - Kiv_GetLanguage and Kiv_GetDefaultLanguage read hexadecimal digits as decimal ones: "040c" gives 40.
/// - Kiv_GetSortName has room for 3 characters, so most names are returned empty.
/// - Day 1 is Monday; month 13 is empty in a calendar of 12 months.

#include "export.hpp"
#include "tools/string.hpp"

/// \name Choices
/// The numbers are those of the system. Values without a name here are returned unchanged.
/// @{
enum KivCalendarType : unsigned long {
  KIV_CALENDAR_GREGORIAN = 1,
  KIV_CALENDAR_GREGORIAN_US = 2,
  KIV_CALENDAR_JAPAN = 3,
  KIV_CALENDAR_TAIWAN = 4,
  KIV_CALENDAR_KOREA = 5,
  KIV_CALENDAR_HIJRI = 6,
  KIV_CALENDAR_THAI = 7,
  KIV_CALENDAR_HEBREW = 8
};
enum KivOptionalCalendarType : unsigned long {
  KIV_OPTIONAL_CALENDAR_NONE = 0,
  KIV_OPTIONAL_CALENDAR_GREGORIAN = 1,
  KIV_OPTIONAL_CALENDAR_GREGORIAN_US = 2,
  KIV_OPTIONAL_CALENDAR_JAPAN = 3,
  KIV_OPTIONAL_CALENDAR_TAIWAN = 4,
  KIV_OPTIONAL_CALENDAR_KOREA = 5,
  KIV_OPTIONAL_CALENDAR_HIJRI = 6,
  KIV_OPTIONAL_CALENDAR_THAI = 7,
  KIV_OPTIONAL_CALENDAR_HEBREW = 8
};
/// Years in the short date.
enum KivCenturyType : unsigned long { KIV_CENTURY_TWO_DIGITS = 0, KIV_CENTURY_FOUR_DIGITS = 1 };
/// The position of the currency symbol in a positive amount.
enum KivCurrencyType : unsigned long {
  KIV_CURRENCY_PREFIX = 0,
  KIV_CURRENCY_SUFFIX = 1,
  KIV_CURRENCY_PREFIX_SPACE = 2,
  KIV_CURRENCY_SUFFIX_SPACE = 3
};
/// The order of day, month and year in the short and in the long date.
enum KivDateType : unsigned long {
  KIV_DATE_MONTH_DAY_YEAR = 0,
  KIV_DATE_DAY_MONTH_YEAR = 1,
  KIV_DATE_YEAR_MONTH_DAY = 2
};
enum KivLongDateType : unsigned long {
  KIV_LONG_DATE_MONTH_DAY_YEAR = 0,
  KIV_LONG_DATE_DAY_MONTH_YEAR = 1,
  KIV_LONG_DATE_YEAR_MONTH_DAY = 2
};
/// Leading zeros of days, months, hours, and numbers below 1.
enum KivDayLeadingZeroType : unsigned long { KIV_DAY_NO_LEADING_ZERO = 0, KIV_DAY_LEADING_ZERO = 1 };
enum KivMonthLeadingZeroType : unsigned long { KIV_MONTH_NO_LEADING_ZERO = 0, KIV_MONTH_LEADING_ZERO = 1 };
enum KivTimeLeadingZeroType : unsigned long { KIV_TIME_NO_LEADING_ZERO = 0, KIV_TIME_LEADING_ZERO = 1 };
enum KivDecimalLeadingZeroType : unsigned long { KIV_DECIMAL_NO_LEADING_ZERO = 0, KIV_DECIMAL_LEADING_ZERO = 1 };
enum KivFirstDayOfWeekType : unsigned long {
  KIV_FIRST_DAY_MONDAY = 0,
  KIV_FIRST_DAY_TUESDAY = 1,
  KIV_FIRST_DAY_WEDNESDAY = 2,
  KIV_FIRST_DAY_THURSDAY = 3,
  KIV_FIRST_DAY_FRIDAY = 4,
  KIV_FIRST_DAY_SATURDAY = 5,
  KIV_FIRST_DAY_SUNDAY = 6
};
/// Which week is the first of the year: the one with 1 January, the first full week, or the first with four days.
enum KivFirstWeekOfYearType : unsigned long {
  KIV_FIRST_WEEK_OF_JANUARY_1 = 0,
  KIV_FIRST_WEEK_FULL = 1,
  KIV_FIRST_WEEK_FOUR_DAYS = 2
};
/// The format of a negative amount: 0 is "($1.1)", 1 is "-$1.1", 5 is "-1.1$", 8 is "-1.1 $", up to 15.
enum KivNegativeCurrencyType : unsigned long {
  KIV_NEGATIVE_CURRENCY_PARENTHESES_PREFIX = 0,
  KIV_NEGATIVE_CURRENCY_SIGN_PREFIX = 1,
  KIV_NEGATIVE_CURRENCY_SIGN_SUFFIX = 5,
  KIV_NEGATIVE_CURRENCY_SIGN_SUFFIX_SPACE = 8
};
/// "(1.1)", "-1.1", "- 1.1", "1.1-", "1.1 -".
enum KivNegativeNumberType : unsigned long {
  KIV_NEGATIVE_NUMBER_PARENTHESES = 0,
  KIV_NEGATIVE_NUMBER_SIGN_BEFORE = 1,
  KIV_NEGATIVE_NUMBER_SIGN_SPACE_BEFORE = 2,
  KIV_NEGATIVE_NUMBER_SIGN_BEHIND = 3,
  KIV_NEGATIVE_NUMBER_SPACE_SIGN_BEHIND = 4
};
/// The position of the sign in an amount.
enum KivNegativeSignInCurrencyType : unsigned long {
  KIV_NEGATIVE_SIGN_PARENTHESES = 0,
  KIV_NEGATIVE_SIGN_BEFORE_ALL = 1,
  KIV_NEGATIVE_SIGN_BEHIND_ALL = 2,
  KIV_NEGATIVE_SIGN_BEFORE_SYMBOL = 3,
  KIV_NEGATIVE_SIGN_BEHIND_SYMBOL = 4
};
enum KivPositiveSignInCurrencyType : unsigned long {
  KIV_POSITIVE_SIGN_PARENTHESES = 0,
  KIV_POSITIVE_SIGN_BEFORE_ALL = 1,
  KIV_POSITIVE_SIGN_BEHIND_ALL = 2,
  KIV_POSITIVE_SIGN_BEFORE_SYMBOL = 3,
  KIV_POSITIVE_SIGN_BEHIND_SYMBOL = 4
};
enum KivPaperSizeType : unsigned long { KIV_PAPER_LETTER = 1, KIV_PAPER_LEGAL = 5, KIV_PAPER_A3 = 8, KIV_PAPER_A4 = 9 };
enum KivTimeFormatType : unsigned long { KIV_TIME_12_HOURS = 0, KIV_TIME_24_HOURS = 1 };
/// The position of the AM or PM mark in a time.
enum KivTimeMarkerPositionType : unsigned long { KIV_TIME_MARKER_BEHIND = 0, KIV_TIME_MARKER_BEFORE = 1 };
/// @}

/// The functions; see alocale.hpp.
namespace Locale {

#define KIV_LOCALE_NUMBER(result, name, type, size) KIV_API result name();
#define KIV_LOCALE_FIXED(name, type, size) KIV_API SV::String name();
#define KIV_LOCALE_SIZED(name, type) KIV_API SV::String name();
#include "detail/alocale_facts.inc"

} // namespace Locale
