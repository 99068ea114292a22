// Answers that the system hardly ever gives: its part is played by the test.
#include "ainter.hpp"

#include "acmdline.hpp"
#include "frame/language.hpp"
#include "locale/ainter_state.hpp"
#include "support/imports/import_hook.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <map>
#include <new>
#include <string>
#include <vector>

namespace {

void play(char const * dll, char const * function, void * replacement) {
  support::replaceImports(GetModuleHandleA("kivara.dll"), dll, {{function, replacement}});
}

std::vector<std::string> told;

BOOL WINAPI enumerateWordsToo(LOCALE_ENUMPROCA callback, DWORD) {
  for (char const * const text : {"", "no number", "00000407", "00000409"}) {
    std::string copy(text);
    told.push_back(copy);
    if (!callback(copy.data()))
      break;
  }
  return TRUE;
}

TEST(LanguageLookUp, PassesOverLocalesThatAreNoNumbersAndEndsAtItsFind) {
  play("KERNEL32.dll", "EnumSystemLocalesA", reinterpret_cast<void *>(enumerateWordsToo));
  EXPECT_EQ(KivInternational::GetLanguageIDOfISO639("de"), 1031);
  EXPECT_EQ(told, (std::vector<std::string>{"", "no number", "00000407"}));
  told.clear();
  EXPECT_EQ(KivInternational::GetLanguageIDOfISO639("none such"), 0);
  EXPECT_EQ(told.size(), 4u);
}

/// A system of few locales, each with the facts that the look-ups ask for.
struct PlayedLocale {
  char const * number; ///< as the system enumerates it
  std::map<LCTYPE, std::string> facts;
};
std::vector<PlayedLocale> playedLocales;
DWORD enumerationFlags = 0;
std::vector<LCID> askedLocales;

BOOL WINAPI enumeratePlayed(LOCALE_ENUMPROCA callback, DWORD flags) {
  enumerationFlags = flags;
  for (PlayedLocale const & each : playedLocales) {
    std::string number(each.number);
    if (!callback(number.data()))
      break;
  }
  return TRUE;
}

int WINAPI playedFact(LCID locale, LCTYPE type, char * text, int size) {
  askedLocales.push_back(locale);
  for (PlayedLocale const & each : playedLocales) {
    auto const fact = each.facts.find(type);
    if ((std::strtoul(each.number, nullptr, 16) & 0xFFFF) != locale || fact == each.facts.end())
      continue;
    if (size != 0)
      std::strcpy(text, fact->second.c_str());
    return static_cast<int>(fact->second.size()) + 1;
  }
  return 0;
}

void playLocales(std::vector<PlayedLocale> const & locales) {
  playedLocales = locales;
  play("KERNEL32.dll", "EnumSystemLocalesA", reinterpret_cast<void *>(enumeratePlayed));
  play("KERNEL32.dll", "GetLocaleInfoA", reinterpret_cast<void *>(playedFact));
}

TEST(LanguageLookUp, AsksForTheSupportedLocalesAndNotOnlyForTheInstalledOnes) {
  playLocales({});
  using LookUp = unsigned short (*)(SV::String const &);
  for (LookUp const find :
       {KivInternational::GetLanguageIDOfNativeLanguageName, KivInternational::GetLanguageIDOfNativeCountryName,
        KivInternational::GetLanguageIDOfEnglishLanguageName, KivInternational::GetLanguageIDOfEnglishCountryName,
        KivInternational::GetLanguageIDOfISO639}) {
    enumerationFlags = 0;
    find("any");
    EXPECT_EQ(enumerationFlags, DWORD{LCID_SUPPORTED});
  }
}

DWORD validityFlags = 0;

TEST(LanguageIdentifier, IsValidWhenItsLocaleIsSupportedAndNotOnlyWhenItIsInstalled) {
  play("KERNEL32.dll", "IsValidLocale", reinterpret_cast<void *>(+[](LCID, DWORD flags) -> BOOL {
         validityFlags = flags;
         return TRUE;
       }));
  EXPECT_TRUE(KivInternational::IsValidLanguageID(1031));
  EXPECT_EQ(validityFlags, DWORD{LCID_SUPPORTED});
}

// The high bits of a locale say how its language is sorted.
TEST(LanguageLookUp, TakesTheLow16BitsOfALocale) {
  playLocales({{"00010407", {{LOCALE_SENGLANGUAGE, "German"}}}, {"00020C04", {{LOCALE_SENGLANGUAGE, "Chinese"}}}});
  EXPECT_EQ(KivInternational::GetLanguageIDOfEnglishLanguageName("German"), 0x407);
  EXPECT_EQ(KivInternational::GetLanguageIDOfEnglishLanguageName("Chinese"), 0xC04) << "no code, so its own identifier";
  for (LCID const locale : askedLocales)
    EXPECT_LT(locale, 0x10000u);
}

// One word may be the name of one language and the code of another.
TEST(LanguageChoice, TakesTheValueForANameBeforeItTakesItForACode) {
  std::vector<PlayedLocale> const locales = {{"00000001", {{LOCALE_SENGCOUNTRY, "xy"}}},
                                             {"00000002", {{LOCALE_SISO639LANGNAME, "xy"}}},
                                             {"00000003", {{LOCALE_SENGLANGUAGE, "xy"}}},
                                             {"00000004", {{LOCALE_SNATIVECTRYNAME, "xy"}}},
                                             {"00000005", {{LOCALE_SNATIVELANGNAME, "xy"}}}};
  char program[] = "program";
  char option[] = "-langxy";
  char * arguments[] = {program, option, nullptr};
  KivCmdline::init(2, arguments, false, "");
  for (std::size_t left = locales.size(); left > 1; --left) {
    playLocales({locales.begin(), locales.begin() + static_cast<std::ptrdiff_t>(left)});
    kivara::chooseLanguage();
    EXPECT_EQ(KivInternational::GetCurrentLanguageID(), left);
  }
  playLocales({locales.front()});
  kivara::chooseLanguage();
  EXPECT_EQ(KivInternational::GetCurrentLanguageID(), 2) << "an English name of a country selects nothing";
}

std::vector<int> sizes;

int WINAPI growBetween(LCID, LCTYPE, char * text, int size) {
  sizes.push_back(size);
  if (text == nullptr)
    return 3;
  SetLastError(ERROR_INSUFFICIENT_BUFFER);
  return 0;
}

TEST(LanguageName, ThatHasGrownBetweenTheQuestionsForItsSizeAndForItselfIsEmpty) {
  play("KERNEL32.dll", "GetLocaleInfoA", reinterpret_cast<void *>(growBetween));
  EXPECT_EQ(KivInternational::GetNativeLanguageName(1031), "");
  EXPECT_EQ(sizes, (std::vector<int>{0, 3}));
}

void throwBadAlloc() { throw std::bad_alloc(); }

TEST(ResourceDLL, WhoseLoadThrowsIsNoLongerBeingLoaded) {
  play("SV0105.dll", "_ZN2SV6ResMgrC1ERKNS_6StringE", reinterpret_cast<void *>(throwBadAlloc));
  EXPECT_THROW(KivInternational::createResourceManager("texts", true), std::bad_alloc);
  EXPECT_FALSE(kivara::loadingResourceFile) << "a severe exception of the program would be taken for one of this load";
  EXPECT_EQ(KivInternational::getNextResMgr(), nullptr);
  EXPECT_FALSE(KivInternational::errorLoadingResourceFiles());
}

} // namespace
