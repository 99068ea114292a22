// A log file and its backups when the date changes. Today is 13 November 2026.
#include "alog.hpp"

#include "diagnostics/local_clock.hpp"
#include "diagnostics/open_logger.hpp"
#include "support/data/files.hpp"
#include "tools/direntry.hpp"
#include "tools/international.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

using support::readFile;
using support::writeFile;
using SV::Date;

namespace {

constexpr char kName[] = "daily.log";
constexpr char kBackup[] = "daily_2026.11.12.log";
constexpr char kOldLine[] = "2026.11.12, 23:59:59: old\r\n";

std::string const kStamp = "2026.11.13, 07:08:09: ";
std::string const kMoved = kStamp + "Moving log file from daily.log to daily_2026.11.12.log.\r\n";

std::string shortDate(Date const & date) { return SV::International().GetDate(date).c_str(); }

std::string contents(std::string const & name = kName) { return readFile(name).value_or("(no file)"); }

/// The names in the working folder, in order.
std::vector<std::string> names() {
  std::vector<std::string> found;
  for (auto const & entry : std::filesystem::directory_iterator("."))
    found.push_back(entry.path().filename().string());
  std::sort(found.begin(), found.end());
  return found;
}

using Names = std::vector<std::string>;

using Logger = kivtest::OpenLogger;

using TurnOver = kivtest::OnThe13th;
using TurnOverWhileOpen = kivtest::OnThe13th;
using FailedTurnOver = kivtest::OnThe13th;
using LogDate = kivtest::OnThe13th;

void setDay(int year, int month, int day) { kivtest::LocalClock::setDay(year, month, day); }

} // namespace

TEST_F(TurnOver, LeavesANewFileAlone) {
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  log.addText("first");
  EXPECT_EQ(contents(), kStamp + "first\r\n");
  EXPECT_EQ(names(), Names{kName});
}

TEST_F(TurnOver, LeavesANewFileAloneThoughItsLoggerWasMadeOnAnotherDay) {
  setDay(2026, 11, 12);
  KivBasicFileLogger log(true, true, 3);
  setDay(2026, 11, 13);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_TRUE(log.addText("first"));
  EXPECT_EQ(contents(), kStamp + "first\r\n");
  EXPECT_EQ(names(), Names{kName});
}

TEST_F(TurnOver, LeavesASecondNewFileAloneThoughTheFirstWasOfAnotherDay) {
  setDay(2026, 11, 12);
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open("first.log", true));
  ASSERT_TRUE(log.close());
  setDay(2026, 11, 13);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_TRUE(log.addText("first"));
  EXPECT_EQ(contents(), kStamp + "first\r\n");
}

TEST_F(TurnOver, MovesAFileOfAnotherDateWhenItIsOpened) {
  writeFile(kName, kOldLine);
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_EQ(contents(), kMoved);
  log.addText("new");
  EXPECT_EQ(contents(), kMoved + kStamp + "new\r\n");
  EXPECT_EQ(contents(kBackup), kOldLine);
  EXPECT_EQ(names(), (Names{kName, kBackup}));
}

TEST_F(TurnOver, DropsItsOwnFirstLineWhereTheFileIsBegunAnew) {
  writeFile(kName, kOldLine);
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, false));
  EXPECT_EQ(contents(), "");
  EXPECT_EQ(contents(kBackup), kOldLine);
}

TEST_F(TurnOver, HappensWithoutStampsTooWhenTheFileIsOpened) {
  writeFile(kName, kOldLine);
  KivBasicFileLogger log(true, false, 3);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_EQ(contents(), kMoved);
}

TEST_F(TurnOver, NeedsBackups) {
  writeFile(kName, kOldLine);
  KivBasicFileLogger log(true, true, 0);
  ASSERT_TRUE(log.open(kName, true));
  log.addText("new");
  setDay(2026, 11, 14);
  log.addText("newer");
  EXPECT_EQ(contents(), kOldLine + kStamp + "new\r\n2026.11.14, 07:08:09: newer\r\n");
  EXPECT_EQ(names(), Names{kName});
}

