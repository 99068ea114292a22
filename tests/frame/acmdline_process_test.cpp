// Real command lines: a child program takes its own from the system and prints what the getters answer.

#include "support/processes/child_process.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>

namespace {

/// The full path of a program of the bin folder, in the spelling that is asked for.
std::string inBinFolder(std::string const & program) {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, path, sizeof path);
  std::string const self(path);
  return self.substr(0, self.rfind('\\') + 1) + program;
}

/// The child's lines by name.
std::map<std::string, std::string> answersTo(std::string const & words,
                                             std::string const & program = "cmdline_getters.exe") {
  auto const child = support::runProgram({.program = inBinFolder(program), .arguments = words});
  EXPECT_EQ(child.exitCode, 0u) << child.output;
  std::map<std::string, std::string> answers;
  std::istringstream lines(child.output);
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r')
      line.pop_back();
    std::size_t const mark = line.find('=');
    answers[line.substr(0, mark)] = mark == std::string::npos ? "" : line.substr(mark + 1);
  }
  return answers;
}

TEST(CmdlineProcess, AnswersARealCommandLine) {
  auto answers = answersTo("-uAdmin /trace /trfC:\\x.txt -h14 -port8080 /PLaser -lang2057 -wslogformatlong -v1.2");
  EXPECT_EQ(answers["count"], "10");
  EXPECT_EQ(answers["u"], "Admin");
  EXPECT_EQ(answers["trace"], "on");
  EXPECT_EQ(answers["trf"], "C:\\x.txt");
  EXPECT_EQ(answers["h"], "14");
  EXPECT_EQ(answers["port"], "8080");
  EXPECT_EQ(answers["p"], "ort8080");
  EXPECT_EQ(answers["P"], "Laser");
  EXPECT_EQ(answers["lang"], "2057");
  EXPECT_EQ(answers["wslogformat"], "1");
  EXPECT_EQ(answers["wslogbackup"], "-1");
  EXPECT_EQ(answers["e"], "0,untouched");
  EXPECT_EQ(answers["v"], "");
  EXPECT_FALSE(answers.contains("profiling"));
}

TEST(CmdlineProcess, KeepsQuotedWordsAndBytesAbove127) {
  auto answers = answersTo("\"-uJ\xF6rg M\xFCller\" \"-e\" -trf\"C:\\my files\\*.txt\" -charset\\\"");
  EXPECT_EQ(answers["count"], "5");
  EXPECT_EQ(answers["u"], "J\xF6rg M\xFCller");
  EXPECT_EQ(answers["e"], "1,");
  EXPECT_EQ(answers["trf"], "C:\\my files\\*.txt");
  EXPECT_EQ(answers["charset"], "\"");
}

TEST(CmdlineProcess, KnowsTheSchemaVersionAsAwssrvInAnyCase) {
  EXPECT_EQ(answersTo("-v1.2", "awssrv.exe")["v"], "1.2");
  EXPECT_EQ(answersTo("-v1.2", "AwsSrv.EXE")["v"], "1.2");
}

TEST(CmdlineProcess, WithoutAGUIForcesItsFlagsAndTakesTheDialogLog) {
  SetEnvironmentVariableA("KIVTEST_LOG_OPTION", "wslogfile");
  auto answers = answersTo("-x -wslogfileservice.log");
  SetEnvironmentVariableA("KIVTEST_LOG_OPTION", nullptr);
  for (char const * const word : {"no_dialogs", "no_windows", "no_gui", "no_login_screen", "no_printer_warning"})
    EXPECT_EQ(answers[word], "on") << word;
  EXPECT_FALSE(answers.contains("x"));
  EXPECT_EQ(answers["dialog log"], "service.log");
}

TEST(CmdlineProcess, TakesTenThousandArguments) {
  std::string words;
  for (int i = 0; i < 10000; ++i)
    words += "a ";
  auto answers = answersTo(words + "-uLast -trace");
  EXPECT_EQ(answers["count"], "10003");
  EXPECT_EQ(answers["u"], "Last");
  EXPECT_EQ(answers["trace"], "on");
}

TEST(CmdlineProcess, TakesAnEmptyCommandLine) {
  auto answers = answersTo("");
  EXPECT_EQ(answers["count"], "1");
  EXPECT_EQ(answers["u"], "");
}

} // namespace
