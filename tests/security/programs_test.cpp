// Which program runs when one is started by its name, and what it gets.

#include "planted.hpp"

#include "alog.hpp"
#include "aproc.hpp"
#include "auser.hpp"
#include "support/processes/child_process.hpp"
#include "support/windows/windows.hpp"
#include "system/processes/process_child.hpp"

#include <gtest/gtest.h>

#include <cstdio>

using namespace sectest;
using kivtest::Facts;
using SV::String;

namespace {

/// The program that ran, as its process_child wrote it down, in lower case.
std::string programOf(Facts & facts) { return lower(facts.take("program")); }

std::string inWorkingFolder(std::string const & name) {
  char folder[MAX_PATH] = "";
  GetCurrentDirectoryA(sizeof folder, folder);
  return lower(std::string(folder) + '\\' + name);
}

void run(std::string const & command, std::string const & arguments) {
  KivSynchronousProcess process(command.c_str(), arguments.c_str(), KIV_CMDSHOW_HIDE);
  EXPECT_TRUE(process.Execute(false));
  kivtest::end(process);
}

TEST(BareProgramName, IsTakenFromTheWorkingFolderBeforeTheSystems) {
  Facts facts;
  copyOfBin("process_child.exe", "hostname.exe"); // the system has one too
  run("hostname.exe", "");
  EXPECT_EQ(programOf(facts), inWorkingFolder("hostname.exe"));
}

TEST(BareProgramName, WithItsFolderIsThatOne) {
  Facts facts;
  char folder[MAX_PATH] = "";
  GetSystemDirectoryA(folder, sizeof folder);
  copyOfBin("process_child.exe", "hostname.exe");
  run(std::string(folder) + "\\hostname.exe", "");
  EXPECT_FALSE(facts.areThere());
}

/// "my programs\process_child.exe", and beside the folder a program "my.exe".
class PathWithABlank : public testing::Test {
protected:
  PathWithABlank() {
    makeFolder(folder_ / "my programs");
    copyOfBin("process_child.exe", program_);
    copyOfBin("process_child.exe", folder_ / "my.exe");
  }

  Facts facts_;
  support::TempFolder const folder_;
  std::string const program_ = folder_ / "my programs\\process_child.exe";
};

TEST_F(PathWithABlank, WithoutQuotesRunsWhatItsFirstWordNames) {
  run(program_, "out:x");
  EXPECT_EQ(programOf(facts_), lower(folder_ / "my.exe"));
}

TEST_F(PathWithABlank, InQuotesAsTheWholeCommandLosesThemAndRunsWhatItsFirstWordNames) {
  run('"' + program_ + '"', "out:x");
  EXPECT_EQ(programOf(facts_), lower(folder_ / "my.exe"));
}

TEST_F(PathWithABlank, InQuotesWithItsArgumentsInTheCommandIsTheProgram) {
  run('"' + program_ + "\" out:x", "");
  EXPECT_EQ(programOf(facts_), lower(program_));
}

TEST_F(PathWithABlank, InQuotesWithABlankAfterThemIsTheProgram) {
  run('"' + program_ + "\" ", "out:x");
  EXPECT_EQ(programOf(facts_), lower(program_));
}

TEST(CommandLineOfAProgram, HasNoMeaningForTheCommandInterpreter) {
  Facts facts;
  run(kivtest::childPath(), "out:x & echo y | more %PATH% ^ ; $(z)");
  EXPECT_TRUE(facts.take("line").ends_with("out:x & echo y | more %PATH% ^ ; $(z)"));
}

/// The product is in a folder with a blank and crashes; its archiver is process_child.
class ArchiverWithABlank : public testing::Test {
protected:
  ArchiverWithABlank() {
    std::string const path = folder_ / "my programs";
    for (std::string const part : {"", "\\tools", "\\tools\\zip"})
      makeFolder(path + part);
    copyOfBin("crash_ways.exe", path + "\\crash_ways.exe");
    copyOfBin("process_child.exe", path + "\\tools\\zip\\7za.exe");
  }

