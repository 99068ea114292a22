#include "locale/language_run.hpp"

#include "frame/product_run.hpp"
#include "support/data/files.hpp"
#include "support/processes/child_process.hpp"
#include "support/windows/windows.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace {

/// Look-ups in these texts of English (2057) and German (1031); French is installed and has no file.
class WordFolder : public LanguageFolder {
public:
  WordFolder() {
    write("lang.ini", "2057\n1031\n1036\n");
    write(
        "language\\2057\\kivml.dll",
        packedTexts(
            {{1, "abc"}, {2, "same"}, {3, "same"}, {3, "dropped"}, {4, "x"}, {6, "only"}, {7, "same"}, {11, "twin"}}));
    write("language\\1031\\kivml.dll", packedTexts({{1, "ab"},
                                                    {2, "same"},
                                                    {4, "y"},
                                                    {9, "same"},
                                                    {0x10005, "high bits"},
                                                    {10, std::string("nul\0x", 5)},
                                                    {11, std::string("twin\0x", 6)}}));
  }
};

struct LookUp {
  char const * step;
  char const * result; ///< result, length; the length is -1 where none is given
};
std::ostream & operator<<(std::ostream & out, LookUp const & row) { return out << row.step; }

class WordLookUp : public testing::TestWithParam<LookUp> {};
TEST_P(WordLookUp, GoesThroughTheLanguagesInTheirOrder) {
  std::string const step = GetParam().step;
  EXPECT_EQ(WordFolder().facts(step).at(step.substr(0, step.find(' '))), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(
    Equals, WordLookUp,
    testing::Values(LookUp{"equals 1 ab", "1, 2"}, LookUp{"equals 1 abc", "1, 3"}, LookUp{"equals 1 abcd", "0, -1"},
                    LookUp{"equals 1 AB", "0, -1"}, LookUp{"equals 1 a", "0, -1"}, LookUp{"equals 2 same", "1, 4"},
                    LookUp{"equals 6 only", "1, 4"}, LookUp{"equals 8 only", "0, -1"},
                    // Both are equal up to the NUL: the lower language's length shows which it was.
                    LookUp{"equals 11 twin", "1, 6"}));
INSTANTIATE_TEST_SUITE_P(StartsWith, WordLookUp,
                         testing::Values(LookUp{"starts 1 abcd", "1, 2"}, LookUp{"starts 1 ab", "1, 2"},
                                         LookUp{"starts 1 a", "0, -1"}, LookUp{"starts 6 only one", "1, 4"},
                                         LookUp{"starts 8 only", "0, -1"}));
INSTANTIATE_TEST_SUITE_P(SearchForAny, WordLookUp,
                         testing::Values(LookUp{"search 1 ...abc", "3, 2"}, // of two at one place the lower language's
                                         LookUp{"search 4 ..x.y", "2, 1"},  // the earlier place
                                         LookUp{"search 4 ..y.x", "2, 1"},
                                         LookUp{"search 1 nothing",
                                                "2147483647, 3"}, // the length of the last language's text
                                         LookUp{"search 8 nothing", "2147483647, -1"}));
INSTANTIATE_TEST_SUITE_P(FindResId, WordLookUp,
                         testing::Values(LookUp{"find same", "7, -1"}, // the highest of the highest language
                                         LookUp{"find ab", "1, -1"}, LookUp{"find dropped", "0, -1"},
                                         LookUp{"find nothing", "0, -1"}, LookUp{"find y", "4, -1"},
                                         // A String knows its length, a pointer ends at the NUL.
                                         LookUp{"find nul", "0, -1, but not for a pointer"}));

struct Get {
  char const * step;
  char const * text;
};
std::ostream & operator<<(std::ostream & out, Get const & row) { return out << row.step; }

class WordGet : public testing::TestWithParam<Get> {};
TEST_P(WordGet, AsksOneLanguageAlone) { EXPECT_EQ(WordFolder().facts(GetParam().step).at("get"), GetParam().text); }
INSTANTIATE_TEST_SUITE_P(Languages, WordGet,
                         testing::Values(Get{"get 1 2057", "abc"}, Get{"get 1 1031", "ab"}, Get{"get 6 1031", ""},
                                         Get{"get 3 2057", "same"}, // the first record of an identifier stays
                                         Get{"get 5 1031", "high bits"}, Get{"get 1 1036", ""}, Get{"get 1 9999", ""}));

TEST(Words, OfALanguageWithoutAFileAreEmptyAndTheOthersStillMatch) {
  auto const facts = WordFolder().facts("get 1 1036|equals 1 abc");
  EXPECT_EQ(facts.at("get"), "");
  EXPECT_EQ(facts.at("equals"), "1, 3");
}

TEST(Words, AskedOfAnUnknownLanguageMakeAnEmptyTableThatFindsNothing) {
  EXPECT_EQ(WordFolder().facts("get 1 9|search 1 abc").at("search"), "0, 2");
}

TEST(Words, AreGoneAfterTheEndAndBackAfterANewStart) {
  auto const gone = WordFolder().facts("drop|get 1 2057|equals 1 abc|starts 1 abc|search 1 abc|find abc");
  EXPECT_EQ(gone.at("get"), "");
  EXPECT_EQ(gone.at("equals"), "0, -1");
  EXPECT_EQ(gone.at("starts"), "0, -1");
  EXPECT_EQ(gone.at("search"), "2147483647, -1");
  EXPECT_EQ(gone.at("find"), "0, -1");
  EXPECT_EQ(WordFolder().facts("drop|load|get 1 2057").at("get"), "abc");
}

TEST(Words, StayWhenTheLanguageChanges) { EXPECT_EQ(WordFolder().facts("set 1031|get 1 2057").at("get"), "abc"); }

TEST(Words, AreThereWhateverTheOptionOfTheLanguageSays) {
  for (char const * const option : {"-lang1031", "-lang9999", "-langGermany"})
    EXPECT_EQ(WordFolder().facts("get 1 2057", option).at("get"), "abc") << option;
}

TEST(Words, WithoutAPlaceForTheLengthAndWithoutATextAreStillLookedUp) {
  auto const facts = WordFolder().facts("nulls 1 abc");
  EXPECT_EQ(facts.at("nulls"), "1111, 0, 000");
  EXPECT_EQ(WordFolder().facts("nulls 1 xab").at("nulls"), "0000, 1, 000");
}

TEST(Words, AreSharedWithTheTable) { EXPECT_EQ(WordFolder().facts("shared 1 2057").at("shared"), "1"); }

TEST(Words, ThatBeginWithANulAreFoundAtTheStartOfEveryText) {
  WordFolder folder;
  folder.write("language\\1031\\kivml.dll", packedTexts({{1, std::string(1, '\0')}}));
  folder.write("language\\2057\\kivml.dll", packedTexts({{1, "abc"}}));
  EXPECT_EQ(folder.facts("search 1 xabc").at("search"), "0, 1");
}

/// A file that a table is cut or empty after.
struct BadFile {
  char const * name;
  std::string bytes;
  char const * first;
  char const * second;
};
std::ostream & operator<<(std::ostream & out, BadFile const & row) { return out << row.name; }

std::string const kGood = packedTexts({{1, "one"}, {2, "two"}});

std::string with(std::size_t position, char byte) {
  std::string bytes = kGood;
  bytes[position] = byte;
  return bytes;
}

class WordFile : public testing::TestWithParam<BadFile> {};
TEST_P(WordFile, ThatIsBadGivesWhatPrecedesTheFault) {
  WordFolder folder;
  folder.write("language\\2057\\kivml.dll", GetParam().bytes);
  auto const result = support::runProgram(folder.start("get 1 2057|find two|get 2 2057"));
  EXPECT_EQ(result.exitCode, 5u);
  auto const facts = factsOf(result.output);
  EXPECT_EQ(facts.at("get"), GetParam().second);
  EXPECT_EQ(factsOf(support::runProgram(folder.start("get 1 2057")).output).at("get"), GetParam().first);
}
INSTANTIATE_TEST_SUITE_P(Faults, WordFile,
                         testing::Values(BadFile{"empty", "", "", ""},
                                         BadFile{"short head", kGood.substr(0, 6), "", ""},
                                         BadFile{"bad magic", with(0, 0x1C), "", ""},
                                         BadFile{"bad version", with(6, 4), "", ""},
                                         BadFile{"no end record", kGood.substr(0, kGood.size() - 4), "one", "two"},
                                         BadFile{"cut text", kGood.substr(0, kGood.size() - 6), "one", ""},
                                         BadFile{"cut identifier", kGood.substr(0, 8 + 6), "", ""},
                                         BadFile{"length beyond the end", with(8 + 11, 100), "one", ""},
                                         BadFile{"length of 4 GB", with(8 + 3, static_cast<char>(0xFF)), "", ""},
                                         BadFile{"bytes behind the end", kGood + "more", "one", "two"}));

TEST(LanguageFiles, AreClosedWhileTheProgramRuns) {
  WordFolder folder;
  folder.addPack("language\\2057\\kivara72.dll", "language\\2057\\texts72.dll");
  folder.write("language\\1036\\kivml.dll", kGood.substr(0, 6)); // one that is given up
  ProductRun run(folder.start("create texts 1|run|window|wait"));
  HWND const window = support::waitForWindow({.processId = run.child().processId(), .title = "Languages"});
  ASSERT_NE(window, nullptr);
  for (std::string const name :
       {"lang.ini", "language\\2057\\kivml.dll", "language\\1031\\kivml.dll", "language\\1036\\kivml.dll"})
    EXPECT_NO_THROW(support::FileInUse(folder.path() + '\\' + name)) << name;
  support::closeWindow(window);
  EXPECT_EQ(run.exitCode(), 0u);
}

} // namespace
