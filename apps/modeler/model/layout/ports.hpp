#pragma once
/// \file
/// Where the arrows meet the sides of the boxes.

#include "model/layout/routes.hpp"

namespace modeler {

/// The flows that go straight to the right: from box to box in one row, with nothing between. Of the flows of a side at most one
/// does.
ISequence<bool> straightFlows(ProcessModel const & model, Grid const & grid);

/// Sets start and end of all routes that lead on, whose legs are known. A straight one meets both sides in their middle, the others
/// keep a step from each other, in the order in which they turn up and down. No two that meet in a channel at the same height
/// belong to different flows.
void placePorts(ProcessModel const & model, Grid const & grid, ISequence<bool> const & straight, Routes & routes);

/// Sets the order at the tops. It keeps short ways inside of long ones.
void orderTops(ProcessModel const & model, Grid const & grid, Routes & routes);

} // namespace modeler
