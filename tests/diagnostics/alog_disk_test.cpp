// Log files that the system does not let us have or write.
#include "alog.hpp"

#include "diagnostics/local_clock.hpp"
#include "support/data/files.hpp"
#include "support/processes/child_process.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using support::readFile;
using support::writeFile;

namespace {

constexpr char kName[] = "daily.log";
std::string const kStamp = "2026.11.13, 07:08:09: ";

/// A process that has the file open.
class Holder {
public:
  Holder(char const * file, char const * sharing)
      : child_({.program = "file_holder", .arguments = std::string(file) + ' ' + sharing}) {
    EXPECT_TRUE(child_.waitForOutput("held"));
  }
  void end() {
    child_.kill();
    child_.waitForEnd();
  }

private:
  support::ChildProcess child_;
};

/// A disk with room for some more bytes. What does not fit is refused in whole, as the system refuses a block.
class SmallDisk {
public:
  explicit SmallDisk(long room) {
    free = room;
    support::replaceImports(GetModuleHandleA("msvcrt.dll"), "KERNEL32.dll",
                            {{"WriteFile", reinterpret_cast<void *>(write)}});
  }
  SmallDisk(SmallDisk const &) = delete;
  SmallDisk & operator=(SmallDisk const &) = delete;
  ~SmallDisk() {
    support::replaceImports(GetModuleHandleA("msvcrt.dll"), "KERNEL32.dll",
                            {{"WriteFile", reinterpret_cast<void *>(WriteFile)}});
  }

  static inline long free = 0;

private:
  static BOOL WINAPI write(HANDLE file, void const * data, DWORD size, DWORD * written, OVERLAPPED * place) {
    if (GetFileType(file) == FILE_TYPE_DISK && static_cast<long>(size) > free) {
      *written = 0;
      SetLastError(ERROR_DISK_FULL);
      return FALSE;
    }
    if (GetFileType(file) == FILE_TYPE_DISK)
      free -= static_cast<long>(size);
    return WriteFile(file, data, size, written, place);
  }
};

using LogOnDisk = kivtest::OnThe13th;

} // namespace

TEST_F(LogOnDisk, ThatAnotherProcessHasForItselfIsNotOpened) {
  writeFile(kName, "2026.11.12, 01:02:03: kept\r\n");
  Holder holder(kName, "");
  KivBasicFileLogger log(true, true, 3);
  EXPECT_FALSE(log.open(kName, true));
  EXPECT_FALSE(log.isOpen());
  EXPECT_FALSE(log.addText("lost"));
  holder.end();
  EXPECT_EQ(readFile(kName), "2026.11.12, 01:02:03: kept\r\n");
  EXPECT_TRUE(log.open(kName, true));
}

TEST_F(LogOnDisk, ThatAnotherProcessReadsIsWrittenButNotMoved) {
  writeFile(kName, "2026.11.12, 01:02:03: given up\r\n");
  Holder holder(kName, "shared");
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_EQ(readFile(kName), kStamp + "Moving log file from daily.log to daily_2026.11.12.log. FAILED (EC: 32)!\r\n");
  holder.end();
}

TEST_F(LogOnDisk, WhoseBackupAnotherProcessHoldsIsEmptied) {
  writeFile(kName, "2026.11.12, 01:02:03: given up\r\n");
  writeFile("daily_2026.11.12.log", "theirs");
  Holder holder("daily_2026.11.12.log", "");
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_TRUE(readFile(kName)->starts_with(kStamp + "Moving log file from daily.log to daily_2026.11.12.log. FAILED"));
  EXPECT_TRUE(log.addText("kept"));
  holder.end();
  EXPECT_EQ(readFile("daily_2026.11.12.log"), "theirs");
  EXPECT_TRUE(readFile(kName)->ends_with(kStamp + "kept\r\n"));
}

TEST_F(LogOnDisk, WhoseNameIsAFolderIsNotOpened) {
  std::filesystem::create_directory(kName);
  KivBasicFileLogger log(true, true, 3);
  for (bool const append : {true, false}) {
    EXPECT_FALSE(log.open(kName, append));
    EXPECT_FALSE(log.addText("lost"));
  }
  EXPECT_TRUE(std::filesystem::is_directory(kName));
  EXPECT_TRUE(std::filesystem::is_empty(kName));
}

TEST_F(LogOnDisk, ThatCannotBeOpenedAgainOnANewDateIsClosed) {
  kivtest::LocalClock::setDay(2026, 11, 12);
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  log.addText("kept");
  std::string const file = std::filesystem::absolute(kName).string();
  std::filesystem::create_directories(std::string("elsewhere\\") + kName);
  std::filesystem::current_path("elsewhere");
  kivtest::LocalClock::setDay(2026, 11, 13);
  EXPECT_FALSE(log.addText("lost"));
  EXPECT_FALSE(log.isOpen());
  EXPECT_FALSE(log.addText("lost"));
  EXPECT_TRUE(readFile(file)->starts_with("2026.11.12, 07:08:09: kept\r\n" + kStamp + "Date changed from "));
}

