// Adapters and the checker of drivers, as real files beside a real program.

#include "facts_program.hpp"

#include "aappinfo.hpp"
#include "acmdline.hpp"
#include "aplatfrm.hpp"
#include "support/imports/import_hook.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using kivtest::FactsProgram;

namespace {

constexpr char kAllAdapters[] = "db2 informix oracle sqlserver";

TEST(DatabaseAdapters, AreNotThereWithoutTheirFiles) {
  FactsProgram const program;
  EXPECT_EQ(program.answers(kAllAdapters), "db2=0\ninformix=0\noracle=0\nsqlserver=0\n");
}

TEST(DatabaseAdapters, AreEachKnownByOneFile) {
  struct {
    char const * file;
    char const * answers;
  } const rows[] = {{"adb272.dll", "db2=1\ninformix=0\noracle=0\nsqlserver=0\n"},
                    {"aifx72.dll", "db2=0\ninformix=1\noracle=0\nsqlserver=0\n"},
                    {"aora72.dll", "db2=0\ninformix=0\noracle=1\nsqlserver=0\n"},
                    {"amss72.dll", "db2=0\ninformix=0\noracle=0\nsqlserver=1\n"}};
  for (auto const & row : rows) {
    FactsProgram const program;
    program.put(row.file);
    EXPECT_EQ(program.answers(kAllAdapters), row.answers) << row.file;
  }
}

TEST(DatabaseAdapters, MayBeSeveral) {
  FactsProgram const program;
  program.put("adb272.dll");
  program.put("aora72.dll");
  EXPECT_EQ(program.answers(kAllAdapters), "db2=1\ninformix=0\noracle=1\nsqlserver=0\n");
}

// The strings of the version are created by their first user, without a guard: the main thread may be at it.
TEST(DatabaseAdapters, AreAskedForByAnyThreadSinceTheyDoNotCreateTheStringsOfTheVersion) {
  Kiv_IsDBDB2();
  support::AllocationCount const count;
  Kiv_GetVersionHigh();
  EXPECT_GT(count.value(), 0u) << "they were there already";
}

TEST(DatabaseAdapters, OfAnotherVersionOrElsewhereDoNotCount) {
  FactsProgram const program;
  program.put("adb271.dll");
  program.put("aora7.2.dll");
  support::TempFolder const elsewhere;
  support::writeFile(elsewhere / "amss72.dll", "");
  EXPECT_EQ(program.answersAs("facts", kAllAdapters, elsewhere.path()), "db2=0\ninformix=0\noracle=0\nsqlserver=0\n");
}

int closedSearches = 0;
BOOL WINAPI countClose(HANDLE search) { return ++closedSearches, FindClose(search); }

HANDLE openedSearch = nullptr;
HANDLE WINAPI keepSearch(char const * name, WIN32_FIND_DATAA * found) {
  WIN32_FIND_DATAA program = *found;
  openedSearch = FindFirstFileA((support::binFolder() + "kivara.dll").c_str(), &program);
  EXPECT_EQ(name, support::binFolder() + "amss72.dll");
  return openedSearch;
}

TEST(DatabaseAdapters, LeaveTheSearchOpenAtEachCall) {
  support::replaceImports(
      GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
      {{"FindFirstFileA", reinterpret_cast<void *>(keepSearch)}, {"FindClose", reinterpret_cast<void *>(countClose)}});
  EXPECT_TRUE(Kiv_IsDBSQLServer());
  EXPECT_EQ(closedSearches, 0);
  EXPECT_TRUE(FindClose(openedSearch)); // it still was one
}

// The checker.

class DriverChecker : public testing::Test {
protected:
  void install() const {
    program.put("amss72.dll");
    program.putProgram("mdac_checker", "achkmdac.exe");
  }

  FactsProgram::Environment checker(int code, int milliseconds = 0) const {
    return {{"KIVTEST_CHECKER_CODE", std::to_string(code)},
            {"KIVTEST_CHECKER_WAIT", std::to_string(milliseconds)},
            {"KIVTEST_CHECKER_REPORT", report()}};
  }
  std::string report() const { return program.beside("report.txt"); }

