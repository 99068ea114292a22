// What is registered for clean-up, in every way in which a process may end.

#include "frame/product_run.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using Lines = std::vector<std::string>;

/// Which files are there at each step: a.tmp, b.tmp, c.tmp, kept.tmp and Case.tmp by their first letters.
Lines const kDeletions{"first deleted, files ackC", "second deleted, files ck", "third deleted, files k"};

struct Way {
  char const * name;
  char const * way;
  char const * arguments;
  ProductRun::Settings settings;
  unsigned long exitCode;
  char const * reason; ///< null: the end comes without the event
  bool returns;
};
std::ostream & operator<<(std::ostream & out, Way const & row) { return out << row.name; }

Lines expectedRecord(Way const & row) {
  Lines lines;
  if (std::string(row.way) != "refuse")
    lines = {"prepareApplication", "runApplication"};
  else
    lines = {"prepareApplication"};
  if (row.returns)
    lines.push_back("returns");
  if (row.reason == nullptr) // only once the library goes, after the program's own objects
    lines.push_back("destroyed, files abckC");
  else
    lines.push_back(std::string("AppExit ") + row.reason + ", files abckC");
  lines.insert(lines.end(), kDeletions.begin(), kDeletions.end());
  if (row.reason != nullptr)
    lines.push_back("destroyed, files k");
  return lines;
}

class EndOfAProcess : public testing::TestWithParam<Way> {};
TEST_P(EndOfAProcess, CleansUpOnceAndInOrder) {
  Way const & row = GetParam();
  ProductRun::Settings settings = row.settings;
  settings["WAY"] = row.way;
  // With a console of its own the program has no streams, as when it is started from the desktop.
  bool const hasConsole = std::string(row.arguments) == "-console";
  ProductRun run({.program = "cleanup_ways", .arguments = row.arguments, .withoutStreams = hasConsole}, settings);
  EXPECT_EQ(run.exitCode(), row.exitCode);
  EXPECT_EQ(run.record(), expectedRecord(row));
  for (char const * const name : {"a.tmp", "b.tmp", "c.tmp", "Case.tmp"})
    EXPECT_FALSE(run.file(name)) << name;
  EXPECT_TRUE(run.file("kept.tmp"));
}
INSTANTIATE_TEST_SUITE_P(
    Ways, EndOfAProcess,
    testing::Values(Way{"exit code 0", "return", "", {{"RUN", "0"}}, 0, "end(0)", true},
                    Way{"exit code 5", "return", "", {{"RUN", "5"}}, 5, "end(5)", true},
                    Way{"negative exit code", "return", "", {{"RUN", "-1"}}, 0xFFFFFFFF, "end(-1)", true},
                    Way{"refused start", "refuse", "", {{"PREPARE", "7"}}, 7, "end(7)", false},
                    Way{"without a GUI", "return", "", {{"GUI", "0"}}, 0, "end(0)", true},
                    Way{"severe exception", "severe", "-no_dialogs", {}, 1, "exception (minidump)", false},
                    Way{"log-off", "control", "-console", {{"CONTROL", "5"}}, 1, "console", false},
                    Way{"shut-down", "control", "-console", {{"CONTROL", "6"}}, 1, "console", false},
                    Way{"unknown control event", "control", "-console", {{"CONTROL", "7"}}, 1, "console", false},
                    Way{"Ctrl+C", "control", "-console", {{"CONTROL", "0"}}, 0, "end(0)", true},
                    Way{"no event, exit code 0", "exit", "", {{"RUN", "0"}}, 0, nullptr, false},
                    Way{"no event, exit code 5", "exit", "", {{"RUN", "5"}}, 5, nullptr, false}));

} // namespace
