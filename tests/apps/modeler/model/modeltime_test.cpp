#include "model/modeltime.hpp"

#include <gtest/gtest.h>

#include <ostream>

using modeler::Calendar;
using modeler::ModelFault;
using modeler::Node;
using modeler::NodeKind;
using modeler::ProcessModel;

namespace {

Node minutesNode(long minutes) { return {NodeKind::Activity, "a", "A", minutes}; }
Node secondsNode(double seconds) { return {NodeKind::Activity, "a", "A", 0, seconds}; }

TEST(ModelTime, AddsUpDurationsBeyond32Bits) {
  ProcessModel model;
  for (int i = 0; i < 5; ++i)
    model.nodes.push_back(minutesNode(999'999'999));
  EXPECT_EQ(modeler::sumOfAll(model).asDouble(), 4'999'999'995.0 * 60);
  EXPECT_EQ(modeler::durationText(model, modeler::sumOfAll(model), "min"), "4999999995 min");
}

TEST(ModelTime, IsNoneWithoutNodes) {
  EXPECT_EQ(modeler::sumOfAll({}).asDouble(), 0);
  EXPECT_EQ(modeler::durationText({}, modeler::sumOfAll({}), "min"), "0 min");
}

TEST(ModelTime, AddsUpSomeNodes) {
  ProcessModel model;
  model.nodes = {minutesNode(1), secondsNode(7), minutesNode(100)};
  EXPECT_EQ(modeler::sumOf(model, {0, 1}).asDouble(), 67);
  EXPECT_EQ(modeler::sumOf(model, {}).asDouble(), 0);
}

TEST(ModelTime, IsShownInMinutesUntilThereIsACalendarOrATime) {
  ProcessModel model;
  model.nodes = {minutesNode(600)};
  EXPECT_TRUE(modeler::isInMinutes(model));
  model.calendar = {220, 8};
  EXPECT_FALSE(modeler::isInMinutes(model));
  EXPECT_EQ(modeler::durationText(model, modeler::sumOfAll(model), "min"), "00:001:02:00:00");
  model.calendar = {};
  model.nodes.push_back(secondsNode(1));
  EXPECT_FALSE(modeler::isInMinutes(model));
  EXPECT_EQ(modeler::durationText(model, modeler::sumOfAll(model), "min"), "00:000:10:00:01");
}

struct CalendarRow {
  char const * days;
  char const * hours;
  bool isValid;
};
std::ostream & operator<<(std::ostream & out, CalendarRow const & row) { return out << row.days << ' ' << row.hours; }

class ModelCalendar : public testing::TestWithParam<CalendarRow> {};
TEST_P(ModelCalendar, HasDaysAndHoursThatExist) {
  Calendar calendar{1, 2};
  ModelFault const fault = modeler::readCalendar(GetParam().days, GetParam().hours, calendar);
  EXPECT_EQ(fault, GetParam().isValid ? ModelFault::None : ModelFault::NoCalendar);
  EXPECT_EQ(calendar.daysPerYear, GetParam().isValid ? std::atof(GetParam().days) : 1);
  EXPECT_EQ(calendar.hoursPerDay, GetParam().isValid ? std::atof(GetParam().hours) : 2);
}
INSTANTIATE_TEST_SUITE_P(Table, ModelCalendar,
                         testing::Values(CalendarRow{"220", "8", true}, CalendarRow{"366", "24", true},
                                         CalendarRow{"0.5", "0.25", true}, CalendarRow{"200.5", "7.75", true},
                                         CalendarRow{"366.1", "8", false}, CalendarRow{"220", "24.1", false},
                                         CalendarRow{"0", "8", false}, CalendarRow{"220", "0", false},
                                         CalendarRow{"-1", "8", false}, CalendarRow{"220", "-8", false},
                                         CalendarRow{"x", "8", false}, CalendarRow{"220", "8h", false},
                                         CalendarRow{"", "", false}));

TEST(ModelTime, IsReadInTheCalendar) {
  double seconds = -1;
  EXPECT_EQ(modeler::readTime("01:001:01:01:01", {220, 8}, seconds), ModelFault::None);
  EXPECT_EQ(seconds, 221 * 28800.0 + 3661);
  EXPECT_EQ(modeler::readTime("00:001:00:00:00", {}, seconds), ModelFault::None);
  EXPECT_EQ(seconds, 86400);
  EXPECT_EQ(modeler::readTime("123456789:000:00:00:00", {1, 1}, seconds), ModelFault::None);
  EXPECT_EQ(seconds, 123456789 * 3600.0);
}

TEST(ModelTime, ThatIsNoneLeavesTheSeconds) {
  double seconds = -1;
  EXPECT_EQ(modeler::readTime("00:365:00:00:00", {}, seconds), ModelFault::NoTime);
  EXPECT_EQ(modeler::readTime("", {}, seconds), ModelFault::NoTime);
  EXPECT_EQ(modeler::readTime("1234567890:000:00:00:00", {}, seconds), ModelFault::TooManyYears);
  EXPECT_EQ(seconds, -1);
}

TEST(ModelDate, IsReadWhenItExists) {
  std::optional<SV::Date> date;
  EXPECT_EQ(modeler::readDate("2023:02:29", date), ModelFault::NoDate);
  EXPECT_FALSE(date.has_value());
  EXPECT_EQ(modeler::readDate("2024:02:29", date), ModelFault::None);
  EXPECT_EQ(date, SV::Date(29, 2, 2024));
  EXPECT_EQ(modeler::readDate("x", date), ModelFault::NoDate);
  EXPECT_EQ(date, SV::Date(29, 2, 2024));
}

} // namespace
