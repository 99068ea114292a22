#include "model/wrapping.hpp"

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

} // namespace
} // namespace modeler
