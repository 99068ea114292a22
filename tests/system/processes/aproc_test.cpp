#include "aproc.hpp"

#include "process_child.hpp"
#include "support/data/random.hpp"
#include "support/imports/import_hook.hpp"
#include "support/processes/debug_lines.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <ostream>
#include <type_traits>
#include <vector>

using kivtest::child;
using kivtest::end;
using kivtest::Facts;
using kivtest::Gate;
using SV::String;
using Lines = std::vector<std::string>;

namespace {

double seconds(std::chrono::steady_clock::time_point since) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

static_assert(!std::is_polymorphic_v<KivBasicProcess> && !std::is_polymorphic_v<KivAsynchronousProcess>);
static_assert(std::has_virtual_destructor_v<KivSynchronousProcess>);
static_assert(sizeof(KivAsynchronousProcess) == sizeof(KivBasicProcess));
static_assert(!std::is_constructible_v<KivBasicProcess, String, String, KivCmdShow>);

// What reaches the system

/// What CreateProcessA was called with; no process is made.
struct Creation {
  bool hasApplicationName;
  std::string line;
  bool inheritsHandles;
  DWORD flags;
  bool hasEnvironment;
  bool hasFolder;
  STARTUPINFOA startup;
};
std::optional<Creation> lastCreation;

BOOL WINAPI refuse(char const * application, char * line, SECURITY_ATTRIBUTES *, SECURITY_ATTRIBUTES *, BOOL inherit,
                   DWORD flags, void * environment, char const * folder, STARTUPINFOA * startup,
                   PROCESS_INFORMATION *) {
  lastCreation = Creation{application != nullptr, line,    inherit != FALSE, flags, environment != nullptr,
                          folder != nullptr,      *startup};
  SetLastError(ERROR_ACCESS_DENIED);
  return FALSE;
}

class SynchronousProcessCall : public testing::Test {
protected:
  SynchronousProcessCall() {
    lastCreation.reset();
    support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                            {{"CreateProcessA", reinterpret_cast<void *>(refuse)}});
  }

  /// The line that the system would have run; "(none)" when it was not asked.
  static std::string lineOf(char const * command, char const * arguments) {
    lastCreation.reset();
    KivSynchronousProcess process(command, arguments, KIV_CMDSHOW_NORMAL);
    EXPECT_FALSE(process.Execute(false));
    return lastCreation ? lastCreation->line : "(none)";
  }
};

TEST_F(SynchronousProcessCall, ACommandThatIsWhollyQuotedLosesItsQuotes) {
  EXPECT_EQ(lineOf("\"c:\\a b\\x.exe\"", ""), "c:\\a b\\x.exe");
  EXPECT_EQ(lineOf("\"x\"", "-y"), "x -y");
}

TEST_F(SynchronousProcessCall, AQuotedProgramWithParametersKeepsItsQuotes) {
  EXPECT_EQ(lineOf("\"c:\\a b\\x.exe\" -y", ""), "\"c:\\a b\\x.exe\" -y");
  EXPECT_EQ(lineOf("\"x\" \"y\"", ""), "\"x\" \"y\"");
  EXPECT_EQ(lineOf("\"x\" ", ""), "\"x\" ");
}

TEST_F(SynchronousProcessCall, AQuoteWithoutItsCounterpartStays) {
  EXPECT_EQ(lineOf("\"", ""), "\"");
  EXPECT_EQ(lineOf("\"x", ""), "\"x");
  EXPECT_EQ(lineOf("x\"", ""), "x\"");
  EXPECT_EQ(lineOf("\"x\"y\"", ""), "\"x\"y\"");
}

TEST_F(SynchronousProcessCall, ArgumentsFollowAfterABlank) {
  EXPECT_EQ(lineOf("x", "-y  \"z\""), "x -y  \"z\"");
  EXPECT_EQ(lineOf("x ", "-y"), "x  -y");
  EXPECT_EQ(lineOf("x", ""), "x");
  EXPECT_EQ(lineOf("x", " "), "x  ");
}

