#include "atools.hpp"

#include "diagnostics/internal_errors.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

using kivtest::InternalErrors;

namespace {

struct Row {
  char const * a;
  char const * b;
  int result;
};
std::ostream & operator<<(std::ostream & out, Row const & row) { return out << row.a << " / " << row.b; }

class Lexcmp : public testing::TestWithParam<Row> {};

TEST_P(Lexcmp, ComparesWithoutCaseFirst) {
  EXPECT_EQ(kiv_lexcmp(GetParam().a, GetParam().b), GetParam().result);
  EXPECT_EQ(kiv_lexcmp(GetParam().b, GetParam().a), -GetParam().result);
}

TEST_P(Lexcmp, DecidesTheOrderTests) {
  EXPECT_EQ(Kiv_IsLexGreater(GetParam().a, GetParam().b), GetParam().result > 0);
  EXPECT_EQ(Kiv_IsLexGreaterEqual(GetParam().a, GetParam().b), GetParam().result >= 0);
  EXPECT_EQ(Kiv_IsLexGreater(GetParam().b, GetParam().a), GetParam().result < 0);
  EXPECT_EQ(Kiv_IsLexGreaterEqual(GetParam().b, GetParam().a), GetParam().result <= 0);
}

INSTANTIATE_TEST_SUITE_P(Words, Lexcmp,
                         testing::Values(Row{"abc", "ABC", 1}, Row{"ABC", "abc", -1}, Row{"abc", "abc", 0},
                                         Row{"", "", 0}, Row{"", "a", -1}, Row{"a", "B", -1}, Row{"A", "b", -1},
                                         Row{"abC", "aBc", 1}, Row{"a1B", "a1b", -1}, Row{"ab", "ABC", -1},
                                         Row{"\xE4", "\xC4", 1}, Row{"\xE4pfel", "\xC4PFEL", 1}, Row{"\xE4", "b", -1},
                                         Row{"1", "a", -1},
                                         // The system ignores a soft hyphen, so different characters are at the same
                                         // place; only where both are letters may case decide.
                                         Row{"a\xAD"
                                             "B",
                                             "aB", 0},
                                         Row{"a\xAD"
                                             "b",
                                             "aB", 0}));

TEST(LexcmpOfNull, IsReportedAndCountsAsEmpty) {
  InternalErrors const errors;
  EXPECT_EQ(kiv_lexcmp(nullptr, "a"), -1);
  EXPECT_EQ(kiv_lexcmp("a", nullptr), 1);
  EXPECT_EQ(kiv_lexcmp(nullptr, nullptr), 0);
  EXPECT_EQ(errors.places(), std::vector<std::string>(3, "atools.cpp (122)"));
}

std::vector<std::string> corpus() {
  std::vector<std::string> words{"",
                                 "0",
                                 "10",
                                 "2",
                                 "Modell",
                                 "modell",
                                 "MODELL",
                                 "Modell (2)",
                                 "modeLL",
                                 "Model",
                                 "Mo",
                                 "Zeit",
                                 "zeit",
                                 "Stra\xDF"
                                 "e",
                                 "Strasse",
                                 "STRASSE",
                                 "stra\xDF"
                                 "e",
                                 "a b",
                                 "A B",
                                 "ab",
                                 "aB",
                                 "Ab",
                                 "AB",
                                 "a_b"};
  for (char const * const stem : {"pfel", "l", "ber", "1", ""})
    for (char const first : {'a', 'A', '\xE4', '\xC4', 'o', 'O', '\xF6', '\xD6', 'u', 'U', '\xFC', '\xDC', 'e', '\xE9'})
      words.push_back(first + std::string(stem));
  return words;
}

/// The order of all pairs.
class LexicalOrder : public testing::Test {
protected:
  LexicalOrder() {
    for (std::string const & a : words)
      for (std::string const & b : words)
        results.push_back(kiv_lexcmp(a.c_str(), b.c_str()));
  }
  int order(std::size_t a, std::size_t b) const { return results[a * words.size() + b]; }

  std::vector<std::string> const words = corpus();
  std::vector<int> results;
};

TEST_F(LexicalOrder, IsAntisymmetric) {
  for (std::size_t a = 0; a < words.size(); ++a)
    for (std::size_t b = 0; b < words.size(); ++b)
      ASSERT_EQ(order(a, b), -order(b, a)) << words[a] << " / " << words[b];
}

TEST_F(LexicalOrder, IsTransitive) {
  for (std::size_t a = 0; a < words.size(); ++a)
    for (std::size_t b = 0; b < words.size(); ++b)
      for (std::size_t c = 0; c < words.size(); ++c) {
        if (order(a, b) <= 0 && order(b, c) <= 0) {
          ASSERT_EQ(order(a, c), std::min(order(a, b), order(b, c)))
              << words[a] << " / " << words[b] << " / " << words[c];
        }
      }
}

TEST_F(LexicalOrder, IsThatOfTheSystemWhereMoreThanCaseDiffers) {
  for (std::size_t a = 0; a < words.size(); ++a)
    for (std::size_t b = 0; b < words.size(); ++b) {
      int const system =
          CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE, words[a].c_str(), -1, words[b].c_str(), -1) - CSTR_EQUAL;
      if (system != 0) {
        ASSERT_EQ(order(a, b), system < 0 ? -1 : 1) << words[a] << " / " << words[b];
      }
    }
}

TEST_F(LexicalOrder, PutsUpperCaseFirst) {
  std::vector<std::string> sorted{"ab", "aB", "Ab", "AB"};
  std::sort(sorted.begin(), sorted.end(), [](auto & a, auto & b) { return kiv_lexcmp(a.c_str(), b.c_str()) < 0; });
  EXPECT_EQ(sorted, (std::vector<std::string>{"AB", "Ab", "aB", "ab"}));
}

} // namespace
