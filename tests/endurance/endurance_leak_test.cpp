// What the endurance program loses on purpose, mostly one thing a round, is noticed and named.

#include "endurancerun.hpp"

namespace {

using endurancetest::holds;
using endurancetest::run;

/// What is lost, and what the run has to name. A window object is a menu.
struct Lost {
  char const * what;
  char const * named;
};
void PrintTo(Lost const & lost, std::ostream * out) { *out << lost.what; }

class EnduranceLeak : public testing::TestWithParam<Lost> {};

TEST_P(EnduranceLeak, IsNamed) {
  support::ProgramResult const result = run(std::string("--seconds 1 --only events,texts --leak ") + GetParam().what);
  EXPECT_EQ(result.exitCode, 1u) << result.output << result.errors;
  EXPECT_TRUE(holds(result, std::string("\ngrew: ") + GetParam().named)) << result.output << result.errors;
}

TEST(Endurance, NamesAnActivityThatFallsAsleep) {
  support::ProgramResult const result = run("--seconds 1 --only events --leak rounds");
  EXPECT_EQ(result.exitCode, 1u) << result.output << result.errors;
  EXPECT_TRUE(holds(result, "\nleak                   0         1   ASLEEP\r\n")) << result.output << result.errors;
}

TEST(Endurance, NamesAnActivityThatGoesWrong) {
  support::ProgramResult const result = run("--seconds 1 --only events --leak result");
  EXPECT_EQ(result.exitCode, 1u) << result.output << result.errors;
  EXPECT_TRUE(holds(result, "FAILED: leak: lost on purpose")) << result.output << result.errors;
}

INSTANTIATE_TEST_SUITE_P(OfOneThingARound, EnduranceLeak,
                         testing::Values(Lost{"handle", "handles"}, Lost{"thread", "threads"},
                                         Lost{"gdi", "GDI objects"}, Lost{"user", "USER objects"},
                                         Lost{"memory", "heap bytes"}, Lost{"file", "files"}));

} // namespace
