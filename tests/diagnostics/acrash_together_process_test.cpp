// Two programs that report at the same time, and reports that are scrambled.

#include "diagnostics/crash_run.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

using namespace kivtest;

namespace {

/// Two runs of crash_ways that go on together once both are there.
class Pair {
public:
  Pair(std::string const & words, std::string const & firstFolder, std::string const & secondFolder)
      : event_("kivara-crash-pair-" + std::to_string(GetCurrentProcessId())),
        gate_(CreateEventA(nullptr, TRUE, FALSE, event_.c_str())) {
    for (auto const & folder : {firstFolder, secondFolder})
      programs_.push_back(std::make_unique<support::ChildProcess>(
          support::ProgramStart{.program = "crash_ways",
                                .arguments = "suppress fail:MiniDumpWriteDump event:" + event_ + ' ' + words,
                                .environment = {{"KIVDUMP_NO_ENCRYPT", "1"}, {"TMP", folder}}}));
    for (auto const & program : programs_)
      EXPECT_TRUE(program->waitForOutput("waiting", 60));
    SetEvent(gate_);
  }
  Pair(Pair const &) = delete;
  Pair & operator=(Pair const &) = delete;
  ~Pair() {
    SetEvent(gate_);
    CloseHandle(gate_);
  }

  unsigned long exitCode(int index) const { return programs_.at(static_cast<std::size_t>(index))->waitForEnd(); }
  std::string output(int index) const { return programs_.at(static_cast<std::size_t>(index))->output(); }

private:
  std::string const event_;
  HANDLE const gate_;
  std::vector<std::unique_ptr<support::ChildProcess>> programs_;
};

std::ptrdiff_t count(Lines const & lines, std::string const & line) {
  return std::count(lines.begin(), lines.end(), line);
}

Lines linesOfReport(std::string const & folder) {
  return support::linesOf(support::readFile(folder + "\\crash_ways.exe.log").value_or(""));
}

/// Whether each report begins after the end of the one before.
bool areWhole(Lines const & lines) {
  bool isOpen = false;
  for (auto const & line : lines) {
    if (line.starts_with("# [dump v4]")) {
      if (isOpen)
        return false;
      isOpen = true;
    }
    if (line == "[DONE]")
      isOpen = false;
  }
  return !isOpen;
}

TEST(MiniDump, OfTwoProcessesAtOnceIsMadeForBoth) {
  support::TempFolder const first, second;
  Pair const both("minidump minidump minidump", first.path(), second.path());
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(both.exitCode(i), 0u);
    EXPECT_EQ(support::linesOf(both.output(i)),
              (Lines{"ready", "waiting", "minidump 58", "minidump 58", "minidump 58", "end"}));
  }
  for (auto const * folder : {&first, &second}) {
    Lines const lines = linesOfReport(folder->path());
    EXPECT_EQ(count(lines, "# [dump v4] Mini Dump"), 3) << "all use one name for their event";
    EXPECT_EQ(count(lines, "[DONE]"), 3);
    EXPECT_TRUE(areWhole(lines));
  }
}

TEST(Crash, OfTwoProcessesAtOnceInOneFolderLeavesWholeReports) {
  support::TempFolder const folder;
  Pair const both("read", folder.path(), folder.path());
  for (int i = 0; i < 2; ++i)
    EXPECT_EQ(both.exitCode(i), static_cast<unsigned long>(STATUS_ACCESS_VIOLATION));
  Lines const lines = linesOfReport(folder.path());
  EXPECT_GE(count(lines, "# [dump v4] Crash dump"), 1) << "only one can have the file open";
  EXPECT_EQ(count(lines, "# [dump v4] Crash dump"), count(lines, "[DONE]"));
  EXPECT_EQ(count(lines, "# [dump v4] Crash dump"), count(lines, "  [Cleaned up symbols]"));
  EXPECT_TRUE(areWhole(lines));
}

TEST(Crash, WhileAnotherProcessWritesTheReportHasNone) {
  support::TempFolder const folder;
  std::string const event = "kivara-crash-pause-" + std::to_string(GetCurrentProcessId());
  HANDLE const gate = CreateEventA(nullptr, TRUE, FALSE, event.c_str());
  std::map<std::string, std::optional<std::string>> const environment = {{"KIVDUMP_NO_ENCRYPT", "1"},
                                                                         {"TMP", folder.path()}};
  support::ChildProcess const writing({.program = "crash_ways",
                                       .arguments = "suppress fail:MiniDumpWriteDump pauseinreport:" + event + " read",
                                       .environment = environment});
  EXPECT_TRUE(writing.waitForOutput("waiting", 60)) << "in the middle of the report";
  auto const other = support::runProgram({.program = "crash_ways",
                                          .arguments = "suppress fail:MiniDumpWriteDump minidump read",
                                          .environment = environment});
  EXPECT_EQ(support::linesOf(other.output), (Lines{"ready", "minidump 59"}));
  EXPECT_EQ(other.exitCode, static_cast<unsigned long>(STATUS_ACCESS_VIOLATION));
  EXPECT_EQ(other.errors.find("creating CrashDump"), std::string::npos);
  SetEvent(gate);
  CloseHandle(gate);
  EXPECT_EQ(writing.waitForEnd(), static_cast<unsigned long>(STATUS_ACCESS_VIOLATION));
  Lines const lines = linesOfReport(folder.path());
  EXPECT_EQ(count(lines, "# [dump v4] Crash dump"), 1);
  EXPECT_EQ(count(lines, "  [Cleaned up symbols]"), 1);
}

/// The lines without what differs from run to run: digits, and the values of variables.
Lines comparable(std::string const & report) {
  Lines lines;
  bool inVariables = false;
  for (auto const & line : support::linesOf(report)) {
    inVariables = line.starts_with("  Environment variables:") || (inVariables && !line.empty());
    if (!inVariables && !line.starts_with("  Current directory: "))
      lines.push_back(form(line.starts_with("  Fault address:  ") ? line.substr(0, 16) : line));
  }
  return lines;
}

class ScrambledReport : public testing::TestWithParam<char const *> {};

TEST_P(ScrambledReport, IsThePlainOneForAReaderWithTheByte) {
  std::string const words = GetParam();
  CrashRun const plain(quick(words));
  CrashRun const run(quick(words, {{"KIVDUMP_NO_ENCRYPT", std::nullopt}}));
  EXPECT_EQ(run.report().find("dump v4"), std::string::npos);
  EXPECT_EQ(comparable(scrambled(run.report())), comparable(plain.report()));
  EXPECT_NE(comparable(plain.report()), Lines{});
}

INSTANTIATE_TEST_SUITE_P(Table, ScrambledReport,
                         testing::Values("info read", "minidump read",
                                         "fail:GetCurrentDirectoryA fail:GetFileInformationByHandle "
                                         "fail:LoadLibraryA fail:VirtualQuery fail:SymInitialize "
                                         "fail:GetCommandLineA windows7 64bits read",
                                         "fail:GetProcAddress fail:SymSetOptions data", "notimes header",
                                         "fail:GetVersionExA call", "fail:CreateThread minidump"));

} // namespace
