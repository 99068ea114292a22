// How large patterns and texts may be, and how long they take.
#include "re00005.hpp"

#include "support/data/random.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <ostream>
#include <string>

namespace {

using Seconds = std::chrono::duration<double>;

std::string repeated(std::string const & piece, int count) {
  std::string text;
  for (int i = 0; i < count; ++i)
    text += piece;
  return text;
}

std::string nested(int depth) { return std::string(depth, '(') + "a" + std::string(depth, ')'); }

int compile(std::string const & pattern, int flags = REG_EXTENDED) {
  regex_t expression;
  int const code = regcomp(&expression, pattern.c_str(), flags);
  regfree(&expression);
  return code;
}

int compileAndMatch(std::string const & pattern, std::string const & text, int flags = REG_EXTENDED) {
  regex_t expression;
  int code = regcomp(&expression, pattern.c_str(), flags);
  if (code == 0) {
    regmatch_t match;
    code = regexec(&expression, text.c_str(), 1, &match, 0);
  }
  regfree(&expression);
  return code;
}

/// The seconds that it takes.
template <class Work> double timed(Work const & work) {
  auto const start = std::chrono::steady_clock::now();
  work();
  return Seconds(std::chrono::steady_clock::now() - start).count();
}

constexpr double kLong = 60; // on a machine with other work; what explodes takes hours

TEST(Limits, LiteralsOf64KBCompileAndMatch) {
  std::string text; // one that repeats itself would match at every place at once
  for (unsigned i = 0; text.size() < 65536; ++i)
    text += "abcdefghijklmnop"[(i * i % 13) ^ (i % 7)];
  EXPECT_EQ(compileAndMatch(text, "a" + text), 0);
  EXPECT_EQ(compileAndMatch(text, text.substr(1)), REG_NOMATCH);
  EXPECT_EQ(compileAndMatch(text, "A" + text, REG_EXTENDED | REG_ICASE), 0);
}

TEST(Limits, PositionsAreAHundredThousand) {
  EXPECT_EQ(compile(std::string(100'000, 'x')), 0);
  EXPECT_EQ(compile(std::string(100'001, 'x')), REG_ESPACE);
  EXPECT_EQ(compile(repeated("[ab]", 50'000), REG_EXTENDED | REG_NOSUB), 0);
  EXPECT_EQ(compile(repeated("[ab]", 50'001), REG_EXTENDED | REG_NOSUB), REG_ESPACE);
}

TEST(Limits, GroupsCompileTo2500AndEndInACodeBeyond) {
  EXPECT_EQ(compileAndMatch(nested(2000), "ba"), 0);
  EXPECT_EQ(compile(nested(2500)), 0);
  EXPECT_EQ(compile(nested(2501)), REG_ESPACE);
  EXPECT_EQ(compile(nested(10'000)), REG_ESPACE);
  EXPECT_EQ(compileAndMatch(repeated("(a)", 2500), std::string(2500, 'a')), 0);
  EXPECT_EQ(compile(repeated("(a)", 2501)), REG_ESPACE);
  for (char const * const place : {"^", "$", "\\b", "\\<"})
    EXPECT_EQ(compile(repeated(place, 2501)), REG_ESPACE) << place;
}

TEST(Limits, RepetitionsAreMultiplied) {
  EXPECT_EQ(compile("((a{40}){50}){50}"), 0); // 100,000
  EXPECT_EQ(compile("((a{40}){50}){51}"), REG_ESPACE);
  EXPECT_EQ(compile("a{255}{255}"), 0);
  EXPECT_EQ(compile("a{255}{255}{255}{255}{255}"), REG_ESPACE);
  EXPECT_EQ(compile("(((((((((a{9}){9}){9}){9}){9}){9}){9}){9}){9}){9}"), REG_ESPACE);
  EXPECT_EQ(compile("((a{199,}){250}){2}"), 0); // each has one more
  EXPECT_EQ(compile("((a{200,}){250}){2}"), REG_ESPACE);
}

TEST(Limits, GroupsTimesPositionsAreLimitedWithOffsetsOnly) {
  std::string const pattern = repeated("(a)", 2000) + std::string(4000, 'b');
  EXPECT_EQ(compile(pattern), REG_ESPACE);
  EXPECT_EQ(compile(pattern, REG_EXTENDED | REG_NOSUB), 0);
}

TEST(Limits, TransitionsAreAMillion) {
  auto const star = [](int count) { return "(" + repeated("ab|", count) + "c)*"; };
  EXPECT_EQ(compile(star(900), REG_EXTENDED | REG_NOSUB), 0);
  EXPECT_EQ(compile(star(1000), REG_EXTENDED | REG_NOSUB), REG_ESPACE);
}

TEST(Limits, MemoryIs256Megabytes) {
  EXPECT_EQ(compile(repeated("ab|", 1000) + "c", REG_EXTENDED | REG_NOSUB), 0);
  EXPECT_EQ(compile(repeated("ab|", 30'000) + "c", REG_EXTENDED | REG_NOSUB), REG_ESPACE);
}

struct Row {
  char const * name;
  std::string pattern;
};
std::ostream & operator<<(std::ostream & out, Row const & row) { return out << row.name; }

class LargePattern : public testing::TestWithParam<Row> {};

/// Whatever the answer is, it comes soon.
TEST_P(LargePattern, NeitherFaultsNorTakesLong) {
  for (int const flags : {REG_EXTENDED, REG_EXTENDED | REG_NOSUB, REG_EXTENDED | REG_ICASE}) {
    int code = -1;
    double const seconds =
        timed([&] { code = compileAndMatch(GetParam().pattern, std::string(300, 'a') + "!", flags); });
    EXPECT_TRUE(code == 0 || code == REG_NOMATCH || code == REG_ESPACE || code == REG_EPAREN || code == REG_EBRACE)
        << code;
    EXPECT_LT(seconds, kLong);
    std::printf("%s, flags %d: %d after %.2f s\n", GetParam().name, flags, code, seconds);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, LargePattern,
    testing::Values(
        Row{"ExplodesElsewhere1", "(a*)*b"}, Row{"ExplodesElsewhere2", "(a|a)*b"},
        Row{"ExplodesElsewhere3", "(a|aa)+$"}, Row{"ExplodesElsewhere4", "(.*)(.*)(.*)(.*)(.*)[^a!]"},
        Row{"ExplodesElsewhere5", repeated("a?", 100) + repeated("a", 100)}, Row{"ExplodesElsewhere6", "((a+)+)+b"},
        Row{"NestedStars", std::string(2400, '(') + "a" + repeated(")*", 2400)}, Row{"Options", repeated("a?", 40'000)},
        Row{"EmptyGroups", repeated("()", 2500)}, Row{"RepeatedEmptyGroups", repeated("()*", 2500)},
        Row{"RepeatedGroups", repeated("(a*)*", 2400)}, Row{"Alternatives", repeated("a|", 45'000)},
        Row{"AlternativesInAStar", "(" + repeated("ab|", 30'000) + "c)*"},
        Row{"FewerAlternativesInAStar", "(" + repeated("ab|", 900) + "c)*"},
        Row{"AlternativesInManyStars", std::string(1000, '(') + repeated("b|", 1500) + "c" + repeated(")*", 1000)},
        Row{"Classes", repeated("[[:alpha:]]", 6000)}, Row{"LargeBracket", "[" + repeated("a-b", 20'000) + "]"},
        Row{"Places", repeated("^", 100'000)}, Row{"FewerPlaces", repeated("^", 2500)},
        Row{"NoRepetitions", repeated("a{0}", 30'000)}, Row{"Bounds", repeated("a{0,255}", 390)},
        Row{"NestedBounds", "((a{0,40}){0,50}){0,50}"}, Row{"OpenGroups", std::string(2400, '(')},
        Row{"Digits", "a{" + std::string(100'000, '1')}, Row{"Escapes", repeated("\\w", 6000)}),
    [](auto const & row) { return std::string(row.param.name); });

/// A megabyte; a hundred of them in the long form.
TEST(LongText, IsSearchedToItsEnd) {
  std::string text(support::times(1'000'000), 'a');
  text += "needle";
  EXPECT_EQ(compileAndMatch("n(e|x)+dle$", text), 0);
  EXPECT_EQ(compileAndMatch("(a|aa)*needles", text), REG_NOMATCH);
}

} // namespace
