// Comparing texts of each length, at each alignment, with a difference or a NUL at each place, directly before memory that
// cannot be read.

#include "support/memory/allocation.hpp"
#include "tools/string.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

using support::GuardPages;
using SV::String;
using SV::detail::areSame;
using SV::detail::compareUpToNul;

namespace {

constexpr std::size_t kMostCharacters = 200;
constexpr std::size_t kAlignments = 16;

int sign(int number) { return (number > 0) - (number < 0); }

char patternAt(std::size_t place) { return static_cast<char>('a' + place % 26); }

/// A text of the pattern. What stands around it is no part of it and differs from text to text; with nothing after it
/// the text ends directly before a page without access.
class Room {
public:
  Room(std::size_t length, std::size_t after, char around) : block_(new char[kBefore + length + after]) {
    std::memset(block_.get(), around, kBefore + length + after);
    for (std::size_t i = 0; i < length; ++i)
      text()[i] = patternAt(i);
  }
  char * text() { return block_.get() + kBefore; }

private:
  static constexpr std::size_t kBefore = 16;
  std::unique_ptr<char[]> block_;
};

/// Calls check(a, b, length) with two same texts for each length and alignment; each of both ends once before the page.
template <class Check> void forAllPlacements(std::size_t added, Check check) {
  GuardPages const guard;
  for (std::size_t length = 0; length <= kMostCharacters; ++length)
    for (std::size_t after = 0; after < kAlignments; ++after) {
      Room a(length + added, after, 'A');
      Room b(length + added, 0, 'B');
      SCOPED_TRACE("length " + std::to_string(length) + ", after it " + std::to_string(after));
      check(a.text(), b.text(), length);
      if (testing::Test::HasFatalFailure())
        return;
    }
}

bool isSame(char const * a, char const * b, std::size_t length, bool expected) {
  return areSame(a, b, length) == expected && areSame(b, a, length) == expected;
}

bool comparesAs(char const * a, char const * b, std::size_t length, int expected) {
  return sign(compareUpToNul(a, b, length)) == expected && sign(compareUpToNul(b, a, length)) == -expected;
}

} // namespace

TEST(StringCompare, SameMeansEachCharacterAndNothingAround) {
  forAllPlacements(0, [](char * a, char * b, std::size_t length) { ASSERT_TRUE(isSame(a, b, length, true)); });
}

TEST(StringCompare, ADifferenceAtAnyPlaceIsSeen) {
  forAllPlacements(0, [](char * a, char * b, std::size_t length) {
    for (std::size_t place = 0; place < length; ++place) {
      b[place] ^= 1;
      ASSERT_TRUE(isSame(a, b, length, false)) << place;
      b[place] ^= 1;
    }
  });
}

TEST(StringCompare, SameComparesPastANul) {
  forAllPlacements(0, [](char * a, char * b, std::size_t length) {
    for (std::size_t place = 0; place < length; ++place) {
      a[place] = b[place] = '\0';
      ASSERT_TRUE(isSame(a, b, length, true)) << place;
      b[length - 1] ^= 1;
      ASSERT_TRUE(isSame(a, b, length, false)) << place;
      b[length - 1] ^= 1;
      a[place] = b[place] = patternAt(place);
    }
  });
}

TEST(StringCompare, TheFirstDifferenceOrdersByUnsignedBytes) {
  forAllPlacements(1, [](char * a, char * b, std::size_t length) {
    a[length] = b[length] = '\0';
    ASSERT_TRUE(comparesAs(a, b, length, 0));
    for (std::size_t place = 0; place < length; ++place) {
      b[place] ^= '\x80';
      a[length - 1] ^= place + 1 < length ? 1 : 0; // a later one counts no more
      ASSERT_TRUE(comparesAs(a, b, length, -1)) << place;
      b[place] ^= '\x80';
      a[length - 1] = patternAt(length - 1);
    }
  });
}

TEST(StringCompare, TheOrderEndsAtANul) {
  forAllPlacements(1, [](char * a, char * b, std::size_t length) {
    a[length] = b[length] = '\0';
    for (std::size_t place = 0; place < length; ++place) {
      a[place] = b[place] = '\0';
      b[length - 1] ^= place + 1 < length ? 1 : 0;
      ASSERT_TRUE(comparesAs(a, b, length, 0)) << place;
      b[length - 1] = patternAt(length - 1);
      b[place] = patternAt(place);
      ASSERT_TRUE(comparesAs(a, b, length, -1)) << place; // a text before one that goes on
      a[place] = patternAt(place);
    }
  });
}

TEST(StringCompare, OfTwoLengthsTheShorterStandsFirst) {
  forAllPlacements(1, [](char * a, char * b, std::size_t length) {
    a[length] = '\0';
    ASSERT_TRUE(comparesAs(a, b, length, -1));
  });
}

TEST(StringCompare, TheOperatorsAgreeWithTheRuntimeForEachLengthAndPlace) {
  GuardPages const guard;
  for (std::int32_t length = 1; length <= static_cast<std::int32_t>(kMostCharacters); ++length) {
    std::string other(static_cast<std::size_t>(length), 'x');
    String const text(other.c_str(), length);
    ASSERT_TRUE(text == String(other.c_str(), length));
    ASSERT_FALSE(text < String(other.c_str(), length));
    for (char & changed : other) {
      for (char const value : {'\0', 'a', 'y', '\xFF'}) {
        changed = value;
        String const second(other.data(), length);
        ASSERT_FALSE(text == second);
        ASSERT_EQ(text < second, std::strcmp(text.c_str(), second.c_str()) < 0);
        ASSERT_EQ(second < text, std::strcmp(second.c_str(), text.c_str()) < 0);
      }
      changed = 'x';
    }
  }
}

TEST(StringCompare, ACTextIsReadToItsNulAndNotPastIt) {
  forAllPlacements(1, [](char * a, char * b, std::size_t length) {
    a[length] = b[length] = '\0';
    String const text(a, static_cast<std::int32_t>(length));
    ASSERT_TRUE(text == b);
    if (length != 0) {
      ASSERT_FALSE(text == b + 1);
    }
    ASSERT_FALSE(text + "x" == b);
  });
}
