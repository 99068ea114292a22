#include "frame/arguments.hpp"

#include "support/data/damage.hpp"
#include "support/memory/allocation.hpp"
#include "support/processes/child_process.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>
#include <shellapi.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <vector>

using kivara::readPrinterSwitches;
using kivara::splitCommandLine;

namespace {

using Words = std::vector<std::string>;

Words split(char const * line, unsigned codePage = 0) {
  kivara::ArgumentBlock const block = splitCommandLine(line, codePage);
  Words const words(block.words, block.words + block.count);
  EXPECT_EQ(block.words[block.count], nullptr);
  std::free(block.words);
  return words;
}

struct Row {
  char const * line;
  Words words;
};
std::ostream & operator<<(std::ostream & out, Row const & row) { return out << '[' << row.line << ']'; }

class ProgramWord : public testing::TestWithParam<Row> {};
TEST_P(ProgramWord, EndsAtItsQuoteOrAtABlank) { EXPECT_EQ(split(GetParam().line), GetParam().words); }
INSTANTIATE_TEST_SUITE_P(Split, ProgramWord,
                         testing::Values(Row{"", {""}}, Row{"tool.exe", {"tool.exe"}}, Row{"tool.exe  ", {"tool.exe"}},
                                         Row{"  a", {"", "a"}},
                                         Row{"\"C:\\my dir\\tool.exe\" a", {"C:\\my dir\\tool.exe", "a"}},
                                         Row{"\"C:\\dir\\\" a", {"C:\\dir\\", "a"}},
                                         Row{"\"tool.exe\"a", {"tool.exe", "a"}}, Row{"\"open end", {"open end"}},
                                         Row{"\"\" a", {"", "a"}}, Row{"to\"ol x\"", {"to\"ol", "x"}},
                                         Row{"tool\ta", {"tool", "a"}}));

class ArgumentWord : public testing::TestWithParam<Row> {};
TEST_P(ArgumentWord, FollowsTheRulesOfQuotesAndBackslashes) {
  std::string const line = "p " + std::string(GetParam().line);
  Words expected{"p"};
  expected.insert(expected.end(), GetParam().words.begin(), GetParam().words.end());
  EXPECT_EQ(split(line.c_str()), expected);
}
INSTANTIATE_TEST_SUITE_P(Split, ArgumentWord,
                         testing::Values(Row{"a b", {"a", "b"}}, Row{"a \t b ", {"a", "b"}},
                                         Row{"\"a b\" c", {"a b", "c"}}, Row{"\"\"", {""}}, Row{"a\"b c\"d", {"ab cd"}},
                                         Row{"\"open end", {"open end"}}, Row{"\\a\\\\b", {"\\a\\\\b"}},
                                         Row{"a\\\"b", {"a\"b"}}, Row{"a\\\\\"b c\"", {"a\\b c"}},
                                         Row{"a\\\\\\\"b c", {"a\\\"b", "c"}},
                                         Row{"\"C:\\dir\\\\\" x", {"C:\\dir\\", "x"}}, Row{"\"a\"\"b\" c", {"a\"b c"}},
                                         Row{"\"\"\"a b\"\"\" c", {"\"a", "b\"", "c"}}, Row{"\"\"\"\" a", {"\" a"}},
                                         Row{"a\\", {"a\\"}}, Row{"\"a\\", {"a\\"}}));

TEST(Split, NullCountsAsTheEmptyLine) { EXPECT_EQ(split(nullptr), Words{""}); }

TEST(Split, BytesAbove127StayAsTheyAre) { EXPECT_EQ(split("p \xE4\xFF\x80"), (Words{"p", "\xE4\xFF\x80"})); }

TEST(Split, TheSecondByteOfADoubleByteCharacterIsNoBackslash) {
  EXPECT_EQ(split("p \x83\x5C\" a\"", 932), (Words{"p", "\x83\x5C a"}));
  EXPECT_EQ(split("p \x83\x5C\" a\"", 1252), (Words{"p", "\x83\"", "a"}));
}

TEST(Split, ALeadByteAtTheEndOfTheLineStaysInside) { EXPECT_EQ(split("p \x83", 932), (Words{"p", "\x83"})); }

TEST(Split, TenThousandWordsAreOneBlock) {
  std::string line = "p";
  for (int i = 1; i <= 10000; ++i)
    line += " \"word " + std::to_string(i) + "\"";
  kivara::ArgumentBlock const block = splitCommandLine(line.c_str());
  ASSERT_EQ(block.count, 10001);
  EXPECT_STREQ(block.words[10000], "word 10000");
  EXPECT_EQ(block.words[0], reinterpret_cast<char *>(block.words + 10002));
  EXPECT_EQ(block.words[10000], block.words[9999] + std::strlen(block.words[9999]) + 1);
  std::free(block.words);
}

std::string randomLine(std::mt19937 & random) {
  static constexpr char kAlphabet[] = "ab \t\"\\\"\\ \"";
  std::string line = "p ";
  for (unsigned length = random() % 24; length != 0; --length)
    line += kAlphabet[random() % (sizeof kAlphabet - 1)];
  return line;
}

Words systemSplit(std::string const & line) {
  int count = 0;
  std::wstring const wide(line.begin(), line.end());
  LPWSTR * const words = CommandLineToArgvW(wide.c_str(), &count);
  Words narrow;
  for (int i = 0; i < count; ++i) {
    std::wstring const word(words[i]);
    narrow.emplace_back(word.begin(), word.end());
  }
  LocalFree(words);
  return narrow;
}

TEST(Split, AnswersRandomLinesAsTheSystemDoes) {
  support::Random random(20261121);
  for (std::size_t i = 0; i < support::times(100'000); ++i) {
    std::string const line = randomLine(random);
    ASSERT_EQ(split(line.c_str()), systemSplit(line)) << '[' << line << ']';
  }
}

TEST(Split, StaysInsideOfTheLineAndOfItsBlock) {
  support::Random random(20261122);
  support::GuardPages const guard;
  for (std::size_t i = 0; i < support::times(5000); ++i) {
    std::string const line = randomLine(random);
    std::unique_ptr<char[]> const copy(new char[line.size() + 1]);
    std::memcpy(copy.get(), line.c_str(), line.size() + 1);
    split(copy.get());
  }
}

TEST(SplitDamage, GivesTheWordsOfTheSystemAndKnownSwitches) {
  constexpr char kLine[] =
      "\"C:\\my dir\\p.exe\" -trace \"-trfC:\\a b\\out.txt\" /registry-printers -h14 \\\"a\" -legacy-printing";
  support::WeakPlaces const marks = {.pieces = {"\"", "\\", " ", "\t", "\\\"", "\"\"", "-", "/"}};
  support::Random random(20261123);
  support::GuardPages const guard;
  for (std::size_t i = 0; i < support::times(1000); ++i) {
    std::string const line = support::damagedText(kLine, random, marks);
    Words words = split(support::ownBlock(line).get());
    if (!line.empty()) { // for that the system gives the name of the program
      ASSERT_EQ(words, systemSplit(line)) << '[' << line << ']';
    }
    std::vector<char const *> argv;
    for (std::string const & word : words)
      argv.push_back(word.c_str());
    SV::PrinterSwitches const switches = readPrinterSwitches(static_cast<int>(argv.size()), argv.data());
    bool const isLegacy = std::count(words.begin() + 1, words.end(), "-legacy-printing") > 0;
    ASSERT_TRUE(!isLegacy || !switches.currentPrinting) << '[' << line << ']';
  }
}

TEST(Split, WithoutMemoryGivesNoWords) {
  support::AllocationLimit const limit(0);
  kivara::ArgumentBlock const block = splitCommandLine("program word");
  EXPECT_EQ(block.count, 0);
  EXPECT_EQ(block.words, nullptr);
}

// Two quotes in a row inside of quotes are left out: runtimes differ in whether they end the quoting.
TEST(Split, AnswersAsTheRuntimesStartUpDoes) {
  for (char const * line : {"p a b", "p", "\"C:\\my dir\\p.exe\" \"a b\"c d", "p a\\\"b \"c\\\\\" d", "p c\"\"d e",
                            "p \\\\server\\share\\ x", "p \"\" \\\" \xE4\t* ?"})
    EXPECT_EQ(support::runProgram({.program = "argv_rules", .arguments = line}).exitCode, 0u) << '[' << line << ']';
}

SV::PrinterSwitches switches(Words const & words) {
  std::vector<char const *> argv;
  for (std::string const & word : words)
    argv.push_back(word.c_str());
  return readPrinterSwitches(static_cast<int>(argv.size()), argv.data());
}

TEST(PrinterSwitches, AreOffButForCurrentPrintingWithoutAWord) {
  SV::PrinterSwitches const found = switches({"p", "a"});
  EXPECT_FALSE(found.registryPrinters);
  EXPECT_FALSE(found.caseSensitivePrinters);
  EXPECT_TRUE(found.currentPrinting);
}

TEST(PrinterSwitches, RegistryPrintersClearCurrentPrintingToo) {
  SV::PrinterSwitches const found = switches({"p", "-registry-printers"});
  EXPECT_TRUE(found.registryPrinters);
  EXPECT_FALSE(found.caseSensitivePrinters);
  EXPECT_FALSE(found.currentPrinting);
}

TEST(PrinterSwitches, CaseSensitivePrintersStandAlone) {
  SV::PrinterSwitches const found = switches({"p", "/case-sensitive-printers"});
  EXPECT_FALSE(found.registryPrinters);
  EXPECT_TRUE(found.caseSensitivePrinters);
  EXPECT_TRUE(found.currentPrinting);
}

TEST(PrinterSwitches, LegacyPrintingClearsCurrentPrintingAlone) {
  SV::PrinterSwitches const found = switches({"p", "/legacy-printing"});
  EXPECT_FALSE(found.registryPrinters);
  EXPECT_FALSE(found.currentPrinting);
}

TEST(PrinterSwitches, AreReadFromExactOptionsAfterTheProgramOnly) {
  SV::PrinterSwitches const found = switches({"-legacy-printing", "registry-printers", "-registry-printersx",
                                              "-Registry-Printers", "--case-sensitive-printers", "-legacy", "", "-"});
  EXPECT_FALSE(found.registryPrinters);
  EXPECT_FALSE(found.caseSensitivePrinters);
  EXPECT_TRUE(found.currentPrinting);
}

} // namespace
