#pragma once
/// \file
/// Which column and row each node of a process model stands in.

#include "model/processmodel.hpp"

namespace modeler {

/// A place: columns follow the flows, rows part the nodes of a column; both count from 0.
struct Cell {
  long column;
  long row;
};

struct Grid {
  ISequence<Cell> cells;    ///< one for each node; no two are the same
  ISequence<bool> leadBack; ///< for each flow, whether it leads to its own node or to one that stands before it
  long columns;
  long rows;

  /// Whether no node stands in that row between the two columns, themselves not counted.
  bool IsRowFree(long row, long left, long right) const;
  /// Whether no node stands in that column from row \p top to row \p bottom, the latter not counted.
  bool IsColumnFree(long column, long top, long bottom) const;
};

/// Each node stands one column behind the last of those that lead to it; flows that lead back do not count. In its
/// column it stands as near as can be to the row of those that it is joined with.
Grid gridOf(ProcessModel const & model);

} // namespace modeler