  /// Crashes, and gives the command that was run after it; empty where none was.
  std::string commandAfterCrash() {
    support::ChildProcess const child({.program = folder_ / "my programs\\crash_ways.exe",
                                       .arguments = "watch emptydump suppress read",
                                       .environment = {{"TMP", temporary_.path()}, {"PATH", support::binFolder()}}});
    HWND const box = support::waitForWindow({.processId = child.processId(), .className = support::kBoxClass});
    if (expectsArchiver_)
      program_ = programOf(facts_);
    EXPECT_TRUE(support::pressButton(box, IDOK));
    child.waitForEnd();
    std::string const line = support::linesOf(child.output()).back();
    return line.starts_with("process ") ? line.substr(8) : "";
  }

  void plant(std::string const & name) {
    copyOfBin("process_child.exe", folder_ / name);
    expectsArchiver_ = false;
  }

  Facts facts_;
  support::TempFolder const folder_;
  support::TempFolder const temporary_;
  std::string program_;
  bool expectsArchiver_ = true;
};

TEST_F(ArchiverWithABlank, IsRunFromTheFolderOfTheProgram) {
  EXPECT_TRUE(commandAfterCrash().starts_with(folder_ / "my programs\\\\tools\\zip\\7za.exe a -y -tzip "));
  EXPECT_EQ(program_, lower(folder_ / "my programs\\tools\\zip\\7za.exe"));
}

TEST_F(ArchiverWithABlank, IsNotRunWhereAProgramHasTheNameUpToTheBlank) {
  plant("my.exe");
  EXPECT_EQ(commandAfterCrash(), "");
}

TEST_F(ArchiverWithABlank, IsNotRunWhereAFileHasTheNameUpToTheBlank) {
  plant("my");
  EXPECT_EQ(commandAfterCrash(), "");
}

/// Whether somebody has the file open.
bool isInUse(char const * file) {
  HANDLE const alone = CreateFileA(file, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  bool const failed = alone == INVALID_HANDLE_VALUE;
  if (!failed)
    CloseHandle(alone);
  return failed;
}

/// Opens what \p use keeps open, starts a program meanwhile, and says whether that one has the file when it is closed here.
template <class Use> bool isHandedOn(char const * file, Use const & use) {
  kivtest::Gate gate;
  KivSynchronousProcess child(kivtest::childPath().c_str(), ("wait:" + gate.name()).c_str(), KIV_CMDSHOW_HIDE);
  use([&child] { EXPECT_TRUE(child.Execute(false)); });
  bool const isHanded = isInUse(file);
  gate.open();
  EXPECT_EQ(kivtest::end(child), 0);
  EXPECT_TRUE(support::eventually([file] { return !isInUse(file); }));
  return isHanded;
}

TEST(InheritableHandle, OfTheProductIsOpenInTheProgramsThatItStarts) {
  EXPECT_TRUE(isHandedOn("mine.txt", [](auto const & start) {
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    HANDLE const file = CreateFileA("mine.txt", GENERIC_WRITE, 0, &inheritable, CREATE_NEW, 0, nullptr);
    start();
    CloseHandle(file);
  }));
}

TEST(FileOfTheRuntime, OfTheProductIsOpenInTheProgramsThatItStarts) {
  EXPECT_TRUE(isHandedOn("mine.txt", [](auto const & start) {
    std::FILE * const file = std::fopen("mine.txt", "w");
    start();
    std::fclose(file);
  }));
}

TEST(FileOfTheLibrary, ThatIsALogIsNotOpenInTheProgramsThatAreStarted) {
  EXPECT_FALSE(isHandedOn("server.log", [](auto const & start) {
    KivBasicFileLogger log(true, true, 3);
    EXPECT_TRUE(log.open("server.log", true));
    start();
  }));
}

TEST(FileOfTheLibrary, ThatHasAnAccountIsNotOpenInTheProgramsThatAreStarted) {
  support::writeFile("adbuser.txt", "0123");
  EXPECT_FALSE(isHandedOn("adbuser.txt", [](auto const & start) {
    KivDBUserUtils account("adbuser.txt");
    EXPECT_TRUE(account.IsExternalDefined());
    start();
  }));
}

} // namespace
