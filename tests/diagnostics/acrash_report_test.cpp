// The text of a crash report, section by section.

#include "aappinfo.hpp"
#include "aplatfrm.hpp"
#include "diagnostics/crash/windowsname.hpp"
#include "diagnostics/crash_run.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <ostream>

using namespace kivtest;

namespace {

Lines forms(Lines lines) {
  for (auto & line : lines)
    line = form(line);
  return lines;
}

TEST(CrashReport, HasItsSectionsInOrder) {
  CrashRun const run(quick("read"));
  Lines beginnings;
  bool isFirst = true;
  for (auto const & line : run.lines()) {
    if (isFirst && !line.empty())
      beginnings.push_back(line.substr(0, line.find_first_of(":.0123456789'")));
    isFirst = line.empty();
  }
  EXPECT_EQ(beginnings,
            (Lines{"# [dump v", "  KIVARA", "  Windows version", "  Current directory", "  No loaded plugins!",
                   "  System crash time", "  Module name", "  Environment variables", "  Printer", "  Process times",
                   "  System up time", "  Exception code", "  [Start dbghelp", "  End of stack trace", "[DONE]",
                   "  [Cleaned up symbols]"}));
}

TEST(CrashReport, EndsWithTheCleanUpOfTheSymbols) {
  std::string const report = CrashRun(quick("read")).report();
  std::string const end = "  End of stack trace\r\n\r\n[DONE]\r\n\r\n  [Cleaned up symbols]\r\n";
  ASSERT_GT(report.size(), end.size());
  EXPECT_EQ(report.substr(report.size() - end.size()), end);
}

TEST(CrashReport, BeginsWithTitleProgramVersionDatabasesAndCommandLine) {
  CrashRun const run(quick("read"));
  std::string const beginning = "\r\n# [dump v4] Crash dump\n\r\n  KIVARA\r\n    Version: " +
                                std::string(Kiv_GetPatchBuildVersionString().c_str()) +
                                "\r\n    Supported DB systems: \r\n    Command line: '\"" + support::binFolder() +
                                "crash_ways.exe\" suppress fail:MiniDumpWriteDump read'\r\n\r\n";
  EXPECT_EQ(run.report().substr(0, beginning.size()), beginning);
}

TEST(CrashReport, NamesTheDatabasesWhoseAdaptersAreBesideTheProgram) {
  support::TempFolder const folder;
  std::string const program = folder / "crash_ways.exe";
  ASSERT_TRUE(CopyFileA((support::binFolder() + "crash_ways.exe").c_str(), program.c_str(), TRUE));
  for (char const * adapter : {"adb272.dll", "aifx72.dll", "amss72.dll", "aora72.dll"})
    support::writeFile(folder / adapter, "");
  support::runProgram(
      {.program = program,
       .arguments = "suppress fail:MiniDumpWriteDump read",
       .environment = {{"KIVDUMP_NO_ENCRYPT", "1"}, {"PATH", support::binFolder()}, {"TMP", folder.path()}}});
  std::string const report = support::readFile(folder / "crash_ways.exe.log").value_or("");
  EXPECT_NE(report.find("\r\n    Supported DB systems: DB2, Informix, SQL Server, Oracle\r\n"), std::string::npos);
}

TEST(CrashReport, HasALineForEachLineOfTheApplicationsInfo) {
  Lines const section = sectionOf(CrashRun(quick("info read")).lines(), "  KIVARA");
  ASSERT_EQ(section.size(), 6u);
  EXPECT_EQ(section[4], "    database: orders");
  EXPECT_EQ(section[5], "    user: " + std::string(5000, 'u'));
}

TEST(CrashReport, SaysThatThereIsNoCommandLine) {
  EXPECT_EQ(sectionOf(CrashRun(quick("fail:GetCommandLineA read")).lines(), "  KIVARA").back(),
            "    Command line: '[null]'");
}

TEST(CrashReport, WritesALongCommandLineWhole) {
  std::string const words = "read " + std::string(20000, 'x');
  CrashRun const run(quick(words));
  EXPECT_EQ(sectionOf(run.lines(), "  KIVARA")[3], "    Command line: '\"" + support::binFolder() +
                                                       "crash_ways.exe\" suppress fail:MiniDumpWriteDump " + words +
                                                       "'");
}

TEST(CrashReport, NamesTheSystem) {
  OSVERSIONINFOA version{};
  version.dwOSVersionInfoSize = sizeof version;
  GetVersionExA(&version);
  Lines const section = sectionOf(CrashRun(quick("read")).lines(), "  Windows version: ");
  ASSERT_EQ(section.size(), 2u);
  kivara::crash::WindowsName const name(version.dwPlatformId, version.dwMajorVersion, version.dwMinorVersion);
  EXPECT_EQ(section[0], std::string("  Windows version: ") + name.c_str() + ' ' + version.szCSDVersion + " (" +
                            std::to_string(version.dwMajorVersion) + '.' + std::to_string(version.dwMinorVersion) +
                            '.' + std::to_string(version.dwBuildNumber) + " [2])");
}

TEST(CrashReport, SaysThatAProgramFor64BitsRunsOn32) {
  EXPECT_EQ(sectionOf(CrashRun(quick("read")).lines(), "  Windows version: ").back(), "  Architecture: Windows 32-bit");
}

TEST(CrashReport, NamesAnEarlierSystemWithItsServicePackAnd64Bits) {
  EXPECT_EQ(sectionOf(CrashRun(quick("windows7 64bits read")).lines(), "  Windows version: "),
            (Lines{"  Windows version: Windows 7 or Windows Server 2008 R2 Service Pack 1 (6.1.7601 [2])",
                   "  Architecture: Windows 64-bit"}));
}

TEST(CrashReport, NamesTheFolders) {
  CrashRun const run(quick("read"));
  EXPECT_EQ(sectionOf(run.lines(), "  Current directory: "),
            (Lines{"  Current directory: " + run.workingFolder(), "  Module directory: " + support::binFolder()}));
}

TEST(CrashReport, SaysThatThereIsNoCurrentFolder) {
  EXPECT_EQ(sectionOf(CrashRun(quick("fail:GetCurrentDirectoryA read")).lines(), "# [GetCurrent"),
            (Lines{"# [GetCurrentDirectory (1024, sDir) failed with EC 5]",
                   "  Current directory: ", "  Module directory: " + support::binFolder()}));
}

TEST(CrashReport, NumbersThePluginsInTheOrderOfLoading) {
  std::string const path = support::binFolder() + "plugin_fixture.dll";
  CrashRun const run(quick("plugin:" + path + " plugin:" + path + " read"));
  EXPECT_EQ(sectionOf(run.lines(), "  2 loaded plugins:"),
            (Lines{"  2 loaded plugins:", "    01 " + path + " [General]", "    02 " + path + " [General]"}));
}

TEST(CrashReport, SaysThatAPluginIsNull) {
  std::string const path = support::binFolder() + "plugin_fixture.dll";
  CrashRun const run(quick("plugin:" + path + " plugin:" + path + " forgetplugin read"));
  EXPECT_EQ(sectionOf(run.lines(), "  2 loaded plugins:"),
            (Lines{"  2 loaded plugins:", "    01 - NULL pointer", "    02 " + path + " [General]"}));
}

/// The time of a line such as "  System crash time: 22.11.2026, 12:45.10", as numbers that grow with it.
long long timeOf(std::string const & line) {
  int day = 0, month = 0, year = 0, hour = 0, minute = 0, second = 0;
  std::sscanf(line.c_str() + line.find(": ") + 2, "%d.%d.%d, %d:%d.%d", &day, &month, &year, &hour, &minute, &second);
  return ((((year * 100LL + month) * 100 + day) * 100 + hour) * 100 + minute) * 100 + second;
}

long long number(SYSTEMTIME const & time) {
  return ((((time.wYear * 100LL + time.wMonth) * 100 + time.wDay) * 100 + time.wHour) * 100 + time.wMinute) * 100 +
         time.wSecond;
}

TEST(CrashReport, HasTheTimesOfTheCrash) {
  SYSTEMTIME before[2], after[2];
  GetSystemTime(&before[0]);
  GetLocalTime(&before[1]);
  Lines const lines = sectionOf(CrashRun(quick("read")).lines(), "  System crash time");
  GetSystemTime(&after[0]);
  GetLocalTime(&after[1]);
  EXPECT_EQ(forms(lines),
            (Lines{"  System crash time: 99.99.9999, 99:99.99", "  Local crash time.: 99.99.9999, 99:99.99"}));
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_LE(number(before[i]), timeOf(lines[i]));
    EXPECT_LE(timeOf(lines[i]), number(after[i]));
  }
}

