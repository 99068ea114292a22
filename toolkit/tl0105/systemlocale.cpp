#include "systemlocale.hpp"

#include <algorithm>
#include <cstdlib>
#include <tuple>
#include <vector>

namespace SV::systemlocale {
namespace {

/// The result of EnumSystemLocalesW, whose callback has no argument for it.
std::vector<LCID> * listed = nullptr;

BOOL CALLBACK addListed(wchar_t * hexNumber) {
  listed->push_back(std::wcstoul(hexNumber, nullptr, 16));
  return TRUE;
}

std::vector<LCID> installedLocales() {
  std::vector<LCID> locales;
  listed = &locales;
  EnumSystemLocalesW(addListed, LCID_INSTALLED);
  listed = nullptr;
  return locales;
}

unsigned long countryOf(LCID locale) { return std::wcstoul(fact(locale, LOCALE_ICOUNTRY).c_str(), nullptr, 10); }

WORD primaryLanguage(LCID locale) { return PRIMARYLANGID(LANGIDFROMLCID(locale)); }

/// As with German in Germany, the codes of the language and the country are the same.
bool isNamedForItsCountry(LCID locale) {
  return CompareStringOrdinal(fact(locale, LOCALE_SISO639LANGNAME).c_str(), -1,
                              fact(locale, LOCALE_SISO3166CTRYNAME).c_str(), -1, TRUE) == CSTR_EQUAL;
}

/// The order of preference among the locales of one country: the wanted language, then the one named like the country, then
/// low language numbers, which tend to have the most speakers.
bool isPreferred(LCID a, LCID b, WORD wantedLanguage) {
  auto const rank = [wantedLanguage](LCID each) {
    WORD const language = primaryLanguage(each);
    return std::make_tuple(language != wantedLanguage, !isNamedForItsCountry(each), language, each);
  };
  return rank(a) < rank(b);
}

/// The preferred locale of a country; 0 if no locale has its number.
LCID ofCountry(CountryType country, WORD wantedLanguage, bool onlyThatLanguage) {
  LCID best = 0;
  for (LCID const each : installedLocales()) {
    bool const fits = countryOf(each) == country && (!onlyThatLanguage || primaryLanguage(each) == wantedLanguage);
    if (fits && (best == 0 || isPreferred(each, best, wantedLanguage)))
      best = each;
  }
  return best;
}

/// The locale of a language, whatever the country.
LCID ofLanguage(LanguageType language) {
  LCID const locale = ConvertDefaultLocale(MAKELCID(language, SORT_DEFAULT));
  bool const isKnown = language != LANGUAGE_SYSTEM && IsValidLocale(locale, LCID_INSTALLED);
  return isKnown ? locale : LOCALE_USER_DEFAULT;
}

template <class Call> std::wstring sized(Call const & call) {
  int const units = call(nullptr, 0);
  if (units <= 1)
    return {};
  std::wstring text(static_cast<std::size_t>(units), L'\0');
  text.resize(static_cast<std::size_t>(std::max(call(text.data(), units), 1)) - 1);
  return text;
}

} // namespace

LCID find(CountryType country, LanguageType language) {
  LCID const spoken = ofLanguage(language);
  if (country == COUNTRY_SYSTEM || countryOf(spoken) == country)
    return spoken;
  bool const languageIsGiven = spoken != LOCALE_USER_DEFAULT;
  LCID const resident = ofCountry(country, primaryLanguage(ConvertDefaultLocale(spoken)), languageIsGiven);
  return resident != 0 ? resident : spoken;
}

std::wstring fact(LCID locale, LCTYPE type) {
  return sized([=](wchar_t * text, int units) { return GetLocaleInfoW(locale, type, text, units); });
}

std::wstring date(LCID locale, SYSTEMTIME const & day, std::wstring const & picture) {
  return sized(
      [&](wchar_t * text, int units) { return GetDateFormatW(locale, 0, &day, picture.c_str(), text, units); });
}

std::wstring time(LCID locale, SYSTEMTIME const & moment, std::wstring const & picture) {
  return sized(
      [&](wchar_t * text, int units) { return GetTimeFormatW(locale, 0, &moment, picture.c_str(), text, units); });
}

bool isInCodePage(std::wstring const & text) {
  if (GetACP() == CP_UTF8)
    return true;
  BOOL isReplaced = FALSE;
  int const units = static_cast<int>(text.size());
  WideCharToMultiByte(CP_ACP, 0, text.data(), units, nullptr, 0, nullptr, &isReplaced);
  return !isReplaced;
}

String narrow(std::wstring const & text) {
  std::size_t const start = text.find_first_not_of(L' ');
  if (start == std::wstring::npos)
    return String();
  int const units = static_cast<int>(text.find_last_not_of(L' ') + 1 - start);
  int const bytes = WideCharToMultiByte(CP_ACP, 0, text.data() + start, units, nullptr, 0, nullptr, nullptr);
  if (bytes <= 0)
    return String();
  String result = String::ofLength(bytes);
  WideCharToMultiByte(CP_ACP, 0, text.data() + start, units, result.writable(), bytes, nullptr, nullptr);
  return result;
}

} // namespace SV::systemlocale
