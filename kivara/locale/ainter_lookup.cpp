// Languages by their names. The system's callback has no argument for data, so the key and the result are process-wide.
#include "ainter.hpp"
#include "locale/localeinfo.hpp"

#include <cstdio>
#include <cstring>

using SV::String;

namespace {

struct ShippedLanguage {
  char const * code;
  unsigned short id;
};

/// The one language that products ship for all regional variants of a code.
constexpr ShippedLanguage kShippedLanguages[] = {
    {"ar", 1025}, {"de", 1031}, {"en", 2057}, {"es", 1034}, {"fr", 1036}, {"hr", 1050}, {"it", 1040},
    {"nl", 1043}, {"se", 7227}, {"sr", 2074}, {"sv", 1053}, {"uz", 1091}, {"zh", 2052},
};

unsigned short shippedLanguage(char const * code, unsigned short otherwise) {
  for (ShippedLanguage const & language : kShippedLanguages)
    if (_stricmp(language.code, code) == 0)
      return language.id;
  return otherwise;
}

char const * lookupKey = "";
unsigned short lookupResult = 0;

unsigned short canonicalLanguage(unsigned short id) {
  String code;
  return kivara::localeInfo(id, LOCALE_SISO639LANGNAME, code) ? shippedLanguage(code.c_str(), id) : id;
}

unsigned short languageOfKey(unsigned short id) { return shippedLanguage(lookupKey, id); }

template <LCTYPE Name, unsigned short (*Result)(unsigned short)> BOOL CALLBACK compareLocale(char * text) {
  unsigned int locale = 0;
  if (std::sscanf(text, "%08X", &locale) != 1)
    return TRUE;
  unsigned short const id = static_cast<unsigned short>(locale);
  String name;
  if (!kivara::localeInfo(id, Name, name) || _stricmp(name.c_str(), lookupKey) != 0)
    return TRUE;
  lookupResult = Result(id);
  return FALSE;
}

template <LCTYPE Name, unsigned short (*Result)(unsigned short)> unsigned short languageNamed(String const & name) {
  lookupKey = name.c_str();
  lookupResult = 0;
  EnumSystemLocalesA(compareLocale<Name, Result>, LCID_SUPPORTED);
  lookupKey = ""; // the caller's string may be gone later
  return lookupResult;
}

} // namespace

unsigned short KivInternational::GetLanguageIDOfNativeLanguageName(String const & name) {
  return languageNamed<LOCALE_SNATIVELANGNAME, canonicalLanguage>(name);
}

unsigned short KivInternational::GetLanguageIDOfNativeCountryName(String const & name) {
  return languageNamed<LOCALE_SNATIVECTRYNAME, canonicalLanguage>(name);
}

unsigned short KivInternational::GetLanguageIDOfEnglishLanguageName(String const & name) {
  return languageNamed<LOCALE_SENGLANGUAGE, canonicalLanguage>(name);
}

unsigned short KivInternational::GetLanguageIDOfEnglishCountryName(String const & name) {
  return languageNamed<LOCALE_SENGCOUNTRY, canonicalLanguage>(name);
}

unsigned short KivInternational::GetLanguageIDOfISO639(String const & code) {
  return languageNamed<LOCALE_SISO639LANGNAME, languageOfKey>(code);
}