TEST_F(TurnOver, SparesTodaysFile) {
  writeFile(kName, kStamp + "early\r\n");
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  log.addText("late");
  EXPECT_EQ(contents(), kStamp + "early\r\n" + kStamp + "late\r\n");
}

TEST_F(TurnOver, SparesFilesThatDoNotBeginWithADate) {
  for (char const * text : {"", "no date\r\n", "2026\r\n", "2026.11\r\n", "2026-11-12\r\n", "x2026.11.12\r\n",
                            "#2026.11.12, 01:02:03: x\r\n",
                            "\xEF\xBB\xBF"
                            "2026.11.12\r\n",
                            ".1.2.3\r\n"}) {
    writeFile(kName, text);
    KivBasicFileLogger log(true, true, 3);
    ASSERT_TRUE(log.open(kName, true)) << text;
    EXPECT_EQ(contents(), text);
    log.addText("new");
    EXPECT_EQ(contents(), text + kStamp + "new\r\n");
    EXPECT_EQ(names(), Names{kName});
  }
}

TEST_F(TurnOver, AlsoMovesAFileOfTheFuture) {
  writeFile(kName, "2026.11.14, 00:00:00: x\r\n");
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_EQ(names(), (Names{kName, "daily_2026.11.14.log"}));
}

TEST_F(TurnOver, NamesTheBackupBesideTheFile) {
  struct {
    char const * name;
    char const * backup;
    char const * line;
  } const rows[] = {
      {"daily.log", "daily_2026.11.12.log", "daily.log to daily_2026.11.12.log"},
      {"daily", "daily_2026.11.12", "daily to daily_2026.11.12"},
      {"a.b.log", "a.b_2026.11.12.log", "a.b.log to a.b_2026.11.12.log"},
      {".log", "_2026.11.12.log", ".log to _2026.11.12.log"},
      {"sub.d\\daily.log", "sub.d\\daily_2026.11.12.log", "daily.log to daily_2026.11.12.log"},
      {"sub.d/other", "sub.d\\other_2026.11.12", "other to other_2026.11.12"},
      {"100%s.log", "100%s_2026.11.12.log", "100%s.log to 100%s_2026.11.12.log"},
  };
  std::filesystem::create_directory("sub.d");
  for (auto const & row : rows) {
    writeFile(row.name, kOldLine);
    KivBasicFileLogger log(true, true, 3);
    ASSERT_TRUE(log.open(row.name, true)) << row.name;
    EXPECT_EQ(contents(row.name), kStamp + "Moving log file from " + row.line + ".\r\n");
    EXPECT_EQ(contents(row.backup), kOldLine) << row.name;
  }
}

TEST_F(TurnOver, OfAFullPathStaysInItsFolder) {
  support::TempFolder const folder;
  writeFile(folder / kName, kOldLine);
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open((folder / kName).c_str(), true));
  EXPECT_EQ(contents(folder / kBackup), kOldLine);
  EXPECT_EQ(contents(folder / kName), kMoved);
}

TEST_F(TurnOver, DeletesTheOldestBackups) {
  writeFile("daily_2026.11.10.log", "");
  writeFile("daily_2025.12.31.log", "");
  writeFile("other_2020.01.01.log", "");
  writeFile("daily_2020.01.01.txt", "");
  writeFile(kName, kOldLine);
  KivBasicFileLogger log(true, true, 2);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_EQ(names(), (Names{kName, "daily_2020.01.01.txt", "daily_2026.11.10.log", kBackup, "other_2020.01.01.log"}));
}

TEST_F(TurnOver, CountsAFolderOfABackupsNameToo) {
  std::filesystem::create_directory("daily_2026.11.01.log");
  writeFile("daily_2026.11.02.log", "");
  writeFile(kName, kOldLine);
  KivBasicFileLogger log(true, true, 2);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_EQ(names(), (Names{kName, "daily_2026.11.02.log", kBackup}));
}

