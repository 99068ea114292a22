// What a crash gives away, and to whom.

#include "diagnostics/crash_run.hpp"

#include <gtest/gtest.h>

using namespace kivtest;

namespace {

constexpr char kTitle[] = "\r\n# [dump v4] Crash dump\n\r\n";

/// As somebody reads a report who knows nothing but how it begins: each of the 256 bytes is tried.
std::string readByAnybody(std::string const & report) {
  for (int key = 0; key < 256; ++key) {
    std::string text = report;
    for (char & c : text)
      c = static_cast<char>(c ^ key);
    if (text.starts_with(kTitle))
      return text;
  }
  return "";
}

/// The report of a crash, scrambled as it is by itself.
std::string scrambledReport(std::string const & words, Environment environment = {}) {
  environment["KIVDUMP_NO_ENCRYPT"] = std::nullopt;
  return CrashRun(quick(words + " read", environment)).report();
}

TEST(CrashSecret, OfTheCommandLineIsInTheReport) {
  std::string const report = scrambledReport("-uscott -ptiger");
  EXPECT_EQ(report.find("tiger"), std::string::npos) << "not at a glance";
  EXPECT_NE(readByAnybody(report).find(" -uscott -ptiger"), std::string::npos);
}

TEST(CrashSecret, OfTheEnvironmentIsInTheReport) {
  std::string const report = scrambledReport("", {{"PRODUCT_PASSWORD", "tiger"}});
  EXPECT_EQ(report.find("tiger"), std::string::npos);
  EXPECT_NE(readByAnybody(report).find("    PRODUCT_PASSWORD=tiger\r\n"), std::string::npos);
}

/// Of an internal error, after which the program goes on.
TEST(CrashSecret, OfTheCommandLineIsInTheReportOfAnInternalErrorToo) {
  CrashRun const run(quick("-ptiger minidump", {{"PRODUCT_PASSWORD", "lion"}}));
  EXPECT_NE(run.report().find(" -ptiger "), std::string::npos);
  EXPECT_NE(run.report().find("    PRODUCT_PASSWORD=lion\r\n"), std::string::npos);
}

/// Each character one higher.
std::string coded(std::string text) {
  for (char & c : text)
    ++c;
  return text;
}

TEST(CrashSecret, OfAStackIsInTheMinidumpAsPlainTextAndThatOfTheHeapAloneIsNot) {
  CrashRun const run(
      {.words = coded("Tiger-of-the-stack") + ' ' + coded("Lion-of-the-heap"), .program = "secret_keeper"});
  std::string const dump = support::readFile(run.fileEndingIn(".dmp")).value_or("");
  EXPECT_TRUE(dump.starts_with("MDMP")) << "the file is not scrambled";
  EXPECT_NE(dump.find("Tiger-of-the-stack"), std::string::npos);
  EXPECT_EQ(dump.find("Lion-of-the-heap"), std::string::npos);
}

/// Crashes without a minidump and without boxes, with a temporary folder that others can write to.
void crashWith(support::TempFolder const & temporary) {
  support::runProgram({.program = "crash_ways",
                       .arguments = "suppress fail:MiniDumpWriteDump -ptiger read",
                       .environment = {{"TMP", temporary.path()}, {"KIVDUMP_NO_ENCRYPT", "1"}}});
}

TEST(CrashReportFile, OfSomebodyElseIsWrittenTo) {
  support::TempFolder const temporary;
  support::writeFile(temporary / "crash_ways.exe.log", "made by somebody else\r\n");
  crashWith(temporary);
  std::string const report = support::readFile(temporary / "crash_ways.exe.log").value_or("");
  EXPECT_TRUE(report.starts_with("made by somebody else\r\n\r\n# [dump v4] "));
  EXPECT_NE(report.find("-ptiger"), std::string::npos) << "and its owner can read what is in it";
}

TEST(CrashReportFile, ThatIsALinkIsWrittenToItsTarget) {
  support::TempFolder const temporary;
  support::TempFolder const elsewhere;
  support::writeFile(elsewhere / "settings.ini", "a setting\r\n");
  ASSERT_TRUE(
      CreateHardLinkA((temporary / "crash_ways.exe.log").c_str(), (elsewhere / "settings.ini").c_str(), nullptr))
      << GetLastError();
  crashWith(temporary);
  std::string const text = support::readFile(elsewhere / "settings.ini").value_or("");
  EXPECT_TRUE(text.starts_with("a setting\r\n\r\n# [dump v4] ")) << "nothing that was there is lost";
}

} // namespace