TEST(CrashReport, HasNameSizeAndTimesOfTheExecutable) {
  std::string const path = support::binFolder() + "crash_ways.exe";
  WIN32_FILE_ATTRIBUTE_DATA file{};
  GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &file);
  char size[64];
  std::snprintf(size, sizeof size, "  Module file size.: 00000000%08Xh %ld (high: 0)",
                static_cast<unsigned>(file.nFileSizeLow), static_cast<long>(file.nFileSizeLow));
  SYSTEMTIME time{};
  FileTimeToSystemTime(&file.ftLastWriteTime, &time);
  char written[64];
  std::snprintf(written, sizeof written, "    Last write time..: %02d.%02d.%04d, %02d:%02d.%02d", time.wDay,
                time.wMonth, time.wYear, time.wHour, time.wMinute, time.wSecond);
  Lines const section = sectionOf(CrashRun(quick("read")).lines(), "  Module name");
  ASSERT_EQ(section.size(), 6u);
  EXPECT_EQ(section[0], "  Module name......: '" + path + "'");
  EXPECT_EQ(section[1], size);
  EXPECT_EQ(section[2], "  Executable times:");
  SYSTEMTIME created{};
  FileTimeToSystemTime(&file.ftCreationTime, &created);
  EXPECT_EQ(form(section[3]), "    Creation time....: 99.99.9999, 99:99.99");
  EXPECT_EQ(timeOf(section[3]), number(created));
  EXPECT_EQ(form(section[4]), "    Last access time.: 99.99.9999, 99:99.99");
  EXPECT_EQ(section[5], written);
}