TEST_F(TurnOver, KeepsAsManyBackupsAsAreWanted) {
  for (int backups : {1, 2, 3, 4, 5}) {
    for (char const * old : {"daily_2026.11.08.log", "daily_2026.11.09.log", "daily_2026.11.10.log"})
      writeFile(old, "");
    std::filesystem::remove(kBackup);
    writeFile(kName, kOldLine);
    KivBasicFileLogger log(true, true, backups);
    ASSERT_TRUE(log.open(kName, true));
    EXPECT_EQ(names().size(), 1u + static_cast<unsigned>(std::min(backups, 4)));
    EXPECT_EQ(contents(kBackup), kOldLine);
  }
}

TEST_F(TurnOver, WithANegativeCountKeepsNone) {
  writeFile("daily_2026.11.08.log", "");
  writeFile(kName, kOldLine);
  KivBasicFileLogger log(true, true, -1);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_EQ(names(), Names{kName});
}

TEST_F(TurnOver, OfALogThatKeepsNoBackupsDeletesNone) {
  writeFile("daily_2026.11.08.log", "");
  Logger log(true, true, 0);
  ASSERT_TRUE(log.open(kName, true));
  log._deleteOldBackupFiles();
  EXPECT_EQ(names(), (Names{kName, "daily_2026.11.08.log"}));
}

