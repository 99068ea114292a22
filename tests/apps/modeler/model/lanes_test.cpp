#include "model/layout/lanes.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace modeler {

std::ostream & operator<<(std::ostream & out, Span const & span) { return out << span.from << ".." << span.to; }

namespace {

struct Case {
  ISequence<Span> spans;
  ISequence<long> lanes;
};
std::ostream & operator<<(std::ostream & out, Case const & row) { return out << testing::PrintToString(row.spans); }

class LayoutLanes : public testing::TestWithParam<Case> {};
TEST_P(LayoutLanes, AreTheFirstOnesThatAreFree) {
  Lanes const lanes = lanesFor(GetParam().spans);
  EXPECT_EQ(lanes.lanes, GetParam().lanes);
  long most = 0;
  for (long const lane : GetParam().lanes)
    most = std::max(most, lane + 1);
  EXPECT_EQ(lanes.count, most);
}
INSTANTIATE_TEST_SUITE_P(Spans, LayoutLanes,
                         testing::Values(Case{{}, {}}, Case{{{1, 5}}, {0}}, Case{{{1, 5}, {6, 9}}, {0, 0}},
                                         Case{{{1, 5}, {5, 9}}, {0, 1}}, Case{{{5, 9}, {1, 5}}, {0, 1}},
                                         Case{{{1, 9}, {3, 3}, {4, 9}, {3, 4}}, {0, 1, 1, 2}},
                                         Case{{{2, 2}, {2, 2}, {2, 2}}, {0, 1, 2}}));

} // namespace
} // namespace modeler
