#pragma once
/// \file
/// All facts of the namespace Locale by the system's own names, for tests.

#include "alocale.hpp"
#include "tools/winapi.hpp"

#include <string>
#include <type_traits>

namespace kivtest {

enum class Form { Number, Fixed, Sized };

/// A function, and what it has to return by the system's own names.
struct Fact {
  char const * name;
  Form form;
  LCTYPE type;
  int size; ///< of the buffer with the NUL; 0: any
  std::string (*told)();
};

template <class Result> std::string told(Result number) {
  return std::to_string(static_cast<unsigned long>(number)); // NOLINT(bugprone-signed-char-misuse)
}
inline std::string told(SV::String const & text) { return {text.c_str(), static_cast<std::size_t>(text.Len())}; }

#define NUMBER(result, function, type, size)                                                                           \
  Fact {                                                                                                               \
#function, Form::Number, type, size, [] {                                                                       \
         static_assert(std::is_same_v<decltype(Locale::function()), result>);                                          \
         return told(Locale::function());                                                                              \
       }      \
  }
#define FIXED(function, type, size)                                                                                    \
  Fact {                                                                                                               \
#function, Form::Fixed, type, size, [] { return told(Locale::function()); }                                        \
  }
#define SIZED(function, type)                                                                                          \
  Fact {                                                                                                               \
#function, Form::Sized, type, 0, [] { return told(Locale::function()); }                                           \
  }

