// Whole processes that fail: what the filter leaves behind, shows and passes on.

#include "diagnostics/crash_run.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <ostream>

using namespace kivtest;

namespace {

struct Fault {
  char const * word;
  unsigned long code;
  char const * name;
};
std::ostream & operator<<(std::ostream & out, Fault const & row) { return out << row.word; }

std::string hex(unsigned long value) {
  char text[9];
  std::snprintf(text, sizeof text, "%08lX", value);
  return text;
}

class CrashFault : public testing::TestWithParam<Fault> {};

TEST_P(CrashFault, LeavesAReportAndEndsTheProcessWithItsCode) {
  CrashRun const run(quick(GetParam().word));
  EXPECT_EQ(run.exitCode(), GetParam().code);
  EXPECT_EQ(run.output(), Lines{"ready"});
  EXPECT_EQ(run.errors(), errorLines(GetParam().code, false));
  EXPECT_EQ(sectionOf(run.lines(), "  Exception code: ").front(),
            "  Exception code: " + hex(GetParam().code) + "h " + GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(Table, CrashFault,
                         testing::Values(Fault{"read", STATUS_ACCESS_VIOLATION, "ACCESS_VIOLATION"},
                                         Fault{"write", STATUS_ACCESS_VIOLATION, "ACCESS_VIOLATION"},
                                         Fault{"call", STATUS_ACCESS_VIOLATION, "ACCESS_VIOLATION"},
                                         Fault{"divide", STATUS_INTEGER_DIVIDE_BY_ZERO, "INT_DIVIDE_BY_ZERO"},
                                         Fault{"float", STATUS_FLOAT_DIVIDE_BY_ZERO, "FLT_DIVIDE_BY_ZERO"},
                                         Fault{"illegal", STATUS_ILLEGAL_INSTRUCTION, "ILLEGAL_INSTRUCTION"},
                                         Fault{"privileged", STATUS_PRIVILEGED_INSTRUCTION, "PRIV_INSTRUCTION"},
                                         Fault{"guard", STATUS_GUARD_PAGE_VIOLATION, "GUARD_PAGE"},
                                         Fault{"data", STATUS_ILLEGAL_INSTRUCTION, "ILLEGAL_INSTRUCTION"},
                                         Fault{"thread", STATUS_ACCESS_VIOLATION, "ACCESS_VIOLATION"}));

class CrashOnAThread : public testing::TestWithParam<char const *> {};

TEST_P(CrashOnAThread, LeavesReportAndMinidump) {
  CrashRun const run({GetParam()});
  EXPECT_EQ(run.errors(), errorLines(STATUS_ACCESS_VIOLATION));
  EXPECT_EQ(support::readFile(run.fileEndingIn(".dmp")).value_or("").substr(0, 4), "MDMP");
  EXPECT_NE(run.fileEndingIn(".log"), "");
  EXPECT_EQ(run.files().size(), 2u);
}

INSTANTIATE_TEST_SUITE_P(, CrashOnAThread, testing::Values("read", "thread"), [](auto const & row) {
  return std::string(row.param == std::string("read") ? "TheMainOne" : "Another");
});

TEST(Crash, InAStaticDestructorIsReportedToo) {
  CrashRun const run({"emptydump destructor"});
  EXPECT_EQ(run.output(), (Lines{"ready", "end"}));
  EXPECT_EQ(run.errors(), errorLines(STATUS_ACCESS_VIOLATION));
  EXPECT_NE(run.fileEndingIn(".dmp"), "");
}

TEST(Crash, OnTwoThreadsAtOnceIsReportedOnce) {
  CrashRun const run({"emptydump threads"});
  Lines const lines = run.lines();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "# [dump v4] Crash dump"), 1);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "[DONE]"), 1);
  EXPECT_EQ(run.boxes().size(), 1u);
}

TEST(Crash, ByABreakpointPassesWithTheFirstLineOnly) {
  CrashRun const run({"break"});
  EXPECT_EQ(run.exitCode(), static_cast<unsigned long>(STATUS_BREAKPOINT));
  EXPECT_EQ(run.errors(), Lines{"[exception] An exception of type 0x80000003 occured"});
  EXPECT_EQ(run.files(), Lines{});
  EXPECT_EQ(run.boxes().size(), 0u);
}

