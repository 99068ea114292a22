#include "alog.hpp"

#include "diagnostics/local_clock.hpp"
#include "diagnostics/open_logger.hpp"
#include "support/data/files.hpp"
#include "support/imports/import_spy.hpp"

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstring>
#include <string>
#include <type_traits>

using support::readFile;

namespace {

constexpr char kName[] = "server.log";

using Logger = kivtest::OpenLogger;

/// The slot of a virtual operation among those of its class.
template <class Operation> std::size_t slotOf(Operation operation) {
  std::size_t offset[2];
  static_assert(sizeof offset == sizeof operation);
  std::memcpy(offset, &operation, sizeof offset);
  return (offset[0] - 1) / sizeof(void *);
}

std::string contents() { return readFile(kName).value_or("(no file)"); }

using LogLine = kivtest::OnThe13th;
using LogFile = kivtest::OnThe13th;

} // namespace

TEST(LogStream, VirtualOperationsStandInSlotOrder) {
  std::size_t const open = slotOf(&KivBasicFileStream::open);
  EXPECT_EQ(open, 2u); // after the destructor, which takes two slots with this compiler
  EXPECT_EQ(slotOf(&KivBasicFileStream::close), open + 1);
  EXPECT_EQ(slotOf(&KivBasicFileStream::isOpen), open + 2);
  EXPECT_EQ(slotOf(&KivBasicFileStream::write), open + 3);
  EXPECT_EQ(slotOf(&KivBasicFileStream::flush), open + 4);
  EXPECT_EQ(slotOf(&KivBasicFileStream::deleteFromDisc), open + 5);
  EXPECT_EQ(slotOf(&KivBasicTextFileStream::addText), open + 6);
  EXPECT_EQ(slotOf(&KivBasicTextFileStream::vaddText), open + 7);
}

TEST(LogStream, IsAnInterfaceWithoutData) {
  EXPECT_TRUE(std::is_abstract_v<KivBasicFileStream>);
  EXPECT_TRUE(std::is_abstract_v<KivBasicTextFileStream>);
  EXPECT_TRUE((std::is_base_of_v<KivBasicFileStream, KivBasicTextFileStream>));
  EXPECT_TRUE((std::is_base_of_v<KivBasicTextFileStream, KivBasicFileLogger>));
  EXPECT_TRUE(std::has_virtual_destructor_v<KivBasicFileStream>);
  EXPECT_EQ(sizeof(KivBasicTextFileStream), sizeof(void *));
}

TEST(LogStream, CopiesOfTheInterfaceCopyNothing) {
  class Stream : public KivBasicTextFileStream {
  public:
    bool open(char const *, bool) override { return false; }
    bool close() override { return false; }
    bool isOpen() const override { return false; }
    bool write(void const *, std::uint64_t) override { return false; }
    bool flush() override { return false; }
    bool deleteFromDisc() override { return false; }
    bool addText(char const *, ...) override { return false; }
    bool vaddText(char const *, va_list const &) override { return false; }
  };
  Stream const one;
  Stream two(one);
  two = one;
  EXPECT_FALSE(two.isOpen());
  EXPECT_FALSE(std::is_copy_constructible_v<KivBasicFileLogger>); // two owners of one file
}

TEST_F(LogLine, HasTheFormOfItsOperationAndItsKind) {
  struct {
    bool csv;
    bool list;
    char const * line;
  } const rows[] = {{false, false, "2026.11.13, 07:08:09: 7 users\r\n"},
                    {true, false, "2026.11.13;07:08:09,0457 users\r\n"},
                    {false, true, "2026.11.13, 07:08:09: 7 users\r\n"},
                    {true, true, "2026.11.13; 07:08:09: 7 users\r\n"}};
  for (auto const & row : rows) {
    Logger log(true, true, 0);
    log.setForCSV(row.csv);
    ASSERT_TRUE(log.open(kName, false));
    EXPECT_TRUE(row.list ? log.addList("%d %s", 7, "users") : log.addText("%d %s", 7, "users"));
    EXPECT_EQ(contents(), row.line);
  }
}

TEST_F(LogLine, OfACSVLogBeginsWithTheCallersOwnSeparator) {
  KivBasicFileLogger log(true, true, 0);
  log.setForCSV(true);
  log.open(kName, false);
  log.addText(";%s;%d", "login", 3);
  log.setForCSV(false);
  log.addText("back");
  EXPECT_EQ(contents(), "2026.11.13;07:08:09,045;login;3\r\n2026.11.13, 07:08:09: back\r\n");
}

TEST_F(LogLine, OfALogWithoutStampsIsTheTextAlone) {
  for (bool const csv : {false, true}) {
    Logger log(true, false, 3);
    log.setForCSV(csv);
    log.open(kName, false);
    EXPECT_TRUE(log.addText("one %d", 1));
    EXPECT_TRUE(log.addList(", two %d\n", 2));
    EXPECT_EQ(contents(), "one 1, two 2\r\n");
  }
}

