// Lists and packed files that are damaged in every way: the tool reports the fault, or loses nothing.
#include "locale/language_run.hpp"
#include "packedfile.hpp"
#include "support/data/damage.hpp"
#include "support/memory/allocation.hpp"
#include "textlist.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace {

constexpr std::size_t kTexts = 4'000;
constexpr unsigned kCodePage = 1252;
constexpr char kList[] = "; words\r\n1001 Aktivit\xC3\xA4t\n2 a\\nb\\x81\\\\\n65535  x \n\n";

bool operator==(kivml::Text const & a, kivml::Text const & b) { return a.resId == b.resId && a.text == b.text; }

bool areSame(kivml::Texts const & a, kivml::Texts const & b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](auto const & x, auto const & y) { return x == y; });
}

TEST(KivmlDamage, OfAListIsReportedOrTheTextsComeBack) {
  support::GuardPages const guard;
  support::Random random(21);
  std::size_t sound = 0;
  for (std::size_t i = 0; i < support::times(kTexts); ++i) {
    std::string const list = support::damaged(kList, random, {.pieces = {"\\", "\n", "\r", "\t", ";", "0x", " "}});
    kivml::Faults faults;
    kivml::Texts const texts = kivml::readList(list, kCodePage, faults);
    for (kivml::Fault const & fault : faults)
      ASSERT_TRUE(fault.place >= 1 && !fault.reason.empty()) << list;
    if (!faults.empty())
      continue;
    ++sound;
    kivml::Texts const again = kivml::readList(kivml::writeList(texts, kCodePage), kCodePage, faults);
    ASSERT_TRUE(faults.empty() && areSame(again, texts)) << list;
  }
  EXPECT_GT(sound, 0u);
  EXPECT_LT(sound, support::times(kTexts));
}

TEST(KivmlDamage, OfAPackedFileIsReportedOrItIsTheSameFile) {
  support::GuardPages const guard;
  support::Random random(22);
  std::string const whole = packedTexts({{1, "one"}, {1000, "a second text"}, {65535, "last"}});
  std::size_t sound = 0;
  for (std::size_t i = 0; i < support::times(kTexts); ++i) {
    std::string const bytes = support::damaged(whole, random);
    kivml::Faults faults;
    kivml::Texts const texts = kivml::unpack(bytes, faults);
    for (kivml::Fault const & fault : faults)
      ASSERT_FALSE(fault.reason.empty()) << i;
    if (!faults.empty())
      continue;
    ++sound;
    ASSERT_EQ(kivml::pack(texts), bytes) << i;
  }
  EXPECT_GT(sound, 0u);
  EXPECT_LT(sound, support::times(kTexts));
}

} // namespace
