#pragma once
/// \file
/// The system's locales: choosing one, asking for its facts, having it write dates and times.

#include "tools/international.hpp"
#include "tools/winapi.hpp"

#include <string>

namespace SV::systemlocale {

/// The locale of a country and a language; what is 0 or unknown to the system counts as the user's.
LCID find(CountryType country, LanguageType language);

/// A text of the locale; empty where it has none.
std::wstring fact(LCID locale, LCTYPE type);

/// What the locale writes for a picture; empty where the system refuses the values.
std::wstring date(LCID locale, SYSTEMTIME const & day, std::wstring const & picture);
std::wstring time(LCID locale, SYSTEMTIME const & moment, std::wstring const & picture);

/// Whether the system's code page has every character of the text.
bool isInCodePage(std::wstring const & text);

/// The text in the system's code page, without blanks at its ends.
String narrow(std::wstring const & text);

} // namespace SV::systemlocale
