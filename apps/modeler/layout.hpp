#pragma once
/// \file
/// Where the nodes of a process model stand.

#include "processmodel.hpp"

namespace modeler {

/// A place in a grid: columns follow the flows, rows part the nodes of a column; both count from 0.
struct Cell {
  long column;
  long row;
};

struct Layout {
  ISequence<Cell> cells; ///< one for each node
  long columns;
  long rows; ///< of the highest column
};

/// Each node stands one column behind the last of those that lead to it; flows that lead back do not count.
Layout layOut(ProcessModel const & model);

} // namespace modeler
