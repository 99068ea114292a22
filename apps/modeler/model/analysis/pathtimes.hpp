#pragma once
/// \file
/// How long a process takes on each of its ways.

#include "model/analysis/paths.hpp"

namespace modeler {

struct PathTime {
  Path path;
  KivCoreTime time; ///< in the model's calendar
};

struct PathTimes {
  ISequence<PathTime> paths; ///< as in Paths
  bool areAll =
      true; ///< as in Paths: when it is false, one that was not found may be shorter or longer than those below
  std::size_t shortest = 0;              ///< its place in \p paths; the first one of several that take the same time
  std::size_t longest = 0;               ///< the same, but the last one of several
  std::size_t activitiesWithoutTime = 0; ///< on these paths; each counts as 0
  bool hasTimes = false;                 ///< whether any node of the model has one
};

/// \param most  that many paths at most
PathTimes timesOf(ProcessModel const & model, std::size_t most);

/// How many days a year and hours a day the model's times are shown in: those of its calendar, otherwise the library's.
Calendar calendarOf(ProcessModel const & model);

} // namespace modeler
