#include "frame/appfont.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct Row {
  int asked;
  double scale;
  int pixels;
};
std::ostream & operator<<(std::ostream & out, Row const & row) { return out << row.asked << " at " << row.scale; }

class FontHeight : public testing::TestWithParam<Row> {};
TEST_P(FontHeight, IsTakenFrom4To48AndScaledToWholePixels) {
  EXPECT_EQ(kivara::fontPixelHeight(GetParam().asked, GetParam().scale), GetParam().pixels);
}
INSTANTIATE_TEST_SUITE_P(Asked, FontHeight,
                         testing::Values(Row{0, 1.0, 12}, Row{3, 1.0, 12}, Row{4, 1.0, 4}, Row{48, 1.0, 48},
                                         Row{49, 1.0, 12}, Row{-5, 1.0, 12}, Row{2147483647, 1.0, 12},
                                         Row{13, 1.25, 16}, Row{5, 1.5, 7}, Row{12, 2.0, 24}, Row{12, 0.0, 0}));

} // namespace
