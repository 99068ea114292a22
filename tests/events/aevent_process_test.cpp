// Listeners and the dispatcher at the end of a process.

#include "frame/product_run.hpp"

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

/// The newest hears first: the DLL's listener is loaded last.
Lines const kHeard{"static of the DLL hears", "late object of the DLL hears",
                   "late object in static memory of the program hears", "static of the program hears"};

/// They die through their base class, in the order of their types. After that no listener hears of an event, though each of them triggers two; nor does a registration or a copy count.
Lines const kLate{"sequence 700 dies, dispatcher gone",
                  "sequence 706 dies, dispatcher gone",
                  "sequence 854 dies, dispatcher gone",
                  "late, dispatcher gone",
                  "late object in static memory of the program dies, dispatcher gone",
                  "late object in static memory of the program dies, dispatcher gone",
                  "late, dispatcher gone",
                  "late object of the DLL dies, dispatcher gone",
                  "late object of the DLL dies, dispatcher gone"};

Lines joined(std::initializer_list<Lines> parts) {
  Lines all;
  for (Lines const & part : parts)
    all.insert(all.end(), part.begin(), part.end());
  return all;
}

TEST(EndOfTheDispatcher, ComesAfterTheStaticsOfTheProgramAndOfItsDllsAndBeforeLateListeners) {
  ProductRun run("event_deaths", "", {{"DEATH", "end"}});
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record(), joined({kHeard,
                                  {"returns", "static of the program dies, dispatcher there",
                                   "static of the DLL dies, dispatcher there"},
                                  kLate}));
}

TEST(EndOfTheDispatcher, ADllThatIsUnloadedTakesItsListenersAlong) {
  ProductRun run("event_deaths", "", {{"DEATH", "unload"}});
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record(), joined({kHeard,
                                  {"static of the DLL dies, dispatcher there"},
                                  Lines(kHeard.begin() + 1, kHeard.end()),
                                  {"returns", "static of the program dies, dispatcher there"},
                                  kLate}));
}

TEST(EndOfTheDispatcher, MayComeInTheMiddleOfAWalk) {
  ProductRun run("event_deaths", "", {{"DEATH", "inside"}});
  EXPECT_EQ(run.exitCode(), 3u);
  EXPECT_EQ(run.record(),
            joined({kHeard,
                    kHeard,
                    {"static of the program dies, dispatcher there", "static of the DLL dies, dispatcher there"},
                    kLate}));
}

} // namespace