TEST_F(LogOnDisk, WhoseBackupsNameIsAFolderIsEmptied) {
  writeFile(kName, "2026.11.12, 01:02:03: given up\r\n");
  std::filesystem::create_directory("daily_2026.11.12.log");
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_NE(readFile(kName)->find(" FAILED (EC: "), std::string::npos);
}

TEST_F(LogOnDisk, InAFolderThatCannotBeWrittenToIsNotOpened) {
  // The administrator may write to all folders of a Unix disk, but not to that of its processes.
  constexpr char kReadOnlyFolder[] = "Z:\\proc";
  if (!support::exists(kReadOnlyFolder))
    GTEST_SKIP() << "there is no folder that surely refuses new files";
  KivBasicFileLogger log(true, true, 3);
  EXPECT_FALSE(log.open((std::string(kReadOnlyFolder) + "\\kivara.log").c_str(), true));
  EXPECT_FALSE(log.addText("lost"));
}

TEST_F(LogOnDisk, OfADeviceThatIsFullAnswersFalseAndGoesOn) {
  constexpr char kFullDevice[] = "Z:\\dev\\full";
  KivBasicFileLogger log(true, true, 3);
  if (!log.open(kFullDevice, true))
    GTEST_SKIP() << "there is no device that is always full";
  EXPECT_FALSE(log.addText("one"));
  EXPECT_FALSE(log.addText("two"));
  EXPECT_FALSE(log.flush());
  EXPECT_TRUE(log.close());
}

TEST_F(LogOnDisk, KeepsAllLinesFromBeforeTheDiskWasFull) {
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  std::string written;
  SmallDisk const disk(1000);
  for (int i = 0; i < 100; ++i) {
    std::string const text = "line " + std::to_string(i);
    if (!log.addText("%s", text.c_str()))
      break;
    written += kStamp + text + "\r\n";
  }
  EXPECT_GT(written.size(), 900u);
  EXPECT_LT(written.size(), 1001u);
  EXPECT_EQ(readFile(kName), written);
}

TEST_F(LogOnDisk, ThatIsNotFlushedAnswersFalseOnceABlockIsRefused) {
  KivBasicFileLogger log(false, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  EXPECT_TRUE(log.addText("before"));
  EXPECT_TRUE(log.flush());
  SmallDisk const disk(0);
  EXPECT_TRUE(log.addText("still in the buffer"));
  int lines = 1;
  while (lines < 10'000 && log.addText("line %d", lines))
    ++lines;
  EXPECT_LT(lines, 10'000);
  EXPECT_FALSE(log.addText("after"));
  EXPECT_FALSE(log.flush());
  EXPECT_EQ(readFile(kName), kStamp + "before\r\n");
}

TEST_F(LogOnDisk, RefusesBytesThatTheDiskDoesNotTake) {
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  std::string const bytes(100'000, 'x');
  EXPECT_TRUE(log.write(bytes.data(), bytes.size()));
  SmallDisk const disk(0);
  EXPECT_FALSE(log.write(bytes.data(), bytes.size()));
  EXPECT_FALSE(log.flush());
}

TEST_F(LogOnDisk, IsWrittenAgainWhenTheDiskHasRoomAgain) {
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  log.addText("before");
  {
    SmallDisk const disk(0);
    EXPECT_FALSE(log.addText("kept for later"));
  }
  EXPECT_FALSE(log.addText("after")); // the file remembers that a write has failed
  std::string const text = readFile(kName).value_or("");
  EXPECT_TRUE(text.starts_with(kStamp + "before\r\n")) << text;
  EXPECT_TRUE(text.ends_with(kStamp + "after\r\n")) << text;
  EXPECT_TRUE(log.close());
  EXPECT_TRUE(log.open(kName, true));
  EXPECT_TRUE(log.addText("as new"));
}

TEST_F(LogOnDisk, ThatIsFullAtATurnOverKeepsTheOldFile) {
  kivtest::LocalClock::setDay(2026, 11, 12);
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, true));
  log.addText("kept");
  kivtest::LocalClock::setDay(2026, 11, 13);
  {
    SmallDisk const disk(0);
    EXPECT_FALSE(log.addText("lost"));
  }
  EXPECT_TRUE(readFile("daily_2026.11.12.log")->starts_with("2026.11.12, 07:08:09: kept\r\n"));
}
