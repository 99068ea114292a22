#include "windows/scrolling.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace modeler {
namespace {

struct Case {
  long position;
  unsigned command;
  long expected;
};
std::ostream & operator<<(std::ostream & out, Case const & row) {
  return out << "from " << row.position << " by command " << row.command;
}

/// 100 of 250 pixels are seen.
class LayoutScroll : public testing::TestWithParam<Case> {};
TEST_P(LayoutScroll, StaysBetweenStartAndEnd) {
  EXPECT_EQ(scrolledPosition({GetParam().position, 100, 250, 20}, GetParam().command, 77), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(Commands, LayoutScroll,
                         testing::Values(Case{50, SB_LINEUP, 30}, Case{10, SB_LINEUP, 0}, Case{50, SB_LINEDOWN, 70},
                                         Case{140, SB_LINEDOWN, 150}, Case{150, SB_PAGEUP, 70}, Case{70, SB_PAGEUP, 0},
                                         Case{10, SB_PAGEDOWN, 90}, Case{90, SB_PAGEDOWN, 150}, Case{50, SB_TOP, 0},
                                         Case{50, SB_BOTTOM, 150}, Case{50, SB_THUMBTRACK, 77},
                                         Case{50, SB_THUMBPOSITION, 77}, Case{50, SB_ENDSCROLL, 50}));

TEST(LayoutScrollOfAll, HasNowhereToGoWhenAllIsSeen) {
  for (unsigned const command : {SB_LINEUP, SB_LINEDOWN, SB_PAGEUP, SB_PAGEDOWN, SB_TOP, SB_BOTTOM, SB_THUMBTRACK})
    EXPECT_EQ(scrolledPosition({0, 300, 250, 20}, command, 77), 0) << command;
}

TEST(LayoutScrollOfAPart, IsTheNearestPositionAtWhichThePartIsSeen) {
  Scroll const scroll = {50, 100, 250, 20}; // from 50 to 149
  EXPECT_EQ(revealedPosition(scroll, 50, 100), 50) << "all of it is seen already";
  EXPECT_EQ(revealedPosition(scroll, 140, 20), 60);
  EXPECT_EQ(revealedPosition(scroll, 30, 10), 30);
  EXPECT_EQ(revealedPosition(scroll, 20, 200), 20) << "too large: its beginning";
  EXPECT_EQ(revealedPosition(scroll, 240, 50), 150) << "no farther than the end";
}

} // namespace
} // namespace modeler
