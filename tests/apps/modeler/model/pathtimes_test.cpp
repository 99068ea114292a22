// How long a process takes on its ways.
#include "model/analysis/pathtimes.hpp"
#include "model/modeltime.hpp"

#include <gtest/gtest.h>

using modeler::NodeKind;
using modeler::PathTimes;
using modeler::ProcessModel;

namespace {

/// From a start over one of three activities to an end; minutes of the activities.
ProcessModel fork(long first, long second, long third) {
  ProcessModel model;
  model.nodes = {{NodeKind::Start, "a", "A", 0},
                 {NodeKind::Activity, "b", "B", first},
                 {NodeKind::Activity, "c", "C", second},
                 {NodeKind::Activity, "d", "D", third},
                 {NodeKind::End, "e", "E", 0}};
  for (std::size_t const middle : {1, 2, 3}) {
    model.flows.push_back({0, middle, {}});
    model.flows.push_back({middle, 4, {}});
  }
  return model;
}

TEST(ModelerPathTimes, FindsTheShortestPathAndTheLongestOne) {
  PathTimes const times = timesOf(fork(20, 5, 90), 10);
  ASSERT_EQ(times.paths.size(), 3u);
  EXPECT_EQ(times.shortest, 1u);
  EXPECT_EQ(times.longest, 2u);
  EXPECT_EQ(times.paths[2].time.asDouble(), 90.0 * 60);
  EXPECT_TRUE(times.areAll);
  EXPECT_TRUE(times.hasTimes);
  EXPECT_EQ(times.activitiesWithoutTime, 0u);
}

TEST(ModelerPathTimes, CountsTheActivitiesThatHaveNoTime) {
  PathTimes const times = timesOf(fork(20, 0, 0), 10);
  EXPECT_EQ(times.activitiesWithoutTime, 2u);
  EXPECT_EQ(times.paths[times.shortest].time.asDouble(), 0);
  EXPECT_TRUE(times.hasTimes);
  EXPECT_FALSE(timesOf(fork(0, 0, 0), 10).hasTimes);
}

TEST(ModelerPathTimes, SayThatThereAreMorePathsThanWereWanted) {
  PathTimes const times = timesOf(fork(20, 5, 90), 2);
  EXPECT_EQ(times.paths.size(), 2u);
  EXPECT_FALSE(times.areAll);
  EXPECT_EQ(times.longest, 0u) << "of those that were found";
}

TEST(ModelerPathTimes, OfAModelWithoutPathsAreNone) {
  PathTimes const times = modeler::timesOf({}, 10);
  EXPECT_TRUE(times.paths.empty());
  EXPECT_TRUE(times.areAll);
  EXPECT_FALSE(times.hasTimes);
}

TEST(ModelerPathTimes, AreCountedInTheModelsCalendar) {
  ProcessModel model = fork(9 * 60, 1, 1);
  model.calendar = {220, 8};
  EXPECT_STREQ(timesOf(model, 10).paths[0].time.asString().c_str(), "00:001:01:00:00");
  EXPECT_EQ(calendarOf(model).daysPerYear, 220);
}

TEST(ModelerPathTimes, AreCountedInTheLibrarysCalendarWhereTheModelHasNone) {
  modeler::Calendar const calendar = calendarOf(fork(1, 1, 1));
  EXPECT_EQ(calendar.daysPerYear, 365);
  EXPECT_EQ(calendar.hoursPerDay, 24);
  EXPECT_STREQ(timesOf(fork(25 * 60, 1, 1), 10).paths[0].time.asString().c_str(), "00:001:01:00:00");
}

// What is added stays finite: the longest times that a file can hold.
TEST(ModelerPathTimes, OfTheLongestTimesStillCount) {
  ProcessModel model = fork(modeler::kLongestDuration, 1, 1);
  model.nodes[1].duration = 0;
  ASSERT_EQ(modeler::readTime("999999999:000:00:00:00", model.calendar, model.nodes[1].seconds),
            modeler::ModelFault::None);
  PathTimes times = timesOf(model, 10);
  EXPECT_FALSE(times.paths[0].time.overFlow());
  EXPECT_STREQ(times.paths[0].time.asString().c_str(), "999999999:000:00:00:00");
}

} // namespace
