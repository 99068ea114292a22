#include "diagnostics/crash/times.hpp"
#include "diagnostics/crash/windowsname.hpp"

#include <gtest/gtest.h>

#include <ostream>

using kivara::crash::partsOf;
using kivara::crash::WindowsName;

namespace {

struct Version {
  unsigned long platform;
  unsigned long major;
  unsigned long minor;
  char const * name;
};
std::ostream & operator<<(std::ostream & out, Version const & row) { return out << row.name; }

class WindowsNames : public testing::TestWithParam<Version> {};

TEST_P(WindowsNames, AreThoseOfTheVersion) {
  EXPECT_STREQ(WindowsName(GetParam().platform, GetParam().major, GetParam().minor).c_str(), GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(Table, WindowsNames,
                         testing::Values(Version{2, 3, 51, "Windows NT 3.51"}, Version{2, 4, 0, "Windows NT 4"},
                                         Version{1, 4, 0, "Windows 95"}, Version{1, 4, 10, "Windows 98"},
                                         Version{1, 4, 90, "Windows ME"}, Version{2, 5, 0, "Windows 2000"},
                                         Version{2, 5, 1, "Windows XP"}, Version{2, 5, 2, "Windows Server 2003"},
                                         Version{2, 6, 0, "Windows Vista or Windows Server 2008"},
                                         Version{2, 6, 1, "Windows 7 or Windows Server 2008 R2"},
                                         Version{2, 6, 2, "Windows 8 or Windows Server 2012"},
                                         Version{2, 6, 3, "unknown (6.3)"}, Version{2, 10, 0, "unknown (10.0)"},
                                         Version{2, 3, 50, "unknown (3.50)"},
                                         Version{2, 4294967295, 4294967295, "unknown (-1.-1)"}));

TEST(TimeParts, AreThoseOfTheMilliseconds) {
  auto const zero = partsOf(0);
  EXPECT_EQ(zero.days + zero.hours + zero.minutes + zero.seconds + zero.milliseconds, 0u);
  auto const parts = partsOf(((((3ULL * 24 + 4) * 60 + 5) * 60) + 6) * 1000 + 7);
  EXPECT_EQ(parts.days, 3u);
  EXPECT_EQ(parts.hours, 4u);
  EXPECT_EQ(parts.minutes, 5u);
  EXPECT_EQ(parts.seconds, 6u);
  EXPECT_EQ(parts.milliseconds, 7u);
  auto const last = partsOf(86399999);
  EXPECT_EQ(last.days, 0u);
  EXPECT_EQ(last.hours, 23u);
  EXPECT_EQ(last.minutes, 59u);
  EXPECT_EQ(last.seconds, 59u);
  EXPECT_EQ(last.milliseconds, 999u);
}

} // namespace