TEST(Crash, ByAnUnknownCodeGetsTheSystemsText) {
  CrashRun const run({"suppress fail:MiniDumpWriteDump nomemory"});
  std::string const line = sectionOf(run.lines(), "  Exception code: ").front();
  char text[512] = "";
  FormatMessageA(FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_FROM_HMODULE | FORMAT_MESSAGE_FROM_SYSTEM,
                 GetModuleHandleA("ntdll.dll"), static_cast<DWORD>(STATUS_NO_MEMORY), 0, text, sizeof text, nullptr);
  EXPECT_EQ(line, support::linesOf("  Exception code: C0000017h " + std::string(text)).front());
}

TEST(Crash, ByACodeWithoutATextHasNone) {
  CrashRun const run({"suppress fail:MiniDumpWriteDump own"});
  EXPECT_EQ(run.exitCode(), 0xE1234567);
  EXPECT_EQ(sectionOf(run.lines(), "  Exception code: ").front(), "  Exception code: E1234567h ");
}

TEST(Crash, InTheFilterItselfEndsTheProcessAndKeepsWhatWasWritten) {
  CrashRun const run({"suppress fail:MiniDumpWriteDump infilter read"});
  EXPECT_EQ(run.exitCode(), static_cast<unsigned long>(STATUS_ACCESS_VIOLATION));
  EXPECT_EQ(run.lines().back(), "");
  EXPECT_EQ(sectionOf(run.lines(), "  No loaded plugins!"), Lines{"  No loaded plugins!"});
  EXPECT_EQ(sectionOf(run.lines(), "  Exception code"), Lines{});
  EXPECT_EQ(run.boxes().size(), 0u);
}

TEST(Crash, KeepsWhatWasWrittenWhenTheProcessDiesInTheMiddle) {
  CrashRun const run({"suppress fail:MiniDumpWriteDump endinreport read"});
  EXPECT_EQ(run.exitCode(), 77u);
  EXPECT_EQ(sectionOf(run.lines(), "  Current directory: ").size(), 2u);
  EXPECT_EQ(sectionOf(run.lines(), "  System crash time"), Lines{});
}

TEST(Crash, FilterOfTheProgramIsRefusedWithNull) {
  CrashRun const run({"emptydump setfilter read"});
  EXPECT_EQ(run.output(), (Lines{"ready", "filter 0"}));
  EXPECT_EQ(run.errors(), errorLines(STATUS_ACCESS_VIOLATION));
}

TEST(CrashFilter, PassesOnToTheOneThatWasSetBefore) {
  CrashRun const run({.words = "", .program = "crash_late"});
  EXPECT_EQ(run.output(), Lines{"filter E1234567"});
  EXPECT_EQ(run.errors(), errorLines(0xE1234567));
  EXPECT_EQ(run.exitCode(), 0xE1234567);
}

TEST(CrashFilter, ReportsOnlyTheFirstOfTwoExceptionsAndGivesTheAnswerOfTheOneBefore) {
  CrashRun const run({.words = "continue", .program = "crash_late"});
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.output(), (Lines{"filter E1234567", "first", "filter E1234568", "second"}));
  Lines errors = errorLines(0xE1234567);
  errors.push_back("[exception] An exception of type 0xE1234568 occured");
  EXPECT_EQ(run.errors(), errors);
  EXPECT_EQ(run.files().size(), 2u);
  EXPECT_EQ(run.boxes().size(), 1u);
  Lines const lines = run.lines();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "# [dump v4] Crash dump"), 1);
}

// Boxes and archive

TEST(CrashBox, NamesTheArchiveEvenUnderSuppression) {
  for (char const * words : {"emptydump read", "emptydump suppress read"}) {
    CrashRun const run({words});
    ASSERT_EQ(run.boxes().size(), 1u) << words;
    std::string const dump = run.fileEndingIn(".dmp");
    EXPECT_EQ(run.boxes()[0].title, "An unrecoverable error occured");
    EXPECT_EQ(run.boxes()[0].buttons, Lines{"OK"});
    EXPECT_EQ(run.boxes()[0].texts,
              Lines{"A crash dump file was written to\n  '" + dump.substr(0, dump.size() - 4) + ".crash'\n"});
  }
}

TEST(CrashBox, NamesTheReportWhereThereIsNoMinidump) {
  CrashRun const run({"fail:MiniDumpWriteDump read"});
  EXPECT_EQ(run.errors()[1], "MiniDumpWriteDump failed");
  ASSERT_EQ(run.boxes().size(), 1u);
  EXPECT_EQ(run.boxes()[0].title, "An unrecoverable error occured");
  EXPECT_EQ(run.boxes()[0].texts, Lines{"A crash dump file was written to\n  '" + run.reportPath() + "'\n"});
}

