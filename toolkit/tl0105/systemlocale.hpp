#pragma once
/// \file
/// The system's locales: choosing one, reading its settings, formatting dates and times.

#include "tools/international.hpp"
#include "tools/winapi.hpp"

#include <string>

namespace SV::systemlocale {

/// The locale of a country and a language. A value that is 0 or unknown to the system counts as the user's.
LCID find(CountryType country, LanguageType language);

/// A setting of the locale; empty if it has none.
std::wstring fact(LCID locale, LCTYPE type);

/// The date or time in a picture; empty if the system rejects the values.
std::wstring date(LCID locale, SYSTEMTIME const & day, std::wstring const & picture);
std::wstring time(LCID locale, SYSTEMTIME const & moment, std::wstring const & picture);

/// Whether the system's code page has every character of the text.
bool isInCodePage(std::wstring const & text);

/// The text in the system's code page, without leading and trailing blanks.
String narrow(std::wstring const & text);

} // namespace SV::systemlocale
