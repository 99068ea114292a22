// Logs that are named by each line, and the log of the web service.
#include "alog.hpp"

#include "diagnostics/local_clock.hpp"
#include "support/data/files.hpp"

#include <gtest/gtest.h>

#include <string>

using support::readFile;

namespace {

std::string const kStamp = "2026.11.13, 07:08:09: ";
std::string const kCSVStamp = "2026.11.13;07:08:09,045";

using NamedLog = kivtest::OnThe13th;

} // namespace

TEST_F(NamedLog, GetsAStampedLineAtOnce) {
  Kiv_AddToLog("import.log", "begun");
  EXPECT_EQ(readFile("import.log"), kStamp + "begun\r\n");
  Kiv_AddToLog("import.log", "done");
  EXPECT_EQ(readFile("import.log"), kStamp + "begun\r\n" + kStamp + "done\r\n");
}

TEST_F(NamedLog, OfTheCSVKindGetsItsForm) {
  Kiv_AddToCSVLog("import.csv", ";begun;1");
  EXPECT_EQ(readFile("import.csv"), kCSVStamp + ";begun;1\r\n");
}

TEST_F(NamedLog, StaysOfTheKindOfItsFirstLine) {
  Kiv_AddToLog("plain.log", "one");
  Kiv_AddToCSVLog("plain.log", ";two");
  EXPECT_EQ(readFile("plain.log"), kStamp + "one\r\n" + kStamp + ";two\r\n");
  Kiv_AddToCSVLog("table.csv", ";one");
  Kiv_AddToLog("table.csv", "two");
  EXPECT_EQ(readFile("table.csv"), kCSVStamp + ";one\r\n" + kCSVStamp + "two\r\n");
}

TEST_F(NamedLog, IsAppendedToAndNeverTurnedOver) {
  support::writeFile("old.log", "2020.01.01, 00:00:00: old\r\n");
  Kiv_AddToLog("old.log", "new");
  kivtest::LocalClock::setDay(2026, 11, 14);
  Kiv_AddToLog("old.log", "newer");
  EXPECT_EQ(readFile("old.log"), "2020.01.01, 00:00:00: old\r\n" + kStamp + "new\r\n2026.11.14, 07:08:09: newer\r\n");
}

TEST_F(NamedLog, IsKnownByTheLettersOfItsPath) {
  Kiv_AddToLog("case.log", "lower");
  Kiv_AddToCSVLog("CASE.log", ";upper"); // a logger of its own on the same file
  EXPECT_EQ(readFile("case.log"), kStamp + "lower\r\n" + kCSVStamp + ";upper\r\n");
}

TEST_F(NamedLog, ThatDoesNotOpenDiscardsItsLinesFromThenOn) {
  Kiv_AddToLog("later\\x.log", "lost");
  ASSERT_TRUE(CreateDirectoryA("later", nullptr));
  Kiv_AddToLog("later\\x.log", "lost too");
  EXPECT_FALSE(support::exists("later\\x.log"));
  Kiv_AddToLog("", "lost");
}

TEST_F(NamedLog, TakesItsTextForAFormat) {
  struct {
    char const * text;
    char const * line;
  } const rows[] = {{"50%% done", "50% done"}, {"%d of %d", "0 of 0"}, {"name %s", "name (null)"},
                    {"%*d|%-*.*f|", "0|0|"},   {"%c", "\0"},           {"%I64d %Id", "0 0"}};
  std::string expected;
  for (auto const & row : rows) {
    Kiv_AddToLog("format.log", row.text);
    expected += kStamp + (*row.line != '\0' ? std::string(row.line) : std::string(1, '\0')) + "\r\n";
  }
  EXPECT_EQ(readFile("format.log"), expected);
}

TEST_F(NamedLog, TakesALastPercentSignForABrokenConversion) {
  std::string const text = "ready: 100%";
  char runtimes[32] = "";
  std::uint64_t zeros[2] = {};
  _vsnprintf(runtimes, sizeof runtimes - 1, text.c_str(), reinterpret_cast<va_list>(zeros));
  Kiv_AddToLog("percent.log", text.c_str());
  EXPECT_EQ(readFile("percent.log"), kStamp + runtimes + "\r\n");
}

TEST_F(NamedLog, WritesATextThatWouldStoreACountAsItStands) {
  std::string expected;
  for (char const * text : {"100% now", "%n", "%5.3hhn", "%%%n", "%I64n and %s"}) {
    Kiv_AddToLog("count.log", text);
    expected += kStamp + text + "\r\n";
  }
  Kiv_AddToLog("count.log", "%%now");
  EXPECT_EQ(readFile("count.log"), expected + kStamp + "%now\r\n");
}

TEST_F(NamedLog, TakesAnyConversions) {
  std::string const sizes[] = {"", "h", "l", "ll", "I64", "I32", "L", "w"};
  for (std::string const & size : sizes)
    for (int type = 33; type < 127; ++type)
      Kiv_AddToLog("any.log",
                   ("%" + size + static_cast<char>(type) + "%*" + size + static_cast<char>(type) + "%s").c_str());
  EXPECT_GT(readFile("any.log")->size(), 8u * 94u * 24u);
}

TEST_F(NamedLog, TakesManyConversions) {
  std::string text;
  for (int i = 0; i < 1000; ++i)
    text += "%d";
  Kiv_AddToLog("many.log", text.c_str());
  EXPECT_EQ(readFile("many.log"), kStamp + std::string(1000, '0') + "\r\n");
}

TEST(WebServiceLog, IsNoneAtStartAndThenWhatWasSet) {
  EXPECT_EQ(Kiv_GetWSLogger(), nullptr);
  KivBasicFileLogger log(true, true, 0);
  Kiv_SetWSLogger(&log);
  EXPECT_EQ(Kiv_GetWSLogger(), &log);
  Kiv_SetWSLogger(nullptr);
  EXPECT_EQ(Kiv_GetWSLogger(), nullptr);
}
