#include "modeltime.hpp"

#include <algorithm>
#include <cstdio>

using SV::String;

namespace modeler {
namespace {

constexpr double kMostDaysPerYear = 366;
constexpr double kMostHoursPerDay = 24;
constexpr double kSecondsPerMinute = 60;

/// Nine digits of years and what follows them: more would go beyond the number that they are read into.
constexpr int kLongestTime = 9 + 13;

bool isWithin(String const & number, double most) {
  return Kiv_Valid_Double(number.c_str()) && double(number) > 0 && double(number) <= most;
}

KivCoreTime timeIn(Calendar const & calendar, double seconds) {
  return {seconds, calendar.daysPerYear, calendar.hoursPerDay};
}

} // namespace

ModelFault readCalendar(String const & days, String const & hours, Calendar & calendar) {
  if (!isWithin(days, kMostDaysPerYear) || !isWithin(hours, kMostHoursPerDay))
    return ModelFault::NoCalendar;
  calendar = {double(days), double(hours)};
  return ModelFault::None;
}

ModelFault readTime(String const & text, Calendar const & calendar, double & seconds) {
  if (!KivCoreTime::isTime(text.c_str()))
    return ModelFault::NoTime;
  if (text.Len() > kLongestTime)
    return ModelFault::TooManyYears;
  KivCoreTime time = timeIn(calendar, 0);
  time.setAsChar(text.c_str());
  seconds = time.asDouble();
  return ModelFault::None;
}

ModelFault readDate(String const & text, std::optional<SV::Date> & date) {
  if (!KivCoreDate::IsValidString(text.c_str()))
    return ModelFault::NoDate;
  date = KivCoreDate(text.c_str());
  return ModelFault::None;
}

String timeText(Calendar const & calendar, double seconds) { return timeIn(calendar, seconds).asString(); }

String dateText(SV::Date const & date) {
  char text[16]; // ten characters
  std::snprintf(text, sizeof text, "%04lu:%02lu:%02lu", date.GetYear() % 10000, date.GetMonth(), date.GetDay());
  return text;
}

String numberText(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%.15g", number);
  return text;
}

double secondsOf(Node const & node) { return static_cast<double>(node.duration) * kSecondsPerMinute + node.seconds; }

KivCoreTime sumOf(ProcessModel const & model, ISequence<std::size_t> const & nodes) {
  KivCoreTime sum = timeIn(model.calendar, 0);
  for (std::size_t const node : nodes)
    sum += secondsOf(model.nodes[node]);
  return sum;
}

KivCoreTime sumOfAll(ProcessModel const & model) {
  KivCoreTime sum = timeIn(model.calendar, 0);
  for (Node const & node : model.nodes)
    sum += secondsOf(node);
  return sum;
}

bool isInMinutes(ProcessModel const & model) {
  return !model.calendar.isGiven() &&
         std::none_of(model.nodes.begin(), model.nodes.end(), [](Node const & node) { return node.seconds > 0; });
}

String durationText(ProcessModel const & model, KivCoreTime time, String const & minutes) {
  return isInMinutes(model) ? String(static_cast<long long>(time.asDouble() / kSecondsPerMinute)) + " " + minutes
                            : time.asString();
}

} // namespace modeler
