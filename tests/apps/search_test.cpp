// The sample of the matchers.
#include "support/data/files.hpp"
#include "support/processes/child_process.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct Row {
  char const * arguments;
  char const * output;
  unsigned long exitCode;
};
std::ostream & operator<<(std::ostream & out, Row const & row) { return out << row.arguments; }

class Search : public testing::TestWithParam<Row> {};

} // namespace

TEST_P(Search, PrintsTheLinesThatMatch) {
  support::TempFolder const folder;
  support::writeFile(folder / "a.txt", "The cat\r\nconcatenate\r\nA CUT.\r\n\r\n[cat]?\r\n");
  support::writeFile(folder / "b.txt", "no line end: cat");
  auto const result =
      support::runProgram({.program = "search", .arguments = GetParam().arguments, .workingFolder = folder.path()});
  EXPECT_EQ(result.output, GetParam().output);
  EXPECT_EQ(result.exitCode, GetParam().exitCode);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Search,
    testing::Values(Row{"cat a.txt", "a.txt:1:The cat\r\na.txt:2:concatenate\r\na.txt:5:[cat]?\r\n", 0},
                    Row{"-w cat a.txt", "a.txt:1:The cat\r\na.txt:5:[cat]?\r\n", 0},
                    Row{"-w -i c?t a.txt", "a.txt:1:The cat\r\na.txt:3:A CUT.\r\na.txt:5:[cat]?\r\n", 0},
                    Row{"[c*] a.txt", "a.txt:5:[cat]?\r\n", 0}, Row{"-r ^$ a.txt", "a.txt:4:\r\n", 0},
                    Row{"-r -i \"^a.*t\" a.txt", "a.txt:3:A CUT.\r\n", 0},
                    Row{"cat a.txt b.txt none.txt",
                        "a.txt:1:The cat\r\na.txt:2:concatenate\r\na.txt:5:[cat]?\r\nb.txt:1:no line end: cat\r\n", 2},
                    Row{"dog a.txt", "", 1}, Row{"cat", "", 2}, Row{"-x cat a.txt", "", 2}, Row{"-r ( a.txt", "", 2}));

TEST(SearchErrors, AreReportedInWords) {
  auto const errors = [](char const * arguments) {
    return support::runProgram({.program = "search", .arguments = arguments}).errors;
  };
  EXPECT_EQ(errors("-r ( none.txt"), "search: A parenthesis is missing.\r\n");
  EXPECT_EQ(errors("a none.txt"), "search: cannot read none.txt\r\n");
  EXPECT_EQ(errors(""), "usage: search [-i] [-w] [-r] PATTERN FILE...\r\n");
}