TEST_F(LogLine, FormatsAsTheRuntimeDoes) {
  KivBasicFileLogger log(true, false, 0);
  log.open(kName, false);
  std::string const format = "%I64X %e %5.2f%%";
  log.addText(format.c_str(), 0x123456789ALL, 1.5, 2.345);
  EXPECT_EQ(contents(), "123456789A 1.500000e+000  2.35%");
}

TEST_F(LogLine, MayBeEmptyOrLong) {
  KivBasicFileLogger log(true, true, 0);
  log.open(kName, false);
  std::string const longText(100'000, 'x');
  char const * const none = nullptr;
  EXPECT_TRUE(log.addText("%s", ""));
  EXPECT_TRUE(log.addText(none));
  EXPECT_TRUE(log.addText("%s", longText.c_str()));
  std::string const stamp = "2026.11.13, 07:08:09: ";
  EXPECT_EQ(contents(), stamp + "\r\n" + stamp + "\r\n" + stamp + longText + "\r\n");
}

TEST_F(LogLine, HasFieldsOfFixedWidth) {
  kivtest::LocalClock::setDay(987, 1, 2);
  kivtest::LocalClock::now.wMilliseconds = 7;
  KivBasicFileLogger log(true, true, 0);
  log.setForCSV(true);
  log.open(kName, false);
  log.addText(";x");
  EXPECT_EQ(contents(), "0987.01.02;07:08:09,007;x\r\n");
}

TEST_F(LogFile, IsFlushedWithEachTextWhereThatIsWanted) {
  KivBasicFileLogger log(true, true, 0);
  log.open(kName, false);
  EXPECT_TRUE(log.addText("one"));
  EXPECT_EQ(contents().size(), 27u);
}

TEST_F(LogFile, IsOtherwiseWrittenWhenItIsFlushedOrClosed) {
  KivBasicFileLogger log(false, true, 0);
  log.open(kName, false);
  EXPECT_TRUE(log.addText("one"));
  EXPECT_EQ(contents(), "");
  EXPECT_TRUE(log.flush());
  EXPECT_EQ(contents().size(), 27u);
  EXPECT_TRUE(log.addText("two"));
  EXPECT_EQ(contents().size(), 27u);
  EXPECT_TRUE(log.close());
  EXPECT_EQ(contents().size(), 54u);
}

TEST_F(LogFile, IsClosedByItsLogger) {
  {
    KivBasicFileLogger log(false, false, 0);
    log.open(kName, false);
    log.addText("kept");
  }
  EXPECT_EQ(contents(), "kept");
  support::FileInUse const free(kName);
}

TEST_F(LogFile, GetsBytesWithoutStampAndLineEndButWithTheSystemsLineEnds) {
  KivBasicFileLogger log(false, true, 3);
  log.open(kName, false);
  EXPECT_TRUE(log.write("a\nb\0c", 5));
  EXPECT_TRUE(log.write(nullptr, 0));
  EXPECT_TRUE(log.flush());
  EXPECT_EQ(contents(), std::string("a\r\nb\0c", 6));
  EXPECT_FALSE(log.write(nullptr, 1));
}

TEST_F(LogFile, IsAppendedToOrBegunAnew) {
  for (auto const & [append, expected] : {std::pair{true, "old\r\nnew"}, std::pair{false, "new"}}) {
    support::writeFile(kName, "old\r\n");
    KivBasicFileLogger log(true, false, 0);
    ASSERT_TRUE(log.open(kName, append));
    log.addText("new");
    EXPECT_EQ(contents(), expected);
  }
}

TEST_F(LogFile, ThatIsClosedAnswersFalseToEverything) {
  Logger log(true, true, 3);
  EXPECT_FALSE(log.isOpen());
  EXPECT_FALSE(log.close());
  EXPECT_FALSE(log.flush());
  EXPECT_FALSE(log.write("x", 1));
  EXPECT_FALSE(log.addText("x"));
  EXPECT_FALSE(log.addList("x"));
  EXPECT_FALSE(log.deleteFromDisc());
  EXPECT_FALSE(support::exists(kName));
}

TEST_F(LogFile, IsClosedOnceAndMayBeOpenedAgain) {
  KivBasicFileLogger log(true, false, 0);
  for (char const * name : {"a.log", "b.log", "a.log"}) {
    EXPECT_TRUE(log.open(name, true));
    EXPECT_TRUE(log.isOpen());
    EXPECT_TRUE(log.addText("x"));
    EXPECT_TRUE(log.close());
    EXPECT_FALSE(log.close());
    EXPECT_FALSE(log.isOpen());
    EXPECT_FALSE(log.addText("lost"));
  }
  EXPECT_EQ(readFile("a.log"), "xx");
  EXPECT_EQ(readFile("b.log"), "x");
}

TEST_F(LogFile, ThatIsOpenIsNotOpenedAgainAndKeepsItsName) {
  KivBasicFileLogger log(true, false, 0);
  ASSERT_TRUE(log.open(kName, false));
  EXPECT_FALSE(log.open("other.log", false));
  EXPECT_FALSE(support::exists("other.log"));
  log.addText("x");
  EXPECT_EQ(contents(), "x");
  EXPECT_TRUE(log.deleteFromDisc());
  EXPECT_FALSE(support::exists(kName));
}

TEST_F(LogFile, IsDeletedAndThenClosed) {
  KivBasicFileLogger log(true, true, 3);
  ASSERT_TRUE(log.open(kName, false));
  log.addText("x");
  EXPECT_TRUE(log.deleteFromDisc());
  EXPECT_FALSE(support::exists(kName));
  EXPECT_FALSE(log.isOpen());
  EXPECT_FALSE(log.deleteFromDisc());
  EXPECT_TRUE(log.open(kName, false));
}

TEST_F(LogFile, ThatSomebodyElseReadsIsClosedButNotDeleted) {
  KivBasicFileLogger log(true, false, 0);
  ASSERT_TRUE(log.open(kName, false));
  log.addText("x");
  HANDLE const reader =
      CreateFileA(kName, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(reader, INVALID_HANDLE_VALUE);
  EXPECT_FALSE(log.deleteFromDisc());
  EXPECT_FALSE(log.isOpen());
  EXPECT_FALSE(log.addText("lost"));
  CloseHandle(reader);
  EXPECT_EQ(contents(), "x");
  EXPECT_TRUE(log.open(kName, true));
}

TEST_F(LogFile, ThatIsNotDeletedKeepsItsName) {
  Logger log(true, false, 0);
  ASSERT_TRUE(log.open(kName, false));
  HANDLE const reader =
      CreateFileA(kName, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(reader, INVALID_HANDLE_VALUE);
  EXPECT_FALSE(log.deleteFromDisc());
  log._debugPrint("by its name"); // a closed log writes its own lines to the file of its name
  CloseHandle(reader);
  EXPECT_EQ(contents(), "2026.11.13, 07:08:09: by its name\r\n");
}

TEST_F(LogFile, ThatIsNotOpenedKeepsItsName) {
  Logger log(true, false, 0);
  ASSERT_FALSE(log.open("later\\x.log", true));
  ASSERT_TRUE(CreateDirectoryA("later", nullptr));
  log._debugPrint("by its name");
  EXPECT_EQ(readFile("later\\x.log"), "2026.11.13, 07:08:09: by its name\r\n");
}

TEST_F(LogFile, ThatIsClosedOrDeletedHasNoName) {
  Logger log(true, false, 0);
  for (bool const deleted : {false, true}) {
    ASSERT_TRUE(log.open(kName, false));
    EXPECT_TRUE(deleted ? log.deleteFromDisc() : log.close());
    log._debugPrint("nowhere");
    EXPECT_EQ(contents(), deleted ? "(no file)" : "");
  }
}

TEST_F(LogFile, IsRefusedWithoutANameOrWithAnImpossibleOne) {
  KivBasicFileLogger log(true, true, 3);
  for (char const * name : {static_cast<char const *>(nullptr), "", "no such folder\\x.log", "a|b.log"}) {
    EXPECT_FALSE(log.open(name, true));
    EXPECT_FALSE(log.isOpen());
    EXPECT_FALSE(log.addText("lost"));
  }
  EXPECT_TRUE(log.open(kName, true));
}

TEST_F(LogFile, IsLookedAtOnlyWhenTheDateChanges) {
  int fileCalls = 0;
  for (char const * function : {"GetFileAttributesA", "MoveFileExA", "FindFirstFileA", "GetFullPathNameA"})
    support::spyOnImport("TL0105.dll", function, [&](support::SpiedCall &) { ++fileCalls; });
  for (char const * function : {"GetFileAttributesA", "fopen"})
    ASSERT_TRUE(support::spyOnImport("kivara.dll", function, [&](support::SpiedCall &) { ++fileCalls; }));
  KivBasicFileLogger log(true, true, 3);
  log.open(kName, false);
  EXPECT_GT(fileCalls, 0);
  fileCalls = 0;
  kivtest::LocalClock::questions = 0;
  for (int i = 0; i < 100; ++i)
    log.addText("line %d", i);
  EXPECT_EQ(fileCalls, 0);
  EXPECT_EQ(kivtest::LocalClock::questions, 200); // one for the date, one for the stamp
}
