#include "ainter.hpp"
#include "locale/language_run.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace {

/// What "-lang" selects; 2057 is the language of the list.
struct Choice {
  char const * value;
  char const * current;
};
std::ostream & operator<<(std::ostream & out, Choice const & row) { return out << row.value; }

class LanguageOption : public testing::TestWithParam<Choice> {};
TEST_P(LanguageOption, SelectsByNumberOrName) {
  LanguageFolder folder;
  folder.write("lang.ini", "2057\n");
  EXPECT_EQ(folder.facts("current", std::string("\"-lang") + GetParam().value + '"').at("current"), GetParam().current);
}
INSTANTIATE_TEST_SUITE_P(Values, LanguageOption,
                         testing::Values(Choice{"", "2057"}, Choice{"1036", "1036"}, Choice{"9999", "9999"},
                                         Choice{"65536", "0"}, Choice{"1031x", "1031"}, Choice{"Deutsch", "1031"},
                                         Choice{"DEUTSCH", "1031"}, Choice{"Deutschland", "1031"},
                                         Choice{"German", "1031"}, Choice{"\xD6sterreich", "1031"},
                                         Choice{"Portugal", "2070"}, Choice{"de", "1031"}, Choice{"DE", "1031"},
                                         Choice{"French", "1036"}, Choice{"zh", "2052"}, Choice{"en", "2057"},
                                         Choice{"Germany", "2057"}, Choice{"nothing", "2057"}, Choice{"0", "2057"}));

TEST(LanguageOptionValue, ThatNamesNoLanguageIsReportedAndKeepsTheLanguage) {
  LanguageFolder folder;
  folder.write("lang.ini", "2057\n");
  EXPECT_TRUE(tells(folder.debugTexts("", "-langGermany"), "[locale] The locale 'Germany' could not be resolved!\n"));
}

// Each is the own name of a language and, for others, the name of a country or the English name.
TEST(LanguageOptionValue, IsALanguagesOwnNameBeforeAllElse) {
  LanguageFolder folder;
  folder.write("lang.ini", "2057\n");
  for (char const * value : {"Indonesia", "Mongolian"}) {
    unsigned short const id = KivInternational::GetLanguageIDOfNativeLanguageName(value);
    unsigned short const country = KivInternational::GetLanguageIDOfNativeCountryName(value);
    unsigned short const english = KivInternational::GetLanguageIDOfEnglishLanguageName(value);
    if (id == 0 || (country == id && english == id))
      GTEST_SKIP() << "this system has other names";
    EXPECT_EQ(folder.facts("current", std::string("-lang") + value).at("current"), std::to_string(id)) << value;
  }
}

} // namespace
