#include "diagnostics/logbackups.hpp"

#include <gtest/gtest.h>

#include <string>

using SV::Date;

TEST(BackupName, HasTheDateAfterTheBaseNameInTheSameFolder) {
  struct {
    char const * log;
    char const * backup;
    char const * pattern;
  } const rows[] = {
      {"C:\\logs\\daily.log", "C:\\logs\\daily_2026.11.12.log", "C:\\logs\\daily_*.log"},
      {"C:/logs/daily.log", "C:\\logs\\daily_2026.11.12.log", "C:\\logs\\daily_*.log"},
      {"C:\\logs\\daily", "C:\\logs\\daily_2026.11.12", "C:\\logs\\daily_*"},
      {"C:\\logs\\a.b.log", "C:\\logs\\a.b_2026.11.12.log", "C:\\logs\\a.b_*.log"},
      {"C:\\logs\\.log", "C:\\logs\\_2026.11.12.log", "C:\\logs\\_*.log"},
      {"C:\\logs.d\\daily", "C:\\logs.d\\daily_2026.11.12", "C:\\logs.d\\daily_*"},
      {"C:\\daily.log", "C:\\daily_2026.11.12.log", "C:\\daily_*.log"},
      {"\\\\server\\share\\a.log", "\\\\server\\share\\a_2026.11.12.log", "\\\\server\\share\\a_*.log"},
      {"C:\\logs\\100%s.log", "C:\\logs\\100%s_2026.11.12.log", "C:\\logs\\100%s_*.log"},
      {"C:\\a_2026.11.12.log", "C:\\a_2026.11.12_2026.11.12.log", "C:\\a_2026.11.12_*.log"},
  };
  for (auto const & row : rows) {
    EXPECT_STREQ(kivara::backupOf(row.log, Date(12, 11, 2026)).GetFull().c_str(), row.backup);
    EXPECT_STREQ(kivara::patternOfBackups(row.log).GetFull().c_str(), row.pattern);
  }
}

TEST(BackupName, OfARelativeLogStaysRelative) {
  EXPECT_STREQ(kivara::backupOf("daily.log", Date(12, 11, 2026)).GetName().c_str(), "daily_2026.11.12.log");
  EXPECT_STREQ(kivara::backupOf("daily.log", Date(12, 11, 2026)).GetPath().GetName().c_str(), ".");
  EXPECT_STREQ(kivara::patternOfBackups("daily.log").GetPath().GetName().c_str(), ".");
}

TEST(BackupName, HasADateOfFixedWidth) {
  struct {
    Date date;
    char const * name;
  } const rows[] = {{Date(7, 1, 987), "x_0987.01.07.log"},
                    {Date(0, 0, 0), "x_0000.00.00.log"},
                    {Date(99, 99, 9999), "x_9999.99.99.log"},
                    {Date(31, 12, 2026), "x_2026.12.31.log"}};
  for (auto const & row : rows)
    EXPECT_STREQ(kivara::backupOf("x.log", row.date).GetName().c_str(), row.name);
}

TEST(DateAtStart, IsYearMonthAndDayBeforeAnythingElse) {
  constexpr std::uint32_t none = 0;
  struct {
    char const * text;
    std::uint32_t date;
  } const rows[] = {
      {"2026.11.12, 23:59:59: line", 20261112},
      {"2026.11.12;23:59:59,999;x", 20261112},
      {"2026.11.12", 20261112},
      {"1.2.3", 10203},
      {"  2026.1.2", 20260102},
      {"\n\t2026.1.2", 20260102},
      {"2026. 11.\n12", 20261112},
      {"12026.111.109x", 20261109},
      {"+2026.+11.+12", 20261112},
      {"", none},
      {"no date", none},
      {"2026", none},
      {"2026.11", none},
      {"2026.11.", none},
      {"2026.11.x", none},
      {"2026-11-12", none},
      {"2026 .11.12", none},
      {"x2026.11.12", none},
      {".1.2.3", none},
      {"\xEF\xBB\xBF"
       "2026.11.12",
       none},
  };
  for (auto const & row : rows) {
    auto const date = kivara::dateAtStart(row.text);
    EXPECT_EQ(date ? date->value() : none, row.date) << row.text;
  }
}

TEST(SurplusBackups, AreThoseAboveTheWantedNumber) {
  struct {
    unsigned long count;
    int kept;
    unsigned long surplus;
  } const rows[] = {{0, 2, 0},  {1, 2, 0},       {2, 2, 0},
                    {3, 2, 1},  {2000, 3, 1997}, {3, 0, 3},
                    {3, -1, 3}, {0, -1, 0},      {3, -2147483647 - 1, 3}};
  for (auto const & row : rows)
    EXPECT_EQ(kivara::surplusBackups(row.count, row.kept), row.surplus) << row.kept << " of " << row.count;
}