// clang-format off
inline Fact const kFacts[] = {
  SIZED(Kiv_GetDayName1, LOCALE_SDAYNAME1),
  SIZED(Kiv_GetDayName2, LOCALE_SDAYNAME2),
  SIZED(Kiv_GetDayName3, LOCALE_SDAYNAME3),
  SIZED(Kiv_GetDayName4, LOCALE_SDAYNAME4),
  SIZED(Kiv_GetDayName5, LOCALE_SDAYNAME5),
  SIZED(Kiv_GetDayName6, LOCALE_SDAYNAME6),
  SIZED(Kiv_GetDayName7, LOCALE_SDAYNAME7),
  SIZED(Kiv_GetAbbreviatedDayName1, LOCALE_SABBREVDAYNAME1),
  SIZED(Kiv_GetAbbreviatedDayName2, LOCALE_SABBREVDAYNAME2),
  SIZED(Kiv_GetAbbreviatedDayName3, LOCALE_SABBREVDAYNAME3),
  SIZED(Kiv_GetAbbreviatedDayName4, LOCALE_SABBREVDAYNAME4),
  SIZED(Kiv_GetAbbreviatedDayName5, LOCALE_SABBREVDAYNAME5),
  SIZED(Kiv_GetAbbreviatedDayName6, LOCALE_SABBREVDAYNAME6),
  SIZED(Kiv_GetAbbreviatedDayName7, LOCALE_SABBREVDAYNAME7),
  SIZED(Kiv_GetMonthName1, LOCALE_SMONTHNAME1),
  SIZED(Kiv_GetMonthName2, LOCALE_SMONTHNAME2),
  SIZED(Kiv_GetMonthName3, LOCALE_SMONTHNAME3),
  SIZED(Kiv_GetMonthName4, LOCALE_SMONTHNAME4),
  SIZED(Kiv_GetMonthName5, LOCALE_SMONTHNAME5),
  SIZED(Kiv_GetMonthName6, LOCALE_SMONTHNAME6),
  SIZED(Kiv_GetMonthName7, LOCALE_SMONTHNAME7),
  SIZED(Kiv_GetMonthName8, LOCALE_SMONTHNAME8),
  SIZED(Kiv_GetMonthName9, LOCALE_SMONTHNAME9),
  SIZED(Kiv_GetMonthName10, LOCALE_SMONTHNAME10),
  SIZED(Kiv_GetMonthName11, LOCALE_SMONTHNAME11),
  SIZED(Kiv_GetMonthName12, LOCALE_SMONTHNAME12),
  SIZED(Kiv_GetMonthName13, LOCALE_SMONTHNAME13),
  SIZED(Kiv_GetAbbreviatedMonthName1, LOCALE_SABBREVMONTHNAME1),
  SIZED(Kiv_GetAbbreviatedMonthName2, LOCALE_SABBREVMONTHNAME2),
  SIZED(Kiv_GetAbbreviatedMonthName3, LOCALE_SABBREVMONTHNAME3),
  SIZED(Kiv_GetAbbreviatedMonthName4, LOCALE_SABBREVMONTHNAME4),
  SIZED(Kiv_GetAbbreviatedMonthName5, LOCALE_SABBREVMONTHNAME5),
  SIZED(Kiv_GetAbbreviatedMonthName6, LOCALE_SABBREVMONTHNAME6),
  SIZED(Kiv_GetAbbreviatedMonthName7, LOCALE_SABBREVMONTHNAME7),
  SIZED(Kiv_GetAbbreviatedMonthName8, LOCALE_SABBREVMONTHNAME8),
  SIZED(Kiv_GetAbbreviatedMonthName9, LOCALE_SABBREVMONTHNAME9),
  SIZED(Kiv_GetAbbreviatedMonthName10, LOCALE_SABBREVMONTHNAME10),
  SIZED(Kiv_GetAbbreviatedMonthName11, LOCALE_SABBREVMONTHNAME11),
  SIZED(Kiv_GetAbbreviatedMonthName12, LOCALE_SABBREVMONTHNAME12),
  SIZED(Kiv_GetAbbreviatedMonthName13, LOCALE_SABBREVMONTHNAME13),
  NUMBER(KivCalendarType, Kiv_GetCalendarType, LOCALE_ICALENDARTYPE, 2),
  NUMBER(KivCenturyType, Kiv_GetCenturyType, LOCALE_ICENTURY, 2),
  NUMBER(unsigned long, Kiv_GetCountryCode, LOCALE_ICOUNTRY, 6),
  NUMBER(unsigned long, Kiv_GetCurrencyFractionalDigits, LOCALE_ICURRDIGITS, 3),
  NUMBER(KivCurrencyType, Kiv_GetCurrencyType, LOCALE_ICURRENCY, 2),
  NUMBER(KivDateType, Kiv_GetDateType, LOCALE_IDATE, 2),
  NUMBER(KivDayLeadingZeroType, Kiv_GetDayLeadingZeroType, LOCALE_IDAYLZERO, 2),
  NUMBER(unsigned long, Kiv_GetDefaultANSICodepage, LOCALE_IDEFAULTANSICODEPAGE, 6),
  NUMBER(unsigned long, Kiv_GetDefaultCodepage, LOCALE_IDEFAULTCODEPAGE, 6),
  NUMBER(unsigned long, Kiv_GetDefaultCountry, LOCALE_IDEFAULTCOUNTRY, 6),
  NUMBER(unsigned long, Kiv_GetDefaultEBCDICCodepage, LOCALE_IDEFAULTEBCDICCODEPAGE, 6),
  NUMBER(unsigned long, Kiv_GetDefaultLanguage, LOCALE_IDEFAULTLANGUAGE, 5),
  NUMBER(unsigned long, Kiv_GetDefaultMacCodepage, LOCALE_IDEFAULTMACCODEPAGE, 6),
  NUMBER(unsigned long, Kiv_GetFractionalDigits, LOCALE_IDIGITS, 2),
  NUMBER(KivFirstDayOfWeekType, Kiv_GetFirstDayOfWeekType, LOCALE_IFIRSTDAYOFWEEK, 2),
  NUMBER(KivFirstWeekOfYearType, Kiv_GetFirstWeekOfYearType, LOCALE_IFIRSTWEEKOFYEAR, 2),
  NUMBER(unsigned long, Kiv_GetInternationalCurrencyFractionalDigits, LOCALE_IINTLCURRDIGITS, 3),
  NUMBER(unsigned long, Kiv_GetLanguage, LOCALE_ILANGUAGE, 5),
  NUMBER(KivLongDateType, Kiv_GetLongDateType, LOCALE_ILDATE, 2),
  NUMBER(KivDecimalLeadingZeroType, Kiv_GetDecimalLeadingZeroType, LOCALE_ILZERO, 2),
  NUMBER(unsigned long, Kiv_GetMeasureType, LOCALE_IMEASURE, 2),
  NUMBER(KivMonthLeadingZeroType, Kiv_GetMonthLeadingZeroType, LOCALE_IMONLZERO, 2),
  NUMBER(KivNegativeCurrencyType, Kiv_GetNegativeCurrencyType, LOCALE_INEGCURR, 3),
  NUMBER(KivNegativeNumberType, Kiv_GetNegativeNumberType, LOCALE_INEGNUMBER, 2),
  NUMBER(bool, Kiv_GetSeparationOfNegativeSignInMonetaryValue, LOCALE_INEGSEPBYSPACE, 2),
  NUMBER(KivNegativeSignInCurrencyType, Kiv_GetNegativeSignInCurrencyType, LOCALE_INEGSIGNPOSN, 2),
  NUMBER(bool, Kiv_GetMonetarySymbolPrecedesNegativeAmount, LOCALE_INEGSYMPRECEDES, 2),
  NUMBER(KivOptionalCalendarType, Kiv_GetFirstOptionalCalendarType, LOCALE_IOPTIONALCALENDAR, 3),
  NUMBER(KivPaperSizeType, Kiv_GetPaperSizeType, LOCALE_IPAPERSIZE, 3),
  NUMBER(bool, Kiv_GetSeparationOfMonetarySymbolInPositiveValue, LOCALE_IPOSSEPBYSPACE, 2),
  NUMBER(KivPositiveSignInCurrencyType, Kiv_GetPositiveSignInCurrencyType, LOCALE_IPOSSIGNPOSN, 2),
  NUMBER(bool, Kiv_GetMonetarySymbolPrecedesPositiveAmount, LOCALE_IPOSSYMPRECEDES, 2),
  NUMBER(KivTimeFormatType, Kiv_GetTimeFormatType, LOCALE_ITIME, 2),
  NUMBER(KivTimeLeadingZeroType, Kiv_GetTimeLeadingZeroType, LOCALE_ITLZERO, 2),
  FIXED(Kiv_GetAMDesignator, LOCALE_S1159, 9),
  FIXED(Kiv_GetPMDesignator, LOCALE_S2359, 9),
  SIZED(Kiv_GetAbbreviatedCountryName, LOCALE_SABBREVCTRYNAME),
  SIZED(Kiv_GetAbbreviatedLanguageName, LOCALE_SABBREVLANGNAME),
  SIZED(Kiv_GetCountryName, LOCALE_SCOUNTRY),
  FIXED(Kiv_GetCurrencyName, LOCALE_SCURRENCY, 6),
  FIXED(Kiv_GetDateSeparator, LOCALE_SCURRENCY, 4),
  FIXED(Kiv_GetDecimalSeparator, LOCALE_SDECIMAL, 4),
  SIZED(Kiv_GetCountryEnglishName, LOCALE_SENGCOUNTRY),
  SIZED(Kiv_GetCurrencyEnglishName, LOCALE_SENGCURRNAME),
  SIZED(Kiv_GetLanguageEnglishName, LOCALE_SENGLANGUAGE),
  SIZED(Kiv_GetDecimalGrouping, LOCALE_SGROUPING),
  SIZED(Kiv_GetInternationalMonetarySymbol, LOCALE_SINTLSYMBOL),
  SIZED(Kiv_GetISO3166CountryName, LOCALE_SISO3166CTRYNAME),
  SIZED(Kiv_GetISO639LanguageName, LOCALE_SISO639LANGNAME),
  SIZED(Kiv_GetLanguageName, LOCALE_SLANGUAGE),
  FIXED(Kiv_GetListSeparator, LOCALE_SLIST, 4),
  FIXED(Kiv_GetLongDateFormat, LOCALE_SLONGDATE, 80),
  FIXED(Kiv_GetMonetaryDecimalSeparator, LOCALE_SMONDECIMALSEP, 4),
  FIXED(Kiv_GetMonetaryGrouping, LOCALE_SMONGROUPING, 4),
  FIXED(Kiv_GetMonetaryThousandSeparator, LOCALE_SMONTHOUSANDSEP, 4),
  SIZED(Kiv_GetNativeCountryName, LOCALE_SNATIVECTRYNAME),
  SIZED(Kiv_GetNativeCurrencyName, LOCALE_SNATIVECURRNAME),
  SIZED(Kiv_GetNativeDigits, LOCALE_SNATIVEDIGITS),
  SIZED(Kiv_GetNativeLanguageName, LOCALE_SNATIVELANGNAME),
  FIXED(Kiv_GetNegativeSign, LOCALE_SNEGATIVESIGN, 5),
  FIXED(Kiv_GetPositiveSign, LOCALE_SPOSITIVESIGN, 5),
  FIXED(Kiv_GetShortDateFormat, LOCALE_SSHORTDATE, 80),
  FIXED(Kiv_GetSortName, LOCALE_SSORTNAME, 4),
  FIXED(Kiv_GetThousandGroupSeparator, LOCALE_STHOUSAND, 4),
  FIXED(Kiv_GetTimeSeparator, LOCALE_STIME, 4),
  FIXED(Kiv_GetTimeFormat, LOCALE_STIMEFORMAT, 80),
  FIXED(Kiv_GetYearMonthFormat, LOCALE_SYEARMONTH, 80),
  NUMBER(KivTimeMarkerPositionType, Kiv_GetTimeMarkerPositionType, LOCALE_ITIMEMARKPOSN, 2),
};
// clang-format on

/// Whether the number of a fact is returned as a bool.
inline bool isYesOrNo(Fact const & fact) {
  return fact.type >= LOCALE_IPOSSYMPRECEDES && fact.type <= LOCALE_INEGSEPBYSPACE;
}

#undef NUMBER
#undef FIXED
#undef SIZED

} // namespace kivtest
