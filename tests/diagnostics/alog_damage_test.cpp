// Log files whose first line is damaged: the logger opens them anyway, and takes a date that is none for an old one.
#include "alog.hpp"

#include "diagnostics/local_clock.hpp"
#include "diagnostics/logbackups.hpp"
#include "support/data/damage.hpp"
#include "support/data/files.hpp"
#include "support/memory/allocation.hpp"

#include <string>

namespace {

support::WeakPlaces const kMarks = {.pieces = {".", ",", " ", "\r\n", "-", "+", "2026.11.12", "999999999999"}};

using LogDamage = kivtest::OnThe13th;

TEST_F(LogDamage, OfADateGivesAnotherDateOrNone) {
  support::Random random(101);
  support::GuardPages const guard;
  std::size_t read = 0;
  for (std::size_t i = 0; i < support::times(1000); ++i) {
    std::string const text = support::damagedText("2026.11.12, 23:59:59: old", random, kMarks);
    auto const date = kivara::dateAtStart(support::ownBlock(text).get());
    read += date ? 1 : 0;
    if (date) {
      ASSERT_TRUE(date->GetYear() < 10'000 && date->GetMonth() < 100 && date->GetDay() < 100) << text;
      std::string const name = kivara::backupOf("x.log", *date).GetName().c_str();
      ASSERT_EQ(name.size(), std::string("x_2026.11.12.log").size()) << text;
    }
  }
  EXPECT_GT(read, 0u);
}

/// What is in the working folder, all of which goes.
std::string takeAll() {
  std::string all;
  for (std::string const & name : support::entriesOf(".")) {
    all += support::readFile(name).value_or("");
    DeleteFileA(name.c_str());
  }
  return all;
}

TEST_F(LogDamage, OfAFileKeepsItsLinesAndTakesNewOnes) {
  constexpr char kOld[] = "2026.11.12, 23:59:59: old\r\n2026.11.12, 23:59:59: older\r\n";
  support::Random random(102);
  for (std::size_t i = 0; i < support::times(50); ++i) {
    std::string const bytes = support::damaged(kOld, random, kMarks);
    support::writeFile("daily.log", bytes);
    KivBasicFileLogger log(true, true, 3);
    ASSERT_TRUE(log.open("daily.log", true)) << i;
    ASSERT_TRUE(log.addText("new")) << i;
    log.close();
    std::string const all = takeAll();
    ASSERT_NE(all.find(bytes), std::string::npos) << i;
    ASSERT_NE(all.find(": new\r\n"), std::string::npos) << i;
  }
}

} // namespace
