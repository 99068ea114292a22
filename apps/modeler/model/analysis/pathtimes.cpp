#include "model/analysis/pathtimes.hpp"

#include "model/modeltime.hpp"

#include <algorithm>
#include <set>

namespace modeler {
namespace {

bool hasTime(Node const & node) { return secondsOf(node) > 0; }

/// Only activities can be expected to take their time.
std::size_t withoutTime(ProcessModel const & model, ISequence<PathTime> const & paths) {
  std::set<std::size_t> nodes;
  for (PathTime const & each : paths)
    nodes.insert(each.path.begin(), each.path.end());
  return static_cast<std::size_t>(std::count_if(nodes.begin(), nodes.end(), [&model](std::size_t node) {
    return model.nodes[node].kind == NodeKind::Activity && !hasTime(model.nodes[node]);
  }));
}

} // namespace

PathTimes timesOf(ProcessModel const & model, std::size_t most) {
  PathTimes times;
  Paths const found = pathsOf(model, most);
  times.areAll = found.areAll;
  for (Path const & path : found.paths)
    times.paths.push_back({path, sumOf(model, path)});
  auto const [shortest, longest] =
      std::minmax_element(times.paths.begin(), times.paths.end(),
                          [](PathTime const & a, PathTime const & b) { return a.time.asDouble() < b.time.asDouble(); });
  times.shortest = static_cast<std::size_t>(shortest - times.paths.begin());
  times.longest = static_cast<std::size_t>(longest - times.paths.begin());
  times.hasTimes = std::any_of(model.nodes.begin(), model.nodes.end(), hasTime);
  times.activitiesWithoutTime = withoutTime(model, times.paths);
  return times;
}

Calendar calendarOf(ProcessModel const & model) {
  if (model.calendar.isGiven())
    return model.calendar;
  return {KivCoreTime::GetStaticDaysPerYear(), KivCoreTime::GetStaticHoursPerDay()};
}

} // namespace modeler