TEST(CrashReport, SaysThatTheFactsOfTheExecutableAreNotThere) {
  EXPECT_EQ(sectionOf(CrashRun(quick("fail:GetFileInformationByHandle read")).lines(), "  Module name")[1],
            "# File size and time could not be determined (EC 5)");
}

TEST(CrashReport, HasEachVariableOfTheEnvironmentWhole) {
  std::string const value(32000, 'v');
  Lines const section =
      sectionOf(CrashRun(quick("read", {{"KIVARA_LONG", value}})).lines(), "  Environment variables:");
  EXPECT_EQ(section[0], "  Environment variables:");
  EXPECT_NE(std::find(section.begin(), section.end(), "    KIVARA_LONG=" + value), section.end());
  EXPECT_NE(std::find(section.begin(), section.end(), "    KIVDUMP_NO_ENCRYPT=1"), section.end());
}

TEST(CrashReport, NamesNoPrinterWhereThereIsNone) {
  EXPECT_EQ(sectionOf(CrashRun(quick("read")).lines(), "  Printer: "),
            (Lines{"  Printer: (NULL)", "  Printer driver: "}));
}

TEST(CrashReport, HasTheTimesOfTheProcess) {
  Lines const section = sectionOf(CrashRun(quick("read")).lines(), "  Process times:");
  EXPECT_EQ(forms(section), (Lines{"  Process times:", "    Creation time....: 99.99.9999, 99:99.99",
                                   "    Kernel time......: 99:99.99.999", "    User time........: 99:99.99.999",
                                   "    Up time..........: 9d 99h 99m 99s 999ms"}));
  EXPECT_EQ(section[4].substr(0, 34), "    Up time..........: 0d 00h 00m ");
}

TEST(CrashReport, SaysWhyThereAreNoTimesOfTheProcess) {
  EXPECT_NE(CrashRun(quick("fail:LoadLibraryA read")).report().find("\r\n\r\n# Failed to load kernel32.dll\r\n\r\n"),
            std::string::npos);
  EXPECT_NE(CrashRun(quick("fail:GetProcAddress read"))
                .report()
                .find("\r\n\r\n# Failed to find GetProcessTimes in kernel32.dll\r\n\r\n"),
            std::string::npos);
  EXPECT_NE(
      CrashRun(quick("fail:GetVersionExA read")).report().find("\r\n\r\n# GetProcessTimes is not supported\r\n\r\n"),
      std::string::npos);
  EXPECT_NE(CrashRun(quick("notimes read")).report().find("\r\n\r\n# GetProcessTimes failed with EC 5\r\n\r\n"),
            std::string::npos);
}