TEST_F(TurnOver, TakesTheDateThatItIsGiven) {
  writeFile(kName, "kept");
  HANDLE const reader =
      CreateFileA(kName, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(reader, INVALID_HANDLE_VALUE);
  Logger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_FALSE(log.deleteFromDisc()); // which leaves a closed log with its name
  CloseHandle(reader);
  EXPECT_TRUE(log._createBackup(Date(7, 1, 987)));
  EXPECT_EQ(contents("daily_0987.01.07.log"), "kept");
  EXPECT_EQ(contents(), kStamp + "Moving log file from daily.log to daily_0987.01.07.log.\r\n");
}

TEST_F(TurnOver, Deletes1998Of2000Backups) {
  int count = 0;
  for (int month = 1; count < 2000; ++month)
    for (int day = 1; day <= 28 && count < 2000; ++day, ++count) {
      char name[40];
      std::snprintf(name, sizeof name, "daily_%04d.%02d.%02d.log", 2000 + month / 12, month % 12 + 1, day);
      writeFile(name, "");
    }
  writeFile(kName, kOldLine);
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_EQ(names(), (Names{kName, "daily_2006.01.11.log", "daily_2006.01.12.log", kBackup}));
}

TEST_F(TurnOver, IgnoresABackupThatCannotBeDeleted) {
  writeFile("daily_2026.11.01.log", "");
  writeFile("daily_2026.11.02.log", "");
  writeFile(kName, kOldLine);
  support::FileInUse const held("daily_2026.11.01.log");
  KivBasicFileLogger log(true, true, 1);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_EQ(contents(), kMoved);
  EXPECT_EQ(names(), (Names{kName, "daily_2026.11.01.log", kBackup}));
}

TEST_F(TurnOverWhileOpen, WritesItsReasonIntoTheOldFileAndWhatItDidIntoTheNew) {
  setDay(2026, 11, 12);
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  log.addText("yesterday");
  setDay(2026, 11, 13);
  EXPECT_TRUE(log.addText("today"));
  EXPECT_TRUE(log.addText("still today"));
  EXPECT_EQ(contents(kBackup), "2026.11.12, 07:08:09: yesterday\r\n" + kStamp + "Date changed from " +
                                   shortDate(Date(12, 11, 2026)) + " to " + shortDate(Date(13, 11, 2026)) + "\r\n");
  EXPECT_EQ(contents(), kMoved + kStamp + "today\r\n" + kStamp + "still today\r\n");
}

TEST_F(TurnOverWhileOpen, HappensAtEachChangeOfTheDate) {
  KivBasicFileLogger log(false, true, 30);
  log.open(kName, true);
  for (int day = 13; day <= 20; ++day) {
    setDay(2026, 11, day);
    EXPECT_TRUE(log.addText("a"));
    EXPECT_TRUE(log.addText("b"));
  }
  log.close();
  EXPECT_EQ(names().size(), 8u);
  EXPECT_EQ(contents(), "2026.11.20, 07:08:09: Moving log file from daily.log to daily_2026.11.19.log.\r\n"
                        "2026.11.20, 07:08:09: a\r\n2026.11.20, 07:08:09: b\r\n");
}

TEST_F(TurnOverWhileOpen, IsThatOfTheDateWhicheverWayItChanges) {
  KivBasicFileLogger log(true, true, 3);
  log.open(kName, true);
  log.addText("x");
  setDay(2026, 11, 12);
  log.addText("y");
  EXPECT_EQ(names(), (Names{kName, "daily_2026.11.13.log"}));
}

TEST_F(TurnOverWhileOpen, AlsoComesFromListsAndIsWrittenWithoutCSV) {
  setDay(2026, 11, 12);
  Logger log(true, true, 3);
  log.setForCSV(true);
  log.open(kName, true);
  log.addList(";a");
  setDay(2026, 11, 13);
  log.addList(";b");
  EXPECT_EQ(contents(), kMoved + "2026.11.13; 07:08:09: ;b\r\n");
  EXPECT_NE(contents(kBackup).find(kStamp + "Date changed from "), std::string::npos);
}

TEST_F(TurnOverWhileOpen, NeverComesFromBytesFlushesOrTime) {
  setDay(2026, 11, 12);
  KivBasicFileLogger log(true, true, 3);
  log.open(kName, true);
  log.addText("x");
  setDay(2026, 11, 13);
  log.write("y", 1);
  log.flush();
  log.close();
  EXPECT_EQ(names(), Names{kName});
}

TEST_F(TurnOverWhileOpen, NeverHappensWithoutStamps) {
  setDay(2026, 11, 12);
  KivBasicFileLogger log(true, false, 3);
  log.open(kName, true);
  log.addText("2026.11.12 x\n");
  setDay(2026, 11, 13);
  EXPECT_TRUE(log.addText("y\n"));
  EXPECT_EQ(contents(), "2026.11.12 x\r\ny\r\n");
}

TEST_F(TurnOverWhileOpen, OfAForeignFileGoesOnInTheSameFile) {
  writeFile(kName, "no date\r\n");
  KivBasicFileLogger log(true, true, 3);
  log.open(kName, true);
  setDay(2026, 11, 14);
  EXPECT_TRUE(log.addText("x"));
  EXPECT_TRUE(log.addText("y"));
  std::string const stamp = "2026.11.14, 07:08:09: ";
  EXPECT_EQ(contents(), "no date\r\n" + stamp + "Date changed from " + shortDate(Date(13, 11, 2026)) + " to " +
                            shortDate(Date(14, 11, 2026)) + "\r\n" + stamp + "x\r\n" + stamp + "y\r\n");
  EXPECT_EQ(names(), Names{kName});
}

TEST_F(FailedTurnOver, DiscardsTheContentAndGivesTheErrorInTheFirstLine) {
  writeFile(kName, kOldLine);
  writeFile(kBackup, "there already");
  std::string const code = std::to_string(SV::DirEntry(kName).MoveTo(SV::DirEntry(kBackup)));
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  std::string const failure =
      kStamp + "Moving log file from daily.log to daily_2026.11.12.log. FAILED (EC: " + code + ")!\r\n";
  EXPECT_EQ(contents(), failure);
  EXPECT_EQ(contents(kBackup), "there already");

  // The date is still the old one, so the first line looks again, and finds that of the failure.
  EXPECT_TRUE(log.addText("one"));
  EXPECT_TRUE(log.addText("two"));
  EXPECT_EQ(contents(), failure + kStamp + "Date changed from " + shortDate(Date(12, 11, 2026)) + " to " +
                            shortDate(Date(13, 11, 2026)) + "\r\n" + kStamp + "one\r\n" + kStamp + "two\r\n");
}

BOOL WINAPI refuseMove(char const *, char const *, DWORD) {
  SetLastError(ERROR_ACCESS_DENIED);
  return FALSE;
}

// The administrator, who runs these tests, may rename in every folder: the refusal is the test's own.
TEST_F(FailedTurnOver, InAFolderThatTakesNoNewFilesGivesTheSystemsErrorCode) {
  writeFile(kName, kOldLine);
  support::replaceImports(GetModuleHandleA("TL0105.dll"), "KERNEL32.dll",
                          {{"MoveFileExA", reinterpret_cast<void *>(refuseMove)}});
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_EQ(contents(), kStamp + "Moving log file from daily.log to daily_2026.11.12.log. FAILED (EC: 5)!\r\n");
  EXPECT_TRUE(log.addText("kept"));
  EXPECT_TRUE(contents().ends_with(kStamp + "kept\r\n"));
  EXPECT_EQ(names(), Names{kName});
}

TEST_F(FailedTurnOver, OfAFileBegunAnewLeavesIt) {
  writeFile(kName, kOldLine);
  writeFile(kBackup, "there already");
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, false));
  EXPECT_EQ(contents(), "");
}

