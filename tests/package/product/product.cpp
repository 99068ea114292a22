#include "ainter.hpp"
#include "amlstr.hpp"

#include <cstdio>

/// Prints the languages, and under which identifier a word is known in any of them.
int main() {
  KivInternational::InitAvailableLanguages();
  Kiv_InitializeMultiLanguageStrings();
  for (unsigned short const language : KivInternational::GetAvailableLanguages())
    std::printf("%d ", language);
  std::printf("milestone %d, activity %d\n", Kiv_MultiLangFindResId("milestone"), Kiv_MultiLangFindResId("activity"));
}
