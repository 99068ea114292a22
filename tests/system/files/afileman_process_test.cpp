#include "afileman.hpp"

#include "support/data/files.hpp"
#include "support/processes/debugger.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <ostream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Variable = std::optional<std::string>;

support::ProgramStart tasks(std::string const & words, Variable const & temp, Variable const & tmp,
                            std::string const & runResult = "0") {
  return {.program = "file_tasks",
          .arguments = words,
          .environment = {{"TEMP", temp},
                          {"TMP", tmp},
                          {"KIVARA_GUI", "0"},
                          {"KIVARA_RESOURCES", "language\\2057\\kivara72.dll"},
                          {"KIVARA_RUN", runResult}}};
}

/// What the program printed under a name; nothing when it did not.
std::vector<std::string> printed(std::string const & output, std::string const & name) {
  std::vector<std::string> values;
  std::istringstream stream(output);
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty() && line.back() == '\r')
      line.pop_back();
    if (line.starts_with(name + '='))
      values.push_back(line.substr(name.size() + 1));
  }
  return values;
}

std::string firstPrinted(std::string const & output, std::string const & name) {
  std::vector<std::string> const values = printed(output, name);
  return values.empty() ? "(none)" : values.front();
}

constexpr char kUuid[] = "[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}";

bool isPrefixUuidAndEnd(std::string const & name, std::string const & front, std::string const & end) {
  return name.starts_with(front) && name.ends_with(end) && name.size() >= front.size() + end.size() &&
         std::regex_match(name.substr(front.size(), name.size() - front.size() - end.size()), std::regex(kUuid));
}

struct TempState {
  char const * name;
  Variable temp;
  Variable tmp;
  std::string folder;
  std::string front; ///< of a temporary name with the prefix "x"
};
std::ostream & operator<<(std::ostream & out, TempState const & state) { return out << state.name; }

class TempVariables : public testing::TestWithParam<TempState> {};

TEST_P(TempVariables, DecideTheFolderOfTemporaryNames) {
  TempState const & state = GetParam();
  support::ProgramResult const run = support::runProgram(tasks("folder name:x.tmp", state.temp, state.tmp));
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_EQ(firstPrinted(run.output, "folder"), "'" + state.folder + "'");
  std::string const name = firstPrinted(run.output, "name");
  EXPECT_TRUE(isPrefixUuidAndEnd(name, state.front, ".tmp")) << name;
}

TempState const kTempStates[] = {
    {"Both", "c:\\one", "c:\\two", "c:\\one", "c:\\one\\x"},
    {"TempAlone", "c:\\one", std::nullopt, "c:\\one", "c:\\one\\x"},
    {"TmpAlone", std::nullopt, "c:\\two", "c:\\two", "c:\\two\\x"},
    {"Neither", std::nullopt, std::nullopt, "", "\\x"},
    {"TempWithSeparator", "c:\\one\\", "c:\\two", "c:\\one\\", "c:\\one\\x"},
    {"TmpWithSeparator", std::nullopt, "c:\\", "c:\\", "c:\\x"},
    {"TempWithSlash", "c:/one/", std::nullopt, "c:/one/", "c:/one/\\x"},
    {"TempWithBlanks", " c:\\a folder ", std::nullopt, " c:\\a folder ", " c:\\a folder \\x"},
    {"TempEmpty", "", "c:\\two", "", "\\x"},
    {"TmpEmpty", std::nullopt, "", "", "\\x"},
    {"TempMissingOnDisk", "q:\\nowhere", "c:\\two", "q:\\nowhere", "q:\\nowhere\\x"},
};
INSTANTIATE_TEST_SUITE_P(State, TempVariables, testing::ValuesIn(kTempStates),
                         [](testing::TestParamInfo<TempState> const & state) { return state.param.name; });

class TemporaryFile : public testing::Test {
protected:
  support::ProgramResult run(std::string const & words, std::string const & runResult = "0") const {
    return support::runProgram(tasks(words, folder_.path(), std::nullopt, runResult));
  }

  support::TempFolder folder_;
};

TEST_F(TemporaryFile, IsNotCreatedWithItsName) {
  support::ProgramResult const result = run("name:x.tmp there");
  EXPECT_EQ(firstPrinted(result.output, "there"), "0");
  EXPECT_EQ(result.exitCode, 0u);
}

