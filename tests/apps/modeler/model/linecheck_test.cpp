#include "model/linecheck.hpp"

#include "support/data/files.hpp"

#include <gtest/gtest.h>

#include <ostream>

using modeler::checkLines;
using modeler::ModelFault;
using modeler::ModelReport;

namespace {

struct Content {
  char const * name;
  std::string bytes;
  ModelFault fault;
  std::int64_t line; ///< of the fault, or the number of lines
};
std::ostream & operator<<(std::ostream & out, Content const & row) { return out << row.name; }

std::string const kLongest(8191, 'x');

class LineCheck : public testing::TestWithParam<Content> {};
TEST_P(LineCheck, FindsTheFaultOrCountsTheLines) {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt", GetParam().bytes);
  std::int64_t count = -1;
  ModelReport const report = checkLines((folder / "model.txt").c_str(), count);
  EXPECT_EQ(report.fault, GetParam().fault);
  bool const isSound = GetParam().fault == ModelFault::None;
  EXPECT_EQ(isSound ? count : report.line, GetParam().line);
  EXPECT_EQ(isSound ? report.line : count, isSound ? 0 : -1);
}
INSTANTIATE_TEST_SUITE_P(
    Files, LineCheck,
    testing::Values(Content{"empty", "", ModelFault::None, 0}, Content{"one line", "a\n", ModelFault::None, 1},
                    Content{"no line end", "a\nb", ModelFault::None, 2},
                    Content{"empty lines", "\n\n", ModelFault::None, 2},
                    Content{"pairs", "a\r\nb\r\n", ModelFault::None, 2},
                    Content{"carriage returns", "a\rb\r", ModelFault::None, 2},
                    Content{"line feed before", "a\n\rb", ModelFault::None, 3},
                    Content{"a pair over two blocks", std::string(4095, 'x') + "\r\nb\r\n", ModelFault::None, 2},
                    Content{"longest", kLongest, ModelFault::None, 1},
                    Content{"longest with its end", "a\n" + kLongest + "\r\nb\n", ModelFault::None, 3},
                    Content{"too long", "a\r\n" + kLongest + "x\r\n", ModelFault::LineTooLong, 2},
                    Content{"NUL", std::string("a\nb\0c\n", 6), ModelFault::NulByte, 2},
                    Content{"NUL at the end", std::string("a\n\0", 3), ModelFault::NulByte, 2}));

TEST(LineCheck, ReportsAFileThatIsMissing) {
  std::int64_t count = -1;
  ModelReport const report = checkLines("missing.txt", count);
  EXPECT_EQ(report.fault, ModelFault::NotReadable);
  EXPECT_EQ(report.line, 0);
  EXPECT_EQ(count, -1);
}

} // namespace
