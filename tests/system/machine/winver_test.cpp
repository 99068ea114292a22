#include "system/machine/winver.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct Row {
  kivara::WindowsVersion version;
  bool xp;
  bool vista;
  bool seven;
};
std::ostream & operator<<(std::ostream & out, Row const & row) {
  return out << row.version.major << '.' << row.version.minor << " platform " << row.version.platform;
}

class WindowsVersion : public testing::TestWithParam<Row> {};
TEST_P(WindowsVersion, IsAtLeastTheOlderOnes) {
  EXPECT_EQ(kivara::isAtLeastXP(GetParam().version), GetParam().xp);
  EXPECT_EQ(kivara::isAtLeastVista(GetParam().version), GetParam().vista);
  EXPECT_EQ(kivara::isAtLeast7(GetParam().version), GetParam().seven);
}
INSTANTIATE_TEST_SUITE_P(Record, WindowsVersion,
                         testing::Values(Row{{4, 0, 2}, false, false, false}, Row{{5, 0, 2}, false, false, false},
                                         Row{{5, 1, 2}, true, false, false}, Row{{5, 2, 2}, true, false, false},
                                         Row{{6, 0, 2}, true, true, false}, Row{{6, 1, 2}, true, true, true},
                                         Row{{6, 2, 2}, true, true, true}, Row{{7, 0, 2}, true, true, true},
                                         Row{{10, 0, 2}, true, true, true}, Row{{6, 1, 1}, false, false, false},
                                         Row{{10, 0, 1}, false, false, false}, Row{{5, 1, 0}, false, false, false},
                                         Row{{0, 0, 0}, false, false, false}));

} // namespace
