// Texts of durations, dates and moments that were damaged: what is not of the form is zero or refused.
#include "adattime.hpp"

#include "durationmodel.hpp"
#include "support/data/damage.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <string>

namespace {

constexpr std::size_t kTexts = 1'000;

support::WeakPlaces const kMarks = {.pieces = {":", "0", "9", "-", "+", " ", "000", "364", "365", "99"}};

/// Whether it has the form in which 9 stands for a digit.
bool hasForm(std::string const & text, std::string const & form) {
  if (text.size() != form.size())
    return false;
  for (std::size_t i = 0; i < form.size(); ++i)
    if (form[i] == '9' ? std::isdigit(static_cast<unsigned char>(text[i])) == 0 : text[i] != form[i])
      return false;
  return true;
}

TEST(DurationDamage, IsATimeOrCountsAsZero) {
  support::Random random(91);
  support::GuardPages const guard;
  for (std::size_t i = 0; i < support::times(kTexts); ++i) {
    std::string const sound =
        kivtest::durationText(random() % 200, random() % 365, random() % 24, random() % 60, random() % 60);
    std::string const text = support::damagedText(sound, random, kMarks);
    auto const block = support::ownBlock(text);
    bool const isTime = KivCoreTime::isTime(block.get());
    std::size_t const years = std::min(text.find(':'), text.size());
    ASSERT_TRUE(!isTime || hasForm(text.substr(years), ":999:99:99:99")) << text;
    KivCoreTime time(12.0, 220, 8);
    time.setAsChar(block.get());
    ASSERT_TRUE(isTime || time.asDouble() == 0.0) << text;
    ASSERT_GE(time.asString().Len(), 15) << text;
    time.asLong();
    time.asSeconds();
  }
}

TEST(DateDamage, IsADayOfTheCalendarOrRefused) {
  support::Random random(92);
  support::GuardPages const guard;
  for (std::size_t i = 0; i < support::times(kTexts); ++i) {
    std::string const text = support::damagedText(i % 2 == 0 ? "2024:02:29" : "1999:12:31", random, kMarks);
    auto const block = support::ownBlock(text);
    bool const isDate = KivCoreDate::IsValidString(block.get());
    ASSERT_TRUE(!isDate || hasForm(text, "9999:99:99")) << text;
    KivCoreDate const date(block.get());
    if (isDate) {
      char again[16];
      std::snprintf(again, sizeof again, "%04lu:%02lu:%02lu", date.GetYear(), date.GetMonth(), date.GetDay());
      ASSERT_EQ(text, again);
    }
    ASSERT_GT(date.GetDisplayString(i % 3 == 0).Len(), 0);
  }
}

TEST(MomentDamage, IsADayAndATimeOfItOrRefused) {
  support::Random random(93);
  support::GuardPages const guard;
  for (std::size_t i = 0; i < support::times(kTexts); ++i) {
    std::string const text = support::damagedText("2024:02:29 23:59:58", random, kMarks);
    auto const block = support::ownBlock(text);
    bool const isMoment = KivCoreDateTime::IsValidString(block.get());
    ASSERT_TRUE(!isMoment || hasForm(text, "9999:99:99 99:99:99")) << text;
    KivCoreDateTime const moment(block.get());
    ASSERT_TRUE(!isMoment || (moment.GetHour() < 24 && moment.GetMin() < 60 && moment.GetSec() < 60)) << text;
    ASSERT_GT(moment.GetDisplayString(false).Len(), 0);
  }
}

} // namespace
