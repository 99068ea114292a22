#include "ainter.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using SV::String;

/// The identifiers of all supported locales, in the order of the system.
std::vector<LCID> & enumerated() {
  static std::vector<LCID> locales;
  return locales;
}

std::vector<LCID> const & systemLocales() {
  if (enumerated().empty())
    EnumSystemLocalesA(
        [](char * text) -> BOOL {
          enumerated().push_back(static_cast<LCID>(std::strtoul(text, nullptr, 16)) & 0xFFFF);
          return TRUE;
        },
        LCID_SUPPORTED);
  return enumerated();
}

std::string info(LCID locale, LCTYPE type) {
  char text[1000] = "";
  GetLocaleInfoA(locale, type, text, sizeof text);
  return text;
}

std::map<std::string, unsigned short> const kShipped{
    {"ar", 0x401}, {"de", 0x407},  {"en", 0x809}, {"es", 0x40A}, {"fr", 0x40C}, {"hr", 0x41A}, {"it", 0x410},
    {"nl", 0x413}, {"se", 0x1C3B}, {"sr", 0x81A}, {"sv", 0x41D}, {"uz", 0x443}, {"zh", 0x804}};

unsigned short shipped(std::string const & code, LCID otherwise) {
  auto const row = kShipped.find(code);
  return row != kShipped.end() ? row->second : static_cast<unsigned short>(otherwise);
}

/// The first locale whose fact is this text in any case, or 0.
LCID firstWith(LCTYPE type, std::string const & text) {
  for (LCID const locale : systemLocales())
    if (_stricmp(info(locale, type).c_str(), text.c_str()) == 0)
      return locale;
  return 0;
}

struct LookUp {
  char const * name;
  LCTYPE type;
  unsigned short (*find)(String const &);
};
std::ostream & operator<<(std::ostream & out, LookUp const & row) { return out << row.name; }

class LanguageByName : public testing::TestWithParam<LookUp> {};

TEST_P(LanguageByName, IsThatOfTheFirstLocaleFoldedIntoTheShippedOne) {
  ASSERT_GT(systemLocales().size(), 50u);
  auto const precedes = [](std::string const & a, std::string const & b) { return _stricmp(a.c_str(), b.c_str()) < 0; };
  std::map<std::string, unsigned short, decltype(precedes)> expected(precedes);
  for (LCID const locale : systemLocales())
    expected.try_emplace(info(locale, GetParam().type), shipped(info(locale, LOCALE_SISO639LANGNAME), locale));
  for (auto const & [name, id] : expected)
    EXPECT_EQ(GetParam().find(name.c_str()), id) << name;
}

TEST_P(LanguageByName, IsFoundInAnyCaseAndNotByPartOfTheName) {
  std::string name = info(1031, GetParam().type);
  std::string upper = name;
  CharUpperA(upper.data());
  EXPECT_EQ(GetParam().find(upper.c_str()), GetParam().find(name.c_str()));
  EXPECT_NE(GetParam().find(name.c_str()), 0);
  EXPECT_EQ(GetParam().find((name + "x").c_str()), 0);
  EXPECT_EQ(GetParam().find("no such name"), 0);
  EXPECT_EQ(GetParam().find(String()), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Names, LanguageByName,
    testing::Values(
        LookUp{"native language", LOCALE_SNATIVELANGNAME, KivInternational::GetLanguageIDOfNativeLanguageName},
        LookUp{"native country", LOCALE_SNATIVECTRYNAME, KivInternational::GetLanguageIDOfNativeCountryName},
        LookUp{"English language", LOCALE_SENGLANGUAGE, KivInternational::GetLanguageIDOfEnglishLanguageName},
        LookUp{"English country", LOCALE_SENGCOUNTRY, KivInternational::GetLanguageIDOfEnglishCountryName},
        LookUp{"ISO 639", LOCALE_SISO639LANGNAME, KivInternational::GetLanguageIDOfISO639}));

TEST(LanguageByCode, IsThatOfTheTableForEveryCodeThatTheSystemKnows) {
  for (auto const & [code, id] : kShipped)
    EXPECT_EQ(KivInternational::GetLanguageIDOfISO639(code.c_str()), firstWith(LOCALE_SISO639LANGNAME, code) ? id : 0)
        << code;
  EXPECT_EQ(KivInternational::GetLanguageIDOfISO639("de"), 1031);
  EXPECT_EQ(KivInternational::GetLanguageIDOfISO639("en"), 2057);
}

TEST(LanguageOfARegion, IsTheShippedOne) {
  EXPECT_EQ(KivInternational::GetLanguageIDOfEnglishLanguageName("German"), 1031);
  EXPECT_EQ(KivInternational::GetLanguageIDOfEnglishCountryName("Austria"), 1031);
  EXPECT_EQ(KivInternational::GetLanguageIDOfEnglishCountryName("Ireland"),
            shipped(info(firstWith(LOCALE_SENGCOUNTRY, "Ireland"), LOCALE_SISO639LANGNAME), 0));
}

TEST(LanguageManager, IsMadeOnlyByItselfButMayBeCopied) {
  EXPECT_FALSE(std::is_default_constructible_v<KivInternational>);
  EXPECT_TRUE(std::is_copy_constructible_v<KivInternational>);
  EXPECT_TRUE(std::is_copy_assignable_v<KivInternational>);
  EXPECT_TRUE(std::is_destructible_v<KivInternational>);
  EXPECT_FALSE(std::is_polymorphic_v<KivInternational>);
}

TEST(Language, IsValidWhenTheSystemSupportsIt) {
  for (unsigned const id : {0u, 1u, 1031u, 2057u, 1036u, 4711u, 9999u, 0xFFFFu})
    EXPECT_EQ(KivInternational::IsValidLanguageID(static_cast<unsigned short>(id)), IsValidLocale(id, 2) != 0) << id;
}

TEST(Language, HasItsNativeName) {
  EXPECT_EQ(KivInternational::GetNativeLanguageName(1031), info(1031, LOCALE_SNATIVELANGNAME).c_str());
  EXPECT_EQ(KivInternational::GetNativeLanguageName(9999), "");
}

TEST(Language, IsGermanBeforeAnyIsSetAndThereAreNone) {
  EXPECT_EQ(KivInternational::GetCurrentLanguageID(), 1031);
  EXPECT_EQ(KivInternational::GetCurrentWindowsLocaleID(), 1031ul);
  EXPECT_EQ(KivInternational::GetCurrentISOID(), "de");
  EXPECT_TRUE(KivInternational::GetAvailableLanguages().empty());
  EXPECT_FALSE(KivInternational::errorLoadingResourceFiles());
}

} // namespace