TEST_F(FailedTurnOver, DeletesNoBackups) {
  writeFile(kName, kOldLine);
  for (char const * each : {"daily_2026.11.01.log", "daily_2026.11.02.log", kBackup})
    writeFile(each, "");
  KivBasicFileLogger log(true, true, 1);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_EQ(names().size(), 4u);
}

TEST_F(FailedTurnOver, WhileOpenGoesOnInTheEmptiedFile) {
  setDay(2026, 11, 12);
  KivBasicFileLogger log(true, true, 3);
  log.open(kName, true);
  log.addText("given up");
  // A reader that lets others write, but not move.
  HANDLE const reader =
      CreateFileA(kName, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  setDay(2026, 11, 13);
  EXPECT_TRUE(log.addText("one"));
  EXPECT_TRUE(log.addText("two"));
  CloseHandle(reader);
  std::string const text = contents();
  EXPECT_TRUE(
      text.starts_with(kStamp + "Moving log file from daily.log to daily_2026.11.12.log. FAILED (EC: 32)!\r\n"));
  EXPECT_NE(text.find(kStamp + "one\r\n"), std::string::npos);
  EXPECT_TRUE(text.ends_with(kStamp + "two\r\n"));
  EXPECT_EQ(names(), Names{kName});
}

TEST_F(LogDate, IsReadFromTheStartOfTheFile) {
  struct {
    std::string text;
    std::uint32_t date;
  } const rows[] = {
      {"2026.11.12, 01:02:03: x", 20261112},
      {"1.2.3", 10203},
      {"  2026.1.2", 20260102},
      {"12026.111.109x", 20261109},
      {"2026. 11. 12", 20261112},
      {"\r\n2026.11.12", 20261112},
      {std::string(10'000, '\n') + "2026.11.12, x", 20261112},
      {"2026.11.12" + std::string(10'000, 'x'), 20261112},
      {"2026.11.", 20261113},
      {"", 20261113},
  };
  for (auto const & row : rows) {
    writeFile(kName, row.text);
    Logger log(true, true, 0); // keeps the file where it is
    ASSERT_TRUE(log.open(kName, true));
    EXPECT_EQ(log._getModDate().value(), row.date) << row.text;
  }
}

TEST_F(LogDate, OfAFileThatCannotBeReadIsToday) { EXPECT_EQ(Logger(true, true, 0)._getModDate().value(), 20261113u); }

TEST_F(LogDate, OfANegativeNumberIsSomeDateOfEightDigits) {
  writeFile(kName, "-1.-1.-1");
  Logger log(true, true, 0);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_LT(log._getModDate().value(), 100000000u);
}

TEST_F(LogDate, LineOfItsOwnIsWrittenToTheOpenFileWithoutFormatting) {
  Logger log(false, false, 0);
  log.setForCSV(true);
  log.open(kName, true);
  log._debugPrint("100%n of it");
  EXPECT_EQ(contents(), ""); // not flushed
  log.flush();
  EXPECT_EQ(contents(), kStamp + "100%n of it\r\n");
}