TEST_F(TemporaryFile, HasNoDotWithoutAnExtension) {
  std::string const name = firstPrinted(run("name:x").output, "name");
  EXPECT_TRUE(isPrefixUuidAndEnd(name, folder_ / "x", "")) << name;
}

TEST_F(TemporaryFile, OfAnEmptyExtensionEndsInADot) {
  std::string const name = firstPrinted(run("name:x.").output, "name");
  EXPECT_TRUE(isPrefixUuidAndEnd(name, folder_ / "x", ".")) << name;
}

TEST_F(TemporaryFile, HasANameOfItsOwnEachTime) {
  std::vector<std::string> names = printed(run("name:x.tmp name:x.tmp name:x.tmp").output, "name");
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names.size(), 3u);
  EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
}

TEST_F(TemporaryFile, IsGoneAfterTheProgramHasReturned) {
  support::ProgramResult const result = run("name:a.tmp create there name:b create there");
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(printed(result.output, "there"), (std::vector<std::string>{"1", "1"}));
  for (std::string const & name : printed(result.output, "name"))
    EXPECT_FALSE(support::exists(name)) << name;
}

TEST_F(TemporaryFile, IsGoneAfterAnEndWithAnotherExitCode) {
  support::ProgramResult const result = run("name:a.tmp create there", "7");
  EXPECT_EQ(result.exitCode, 7u);
  EXPECT_EQ(firstPrinted(result.output, "there"), "1");
  EXPECT_FALSE(support::exists(firstPrinted(result.output, "name")));
}

TEST_F(TemporaryFile, IsGoneAfterACallOfExit) {
  support::ProgramResult const result = run("name:a.tmp create there exit:3");
  EXPECT_EQ(result.exitCode, 3u);
  EXPECT_EQ(firstPrinted(result.output, "there"), "1");
  EXPECT_FALSE(support::exists(firstPrinted(result.output, "name")));
}

TEST_F(TemporaryFile, IsGoneWithTheEventOfTheEnd) {
  support::ProgramResult const result = run("name:a.tmp create there event there");
  EXPECT_EQ(printed(result.output, "there"), (std::vector<std::string>{"1", "0"}));
}

TEST_F(TemporaryFile, StaysWhenTheProcessIsKilled) {
  support::ProgramResult const result = run("name:a.tmp create kill:5");
  EXPECT_EQ(result.exitCode, 5u);
  EXPECT_TRUE(support::exists(firstPrinted(result.output, "name")));
}

TEST_F(TemporaryFile, StaysWhenItsRegistrationIsTakenBack) {
  support::ProgramResult const result = run("name:a.tmp create keep");
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_TRUE(support::exists(firstPrinted(result.output, "name")));
}

TEST_F(TemporaryFile, HasANameEvenIfTheSystemHasNoAddressForItsUuid) {
  std::string const name = firstPrinted(run("nouuid name:x.tmp").output, "name");
  EXPECT_TRUE(isPrefixUuidAndEnd(name, folder_ / "x", ".tmp")) << name;
}

/// The internal errors that the program reports to the debugger.
std::vector<std::string> errorsOf(support::Debugger const & debugger) {
  EXPECT_EQ(debugger.waitForEnd(), 0u);
  std::vector<std::string> errors;
  for (std::string const & text : debugger.texts())
    if (text.starts_with("[dEM] "))
      errors.push_back(text.substr(0, text.find(" [", 6)));
  return errors;
}

TEST_F(TemporaryFile, IsAnInternalErrorWithoutAUuid) {
  support::Debugger const debugger(tasks("notext name:x.tmp", folder_.path(), std::nullopt));
  EXPECT_EQ(errorsOf(debugger), std::vector<std::string>{"[dEM] afileman.cpp (102): afileman-102"});
  EXPECT_EQ(firstPrinted(debugger.process().output(), "name"), "");
}

TEST(ReadStringFromFile, IsAnInternalErrorWithoutAReader) {
  support::Debugger const debugger(tasks("read", std::nullopt, std::nullopt));
  EXPECT_EQ(errorsOf(debugger), std::vector<std::string>{"[dEM] afileman.cpp (219): afileman-219"});
  EXPECT_EQ(firstPrinted(debugger.process().output(), "read"), "-1 before");
}

} // namespace