TEST_F(SynchronousProcessCall, AnEmptyCommandIsTheInterpreterWithoutTheArguments) {
  _putenv("COMSPEC=c:\\some where\\shell.exe");
  EXPECT_EQ(lineOf("", "-y"), "c:\\some where\\shell.exe");
  EXPECT_EQ(lineOf("\"\"", "-y"), "c:\\some where\\shell.exe");
}

TEST_F(SynchronousProcessCall, AnEmptyLineIsRefused) {
  _putenv("COMSPEC=");
  support::DebugLines const debug;
  EXPECT_EQ(lineOf("", "-y"), "(none)");
  EXPECT_EQ(debug.all(), Lines{});
}

TEST_F(SynchronousProcessCall, AskForNothingButTheLine) {
  lineOf("x", "-y");
  ASSERT_TRUE(lastCreation);
  EXPECT_FALSE(lastCreation->hasApplicationName);
  EXPECT_FALSE(lastCreation->hasEnvironment);
  EXPECT_FALSE(lastCreation->hasFolder);
  EXPECT_TRUE(lastCreation->inheritsHandles);
  EXPECT_EQ(lastCreation->startup.cb, sizeof(STARTUPINFOA));
  EXPECT_EQ(lastCreation->startup.dwFlags, unsigned{STARTF_USESHOWWINDOW});
  EXPECT_EQ(lastCreation->startup.lpTitle, nullptr);
  EXPECT_EQ(lastCreation->startup.lpDesktop, nullptr);
}

TEST_F(SynchronousProcessCall, GiveARedirectedProgramThatStreamAlone) {
  support::TempFolder const folder;
  KivSynchronousProcess output(String("x"), String(("1>" + folder / "out").c_str()), KIV_CMDSHOW_NORMAL);
  output.SetUseRedirection(true);
  EXPECT_FALSE(output.Execute(false));
  EXPECT_EQ(lastCreation->startup.dwFlags, unsigned{STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES});
  EXPECT_NE(lastCreation->startup.hStdOutput, nullptr);
  EXPECT_EQ(lastCreation->startup.hStdError, nullptr);
  EXPECT_EQ(lastCreation->startup.hStdInput, nullptr);
  KivSynchronousProcess error(String("x"), String(("2>" + folder / "err").c_str()), KIV_CMDSHOW_NORMAL);
  error.SetUseRedirection(true);
  EXPECT_FALSE(error.Execute(false));
  EXPECT_EQ(lastCreation->startup.dwFlags, unsigned{STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES});
  EXPECT_EQ(lastCreation->startup.hStdOutput, nullptr);
  EXPECT_NE(lastCreation->startup.hStdError, nullptr);
  EXPECT_EQ(lastCreation->startup.hStdInput, nullptr);
}

// What cannot be opened is no stream, not even an invalid one.
TEST_F(SynchronousProcessCall, GiveNoStreamWhoseFileCannotBeOpened) {
  support::TempFolder const folder; // a folder is no file
  KivSynchronousProcess process(String("x"), String(("1>" + folder.path() + " 2>" + folder.path()).c_str()),
                                KIV_CMDSHOW_NORMAL);
  process.SetUseRedirection(true);
  EXPECT_FALSE(process.Execute(false));
  EXPECT_EQ(lastCreation->startup.dwFlags, unsigned{STARTF_USESHOWWINDOW});
  EXPECT_EQ(lastCreation->startup.hStdOutput, nullptr);
  EXPECT_EQ(lastCreation->startup.hStdError, nullptr);
}