TEST(CrashReport, HasTheUpTimeOfTheSystem) {
  std::string line = form(sectionOf(CrashRun(quick("read")).lines(), "  System up time").front());
  line.erase(std::unique(line.begin(), line.end(), [](char a, char b) { return a == '9' && b == '9'; }), line.end());
  EXPECT_EQ(line, "  System up time.....: 9d 9h 9m 9s 9ms");
}

struct NamedCode {
  unsigned long code;
  char const * name;
};
std::ostream & operator<<(std::ostream & out, NamedCode const & row) { return out << row.name; }

class CrashCode : public testing::TestWithParam<NamedCode> {};

TEST_P(CrashCode, HasItsName) {
  char word[16];
  char line[128];
  std::snprintf(word, sizeof word, "code:%08lX", GetParam().code);
  std::snprintf(line, sizeof line, "  Exception code: %08lXh %s", GetParam().code, GetParam().name);
  EXPECT_EQ(sectionOf(CrashRun(quick(word)).lines(), "  Exception code: ").front(), line);
}

INSTANTIATE_TEST_SUITE_P(Table, CrashCode,
                         testing::Values(NamedCode{EXCEPTION_ACCESS_VIOLATION, "ACCESS_VIOLATION"},
                                         NamedCode{EXCEPTION_DATATYPE_MISALIGNMENT, "DATATYPE_MISALIGNMENT"},
                                         NamedCode{EXCEPTION_SINGLE_STEP, "SINGLE_STEP"},
                                         NamedCode{EXCEPTION_ARRAY_BOUNDS_EXCEEDED, "ARRAY_BOUNDS_EXCEEDED"},
                                         NamedCode{EXCEPTION_FLT_DENORMAL_OPERAND, "FLT_DENORMAL_OPERAND"},
                                         NamedCode{EXCEPTION_FLT_DIVIDE_BY_ZERO, "FLT_DIVIDE_BY_ZERO"},
                                         NamedCode{EXCEPTION_FLT_INEXACT_RESULT, "FLT_INEXACT_RESULT"},
                                         NamedCode{EXCEPTION_FLT_INVALID_OPERATION, "FLT_INVALID_OPERATION"},
                                         NamedCode{EXCEPTION_FLT_OVERFLOW, "FLT_OVERFLOW"},
                                         NamedCode{EXCEPTION_FLT_STACK_CHECK, "FLT_STACK_CHECK"},
                                         NamedCode{EXCEPTION_FLT_UNDERFLOW, "FLT_UNDERFLOW"},
                                         NamedCode{EXCEPTION_INT_DIVIDE_BY_ZERO, "INT_DIVIDE_BY_ZERO"},
                                         NamedCode{EXCEPTION_INT_OVERFLOW, "INT_OVERFLOW"},
                                         NamedCode{EXCEPTION_PRIV_INSTRUCTION, "PRIV_INSTRUCTION"},
                                         NamedCode{EXCEPTION_IN_PAGE_ERROR, "IN_PAGE_ERROR"},
                                         NamedCode{EXCEPTION_ILLEGAL_INSTRUCTION, "ILLEGAL_INSTRUCTION"},
                                         NamedCode{EXCEPTION_NONCONTINUABLE_EXCEPTION, "NONCONTINUABLE_EXCEPTION"},
                                         NamedCode{EXCEPTION_STACK_OVERFLOW, "STACK_OVERFLOW"},
                                         NamedCode{EXCEPTION_INVALID_DISPOSITION, "INVALID_DISPOSITION"},
                                         NamedCode{EXCEPTION_GUARD_PAGE, "GUARD_PAGE"},
                                         NamedCode{EXCEPTION_INVALID_HANDLE, "INVALID_HANDLE"}));

// The place of the fault

TEST(CrashReport, NamesAddressSectionOffsetAndTheBeginningOfTheModule) {
  std::string const line = sectionOf(CrashRun(quick("read")).lines(), "  Exception code: ").back();
  EXPECT_EQ(line.substr(0, 18), "  Fault address:  ");
  EXPECT_EQ(line.substr(26, 8), "h 0001h:") << "the code is the first section";
  EXPECT_EQ(line.substr(42), "h " + support::binFolder().substr(0, 7));
  auto const address = std::stoul(line.substr(18, 8), nullptr, 16);
  auto const offset = std::stoul(line.substr(34, 8), nullptr, 16);
  EXPECT_EQ((address - offset) % 0x1000, 0u) << line;
}

