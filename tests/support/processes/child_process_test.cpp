#include "support/processes/child_process.hpp"

#include "support/data/files.hpp"
#include "support/imports/import_hook.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>
#include <stdexcept>

using support::ChildProcess;
using support::ProgramStart;
using support::runProgram;

TEST(ChildProcess, HandsTheArgumentsOnToTheLetter) {
  std::string const arguments = "-a  \"b c\" \\\"d \x84\x93\xE4\xFF";
  auto const result = runProgram({.program = "command_line_printer", .arguments = arguments});
  std::string const line = "line=\"" + support::binFolder() + "command_line_printer.exe\" " + arguments + "\r\n";
  EXPECT_EQ(result.output.substr(0, line.size()), line);
  EXPECT_EQ(result.exitCode, line.size() - 7);
}

TEST(ChildProcess, CanGiveAWholeCommandLineOfItsOwn) {
  auto const result = runProgram({.program = "command_line_printer", .commandLine = "x y"});
  EXPECT_EQ(result.output.substr(0, 10), "line=x y\r\n");
}

TEST(ChildProcess, CollectsOutputAndErrorsApart) {
  auto const result = runProgram({.program = "command_line_printer", .input = "some input"});
  EXPECT_NE(result.output.find("input=some input\r\n"), std::string::npos) << result.output;
  EXPECT_EQ(result.errors, "done");
}

TEST(ChildProcess, SetsAndRemovesEnvironmentVariables) {
  SetEnvironmentVariableA("KIVARA_TEST", "from outside");
  auto const variable = [](std::optional<std::string> value) {
    return runProgram({.program = "command_line_printer", .environment = {{"kivara_TEST", value}}}).output;
  };
  EXPECT_NE(variable("changed").find("variable=changed\r\n"), std::string::npos);
  EXPECT_NE(variable(std::nullopt).find("variable=(none)\r\n"), std::string::npos);
  auto const unchanged = runProgram({.program = "command_line_printer"}).output;
  EXPECT_NE(unchanged.find("variable=from outside\r\n"), std::string::npos);
}

TEST(ChildProcess, StartsInTheNamedWorkingFolder) {
  support::TempFolder const folder;
  auto const result = runProgram({.program = "command_line_printer", .workingFolder = folder.path()});
  EXPECT_NE(result.output.find("folder=" + folder.path() + "\r\n"), std::string::npos) << result.output;
}

TEST(ChildProcess, WaitingEndsWithTheTimeLimit) {
  ChildProcess child({.program = "crasher", .arguments = "hang"});
  EXPECT_EQ(child.waitUpTo(0.2), std::nullopt);
  EXPECT_THROW(child.waitForEnd(0.1), std::runtime_error);
  EXPECT_TRUE(child.running());
}

TEST(ChildProcess, KillEndsItWithThatCode) {
  ChildProcess child({.program = "crasher", .arguments = "hang"});
  child.kill(77);
  EXPECT_FALSE(child.running());
  EXPECT_EQ(child.waitForEnd(), 77u);
}

TEST(ChildProcess, OutputCanBeWaitedForWhileItRuns) {
  ChildProcess child({.program = "crasher", .arguments = "hang"});
  EXPECT_TRUE(child.waitForOutput("ready\r\n"));
  EXPECT_TRUE(child.running());
  EXPECT_FALSE(child.waitForOutput("never", 0.1));
}

TEST(ChildProcess, ItsOwnChildrenEndWithIt) {
  unsigned long grandchild = 0;
  {
    ChildProcess child({.program = "crasher", .arguments = "spawn"});
    std::string line;
    auto const isWhole = [&] {
      std::string const text = child.output();
      std::size_t const start = text.find("child=");
      line = start == std::string::npos ? "" : text.substr(start);
      return line.find('\n') != std::string::npos;
    };
    ASSERT_TRUE(support::eventually(isWhole));
    grandchild = std::stoul(line.substr(6));
  }
  HANDLE const process = OpenProcess(SYNCHRONIZE, FALSE, grandchild);
  EXPECT_TRUE(!process || WaitForSingleObject(process, 10000) == WAIT_OBJECT_0);
  CloseHandle(process);
}

namespace {

int starts = 0;
DWORD firstError = 0;

/// The first start fails.
BOOL WINAPI failOnce(LPCSTR program, LPSTR line, LPSECURITY_ATTRIBUTES process, LPSECURITY_ATTRIBUTES thread,
                     BOOL inherit, DWORD flags, LPVOID environment, LPCSTR folder, LPSTARTUPINFOA startup,
                     LPPROCESS_INFORMATION made) {
  if (++starts == 1) {
    SetLastError(firstError);
    return FALSE;
  }
  // By its name in the DLL: its name here stands for the import.
  auto const real = reinterpret_cast<decltype(&CreateProcessA)>(
      reinterpret_cast<void *>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "CreateProcessA")));
  return real(program, line, process, thread, inherit, flags, environment, folder, startup, made);
}

void failFirstStart(DWORD error) {
  firstError = error;
  support::replaceImports(GetModuleHandleA(nullptr), "kernel32.dll",
                          {{"CreateProcessA", reinterpret_cast<void *>(failOnce)}});
}

} // namespace

TEST(ChildProcess, StartsOnceMoreAfterAnInternalErrorOfTheSystem) {
  failFirstStart(ERROR_INTERNAL_ERROR);
  EXPECT_EQ(runProgram({.program = "command_line_printer", .commandLine = "x y"}).output.substr(0, 10), "line=x y\r\n");
  EXPECT_EQ(starts, 2);
}

TEST(ChildProcess, StartsNotAgainAfterAnotherError) {
  failFirstStart(ERROR_ACCESS_DENIED);
  EXPECT_THROW(ChildProcess({.program = "command_line_printer"}), std::runtime_error);
  EXPECT_EQ(starts, 1);
}

TEST(ChildProcess, AProgramThatIsNotThereThrows) {
  EXPECT_THROW(ChildProcess(ProgramStart{.program = "no_such_program"}), std::runtime_error);
}

TEST(ChildProcess, CrashesShowAsTheirExitCode) {
  EXPECT_EQ(runProgram({.program = "crasher", .arguments = "read"}).exitCode, 0xC0000005);
}

TEST(ChildProcess, WithoutStreamsNothingIsCollected) {
  auto const result = runProgram({.program = "command_line_printer", .withoutStreams = true});
  EXPECT_EQ(result.output + result.errors, "");
}
