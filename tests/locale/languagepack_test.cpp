// Carries out the steps of docs/languages.md, with the list and the commands that stand there.
#include "locale/language_run.hpp"

#include "support/processes/child_process.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace {

using Block = std::vector<std::string>;

constexpr char kHeading[] = "## Making a language pack, step by step";

/// The lines of the page from the heading on.
Block linesOfTheSteps() {
  std::string const page = support::readFile(KIVARA_LANGUAGES_PAGE).value();
  std::size_t const start = page.find(kHeading);
  if (start == std::string::npos)
    throw std::runtime_error("the page has no steps");
  Block lines;
  std::istringstream stream(page.substr(start));
  for (std::string line; std::getline(stream, line);)
    lines.push_back(line);
  return lines;
}

/// What stands between the fences, without the indentation.
std::vector<Block> blocksOfTheSteps() {
  std::vector<Block> blocks;
  bool isInside = false;
  for (std::string line : linesOfTheSteps()) {
    line.erase(0, std::min(line.find_first_not_of(' '), line.size()));
    bool const isFence = line.starts_with("```");
    if (isFence && !isInside)
      blocks.emplace_back();
    else if (!isFence && isInside)
      blocks.back().push_back(line);
    isInside = isInside != isFence;
  }
  return blocks;
}

/// A product that is shipped in English, to which the steps add French.
class PackOfThePage : public testing::Test {
protected:
  PackOfThePage() {
    folder.write("lang.ini", "2057 English\n");
    folder.addPack("language\\2057\\kivara72.dll", "language\\2057\\kivara72.dll");
    folder.write("help\\2057\\manual.chm", "english");
    std::vector<Block> const blocks = blocksOfTheSteps();
    if (blocks.size() != 2)
      throw std::runtime_error("the steps hold a list and commands");
    for (std::string const & line : blocks[0])
      list += line + '\n';
    commands = blocks[1];
  }

  /// Steps 1 and 2.
  void packWords() {
    folder.write("language\\1036\\kivml.txt", list);
    for (std::string const & command : commands)
      runCommand(command);
  }

  void runCommand(std::string const & command) {
    std::size_t const blank = command.find(' ');
    auto const result = support::runProgram({.program = command.substr(0, blank),
                                             .arguments = command.substr(blank + 1),
                                             .workingFolder = folder.path() + "\\language\\1036"});
    EXPECT_EQ(result.exitCode, 0u) << command;
    EXPECT_EQ(result.errors, "") << command;
  }

  /// Steps 3 and 4, with a resource DLL of the build.
  void layOut() {
    folder.addPack("language\\1031\\kivara72.dll", "language\\1036\\kivara72.dll");
    folder.write("help\\1036\\manual.chm", "french");
    folder.write("lang.ini", "2057 English\n1036\n");
  }

  LanguageFolder folder;
  std::string list;
  Block commands;
};

TEST_F(PackOfThePage, IsInEffectOnceItIsLaidOut) {
  packWords();
  layOut();
  auto const facts = folder.facts("languages|set 1036|create kivara 1|chain|text 0x2002923|newhelp manual|help|"
                                  "get 1002 1036|find activit\xE9|set 2057|starts 1002 d\xE9"
                                  "cision: oui");
  EXPECT_EQ(facts.at("languages"), "2057,1036");
  EXPECT_EQ(facts.at("chain"), "language\\1036\\kivara72.dll");
  EXPECT_EQ(facts.at("0x2002923"), "Abbrechen") << "the text of the DLL that was put there";
  EXPECT_EQ(facts.at("help"), folder.path() + "\\help\\1036\\manual.chm");
  EXPECT_EQ(facts.at("get"), "d\xE9"
                             "cision");
  EXPECT_EQ(facts.at("find"), "1001, -1");
  EXPECT_EQ(facts.at("starts"), "1, 8") << "in whatever language the program runs";
}

TEST_F(PackOfThePage, IsTheLanguageOfAProgramByAnOption) {
  packWords();
  layOut();
  EXPECT_EQ(folder.facts("create kivara 1|chain", "-langfr").at("chain"), "language\\1036\\kivara72.dll");
}

TEST_F(PackOfThePage, IsNotSeenBeforeTheLineInTheList) {
  packWords();
  auto const facts = folder.facts("languages|find activit\xE9");
  EXPECT_EQ(facts.at("languages"), "2057");
  EXPECT_EQ(facts.at("find"), "0, -1");
}

TEST_F(PackOfThePage, GivesItsWordsBack) {
  packWords();
  std::string const unpack = "kivml unpack kivml.dll kivml.txt";
  Block const lines = linesOfTheSteps();
  EXPECT_TRUE(anyHolds(lines, unpack));
  runCommand(unpack);
  EXPECT_EQ(support::readFile(folder.path() + "\\language\\1036\\kivml.txt"), "1001 activit\xC3\xA9\r\n1002 d\xC3\xA9"
                                                                              "cision\r\n");
}

} // namespace