TEST(CrashReport, SaysThatAnAddressIsInNoModule) {
  EXPECT_NE(CrashRun(quick("call"))
                .report()
                .find("ACCESS_VIOLATION\r\n\r\n# [mbi.AllocationBase == NULL]\r\n"
                      "  Fault address:  00000000h 0000h:00000000h \r\n\r\n"),
            std::string::npos);
}

TEST(CrashReport, SaysThatAnAddressInDataHasNoModule) {
  std::string const report = CrashRun(quick("data")).report();
  EXPECT_NE(report.find("\r\n# [GetModuleFileName ((HMODULE) hMod, szModule, len) != 0 failed with EC "),
            std::string::npos);
  EXPECT_NE(report.find("h 0000h:00000000h \r\n"), std::string::npos);
}

TEST(CrashReport, SaysThatAnAddressIsInNoSection) {
  std::string const report = CrashRun(quick("header")).report();
  std::string const beginning =
      "ILLEGAL_INSTRUCTION\r\n\r\n# '" + support::binFolder().substr(0, 7) + "': Could not find RVA 00000010h in ";
  EXPECT_NE(report.find(beginning), std::string::npos) << report;
  EXPECT_NE(report.find(" PE sections\r\n  Fault address:  "), std::string::npos);
  EXPECT_NE(report.find("h 0000h:00000000h \r\n\r\n"), std::string::npos);
}

TEST(CrashReport, SaysThatNothingIsKnownOfAnAddress) {
  EXPECT_NE(CrashRun(quick("fail:VirtualQuery read"))
                .report()
                .find("ACCESS_VIOLATION\r\n# [VirtualQuery (addr, &mbi, sizeof (mbi)) != 0 failed with EC 5]\r\n  "
                      "Fault address:  "),
            std::string::npos);
}

// The stack

TEST(CrashReport, SaysWhereSymbolsAreSearched) {
  char system[MAX_PATH] = "";
  char windows[MAX_PATH] = "";
  GetSystemDirectoryA(system, MAX_PATH);
  GetWindowsDirectoryA(windows, MAX_PATH);
  EXPECT_EQ(sectionOf(CrashRun(quick("read")).lines(), "  [Start"),
            (Lines{"  [Start dbghelp.dll stack tracing]",
                   "  Symbols are searched in: '" + support::binFolder() + ';' + system + ';' + windows + "'"}));
}

TEST(CrashReport, SaysThatThereAreNoSymbols) {
  std::string const report = CrashRun(quick("fail:SymInitialize read")).report();
  std::string const end = "# [SymInitialize (GetCurrentProcess (), sSearchPath, true) failed with EC 5]\r\n"
                          "  [Start generic stack tracing]\r\n  End of stack trace\r\n\r\n[DONE]\r\n\r\n";
  ASSERT_GT(report.size(), end.size());
  EXPECT_EQ(report.substr(report.size() - end.size()), end);
}

TEST(CrashReport, SaysThatTheOptionsOfSymbolsAreRefused) {
  EXPECT_NE(CrashRun(quick("fail:SymSetOptions read"))
                .report()
                .find("# [SymSetOptions (nOptions) failed with EC 5]\r\n"
                      "  [Start dbghelp.dll stack tracing]\r\n"),
            std::string::npos);
}

// The file

TEST(CrashReport, IsScrambledByOneByteUnlessTheEnvironmentSaysOtherwise) {
  CrashRun const run(quick("read", {{"KIVDUMP_NO_ENCRYPT", std::nullopt}}));
  EXPECT_EQ(run.report().find("ACCESS_VIOLATION"), std::string::npos);
  std::string const plain = scrambled(run.report());
  EXPECT_EQ(plain.substr(0, 27), "\r\n# [dump v4] Crash dump\n\r\n");
  EXPECT_NE(plain.find("ACCESS_VIOLATION"), std::string::npos);
}

TEST(CrashReport, IsAppended) {
  std::string const before(100000, 'b');
  CrashStart start = quick("read");
  start.filesBefore = {{"crash_ways.exe.log", before}};
  CrashRun const run(start);
  EXPECT_EQ(run.report().substr(0, before.size() + 2), before + "\r\n");
}

} // namespace
