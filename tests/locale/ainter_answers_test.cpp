// Answers that the system hardly ever gives: its part is played by the test.
#include "ainter.hpp"

#include "locale/ainter_state.hpp"
#include "support/import_hook.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

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
