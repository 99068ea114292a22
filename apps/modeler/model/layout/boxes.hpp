#pragma once
/// \file
/// How large the boxes of a process model are, and where arrows meet them.

#include "model/layout/layout.hpp"
#include "model/layout/routes.hpp"

namespace modeler {

/// The sizes that all others are made of, in pixels.
struct Measures {
  explicit Measures(TextSize const & textSize);

  long line;      ///< the height of a line of text
  long gap;       ///< around a label
  long halfStep;  ///< half of what lies between two arrows at a side
  long lane;      ///< between two lanes
  long approach;  ///< straight before a box, for the head of an arrow
  long textWidth; ///< where texts are broken
};

/// Where arrows meet the boxes, from the middles of their sides: downwards at the left and right, to the right at the top.
struct Ports {
  Ports(ProcessModel const & model, Routes const & routes, Measures const & measures, TextSize const & textSize);

  ISequence<long> starts;      ///< of each flow
  ISequence<long> ends;        ///< of each flow
  ISequence<long> labelWidths; ///< of each flow; 0 where it has no text
  ISequence<long> sideReaches; ///< of each node, the farthest from the middle
  ISequence<long> topReaches;  ///< of each node, the farthest from the middle, with labels

private:
  void placeSides(ProcessModel const & model, Routes const & routes, long halfStep);
  void placeTop(ISequence<TopPort> const & ports, Measures const & measures, long & reach);
};

/// The box of a node about (0, 0), large enough for its texts and for what arrives there.
Box makeBox(Node const & node, long sideReach, long topReach, Measures const & measures, TextFacts const & facts);

/// The same box about another middle.
void moveBox(Box & box, SV::Point const & middle);

/// \name Edges of a box
/// Pixels that belong to its outline; at the sides that many below the middle, at the top that many to the right of it.
/// @{
SV::Point rightEdge(Box const & box, long below);
SV::Point leftEdge(Box const & box, long below);
SV::Point topEdge(Box const & box, long beside);
/// @}

} // namespace modeler
