#pragma once
/// \file
/// The ways of the arrows through the grid: between columns and between rows, never through a box.
///
/// A channel is the room to the right of a column, a corridor the room above a row; the last corridor lies below all rows.
/// An arrow that leads on leaves its box at the right and enters the next one at the left; one that leads back leaves and
/// enters at the top. On its way it takes a lane of channels and corridors by turns, each lane to itself where it runs.

#include "model/layout/grid.hpp"
#include "model/layout/lanes.hpp"

namespace modeler {

/// The stretch of an arrow in one lane.
struct Leg {
  bool isChannel; ///< up or down a channel; otherwise along a corridor
  long place;     ///< the number of the channel or corridor
  long lane;      ///< channels count from the left, corridors from the bottom
};

struct Route {
  bool leadsBack;
  ISequence<Leg> legs; ///< channels and corridors by turns; none for an arrow straight to the right
  long start;          ///< of one that leads on: where it leaves the side, in half steps below the middle
  long end;            ///< of one that leads on: where it enters the side, likewise
};

/// The end of an arrow at the top of a box.
struct TopPort {
  std::size_t flow;
  bool leaves;
};

struct Routes {
  ISequence<Route> routes;            ///< one for each flow
  ISequence<ISequence<TopPort>> tops; ///< of each node, from the left
  ISequence<long> channels;           ///< the number of lanes of each
  ISequence<long> corridors;          ///< likewise; one more than rows
};

Routes routesFor(ProcessModel const & model, Grid const & grid);

} // namespace modeler