TEST(CrashBox, OfTheReportIsNotShownUnderSuppression) {
  CrashRun const run({"fail:MiniDumpWriteDump suppress read"});
  EXPECT_EQ(run.boxes().size(), 0u);
  EXPECT_NE(run.report(), "");
}

TEST(CrashBox, SaysThatTheReportCannotBeOpened) {
  CrashRun const run({"fail:CreateFileA read"});
  EXPECT_EQ(run.errors(), (Lines{"[exception] An exception of type 0xC0000005 occured",
                                 "CreateMiniDump dmp file failed", "[exception] finished dumpfile creation"}));
  ASSERT_EQ(run.boxes().size(), 1u);
  EXPECT_EQ(run.boxes()[0].title, "An unrecoverable error occured");
  EXPECT_EQ(run.boxes()[0].texts,
            Lines{"Unable to create dump file\n  '" + run.reportPath() +
                  "'\nErrorcode 5!\n\nMaybe a dump file was created!!\nCheck for the file existance anyway!"});
  EXPECT_EQ(run.files(), Lines{});
}

TEST(CrashBox, OfAReportThatCannotBeOpenedComesBeforeThatOfTheArchive) {
  CrashRun const run({"hold read"});
  EXPECT_EQ(run.errors(), (Lines{"[exception] An exception of type 0xC0000005 occured", "Minidump dmp created.",
                                 "[exception] finished dumpfile creation"}));
  ASSERT_EQ(run.boxes().size(), 2u);
  EXPECT_EQ(run.boxes()[0].texts,
            Lines{"Unable to create dump file\n  '" + run.reportPath() +
                  "'\nErrorcode 32!\n\nMaybe a dump file was created!!\nCheck for the file existance anyway!"});
  std::string const dump = run.fileEndingIn(".dmp");
  EXPECT_EQ(run.boxes()[1].texts,
            Lines{"A crash dump file was written to\n  '" + dump.substr(0, dump.size() - 4) + ".crash'\n"});
  EXPECT_EQ(run.report(), "");
}

TEST(CrashBox, OfAReportThatCannotBeOpenedIsNotShownUnderSuppression) {
  EXPECT_EQ(CrashRun({"fail:CreateFileA suppress read"}).boxes().size(), 0u);
}

/// What the library starts, with the time of the crash as <time>.
std::string archiveCommand(CrashRun const & run) {
  for (auto const & line : run.output())
    if (line.starts_with("process "))
      return line.substr(8);
  return "";
}

std::string expectedCommand(CrashRun const & run) {
  std::string const dump = run.fileEndingIn(".dmp");
  std::string const base = dump.substr(0, dump.size() - 4);
  return support::binFolder() + "\\tools\\zip\\7za.exe a -y -tzip " + base + ".crash " + base + ".dmp " +
         run.reportPath();
}

TEST(CrashArchive, CommandEndsWithTheReportWithoutALogOfTheDatabase) {
  for (char const * words : {"emptydump watch read", "emptydump watch log read", "emptydump watch nolog read"}) {
    CrashRun const run({words});
    EXPECT_EQ(archiveCommand(run), expectedCommand(run)) << words;
  }
}

TEST(CrashArchive, CommandEndsWithTheLogOfTheDatabaseWhereThereIsOne) {
  CrashRun const named({.words = "emptydump watch log read", .filesBefore = {{"orders.log", "line"}}});
  EXPECT_EQ(archiveCommand(named), expectedCommand(named) + ' ' + named.folder() + "\\\\orders.log");
  CrashRun const unnamed({.words = "emptydump watch read", .filesBefore = {{"kivdb.log", "line"}}});
  EXPECT_EQ(archiveCommand(unnamed), expectedCommand(unnamed) + ' ' + unnamed.folder() + "\\\\kivdb.log");
}

TEST(CrashArchive, IsNotAskedForWithoutAMinidump) {
  EXPECT_EQ(archiveCommand(CrashRun({"watch fail:MiniDumpWriteDump read"})), "");
}

TEST(CrashFiles, AreNamedAfterProgramAndTime) {
  CrashRun const run({"emptydump read"});
  ASSERT_EQ(run.files().size(), 2u);
  EXPECT_EQ(run.files()[1], "crash_ways.exe.log");
  std::string form = run.files()[0];
  std::replace_if(
      form.begin(), form.end(), [](unsigned char c) { return std::isdigit(c) != 0; }, '9');
  EXPECT_EQ(form, "crash_ways.exe.99999999999999999.dmp");
}

} // namespace
