#include "archive.hpp"
#include "crashfile.hpp"
#include "zip_builder.hpp"

#include <gtest/gtest.h>

using namespace kivtest;
using kivcrash::Problems;

namespace {

constexpr char kReport[] =
    "\r\n# [dump v4] Crash dump\r\n\r\n  System crash time: 22.11.2025, 08:30.16\r\n\r\n[DONE]\r\n";

std::string soundArchive() {
  return zipOf(
      {{"orders.exe.20251122083015000.dmp", soundDump().bytes()}, {"orders.exe.log", kReport}, {"orders.log", "x"}});
}

TEST(CrashArchive, IsUnpackedInMemory) {
  Problems problems;
  std::string const large(300'000, 'x');
  auto const contents =
      kivcrash::unpackArchive(zipOf({{"a.txt", "text"}, {"folder/b.txt", large}, {"empty", ""}}), problems);
  EXPECT_EQ(problems, Problems{});
  EXPECT_EQ(contents, (kivcrash::Contents{{"a.txt", "text"}, {"b.txt", large}, {"empty", ""}}));
}

TEST(CrashArchive, HasDumpReportAndOtherFilesByTheirContents) {
  Problems problems;
  auto const file = kivcrash::readCrashFile(soundArchive(), problems);
  ASSERT_TRUE(file);
  EXPECT_EQ(problems, Problems{});
  ASSERT_TRUE(file->dump);
  EXPECT_EQ(file->dump->modules.size(), 2u);
  ASSERT_NE(file->report, nullptr);
  EXPECT_EQ(file->report->text, kReport);
  EXPECT_EQ(file->others, std::vector<std::string>{"orders.log"});
}

TEST(CrashArchive, CutOffAnywhereIsNamed) {
  std::string const whole = soundArchive();
  for (std::size_t size = 0; size < whole.size(); size += 7) {
    Problems problems;
    kivcrash::readCrashFile(whole.substr(0, size), problems);
    ASSERT_FALSE(problems.empty()) << size;
  }
}

TEST(CrashArchive, WithADamagedFileGivesTheOthers) {
  std::string archive = soundArchive();
  std::size_t const at = archive.find("orders.exe.log") + 20;
  archive[at] = static_cast<char>(archive[at] ^ 0x55);
  Problems problems;
  auto const file = kivcrash::readCrashFile(archive, problems);
  ASSERT_TRUE(file);
  EXPECT_TRUE(file->dump);
  ASSERT_FALSE(problems.empty());
  EXPECT_EQ(problems[0], "the archive is damaged: orders.exe.log is not whole");
}

TEST(CrashArchive, WithoutDumpOrReportSaysSo) {
  Problems problems;
  EXPECT_TRUE(kivcrash::readCrashFile(zipOf({{"orders.exe.log", kReport}}), problems));
  EXPECT_EQ(problems, Problems{"the archive has no minidump in it"});
  problems.clear();
  EXPECT_TRUE(kivcrash::readCrashFile(zipOf({{"a.dmp", soundDump().bytes()}}), problems));
  EXPECT_EQ(problems, Problems{"the archive has no report in it"});
  problems.clear();
  EXPECT_FALSE(kivcrash::readCrashFile(zipOf({{"a.txt", "text"}}), problems));
  EXPECT_EQ(problems.back(), "this is no crash archive, minidump or crash report that can be read");
}

TEST(CrashArchive, NamesOfFilesHaveNoControlCharacters) {
  Problems problems;
  auto const contents = kivcrash::unpackArchive(zipOf({{"a\x1B[2J.txt", "text"}}), problems);
  EXPECT_EQ(contents.begin()->first, "a?[2J.txt");
}

TEST(CrashFileKinds, AreKnownByTheirFirstBytes) {
  Problems problems;
  EXPECT_TRUE(kivcrash::readCrashFile(soundDump().bytes(), problems)->dump);
  EXPECT_FALSE(kivcrash::readCrashFile(kReport, problems)->dump);
  EXPECT_EQ(problems, Problems{});
  EXPECT_FALSE(kivcrash::readCrashFile("foreign", problems));
  EXPECT_EQ(problems, (Problems{"there is no report in it",
                                "this is no crash archive, minidump or crash report that can be read"}));
}

TEST(CrashFileKinds, AReportOfAnotherCrashIsNotTaken) {
  DumpBuilder dump = soundDump();
  dump.header.TimeDateStamp += 3'600;
  Problems problems;
  auto const file = kivcrash::readCrashFile(zipOf({{"a.dmp", dump.bytes()}, {"a.log", kReport}}), problems);
  EXPECT_EQ(file->report, nullptr);
  EXPECT_EQ(problems, Problems{"the log has no report of this crash"});
}

} // namespace
