// Wildcards: the rules, and a model of them over random pairs.
#include "matchers.hpp"

#include "support/data/random.hpp"
#include "support/imports/import_spy.hpp"

#include <gtest/gtest.h>

#include <cctype>
#include <clocale>
#include <ostream>
#include <vector>

namespace {

struct Row {
  char const * pattern;
  int flags;
  char const * text;
  bool matches;
};
std::ostream & operator<<(std::ostream & out, Row const & row) {
  return out << row.pattern << ", " << row.flags << ", " << testing::PrintToString(row.text);
}

class Wildcards : public testing::TestWithParam<Row> {};

} // namespace

TEST_P(Wildcards, MatchByTheirRules) {
  EXPECT_EQ(KivJokerz(GetParam().pattern, GetParam().flags).match(GetParam().text), GetParam().matches ? 1 : 0);
  EXPECT_EQ(KivJokerz2(GetParam().pattern, GetParam().flags).match(GetParam().text), GetParam().matches ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Wildcards,
    testing::Values(Row{"", 0, "", true}, Row{"", 0, "a", false}, Row{"*", 0, "", true}, Row{"*", 0, "a\nb", true},
                    Row{"?", 0, "", false}, Row{"?", 0, "\xFF", true}, Row{"?", 0, "ab", false},
                    Row{"?", 0, "\n", true}, Row{"[a]", 0, "[a]", true}, Row{"[a]", 0, "a", false},
                    Row{"a*b?.txt", 0, "axxbx.txt", true}, Row{"a*b?.txt", 0, "abx.txt", true},
                    Row{"a*b?.txt", 0, "ab.txt", false}, Row{"a*b?.txt", 0, "abxatxt", false},
                    Row{"a*b?.txt", 0, "xabx.txt", false}, Row{"a*b?.txt", 2, "xabx.txtx", true},
                    Row{"a*b?.txt", 1, "ABX.TXT", true}, Row{"a*b?.txt", 0, "ABX.TXT", false}, Row{"A", 1, "a", true},
                    Row{"\xE4", 1, "\xC4", true}, Row{"a}b]", 0, "a}b]", true}, Row{"a**b", 0, "ab", true},
                    Row{"cat", 4, "cat", true}, Row{"cat", 4, "a cat", true}, Row{"cat", 4, "cat a", true},
                    Row{"cat", 4, "a cat a", true}, Row{"cat", 4, "the (cat)", true},
                    Row{"cat", 4, "concatenate", false}, Row{"cat", 4, "cats", false}, Row{"cat", 4, "1cat", false},
                    Row{"cat", 6, "concatenate", false}, Row{"c*t", 4, "a cut", true}, Row{"c*t", 4, "c a t", false},
                    Row{"c?t", 4, "c.t", false}, Row{"c?t", 4, "c\tt", false}, Row{"CAT", 5, "a cat", true},
                    Row{"*", 4, "", true}, Row{"cat", 2, "concatenate", true}, Row{"", 2, "anything", true}));

TEST(WildcardCharacters, AllStandForThemselvesButTwo) {
  for (int byte = 1; byte < 256; ++byte) {
    std::string const text = {'x', static_cast<char>(byte), 'y'};
    KivJokerz const pattern(text.c_str(), 0);
    ASSERT_EQ(!pattern, 0) << byte;
    EXPECT_EQ(pattern.match(text.c_str()), 1) << byte;
    EXPECT_EQ(pattern.match("xy"), byte == '*' ? 1 : 0) << byte;
    EXPECT_EQ(pattern.match("xQy"), byte == '*' || byte == '?' || byte == 'Q' ? 1 : 0) << byte;
  }
}

namespace {

/// The expressions that are compiled.
std::vector<std::pair<std::string, int>> compiled;

void spyOnPatterns() {
  static int spies = 0; // one for the process
  if (spies++ != 0) {
    compiled.clear();
    return;
  }
  support::spyOnImport("kivara.dll", "regcomp", [](support::SpiedCall & call) {
    compiled.emplace_back(call.text(1) != nullptr ? call.text(1) : "", static_cast<int>(call.arguments[2]));
  });
}

} // namespace

TEST(WildcardTranslation, IsThatOfTheTable) {
  spyOnPatterns();
  for (int const flags : {0, 1, 2, 3, 4, 5, 6, 7})
    KivJokerz("a*b?.txt", flags);
  std::string const words = "(^|[ [:punct:]])a[^ [:cntrl:][:punct:]]*b[^ [:cntrl:][:punct:]]\\.txt([ [:punct:]]|$)";
  std::vector<std::pair<std::string, int>> const expected = {
      {"^a.*b.\\.txt$", 5}, {"^a.*b.\\.txt$", 7}, {"a.*b.\\.txt", 5}, {"a.*b.\\.txt", 7},
      {words, 5},           {words, 7},           {words, 5},         {words, 7}};
  EXPECT_EQ(compiled, expected);
}

TEST(WildcardTranslation, PutsABackslashBeforeSomeCharacters) {
  spyOnPatterns();
  KivJokerz(".$()+[\\^{|]}", 0);
  KivJokerz("", 0);
  KivJokerz("[a]", 0);
  ASSERT_EQ(compiled.size(), 3u);
  EXPECT_EQ(compiled[0].first, "^\\.\\$\\(\\)\\+\\[\\\\\\^\\{\\|]}$");
  EXPECT_EQ(compiled[1].first, "^$");
  EXPECT_EQ(compiled[2].first, "^\\[a]$");
}

TEST(WildcardMatcher, ThatCannotBeCompiledIsEmptyAndSilent) {
  KivJokerz const pattern(std::string(100'001, 'a').c_str(), 0);
  EXPECT_EQ(!pattern, 1);
  EXPECT_EQ(static_cast<void *>(pattern), nullptr);
  EXPECT_EQ(pattern.match("a"), 0);
}

TEST(WildcardMatcher, TakesNullForEmpty) {
  EXPECT_EQ(KivJokerz(static_cast<char const *>(nullptr), 0).match(""), 1);
  EXPECT_EQ(KivJokerz("", 0).match(nullptr), 1);
}

TEST(WildcardMatcher, IsEmptyAtFirst) {
  KivJokerz const pattern;
  EXPECT_EQ(!pattern, 1);
  EXPECT_EQ(pattern.match(""), 0);
}

TEST(WildcardMatcher, HasNoOffsets) {
  EXPECT_EQ(offsets(KivJokerz("b", 2), "abc"), "-1--1");
  EXPECT_EQ(offsets(KivJokerz("b", 0), "abc"), "");
}

TEST(WildcardMatcher, TextAssignedLaterIsARegularExpression) {
  KivJokerz pattern("a*", 0);
  EXPECT_EQ(&(pattern = "^a*$"), &pattern);
  EXPECT_EQ(pattern.match("aaa"), 1);
  EXPECT_EQ(pattern.match("ab"), 0);
}

TEST(WildcardMatcher, CopiesShareAndAssignmentLeaks) {
  LiveExpressions const live;
  {
    KivJokerz const first("a", 0);
    KivJokerz const copy(first);
    EXPECT_EQ(copy.match("a"), 1);
    EXPECT_EQ(live.value(), 1);
  }
  EXPECT_EQ(live.value(), 0);
  {
    KivJokerz held("a", 0);
    KivJokerz const other("b", 0);
    held = other;
    EXPECT_EQ(held.match("b"), 1);
  }
  EXPECT_EQ(live.value(), 1);
  {
    KivJokerz2 held("a", 0);
    KivJokerz2 const other("b", 0);
    KivJokerz2 const copy(other);
    EXPECT_EQ(&(held = other), &held);
    EXPECT_EQ(held.match("b"), 1);
    EXPECT_EQ(!copy, 0);
  }
  EXPECT_EQ(live.value(), 2);
}

TEST(WildcardMatcher, IsHeldByTheInterfaceToo) {
  KivJokerz2 const pattern("a?c", 0);
  KivMatcherI const & held = pattern;
  EXPECT_EQ(static_cast<void *>(held), reinterpret_cast<void *>(1));
  EXPECT_EQ(!held, 0);
  EXPECT_EQ(held.match("abc"), 1);
  EXPECT_EQ(held.match("ac"), 0);
  EXPECT_EQ(!KivJokerz2(std::string(100'001, 'a').c_str(), 0), 1);
}

// The model, written from the table of prefixes and suffixes.

namespace {

bool isPunctuation(char c) { return std::ispunct(static_cast<unsigned char>(c)) != 0; }
bool isBoundary(char c) { return c == ' ' || isPunctuation(c); }
bool isInWord(char c) { return !isBoundary(c) && std::iscntrl(static_cast<unsigned char>(c)) == 0; }

class Model {
public:
  Model(std::string const & pattern, int flags) : pattern_(pattern), flags_(flags) {}

  bool matches(std::string const & text) const {
    if ((flags_ & 4) == 0 && (flags_ & 2) == 0)
      return endsFrom(text, 0)[text.size()];
    for (std::size_t start = 0; start <= text.size(); ++start) {
      bool const begins = (flags_ & 4) == 0 || start == 0 || isBoundary(text[start - 1]);
      std::vector<bool> const ends = endsFrom(text, start);
      for (std::size_t end = start; begins && end <= text.size(); ++end)
        if (ends[end] && ((flags_ & 4) == 0 || end == text.size() || isBoundary(text[end])))
          return true;
    }
    return false;
  }

private:
  bool isOne(char c) const { return (flags_ & 4) == 0 || isInWord(c); }

  bool isSame(char a, char b) const {
    if ((flags_ & 1) == 0)
      return a == b;
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
  }

  /// Where the pattern may end when it begins at \p start.
  std::vector<bool> endsFrom(std::string const & text, std::size_t start) const {
    std::vector<bool> reached(text.size() + 1);
    reached[start] = true;
    for (char const c : pattern_) {
      std::vector<bool> next(text.size() + 1);
      for (std::size_t at = 0; at <= text.size(); ++at) {
        if (c == '*') {
          if (reached[at] || (at > 0 && next[at - 1] && isOne(text[at - 1])))
            next[at] = true;
        } else if (at > 0 && reached[at - 1] && (c == '?' ? isOne(text[at - 1]) : isSame(c, text[at - 1]))) {
          next[at] = true;
        }
      }
      reached = next;
    }
    return reached;
  }

  std::string pattern_;
  int flags_;
};

std::string randomOf(std::mt19937 & random, std::string const & letters, unsigned most) {
  std::string text;
  for (unsigned count = random() % (most + 1); count-- > 0;)
    text += letters[random() % letters.size()];
  return text;
}

} // namespace

class WildcardModel : public testing::TestWithParam<unsigned> {};

TEST_P(WildcardModel, AgreesOnRandomPairs) {
  ASSERT_TRUE(std::setlocale(LC_CTYPE, ".ACP"));
  support::Random random(GetParam());
  for (std::size_t number = 0; number < support::times(625); ++number) {
    int const flags = static_cast<int>(random() % 8);
    std::string const pattern = randomOf(random, "**??aAb.[ \xE4\xC4\\]", 7);
    KivJokerz const ours(pattern.c_str(), flags);
    Model const model(pattern, flags);
    ASSERT_EQ(!ours, 0) << pattern;
    for (int i = 0; i < 4; ++i) {
      std::string const text = randomOf(random, "aAab. [\xE4\xC4\\]\t", 9);
      ASSERT_EQ(ours.match(text.c_str()), model.matches(text) ? 1 : 0) << pattern << ", " << flags << ", " << text;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Part, WildcardModel, testing::Range(0u, 4u));
