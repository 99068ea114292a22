// Real command lines: a child program takes its own from the system and prints what the getters answer.

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <sstream>
#include <string>

namespace {

/// The child program, which lies beside this one.
std::string childProgram() {
  char path[MAX_PATH];
  std::string const own(path, GetModuleFileNameA(nullptr, path, sizeof path));
  return own.substr(0, own.rfind('\\') + 1) + "cmdline_getters.exe";
}

std::string readToEnd(HANDLE pipe) {
  std::string text;
  char part[4096];
  DWORD count = 0;
  while (ReadFile(pipe, part, sizeof part, &count, nullptr) && count != 0)
    text.append(part, count);
  return text;
}

/// Starts the child with this command line, its word 0 included, and gives what it printed.
std::string outputOf(std::string commandLine) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  HANDLE reading = nullptr;
  HANDLE writing = nullptr;
  if (!CreatePipe(&reading, &writing, &inherited, 0))
    return "no pipe";
  SetHandleInformation(reading, HANDLE_FLAG_INHERIT, 0);
  STARTUPINFOA start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = start.hStdError = writing;
  PROCESS_INFORMATION child{};
  BOOL const started = CreateProcessA(childProgram().c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                      nullptr, &start, &child);
  CloseHandle(writing);
  std::string const output = started ? readToEnd(reading) : "not started";
  CloseHandle(reading);
  if (started) {
    WaitForSingleObject(child.hProcess, 60000);
    CloseHandle(child.hThread);
    CloseHandle(child.hProcess);
  }
  return output;
}

/// The child's lines by name.
std::map<std::string, std::string> answersTo(std::string const & commandLine) {
  std::map<std::string, std::string> answers;
  std::istringstream lines(outputOf(commandLine));
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r')
      line.pop_back();
    std::size_t const mark = line.find('=');
    answers[line.substr(0, mark)] = mark == std::string::npos ? "" : line.substr(mark + 1);
  }
  return answers;
}

TEST(CmdlineProcess, AnswersARealCommandLine) {
  auto answers = answersTo("tool.exe -uAdmin /trace /trfC:\\x.txt -h14 -port8080 /PLaser -lang2057 -wslogformatlong "
                           "-v1.2");
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
  auto answers = answersTo("tool.exe \"-uJ\xF6rg M\xFCller\" \"-e\" -trf\"C:\\my files\\*.txt\" -charset\\\"");
  EXPECT_EQ(answers["count"], "5");
  EXPECT_EQ(answers["u"], "J\xF6rg M\xFCller");
  EXPECT_EQ(answers["e"], "1,");
  EXPECT_EQ(answers["trf"], "C:\\my files\\*.txt");
  EXPECT_EQ(answers["charset"], "\"");
}

TEST(CmdlineProcess, KnowsTheSchemaVersionAsAwssrvWithItsPath) {
  EXPECT_EQ(answersTo("\"C:\\Program Files\\AwsSrv.EXE\" -v1.2")["v"], "1.2");
}

TEST(CmdlineProcess, WithoutAGUIForcesItsFlagsAndTakesTheDialogLog) {
  SetEnvironmentVariableA("KIVTEST_LOG_OPTION", "wslogfile");
  auto answers = answersTo("host.exe -x -wslogfileservice.log");
  SetEnvironmentVariableA("KIVTEST_LOG_OPTION", nullptr);
  for (char const * const word : {"no_dialogs", "no_windows", "no_gui", "no_login_screen", "no_printer_warning"})
    EXPECT_EQ(answers[word], "on") << word;
  EXPECT_FALSE(answers.contains("x"));
  EXPECT_EQ(answers["dialog log"], "service.log");
}

TEST(CmdlineProcess, TakesTenThousandArguments) {
  std::string line = "tool.exe";
  for (int i = 1; i < 10000; ++i)
    line += " a";
  auto answers = answersTo(line + " -uLast -trace");
  EXPECT_EQ(answers["count"], "10002");
  EXPECT_EQ(answers["u"], "Last");
  EXPECT_EQ(answers["trace"], "on");
}

TEST(CmdlineProcess, TakesAnEmptyCommandLine) {
  auto answers = answersTo("tool.exe");
  EXPECT_EQ(answers["count"], "1");
  EXPECT_EQ(answers["u"], "");
}

} // namespace
