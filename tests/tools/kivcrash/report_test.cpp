#include "crash/report.hpp"

#include <gtest/gtest.h>

using kivcrash::Problems;
using kivcrash::Report;

namespace {

std::string crash(std::string const & time, std::string const & more = "") {
  return "\r\n# [dump v4] Crash dump\n\r\n  KIVARA\r\n    Version: 7.20.00.5050\r\n" + more +
         "\r\n  System crash time: " + time +
         "\r\n\r\n  Exception code: C0000005h ACCESS_VIOLATION\r\n\r\n[DONE]\r\n\r\n";
}

std::string asked(std::string const & time) {
  return "# === [Mini Dump for amodule.cpp line 246]\r\n\r\n# [dump v4] Mini Dump\n\r\n  System crash time: " + time +
         "\r\n\r\n[DONE]\r\n\r\n";
}

std::string scrambled(std::string text, char key = '\x5A') {
  for (char & c : text)
    c = static_cast<char>(c ^ key);
  return text;
}

constexpr char kMorning[] = "22.11.2025, 08:30.15";
constexpr char kEvening[] = "22.11.2025, 20:30.15";
constexpr std::int64_t kMorningSeconds = 1'763'800'215;

std::vector<Report> readSound(std::string const & bytes) {
  Problems problems;
  std::vector<Report> reports = kivcrash::readReports(bytes, problems);
  EXPECT_EQ(problems, Problems{});
  return reports;
}

Problems problemsOf(std::string const & bytes) {
  Problems problems;
  kivcrash::readReports(bytes, problems);
  return problems;
}

TEST(CrashReport, IsReadPlain) {
  auto const reports = readSound(crash(kMorning));
  ASSERT_EQ(reports.size(), 1u);
  EXPECT_TRUE(reports[0].isCrash && reports[0].isComplete);
  EXPECT_EQ(reports[0].time, kMorningSeconds);
  EXPECT_EQ(reports[0].text, crash(kMorning));
}

TEST(CrashReport, IsReadWhateverTheKeyIs) {
  for (int key = 1; key < 256; ++key) {
    auto const reports = readSound(scrambled(crash(kMorning), static_cast<char>(key)));
    ASSERT_EQ(reports.size(), 1u) << key;
    ASSERT_EQ(reports[0].text, crash(kMorning)) << key;
  }
}

TEST(CrashReport, MayBeScrambledBetweenPlainOnes) {
  auto const reports =
      readSound(asked(kMorning) + scrambled(crash(kMorning)) + scrambled(asked(kEvening)) + crash(kEvening));
  ASSERT_EQ(reports.size(), 4u);
  EXPECT_EQ(reports[0].text, asked(kMorning));
  EXPECT_EQ(reports[1].text, crash(kMorning));
  EXPECT_EQ(reports[2].text, asked(kEvening));
  EXPECT_EQ(reports[3].text, crash(kEvening));
  EXPECT_EQ(reports[0].isCrash, false);
  EXPECT_EQ(reports[3].isCrash, true);
}

TEST(CrashReport, ThatCouldNotBeMadeIsWholeAsItIs) {
  auto const reports =
      readSound("# === [Mini Dump for a line 1]\r\n# [failed to create the minidump - EC 5]\r\n" + crash(kMorning));
  ASSERT_EQ(reports.size(), 2u);
  EXPECT_TRUE(reports[0].isComplete);
}

TEST(CrashReport, CutOffIsNamedAndWhatIsThereIsRead) {
  std::string const whole = crash(kMorning);
  Problems problems;
  auto const reports = kivcrash::readReports(whole.substr(0, whole.find("[DONE]")), problems);
  ASSERT_EQ(reports.size(), 1u);
  EXPECT_EQ(reports[0].time, kMorningSeconds);
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_TRUE(problems[0].starts_with("report 1 is cut off"));
}

TEST(CrashReport, AnywhereCutOffIsNamed) {
  std::string const whole = crash(kMorning);
  for (std::size_t size = 0; size < whole.find("[DONE]") + 8; ++size)
    ASSERT_FALSE(problemsOf(scrambled(whole.substr(0, size))).empty()) << size;
}

TEST(CrashReport, WithoutItsBeginningIsNamed) {
  EXPECT_EQ(problemsOf("rest of another\r\n" + crash(kMorning)),
            Problems{"the log does not begin with a report: something is missing before it"});
  EXPECT_EQ(problemsOf("no report"), Problems{"there is no report in it"});
  EXPECT_EQ(problemsOf(""), Problems{"there is no report in it"});
}

TEST(CrashReport, WithBytesThatAreNoTextIsNamed) {
  EXPECT_EQ(problemsOf(crash(kMorning, "a\x01")), Problems{"report 1 is damaged: it has bytes in it that are no text"});
  EXPECT_EQ(problemsOf(crash("22.13.2025, 08:30.15")),
            Problems{"report 1 is damaged: it does not say when it was written"});
  EXPECT_EQ(problemsOf(crash("22.11.2025, 24:30.15")),
            Problems{"report 1 is damaged: it does not say when it was written"});
  EXPECT_EQ(problemsOf(crash("22.11.2025 08:30.15")),
            Problems{"report 1 is damaged: it does not say when it was written"});
}

TEST(CrashReport, MayHaveAnyBytesInTheEnvironment) {
  std::string const environment = "\r\n  Environment variables:\r\n    PS1=\x1B[0m\r\n";
  readSound(crash(kMorning, environment));
  EXPECT_EQ(problemsOf(crash(kMorning, environment + "\r\n  Printer: \x1B\r\n")),
            Problems{"report 1 is damaged: it has bytes in it that are no text"})
      << "and nowhere after it";
}

TEST(CrashReport, GivesWhatFollowsTheBeginningOfALine) {
  Report const report = readSound(crash(kMorning, "  Module name......: 'C:\\B\xE4r.exe'\r\n"))[0];
  EXPECT_EQ(kivcrash::lineAfter(report, "    Version: "), "7.20.00.5050");
  EXPECT_EQ(kivcrash::lineAfter(report, "  Module name......: "), "'C:\\B\xC3\xA4r.exe'");
  EXPECT_EQ(kivcrash::lineAfter(report, "Version: "), "");
}

TEST(CrashReport, GivesTheLinesBelowOneUpToAnEmptyOne) {
  Report const report = readSound(
      crash(kMorning, "\r\n  2 loaded plugins:\r\n    01 a.dll [A]\r\n    02 b.dll [B]\r\n\r\n    other\r\n"))[0];
  EXPECT_EQ(kivcrash::linesBelow(report, " loaded plugins:"),
            (std::vector<std::string>{"01 a.dll [A]", "02 b.dll [B]"}));
  EXPECT_EQ(kivcrash::linesBelow(report, " nothing:"), std::vector<std::string>{});
}

TEST(CrashReport, BelongsToTheMinidumpThatWasWrittenShortlyBefore) {
  auto const reports = readSound(crash(kMorning) + asked("22.11.2025, 08:31.00") + crash(kEvening));
  auto const morning = static_cast<std::uint32_t>(kMorningSeconds);
  EXPECT_EQ(kivcrash::reportOf(reports, morning), reports.data());
  EXPECT_EQ(kivcrash::reportOf(reports, morning - 120), reports.data());
  EXPECT_EQ(kivcrash::reportOf(reports, morning - 121), nullptr);
  EXPECT_EQ(kivcrash::reportOf(reports, morning + 1), reports.data());
  EXPECT_EQ(kivcrash::reportOf(reports, morning + 2), nullptr);
  EXPECT_EQ(kivcrash::reportOf(reports, morning + 43'190), &reports[2]);
}

TEST(CrashReport, OfTwoTheNearerOneIsMeant) {
  auto const reports = readSound(crash("22.11.2025, 08:30.20") + crash(kMorning));
  EXPECT_EQ(kivcrash::reportOf(reports, static_cast<std::uint32_t>(kMorningSeconds)), &reports[1]);
}

} // namespace