// The handle of the failed start before is replaced also by an invalid one.
TEST_F(SynchronousProcessCall, GiveNoStreamWhoseFileCanNoLongerBeOpened) {
  support::TempFolder const first;
  support::TempFolder const second;
  CreateDirectoryA((second / "out").c_str(), nullptr); // a folder is no file
  char before[MAX_PATH] = "";
  GetCurrentDirectoryA(sizeof before, before);
  KivSynchronousProcess process("x", "1>out", KIV_CMDSHOW_NORMAL);
  process.SetUseRedirection(true);
  SetCurrentDirectoryA(first.path().c_str());
  EXPECT_FALSE(process.Execute(false));
  EXPECT_NE(lastCreation->startup.hStdOutput, nullptr);
  SetCurrentDirectoryA(second.path().c_str());
  EXPECT_FALSE(process.Execute(false));
  EXPECT_EQ(lastCreation->startup.dwFlags, unsigned{STARTF_USESHOWWINDOW});
  EXPECT_EQ(lastCreation->startup.hStdOutput, nullptr);
  SetCurrentDirectoryA(before);
}

TEST_F(SynchronousProcessCall, AConsoleHasAWindowOnlyWhereOneIsAskedFor) {
  KivSynchronousProcess process("x", "", KIV_CMDSHOW_NORMAL);
  process.Execute(false);
  EXPECT_EQ(lastCreation->flags, unsigned{CREATE_NO_WINDOW});
  process.Execute(true);
  EXPECT_EQ(lastCreation->flags, 0u);
}

TEST_F(SynchronousProcessCall, EachShowCommandIsPassedOnUnchanged) {
  constexpr KivCmdShow all[] = {KIV_CMDSHOW_HIDE,
                                KIV_CMDSHOW_NORMAL,
                                KIV_CMDSHOW_MINIMIZED,
                                KIV_CMDSHOW_MAXIMIZED,
                                KIV_CMDSHOW_NO_ACTIVATE,
                                KIV_CMDSHOW_SHOW,
                                KIV_CMDSHOW_MINIMIZE,
                                KIV_CMDSHOW_MINIMIZED_NO_ACTIVATE,
                                KIV_CMDSHOW_SHOW_NO_ACTIVATE,
                                KIV_CMDSHOW_RESTORE,
                                KIV_CMDSHOW_DEFAULT,
                                KIV_CMDSHOW_FORCE_MINIMIZE};
  int expected = SW_HIDE;
  for (KivCmdShow const show : all) {
    KivSynchronousProcess("x", "", show).Execute(false);
    EXPECT_EQ(lastCreation->startup.wShowWindow, expected++);
  }
  EXPECT_EQ(expected, SW_MAX + 1);
  KivSynchronousProcess("x", "", static_cast<KivCmdShow>(77)).Execute(false);
  EXPECT_EQ(lastCreation->startup.wShowWindow, 77);
}

TEST_F(SynchronousProcessCall, ARefusalByTheSystemLeavesItsReason) {
  KivSynchronousProcess process("x", "", KIV_CMDSHOW_NORMAL);
  SetLastError(0);
  EXPECT_FALSE(process.Execute(false));
  EXPECT_EQ(GetLastError(), unsigned{ERROR_ACCESS_DENIED});
}

TEST_F(SynchronousProcessCall, TheDebugOutputHasTheLineWithoutRedirections) {
  support::DebugLines const debug;
  lineOf("x", "1>out -y 2>>err %d");
  EXPECT_EQ(debug.all(), Lines{"[aproc] Synchronous exec: x  -y  %d\n"});
}

