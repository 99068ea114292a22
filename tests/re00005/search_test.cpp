// Who asks for no offsets has another way through the engine. It has to give the same answers.
#include "re00005.hpp"

#include "support/data/random.hpp"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace {

/// Tries a pattern with all flags on texts, with offsets and without.
class BothWays {
public:
  explicit BothWays(std::string const & pattern, int flags = 0) : pattern_(pattern) {
    isCompiled_ = regcomp(&expression_, pattern.c_str(), REG_EXTENDED | flags) == 0;
  }
  BothWays(BothWays const &) = delete;
  BothWays & operator=(BothWays const &) = delete;
  ~BothWays() { regfree(&expression_); }

  bool isCompiled() const { return isCompiled_; }

  /// "start-end" of the match, "" without one; fails where the two differ.
  std::string match(std::string const & text) const {
    std::string result;
    for (int const flags : {REG_NOTBOL | REG_NOTEOL, REG_NOTEOL, REG_NOTBOL, 0}) {
      regmatch_t found = {-1, -1};
      bool const isFound = regexec(&expression_, text.c_str(), 1, &found, flags) == 0;
      EXPECT_EQ(regexec(&expression_, text.c_str(), 0, nullptr, flags) == 0, isFound)
          << pattern_ << ", flags " << flags << ", " << testing::PrintToString(text);
      result = isFound ? std::to_string(found.rm_so) + "-" + std::to_string(found.rm_eo) : "";
    }
    return result;
  }

private:
  std::string pattern_;
  regex_t expression_;
  bool isCompiled_;
};

std::string some(std::mt19937 & random, std::string const & letters, unsigned most) {
  std::string text;
  for (unsigned count = random() % (most + 1); count-- > 0;)
    text += letters[random() % letters.size()];
  return text;
}

TEST(Search, PassesByWhatCannotBegin) {
  std::string const before(1000, 'x');
  EXPECT_EQ(BothWays("needle").match(before + "needneedle"), "1004-1010");
  EXPECT_EQ(BothWays("[0-9]+z").match(before + "12 34z"), "1003-1006");
  EXPECT_EQ(BothWays("(ab|cd)$").match(before + "ab cd"), "1003-1005");
  EXPECT_EQ(BothWays("needle").match(before + "needl"), "");
  EXPECT_EQ(BothWays("[0-9]").match(before), "");
  EXPECT_EQ(BothWays("aab").match("aaaab"), "2-5");
}

TEST(Search, KnowsBeginAndEnd) {
  EXPECT_EQ(BothWays("^b").match("ab"), "");
  EXPECT_EQ(BothWays("^a|c$").match("bbc"), "2-3");
  EXPECT_EQ(BothWays("$").match("abc"), "3-3");
  EXPECT_EQ(BothWays("^$").match(""), "0-0");
  EXPECT_EQ(BothWays("^$").match("a"), "");
  EXPECT_EQ(BothWays("a$").match("aba"), "2-3");
  EXPECT_EQ(BothWays("(^|b)c").match("abc"), "1-3");
}

TEST(Search, KnowsWords) {
  EXPECT_EQ(BothWays("\\<b").match("ab b"), "3-4");
  EXPECT_EQ(BothWays("a\\>").match("ab a"), "3-4");
  EXPECT_EQ(BothWays("\\bcat\\b").match("concat cat"), "7-10");
  EXPECT_EQ(BothWays("x*\\Bc").match("c xc"), "2-4");
}

TEST(Search, OfMoreStatesThanItHasRoomForIsThatWithOffsets) {
  for (int count : {61, 62, 63, 64, 65, 200}) {
    std::string const text(static_cast<std::size_t>(count), 'a');
    EXPECT_EQ(BothWays(text).match("b" + text), "1-" + std::to_string(count + 1));
    EXPECT_EQ(BothWays(text).match(text.substr(1) + "b"), "");
  }
}

TEST(Search, OfMoreSetsOfStatesThanItKeepsGoesOn) {
  BothWays const pattern("(a|b)*a(a|b)(a|b)(a|b)(a|b)(a|b)(a|b)(a|b)c");
  std::mt19937 random(1);
  for (int i = 0; i < 200; ++i) {
    std::string const text = some(random, "ab", 300);
    pattern.match(text);
    EXPECT_NE(pattern.match(text + "abbbbbbbc"), "");
    EXPECT_EQ(pattern.match(text + "bbbbbbbbc"), "");
  }
}

class SearchModel : public testing::TestWithParam<unsigned> {};

TEST_P(SearchModel, AgreesOnRandomPatterns) {
  static char const * const kPieces[] = {"a",           "b",
                                         "c",           "A",
                                         "ab",          ".",
                                         "[ab]",        "[^ab]",
                                         "[[:alpha:]]", "[^[:alpha:]]",
                                         "*",           "+",
                                         "?",           "|",
                                         "(",           ")",
                                         "^",           "$",
                                         "{2}",         "{1,3}",
                                         "{3,}",        "\\<",
                                         "\\>",         "\\b",
                                         "\\w",         "[a-z0-9]",
                                         "(a|b)",       "(^|[ [:punct:]])",
                                         "*?",          "([ [:punct:]]|$)",
                                         "\xE4",        "(ab|cd|ef)"};
  support::Random random(GetParam());
  for (std::size_t number = 0; number < support::times(1000); ++number) {
    std::string pattern;
    for (unsigned count = 1 + random() % 9; count-- > 0;)
      pattern += kPieces[random() % std::size(kPieces)];
    BothWays const both(pattern, (random() % 3 == 0 ? REG_ICASE : 0) | (random() % 3 == 0 ? REG_NOSUB : 0));
    for (int i = 0; both.isCompiled() && i < 4; ++i)
      both.match(some(random, "aabbcABcdef01 ._\n\xE4\xC4", i == 3 ? 100 : 9));
    ASSERT_FALSE(HasFailure());
  }
}

INSTANTIATE_TEST_SUITE_P(Part, SearchModel, testing::Range(0u, 4u));

} // namespace
