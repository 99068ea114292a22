// The engine's contract: flags, codes, offsets, and what it does for patterns that no engine should see.
#include "re00005.hpp"

#include "support/data/damage.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <ostream>
#include <string>

namespace {

/// Frees what it compiled.
class Expression {
public:
  explicit Expression(char const * pattern, int flags = REG_EXTENDED) : code(regcomp(&expression_, pattern, flags)) {}
  Expression(Expression const &) = delete;
  Expression & operator=(Expression const &) = delete;
  ~Expression() { regfree(&expression_); }

  regex_t * get() { return &expression_; }
  int exec(char const * text, int flags = 0) { return regexec(&expression_, text, 0, nullptr, flags); }

  /// "start-end" of the match, "" without one.
  std::string offsets(char const * text, int flags = 0) {
    regmatch_t match;
    if (regexec(&expression_, text, 1, &match, flags) != 0)
      return "";
    return std::to_string(match.rm_so) + "-" + std::to_string(match.rm_eo);
  }

private:
  regex_t expression_;

public:
  int const code;
};

struct CodeRow {
  char const * pattern;
  int code;
};
std::ostream & operator<<(std::ostream & out, CodeRow const & row) { return out << row.pattern; }
class Code : public testing::TestWithParam<CodeRow> {};

TEST_P(Code, IsThatOfTheFault) {
  support::GuardPages const guard;
  std::string const copy = GetParam().pattern; // ends at the guard
  std::string exact(copy.c_str(), copy.size());
  exact.shrink_to_fit();
  EXPECT_EQ(Expression(exact.c_str()).code, GetParam().code);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Code,
    testing::Values(
        CodeRow{"", 0}, CodeRow{"(?", REG_BADPAT}, CodeRow{"(?z)", REG_BADPAT}, CodeRow{"(?#", REG_BADPAT},
        CodeRow{"[[.a.]]", REG_ECOLLATE}, CodeRow{"[[=a=]]", REG_ECOLLATE}, CodeRow{"[[:none:]]", REG_ECTYPE},
        CodeRow{"[[:", REG_ECTYPE}, CodeRow{"[[:alpha", REG_ECTYPE}, CodeRow{"[[:alpha:", REG_EBRACK},
        CodeRow{"[[:alpha:x]", REG_ECTYPE}, CodeRow{"[[:alpha:]", REG_EBRACK}, CodeRow{"a\\", REG_EESCAPE},
        CodeRow{"\\1", REG_ESUBREG}, CodeRow{"(a)\\2", REG_ESUBREG}, CodeRow{"\\0", REG_ESUBREG},
        CodeRow{"(a)\\0", REG_ESUBREG}, CodeRow{"[", REG_EBRACK}, CodeRow{"[]", REG_EBRACK}, CodeRow{"[^", REG_EBRACK},
        CodeRow{"[a-", REG_ERANGE}, CodeRow{"[a", REG_EBRACK}, CodeRow{"(", REG_EPAREN}, CodeRow{"(a(b)", REG_EPAREN},
        CodeRow{"a{", REG_EBRACE}, CodeRow{"a{1", REG_EBRACE}, CodeRow{"a{1,", REG_EBRACE},
        CodeRow{"a{1,2", REG_EBRACE}, CodeRow{"a{}", REG_BADBR}, CodeRow{"a{,2}", REG_BADBR},
        CodeRow{"a{2,1}", REG_BADBR}, CodeRow{"a{x}", REG_BADBR}, CodeRow{"a{1x}", REG_BADBR},
        CodeRow{"a{256}", REG_BADBR}, CodeRow{"a{1,256}", REG_BADBR}, CodeRow{"a{256,}", REG_BADBR},
        CodeRow{"a{99999999999}", REG_BADBR}, CodeRow{"a{4294967297}", REG_BADBR}, CodeRow{"a{~1}", REG_BADBR},
        CodeRow{"a{+1}", REG_BADBR}, CodeRow{"a{255}", 0}, CodeRow{"a{0}", 0}, CodeRow{"a{0,}", 0},
        CodeRow{"a{1,1}", 0}, CodeRow{"[b-a]", REG_ERANGE}, CodeRow{"a**", REG_BADRPT}, CodeRow{"a+*", REG_BADRPT},
        CodeRow{"a{1}*", REG_BADRPT}, CodeRow{"a)", 0}, CodeRow{"*a", 0}, CodeRow{"[]a]", 0},
        CodeRow{"\\x", REG_BADPAT}, CodeRow{"\\x4", 0}, CodeRow{"\\x{", REG_EBRACE}, CodeRow{"\\x{41", REG_EBRACE},
        CodeRow{"\\x{100}", REG_BADPAT}, CodeRow{"\\x{8000}", REG_BADPAT}, CodeRow{"\\x{FF}", 0},
        CodeRow{"\\x{00000000000000000000000000000041}", REG_BADPAT},
        CodeRow{"\\x{0000000000000000000000000000041}", 0}, CodeRow{"\\Q", 0}, CodeRow{"\\Q\\E", 0}, CodeRow{"\\Qa", 0},
        CodeRow{"(?i)a", 0}, CodeRow{"(?i:a", REG_EPAREN}, CodeRow{"(?i:a)", 0}, CodeRow{"(?n)a", 0},
        CodeRow{"(?r)a", 0}, CodeRow{"(?U)a", 0}, CodeRow{"(?-i)a", 0}, CodeRow{"(?inrU-inrU:a)", 0},
        CodeRow{"(?s)a", REG_BADPAT}, CodeRow{"(?ix)a", REG_BADPAT}, CodeRow{"(?r:a", REG_EPAREN}));

TEST(Flags, CaseIsIgnoredByTwo) {
  EXPECT_EQ(Expression("abc").exec("aBc"), REG_NOMATCH);
  EXPECT_EQ(Expression("abc", REG_EXTENDED | REG_ICASE).exec("aBc"), 0);
}

TEST(Flags, BasicSyntaxIsThatWithoutOne) {
  EXPECT_EQ(Expression("a+", 0).exec("a+"), 0);
  EXPECT_EQ(Expression("a+", 0).exec("aa"), REG_NOMATCH);
  EXPECT_EQ(Expression("\\(a\\)\\{2\\}", 0).offsets("baa"), "1-3");
  EXPECT_EQ(Expression("\\(a", 0).code, REG_EPAREN);
  EXPECT_EQ(Expression("a\\{1", 0).code, REG_EBRACE);
}

TEST(Flags, FourLeavesOffsetsOut) {
  Expression expression("b+", REG_EXTENDED | REG_NOSUB);
  EXPECT_EQ(expression.exec("abbc"), 0);
  EXPECT_EQ(expression.offsets("abbc"), "-1--1");
}

TEST(Flags, FourDoesNotMatchLineByLine) { EXPECT_EQ(Expression("^$", 5).exec("a\n"), REG_NOMATCH); }

TEST(Flags, OtherBitsAreIgnored) {
  for (int flag = 8; flag > 0; flag <<= 1)
    EXPECT_EQ(Expression("^b.$", REG_EXTENDED | flag).offsets("a\nb\n"), "") << flag;
  EXPECT_EQ(Expression("a.c", REG_EXTENDED | -16).exec("a\nc"), 0);
}

TEST(Flags, OfMatchingSayWhereLinesBegin) {
  EXPECT_EQ(Expression("^a").exec("a", REG_NOTBOL), REG_NOMATCH);
  EXPECT_EQ(Expression("a$").exec("a", REG_NOTEOL), REG_NOMATCH);
  EXPECT_EQ(Expression("a").exec("a", -4), 0);
}

TEST(Match, IsTheLongestOfThoseFarthestLeft) {
  EXPECT_EQ(Expression("b|bc|bcd").offsets("abcd bcdd"), "1-4");
  EXPECT_EQ(Expression("x*").offsets("aaxx"), "0-0");
}

TEST(Match, GivesTheGroups) {
  Expression expression("(a+)(b+)?(c)");
  EXPECT_EQ(expression.get()->re_nsub, 3u);
  regmatch_t groups[5];
  ASSERT_EQ(regexec(expression.get(), "xaac", 5, groups, 0), 0);
  EXPECT_EQ(groups[0].rm_so, 1);
  EXPECT_EQ(groups[0].rm_eo, 4);
  EXPECT_EQ(groups[1].rm_eo, 3);
  EXPECT_EQ(groups[2].rm_so, -1);
  EXPECT_EQ(groups[3].rm_so, 3);
  EXPECT_EQ(groups[4].rm_so, -1);
}

TEST(Match, FollowsBackReferences) {
  EXPECT_EQ(Expression("(ab*)\\1").offsets("xabbabb"), "1-7");
  EXPECT_EQ(Expression("(a)(b)\\2\\1").exec("abab"), REG_NOMATCH);
}

TEST(Match, KnowsTheEscapesOfLetters) {
  struct {
    char const * pattern;
    char const * text;
    char const * other;
  } const rows[] = {{"^\\w$", "_", "-"},   {"^\\W$", "-", "_"},     {"^\\s$", "\t", "x"},         {"^\\S$", "x", "\t"},
                    {"^\\d$", "7", "x"},   {"^\\D$", "x", "7"},     {"^\\t$", "\t", "t"},         {"^\\n$", "\n", "n"},
                    {"^\\r$", "\r", "r"},  {"^\\x41$", "A", "x41"}, {"\\Ba", "ba", "a"},          {"\\<a", "b a", "ba"},
                    {"a\\>", "a b", "ab"}, {"\\ba", "b a", "ba"},   {"\\Qa.b\\E", "xa.bx", "axb"}};
  for (auto const & row : rows) {
    EXPECT_EQ(Expression(row.pattern).exec(row.text), 0) << row.pattern;
    EXPECT_EQ(Expression(row.pattern).exec(row.other), REG_NOMATCH) << row.pattern;
  }
}

TEST(Match, CountsRepetitionsWithinRepetitions) {
  EXPECT_EQ(Expression("((a{3}b)*c){2}").offsets("aaabcaaabc"), "0-10");
  EXPECT_EQ(Expression("((a{3}b)*c){2}").offsets("cc"), "0-2");
  EXPECT_EQ(Expression("^((a{3}b)*c){2}$").exec("aacc"), REG_NOMATCH);
  EXPECT_EQ(Expression("((a{2}b|x)+(c{2}|d)*e){2,3}f").offsets("aabccexdef"), "0-10");
  EXPECT_EQ(Expression("(ba{0}c){2}").offsets("bcbc"), "0-4");
  EXPECT_EQ(Expression("^(ba{0}c){2}$").exec("bbcc"), REG_NOMATCH);
}

TEST(Match, KnowsWhatOverlappingItemsOfABracketLeaveOut) {
  EXPECT_EQ(Expression("[^AA-BB]").exec("AB"), REG_NOMATCH);
  EXPECT_EQ(Expression("[^a-cb-db-c]").offsets("abcde"), "4-5");
}

TEST(Match, KnowsEachByteAsTextAndAsPattern) {
  for (int byte = 1; byte < 256; ++byte) {
    std::string const text(1, static_cast<char>(byte));
    EXPECT_EQ(Expression(".").offsets(text.c_str()), "0-1") << byte;
    std::string const bracket = std::strchr("^-]", byte) == nullptr ? "[" + text + text + "]" : ".";
    EXPECT_EQ(Expression(bracket.c_str()).offsets(text.c_str()), "0-1") << byte;
    bool const isPlain = std::isalnum(byte) || byte >= 128 || std::strchr("<>", byte) != nullptr;
    EXPECT_EQ(Expression(((isPlain ? "" : "\\") + text).c_str()).offsets(("/" + text).c_str()),
              byte == '/' ? "0-1" : "1-2")
        << byte;
  }
}

TEST(Match, TakesNullForEmpty) {
  EXPECT_EQ(Expression(nullptr).offsets("a"), "0-0");
  EXPECT_EQ(Expression("a").exec(nullptr), REG_NOMATCH);
  EXPECT_EQ(Expression("^$").exec(nullptr), 0);
}

TEST(FailedCompilation, LeavesAnExpressionThatHoldsNothing) {
  for (char const * const pattern : {"(", "a**", "[", "a{2}{255}{255}{255}"}) {
    Expression expression(pattern);
    EXPECT_NE(expression.code, 0);
    EXPECT_EQ(expression.get()->value, nullptr);
    EXPECT_EQ(expression.exec("a"), REG_BADPAT);
  } // freed once more
}

TEST(FailedCompilation, WithoutMemoryIsCode12AtEveryAllocation) {
  std::string const pattern = "(" + std::string(3000, 'a') + "){3}";
  for (std::size_t most = 16; most < 200'000; most += most / 4) {
    support::AllocationLimit const limit(most);
    Expression expression(pattern.c_str());
    ASSERT_TRUE(expression.code == 0 || expression.code == REG_ESPACE) << most << ' ' << expression.code;
    EXPECT_EQ(expression.get()->value != nullptr, expression.code == 0);
  }
}

TEST(FailedMatch, WithoutMemoryIsCode12) {
  Expression expression(std::string(3000, 'a').c_str());
  support::AllocationLimit const limit(1000);
  EXPECT_EQ(expression.exec("aaa"), REG_ESPACE);
}

TEST(ErrorText, IsCutToTheBuffer) {
  char text[9] = "xxxxxxxx";
  EXPECT_EQ(regerror(REG_BADPAT, nullptr, text, sizeof text), sizeof "Invalid regexp");
  EXPECT_STREQ(text, "Invalid ");
  EXPECT_EQ(regerror(0, nullptr, nullptr, 0), sizeof "No error");
  regerror(14, nullptr, text, sizeof text);
  EXPECT_STREQ(text, "Unknown ");
  regerror(-1, nullptr, text, sizeof text);
  EXPECT_STREQ(text, "Unknown ");
}

std::string randomPattern(std::mt19937 & random) {
  static char const * const kPieces[] = {
      "a",       "b",  "(",   ")",     "(",    ")",   "[",    "]",   "^",    "$",  "*",          "+",  "?",  "|",
      "{",       "}",  "{2}", "{1,3}", "{0,}", ".",   "\\",   "\\x", "-",    "[^", "[[:alpha:]", "[:", ":]", "[.",
      "\\x{41}", "(?", ":",   "\\Q",   "\\E",  "\\w", "\xE4", "\\b", "(?i)", ",",  "9",          "\\S"};
  std::string pattern;
  for (unsigned count = random() % 14; count-- > 0;)
    pattern += kPieces[random() % std::size(kPieces)];
  return pattern;
}

/// Of patterns that people use. Long ones take long: 10,000 letters are a test of their own.
std::string damagedPattern(std::mt19937 & random) {
  static char const * const kSound[] = {"^([A-Z][a-z]+|[[:digit:]]{1,3})(-\\d+)*$", "\\b(ab|a)*c{2,5}\\.(txt|log)$",
                                        "[^\\s,;]+@[a-z0-9.-]{2,}\\.(de|com)", "(?i)\\Q[1.5]\\E\\x{41}+"};
  support::WeakPlaces const marks = {
      .pieces = {"(", ")", "[", "]", "{", "}", "*", "+", "?", "|", "\\", "[:", "{255}", "\\x{", "(?"}};
  std::string const pattern = support::damagedText(kSound[random() % std::size(kSound)], random, marks);
  return pattern.substr(0, 120);
}

/// Back references may take any time.
bool hasBackReference(std::string const & pattern) {
  for (std::size_t at = pattern.find('\\'); at != std::string::npos && at + 1 < pattern.size();
       at = pattern.find('\\', at + 1))
    if (std::isdigit(static_cast<unsigned char>(pattern[at + 1])))
      return true;
  return false;
}

class DamagedPatterns : public testing::TestWithParam<unsigned> {};

TEST_P(DamagedPatterns, StayWithinTheirBounds) {
  support::GuardPages const guard;
  support::Random random(GetParam());
  for (std::size_t number = 0; number < support::times(2500); ++number) {
    std::string pattern = random() % 2 == 0 ? randomPattern(random) : damagedPattern(random);
    pattern.shrink_to_fit();
    if (hasBackReference(pattern))
      continue;
    int const flags = static_cast<int>(random() % 8);
    SCOPED_TRACE(pattern);
    Expression expression(pattern.c_str(), flags);
    ASSERT_TRUE(expression.code >= 0 && expression.code <= REG_BADRPT);
    if (expression.code == 0) {
      int const result = expression.exec("aab \xE4\x01 A9");
      ASSERT_TRUE(result == 0 || result == REG_NOMATCH);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Part, DamagedPatterns, testing::Range(0u, 4u));

} // namespace
