#include "model/layout/wrapping.hpp"

#include <gtest/gtest.h>

#include <ostream>

using SV::String;

namespace modeler {
namespace {

struct Case {
  char const * text;
  ISequence<String> lines;
};
std::ostream & operator<<(std::ostream & out, Case const & row) { return out << row.text; }

class LayoutWrapping : public testing::TestWithParam<Case> {};
TEST_P(LayoutWrapping, BreaksBetweenWordsOnly) {
  auto const tenForEach = [](String const & text) { return SV::Size{10 * text.Len(), 16}; };
  EXPECT_EQ(wrapped(GetParam().text, 100, tenForEach), GetParam().lines);
}
INSTANTIATE_TEST_SUITE_P(Texts, LayoutWrapping,
                         testing::Values(Case{"", {}}, Case{"  \t\r\n", {}}, Case{"one", {"one"}},
                                         Case{"in one two", {"in one two"}}, // just as wide
                                         Case{"in one more", {"in one", "more"}}, Case{"  a   b\tc\r\nd ", {"a b c d"}},
                                         Case{"a word-that-is-too-long b", {"a", "word-that-is-too-long", "b"}},
                                         Case{"word-that-is-too-long", {"word-that-is-too-long"}}));

TEST(Shortened, HasAsManyCharactersAsHaveRoomWithTheDots) {
  auto const tenForEach = [](String const & text) { return SV::Size{10 * text.Len(), 16}; };
  EXPECT_EQ(shortened("exactly-10", 100, tenForEach), String("exactly-10"));
  EXPECT_EQ(shortened("more-than-10", 100, tenForEach), String("more-th..."));
  EXPECT_EQ(shortened("more-than-10", 109, tenForEach), String("more-th..."));
  EXPECT_EQ(shortened("more-than-10", 30, tenForEach), String("..."));
  EXPECT_EQ(shortened("more-than-10", -5, tenForEach), String("..."));
  EXPECT_EQ(shortened("", 0, tenForEach), String(""));
}

TEST(Shortened, MeasuresALongTextAFewTimesOnly) {
  std::string const text(8000, 'x');
  int measured = 0;
  auto const counting = [&](String const & each) {
    ++measured;
    return SV::Size{each.Len(), 16};
  };
  EXPECT_EQ(shortened(text.c_str(), 100, counting).Len(), 100);
  EXPECT_LT(measured, 20);
}

} // namespace
} // namespace modeler
