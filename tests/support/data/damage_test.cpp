#include "support/data/damage.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <set>

namespace {

using support::damaged;

std::string const kSound = "begin 12 \x01\x02\x03\x04 middle 345 end";

/// Whether some of many damaged inputs are such.
template <class Condition> bool someAre(Condition const & condition, support::WeakPlaces const & places = {}) {
  support::Random random(5);
  for (int i = 0; i < 5'000; ++i)
    if (condition(damaged(kSound, random, places)))
      return true;
  return false;
}

TEST(Damage, IsNeverTheSoundInput) {
  support::Random random(1);
  for (std::string const sound : {"", "a", "begin 12 end"})
    for (int i = 0; i < 5'000; ++i)
      ASSERT_NE(damaged(sound, random), sound);
}

TEST(Damage, IsTheSameWithTheSameSeed) {
  support::Random one(2);
  support::Random other(2);
  for (int i = 0; i < 500; ++i)
    ASSERT_EQ(damaged(kSound, one), damaged(kSound, other));
}

/// In how many bits two texts of one length differ; -1 if they have two lengths.
int differentBits(std::string const & one, std::string const & other) {
  int count = one.size() == other.size() ? 0 : -1;
  for (std::size_t i = 0; count >= 0 && i < one.size(); ++i)
    count += std::popcount(static_cast<unsigned char>(one[i] ^ other[i]));
  return count;
}

TEST(Damage, FlipsOneBitAndMore) {
  for (int const count : {1, 2, 5})
    EXPECT_TRUE(someAre([&](std::string const & bytes) { return differentBits(bytes, kSound) == count; })) << count;
}

TEST(Damage, CutsOffAtEachLength) {
  support::Random random(3);
  std::set<std::size_t> lengths;
  for (int i = 0; i < 20'000; ++i)
    if (std::string const bytes = damaged(kSound, random); kSound.starts_with(bytes))
      lengths.insert(bytes.size());
  EXPECT_EQ(lengths.size(), kSound.size());
}

TEST(Damage, CutsOutDoublesAndSwapsPieces) {
  EXPECT_TRUE(someAre([](std::string const & bytes) {
    return bytes.size() + 4 == kSound.size() && bytes.starts_with("beg") && bytes.ends_with("end");
  }));
  EXPECT_TRUE(someAre([](std::string const & bytes) {
    return bytes.size() > kSound.size() && bytes.find("12", bytes.find("12") + 1) != std::string::npos;
  }));
  EXPECT_TRUE(someAre([](std::string const & bytes) {
    return bytes != kSound && bytes.size() == kSound.size() &&
           std::is_permutation(bytes.begin(), bytes.end(), kSound.begin());
  }));
}

TEST(Damage, SetsNumbersToTheirEnds) {
  for (std::string const & number : {std::string(4, '\0'), std::string(4, '\xFF'), std::string(8, '\xFF'),
                                     std::string("\xFF\xFF\xFF\x7F"), std::string(" 2147483648 "), std::string(" -1 ")})
    EXPECT_TRUE(someAre([&](std::string const & bytes) { return bytes.find(number) != std::string::npos; })) << number;
}

TEST(Damage, PutsInNulBytesLongRunsAndOtherEncodings) {
  EXPECT_TRUE(someAre([](std::string const & bytes) { return bytes.find('\0') != std::string::npos; }));
  EXPECT_TRUE(someAre([](std::string const & bytes) { return bytes.size() > 8'000; }));
  EXPECT_TRUE(someAre([](std::string const & bytes) { return bytes.starts_with(std::string("\xFF\xFE\x62\0", 4)); }));
  EXPECT_TRUE(someAre([](std::string const & bytes) { return bytes.find("\xEF\xBB\xBF") != std::string::npos; }));
}

TEST(Damage, PutsInPiecesOfTheFormat) {
  EXPECT_TRUE(someAre([](std::string const & bytes) { return bytes.find("piece!") != std::string::npos; },
                      {.pieces = {"piece!"}}));
}

TEST(Damage, LiesNearTheEndIfAsked) {
  support::Random random(4);
  std::string const sound(10'000, 'x');
  int unharmed = 0;
  for (int i = 0; i < 1'000; ++i)
    unharmed += damaged(sound, random, {.end = 100, .changes = 1}).starts_with(sound.substr(0, 9'900)) ? 1 : 0;
  EXPECT_GT(unharmed, 350);
}

TEST(Damage, OfATextEndsAtItsNul) {
  support::Random random(6);
  for (int i = 0; i < 5'000; ++i)
    ASSERT_EQ(support::damagedText(kSound, random).find('\0'), std::string::npos);
}

} // namespace
