// Short runs of the endurance program: that it does all of its work, and that it notices what is lost.

#include "support/child_process.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

class Endurance : public testing::Test {
protected:
  static support::ProgramResult run(std::string const & words) {
    return support::runProgram({.program = "endurance", .arguments = words}, 220);
  }
};

bool holds(support::ProgramResult const & result, std::string const & text) {
  return result.output.find(text) != std::string::npos;
}

// Printing has tests of its own, which run one at a time.
TEST_F(Endurance, DoesAllOfItsWorkAndNothingGrows) {
  support::ProgramResult const result = run("--seconds 8 --without printing");
  EXPECT_EQ(result.exitCode, 0u) << result.output << result.errors;
  EXPECT_TRUE(holds(result, "nothing grew in ")) << result.output;
  for (char const * const activity :
       {"languages", "windows", "themes", "events", "plug-ins", "far calls", "temporary files", "texts", "boxes",
        "pictures", "tray icon", "drags", "logs", "requests", "processes", "values"})
    EXPECT_TRUE(holds(result, std::string("\n") + activity + "  ") || holds(result, std::string("\n") + activity + ' '))
        << activity << '\n'
        << result.output;
}

TEST_F(Endurance, RefusesNamesThatNoActivityHas) {
  support::ProgramResult const result = run("--only sleeping");
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_NE(result.errors.find("there is no activity 'sleeping'"), std::string::npos) << result.errors;
}

/// What is lost, and what the run has to name. A window object is a menu.
struct Lost {
  char const * what;
  char const * named;
};
void PrintTo(Lost const & lost, std::ostream * out) { *out << lost.what; }

class EnduranceLeak : public Endurance, public testing::WithParamInterface<Lost> {};

TEST_P(EnduranceLeak, IsNamed) {
  support::ProgramResult const result = run(std::string("--seconds 3 --only events,texts --leak ") + GetParam().what);
  EXPECT_EQ(result.exitCode, 1u) << result.output << result.errors;
  EXPECT_TRUE(holds(result, std::string("\ngrew: ") + GetParam().named)) << result.output << result.errors;
}

INSTANTIATE_TEST_SUITE_P(OfOneThingARound, EnduranceLeak,
                         testing::Values(Lost{"handle", "handles"}, Lost{"thread", "threads"},
                                         Lost{"gdi", "GDI objects"}, Lost{"user", "USER objects"},
                                         Lost{"memory", "heap bytes"}, Lost{"file", "files"}));

} // namespace
