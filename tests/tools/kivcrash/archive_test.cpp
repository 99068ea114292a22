#include "crash/archive.hpp"
#include "crash/crashfile.hpp"
#include "zip_builder.hpp"

#include "support/data/files.hpp"

#include <gtest/gtest.h>

#include <filesystem>

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

/// The archive with the flag of UTF-8 in both headers of its one file.
std::string withUtf8(std::string archive) {
  constexpr char kFlag = 8; // in the second byte
  archive[7] = kFlag;
  archive[archive.find("PK\1\2") + 9] = kFlag;
  return archive;
}

TEST(CrashArchive, NamesOfFilesAreUtf8OrInTheCodePageOfConsoles) {
  Problems problems;
  auto const flagged = kivcrash::unpackArchive(withUtf8(zipOf({{"B\xC3\xA4r.txt", "text"}})), problems);
  EXPECT_EQ(flagged.begin()->first, "B\xC3\xA4r.txt");
  auto const broken = kivcrash::unpackArchive(withUtf8(zipOf({{"B\xFFr.txt", "text"}})), problems);
  EXPECT_EQ(broken.begin()->first, "B\xEF\xBF\xBDr.txt");
  wchar_t wide[2] = L"";
  ASSERT_TRUE(OemToCharBuffW("\x84", wide, 1));
  auto const plain = kivcrash::unpackArchive(zipOf({{"B\x84r.txt", "text"}}), problems);
  EXPECT_EQ(plain.begin()->first, "B" + kivcrash::toUtf8(std::wstring_view(wide, 1)) + "r.txt");
}

TEST(CrashArchive, WritesNothingWhateverItsFilesAreCalled) {
  support::TempFolder const folder;
  std::filesystem::path const before = std::filesystem::current_path();
  std::filesystem::create_directory(folder.path() + "\\work");
  std::filesystem::current_path(folder.path() + "\\work");
  Problems problems;
  auto const contents = kivcrash::unpackArchive(
      zipOf({{"..\\up.txt", "1"}, {folder / "root.txt", "2"}, {"/slash.txt", "3"}, {"below/", ""}}), problems);
  std::filesystem::current_path(before);
  EXPECT_EQ(contents, (kivcrash::Contents{{"up.txt", "1"}, {"root.txt", "2"}, {"slash.txt", "3"}}));
  EXPECT_EQ(problems, Problems{});
  EXPECT_EQ(support::entriesOf(folder.path()), std::vector<std::string>{"work"});
  EXPECT_EQ(support::entriesOf(folder / "work"), std::vector<std::string>{});
}

TEST(CrashArchive, OfTwoFilesOfOneNameReadsTheFirstAndSaysSo) {
  Problems problems;
  auto const contents = kivcrash::unpackArchive(zipOf({{"a\\x.log", "first"}, {"b/x.log", "second"}}), problems);
  EXPECT_EQ(contents, (kivcrash::Contents{{"x.log", "first"}}));
  EXPECT_EQ(problems, Problems{"the archive has two files of the name x.log: the first one is read"});
}

TEST(CrashArchive, IsReadUpToAThousandFiles) {
  std::vector<std::pair<std::string, std::string>> files;
  for (int i = 0; i < 1'000; ++i)
    files.emplace_back(std::to_string(i), "");
  Problems problems;
  EXPECT_EQ(kivcrash::unpackArchive(zipOf(files), problems).size(), 1'000u);
  EXPECT_EQ(problems, Problems{});
  files.emplace_back("more", "");
  EXPECT_EQ(kivcrash::unpackArchive(zipOf(files), problems).size(), 1'000u);
  EXPECT_EQ(problems, Problems{"the archive has more than 1000 files: the rest is left out"});
}

TEST(CrashFileKinds, OfAMinidumpTheLogBesideItIsReadToo) {
  support::TempFolder const folder;
  support::writeFile(folder / "a.exe.1.dmp", soundDump().bytes());
  support::writeFile(folder / "a.exe.log", kReport);
  Problems problems;
  auto const file = kivcrash::openCrashFile(folder / "a.exe.1.dmp", problems);
  ASSERT_TRUE(file);
  EXPECT_EQ(problems, Problems{});
  ASSERT_NE(file->report, nullptr);
  EXPECT_EQ(file->report->text, kReport);
}

TEST(CrashFileKinds, AMinidumpIsReadThoughTheLogBesideItIsNot) {
  support::TempFolder const folder;
  support::writeFile(folder / "a.exe.1.dmp", soundDump().bytes());
  support::FileInUse const held(folder / "a.exe.log");
  Problems problems;
  auto const file = kivcrash::openCrashFile(folder / "a.exe.1.dmp", problems);
  ASSERT_TRUE(file);
  EXPECT_TRUE(file->dump);
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_NE(problems[0].find("a.exe.log: cannot be read: "), std::string::npos) << problems[0];
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
