// Short runs of the endurance program: that it does all of its work, and that nothing grows.

#include "endurancerun.hpp"

namespace {

using endurancetest::holds;
using endurancetest::run;

// Printing has tests of its own, which run one at a time.
TEST(Endurance, DoesAllOfItsWorkAndNothingGrows) {
  support::ProgramResult const result = run("--seconds 5 --without printing");
  EXPECT_EQ(result.exitCode, 0u) << result.output << result.errors;
  EXPECT_TRUE(holds(result, "nothing grew in ")) << result.output;
  for (char const * const activity :
       {"languages", "windows", "themes", "events", "plug-ins", "far calls", "temporary files", "texts", "boxes",
        "pictures", "tray icon", "drags", "logs", "requests", "processes", "values"})
    EXPECT_TRUE(holds(result, std::string("\n") + activity + ' ')) << activity << '\n' << result.output;
}

TEST(Endurance, RefusesNamesThatNoActivityHas) {
  support::ProgramResult const result = run("--only sleeping");
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_NE(result.errors.find("there is no activity 'sleeping'"), std::string::npos) << result.errors;
}

} // namespace
