// The tests that the engine's own package ships, through re00005.dll.
#include "support/processes/child_process.hpp"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

namespace {

/// The patterns in 'Comp error, regex: "..."' and 'Exec error, regex: "...", ...'; of one with a line end what stands before that.
std::set<std::string> failedPatterns(std::string const & output) {
  static constexpr std::string_view kStart = "error, regex: \"";
  std::set<std::string> failed;
  std::istringstream lines(output);
  for (std::string line; std::getline(lines, line);) {
    std::size_t const start = line.find(kStart);
    if (start == std::string::npos)
      continue;
    std::string const rest = line.substr(start + kStart.size());
    failed.insert(rest.substr(0, rest.find_first_of("\"\r")));
  }
  return failed;
}

} // namespace

TEST(EnginePackage, TestsPassButForWhatTheDllDoesNotHave) {
  auto const result = support::runProgram({.program = "re00005_posix"});
  std::set<std::string> const withoutCounterpart = {
      "^abc",  "^abc$",  "abc$", "^$", "x$", // matching by lines
      ".*",    ".*?",                        // a flag for the shortest match; texts with a NUL
      "\\x{}", "\\x{}r", "\\xr",             // texts with a NUL
      "\\x"                                  // is no pattern here
  };
  EXPECT_EQ(failedPatterns(result.output), withoutCounterpart) << result.output.substr(result.output.size() - 300);
}
