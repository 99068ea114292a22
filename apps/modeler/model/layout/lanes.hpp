#pragma once
/// \file
/// Lanes beside each other, so that no two arrows run on one another.

#include "kivara.hpp"

namespace modeler {

/// What an arrow takes of a lane: from one place to another, both included, in any unit.
struct Span {
  long from;
  long to; ///< not before from
};

struct Lanes {
  ISequence<long> lanes; ///< for each span the number of its lane, counted from 0
  long count;
};

/// Gives each span in turn the first lane in which it touches no other.
Lanes lanesFor(ISequence<Span> const & spans);

} // namespace modeler