TEST_F(SynchronousProcessCall, TheDebugOutputHasLongLinesWhole) {
  support::DebugLines const debug;
  std::string const most(100'000, 'x');
  lineOf(most.c_str(), "");
  EXPECT_EQ(debug.all(), Lines{"[aproc] Synchronous exec: " + most + "\n"});
}

// Windows' own limit. Where it is not tested, Wine runs a part of longer lines.
TEST_F(SynchronousProcessCall, ALineOf32766CharactersIsTheLongest) {
  std::string const most(32'766, 'x');
  EXPECT_EQ(lineOf(most.c_str(), "").size(), most.size());
  for (std::size_t const tooLong : {32'767u, 65'536u, 70'000u}) {
    SetLastError(0);
    EXPECT_EQ(lineOf(std::string(tooLong, 'x').c_str(), ""), "(none)");
    EXPECT_EQ(GetLastError(), unsigned{ERROR_FILENAME_EXCED_RANGE});
  }
}

TEST_F(SynchronousProcessCall, RedirectionsAreTakenOutBeforeTheLengthCounts) {
  std::string const most(32'764, 'x'); // a blank, and the one before the redirection
  EXPECT_EQ(lineOf(most.c_str(), " 1>out").size(), 32'766u);
}

// What runs

TEST(SynchronousProcess, RunsTheLineToItsEnd) {
  Facts facts;
  KivSynchronousProcess process = child("exit:5  \"a b\"");
  EXPECT_TRUE(process.Execute(false));
  EXPECT_EQ(end(process), 5);
  EXPECT_EQ(process.GetRetVal(), 5);
  EXPECT_EQ(facts.take("line"), kivtest::childPath() + " exit:5  \"a b\"");
}

TEST(SynchronousProcess, AnEmptyCommandRunsTheInterpreterAlone) {
  Facts facts;
  _putenv(("COMSPEC=" + kivtest::childPath()).c_str());
  KivSynchronousProcess process("", "exit:5", KIV_CMDSHOW_NORMAL);
  EXPECT_TRUE(process.Execute(false));
  EXPECT_EQ(end(process), 0);
  EXPECT_EQ(facts.take("line"), kivtest::childPath());
}

TEST(SynchronousProcess, TheShowCommandReachesTheProgram) {
  Facts facts;
  KivSynchronousProcess process(kivtest::childPath().c_str(), "", KIV_CMDSHOW_MAXIMIZED);
  process.Execute(false);
  EXPECT_EQ(facts.take("show"), "3");
  end(process);
}

TEST(SynchronousProcess, TheLongestLineArrivesWhole) {
  Facts facts;
  std::string words = "exit:5 ";
  words.resize(32'766 - kivtest::childPath().size() - 1, 'x');
  words.back() = 'y';
  KivSynchronousProcess process = child(words);
  EXPECT_TRUE(process.Execute(false));
  EXPECT_EQ(end(process), 5);
  EXPECT_EQ(facts.take("line"), kivtest::childPath() + ' ' + words);
}

struct ExitCode {
  unsigned long code;
  long result;
};
std::ostream & operator<<(std::ostream & out, ExitCode const & row) { return out << row.code; }

class ExitCodes : public testing::TestWithParam<ExitCode> {};

TEST_P(ExitCodes, AreThoseOfTheProgramExceptNegativeOnes) {
  KivSynchronousProcess process = child("exit:" + std::to_string(GetParam().code));
  ASSERT_TRUE(process.Execute(false));
  EXPECT_EQ(end(process), GetParam().result);
  EXPECT_EQ(process.GetRetVal(), GetParam().result);
}

constexpr ExitCode kExitCodes[] = {
    {0, 0},
    {1, 1},
    {258, 258},
    {260, 260},
    {0x7FFFFFFE, 0x7FFFFFFE},
    {0x7FFFFFFF, 0x7FFFFFFF},
    {0x80000000, 0x7FFFFFFF},
    {0xC0000005, 0x7FFFFFFF},
    {0xFFFFFFFF, 0x7FFFFFFF}, // -1
};
INSTANTIATE_TEST_SUITE_P(Table, ExitCodes, testing::ValuesIn(kExitCodes));

TEST(SynchronousProcess, ThatEndsWith259NeverCountsAsEnded) {
  KivSynchronousProcess process = child("exit:259");
  ASSERT_TRUE(process.Execute(false));
  EXPECT_EQ(end(process), -1);
  EXPECT_EQ(process.GetRetVal(), 259);
  EXPECT_FALSE(process.Execute(false));
}

TEST(SynchronousProcess, WaitGivesMinus1AfterASecondAndMayBeCalledAgain) {
  Gate gate;
  KivSynchronousProcess process = child("wait:" + gate.name() + " exit:7");
  ASSERT_TRUE(process.Execute(false));
  for (int i = 0; i < 2; ++i) {
    auto const start = std::chrono::steady_clock::now();
    EXPECT_EQ(process.Wait(), -1);
    EXPECT_GE(seconds(start), 0.95);
    EXPECT_LT(seconds(start), 3);
  }
  EXPECT_EQ(process.GetRetVal(), 0) << "before the end";
  gate.open();
  EXPECT_EQ(end(process), 7);
}

TEST(SynchronousProcess, WaitGivesMinus1AtOnceWhereNothingRuns) {
  KivSynchronousProcess process = child("exit:7");
  auto const start = std::chrono::steady_clock::now();
  EXPECT_EQ(process.Wait(), -1);
  EXPECT_LT(seconds(start), 0.5);
  ASSERT_TRUE(process.Execute(false));
  EXPECT_EQ(end(process), 7);
  EXPECT_EQ(process.Wait(), -1);
  EXPECT_EQ(process.GetRetVal(), 7);
}

TEST(SynchronousProcess, StartsNoSecondProgramWhileTheFirstRuns) {
  Gate gate;
  Facts facts;
  KivSynchronousProcess process = child("wait:" + gate.name());
  ASSERT_TRUE(process.Execute(false));
  facts.take();
  support::DebugLines const debug;
  EXPECT_FALSE(process.Execute(false));
  EXPECT_EQ(debug.all(), Lines{});
  gate.open();
  EXPECT_EQ(end(process), 0);
  EXPECT_FALSE(facts.areThere());
}

TEST(SynchronousProcess, RunsAgainAndKeepsTheFormerResultUntilThen) {
  Gate gate;
  KivSynchronousProcess process = child("wait:" + gate.name() + " exit:7");
  gate.open();
  ASSERT_TRUE(process.Execute(false));
  ASSERT_EQ(end(process), 7);
  ASSERT_TRUE(process.Execute(false));
  EXPECT_EQ(process.GetRetVal(), 7);
  EXPECT_EQ(end(process), 7);
}

TEST(SynchronousProcess, ThatIsNotThereIsReportedByTheSystemAndMayBeTriedAgain) {
  support::TempFolder const folder;
  std::string const program = folder / "later.exe";
  KivSynchronousProcess process(program.c_str(), "exit:7", KIV_CMDSHOW_NORMAL);
  support::DebugLines const debug;
  SetLastError(0);
  EXPECT_FALSE(process.Execute(false));
  EXPECT_EQ(GetLastError(), unsigned{ERROR_FILE_NOT_FOUND});
  EXPECT_EQ(debug.all(), Lines{"[aproc] Synchronous exec: " + program + " exit:7\n"});
  EXPECT_EQ(process.Wait(), -1);
  CopyFileA(kivtest::childPath().c_str(), program.c_str(), TRUE);
  EXPECT_TRUE(process.Execute(false));
  EXPECT_EQ(end(process), 7);
}

TEST(SynchronousProcess, CopiesShareTheHandle) {
  Gate gate;
  KivSynchronousProcess process = child("wait:" + gate.name() + " exit:7");
  ASSERT_TRUE(process.Execute(false));
  auto * const copy = new KivSynchronousProcess(process); // its destructor would have nothing of its own to close
  EXPECT_FALSE(copy->Execute(false));
  gate.open();
  EXPECT_EQ(end(process), 7);
  EXPECT_EQ(copy->Wait(), -1);
  EXPECT_EQ(copy->GetRetVal(), 0);
}

// Each run leaves as many handles as there were before.
TEST(SynchronousProcess, ManyRunsLeaveNoHandleOpen) {
  support::TempFolder const folder;
  auto const run = [&folder] {
    KivSynchronousProcess process = child("1>" + folder / "out.txt" + " 2>" + folder / "err.txt");
    process.SetUseRedirection(true);
    ASSERT_TRUE(process.Execute(false));
    ASSERT_EQ(end(process), 0);
  };
  run();
  int const before = support::countHandles();
  for (std::size_t i = 0; i < support::times(250); ++i)
    run();
  EXPECT_EQ(support::countHandles(), before);
}

} // namespace