  FactsProgram const program;
};

TEST_F(DriverChecker, IsNotAskedWithoutTheAdapter) {
  program.putProgram("mdac_checker", "achkmdac.exe");
  EXPECT_EQ(program.answers("mdac", checker(5)), "mdac=1\n");
  EXPECT_FALSE(support::exists(report()));
}

TEST_F(DriverChecker, IsContentWithCodes0AndMinus333) {
  install();
  for (int const code : {0, -333})
    EXPECT_EQ(program.answers("mdac", checker(code)), "mdac=1\n") << code;
}

TEST_F(DriverChecker, IsNotContentWithOtherCodes) {
  install();
  for (int const code : {5, 1, -1, 333, 259})
    EXPECT_EQ(program.answers("mdac", checker(code)), "mdac=0\n") << code;
}

TEST_F(DriverChecker, IsStartedMinimisedAndWithoutArguments) {
  install();
  program.answers("mdac", checker(0));
  EXPECT_EQ(support::readFile(report()), "flags=0x1 show=7 arguments=''\n");
}

TEST_F(DriverChecker, IsWaitedForAsLongAsItRuns) {
  install();
  EXPECT_EQ(program.answers("mdac", checker(5, 450)), "mdac=0\n");
  EXPECT_TRUE(support::exists(report()));
}

TEST_F(DriverChecker, ThatIsMissingCountsAsContentAndIsReported) {
  program.put("amss72.dll");
  EXPECT_EQ(program.answers("mdac"), "mdac=1\nerror atools.cpp (710)\n");
}

TEST_F(DriverChecker, ThatIsNoProgramCountsAsContentAndIsReported) {
  program.put("amss72.dll");
  program.put("achkmdac.exe");
  EXPECT_EQ(program.answers("mdac"), "mdac=1\nerror atools.cpp (710)\n");
}

TEST_F(DriverChecker, LiesBesideTheProgramAsItWasCalled) {
  program.put("amss72.dll");
  support::TempFolder const folder;
  EXPECT_TRUE(CopyFileA((support::binFolder() + "mdac_checker.exe").c_str(), (folder / "achkmdac.exe").c_str(), TRUE));
  EXPECT_EQ(program.answersAs("facts", "mdac", folder.path(), checker(5)), "mdac=0\n");
  EXPECT_EQ(program.answersAs("\"" + (folder / "with blanks.exe") + "\"", "mdac", "", checker(5)), "mdac=0\n");
}

// The calls to the system, answered by the test: the adapter is there, and the checker ends after two waits.

std::vector<std::string> calls;
char thread[] = "thread";
char process[] = "process";

bool isOurs(HANDLE handle) { return handle == thread || handle == process; }

HANDLE WINAPI findAdapter(char const *, WIN32_FIND_DATAA *) { return process; }

BOOL WINAPI startChecker(char const * file, char * commandLine, SECURITY_ATTRIBUTES *, SECURITY_ATTRIBUTES *,
                         BOOL inherit, DWORD flags, void *, char const *, STARTUPINFOA *,
                         PROCESS_INFORMATION * result) {
  EXPECT_TRUE(std::string(file).ends_with("\\achkmdac.exe")) << file;
  EXPECT_EQ(commandLine, nullptr);
  EXPECT_FALSE(inherit);
  EXPECT_EQ(flags, 0u);
  calls.emplace_back("start");
  *result = {process, thread, 1, 1};
  return TRUE;
}

DWORD WINAPI waitForChecker(HANDLE handle, DWORD milliseconds) {
  if (!isOurs(handle))
    return WaitForSingleObject(handle, milliseconds);
  calls.push_back("wait " + std::to_string(milliseconds));
  return calls.size() < 4 ? WAIT_TIMEOUT : WAIT_OBJECT_0;
}

BOOL WINAPI tellExitCode(HANDLE, DWORD * code) {
  calls.emplace_back("code");
  *code = 5;
  return TRUE;
}

BOOL WINAPI noteClose(HANDLE handle) {
  if (!isOurs(handle))
    return CloseHandle(handle);
  calls.push_back(std::string("close ") + static_cast<char const *>(handle));
  return TRUE;
}

TEST(DriverCheckerCalls, PollEach100MillisecondsAndCloseBothHandles) {
  char name[] = "C:\\dir\\program.exe";
  char * arguments[] = {name, nullptr};
  KivCmdline::init(1, arguments, true, "log");
  support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                          {{"FindFirstFileA", reinterpret_cast<void *>(findAdapter)},
                           {"CreateProcessA", reinterpret_cast<void *>(startChecker)},
                           {"WaitForSingleObject", reinterpret_cast<void *>(waitForChecker)},
                           {"GetExitCodeProcess", reinterpret_cast<void *>(tellExitCode)},
                           {"CloseHandle", reinterpret_cast<void *>(noteClose)}});
  EXPECT_FALSE(Kiv_IsValidMDACVersion());
  EXPECT_EQ(calls,
            (std::vector<std::string>{"start", "close thread", "wait 100", "wait 100", "code", "close process"}));
}

} // namespace
