#pragma once
/// \file
/// Where the boxes, arrows and texts of a process model are drawn.
///
/// All sizes follow the height of a line of text, so that the picture grows with the font and with the resolution of the
/// screen. Nothing is drawn here: the measuring of texts is asked for.

#include "model/layout/wrapping.hpp"
#include "model/processmodel.hpp"

namespace modeler {

/// What the layout needs to know about texts.
struct TextFacts {
  TextSize size;
  std::function<SV::String(Node const &)> duration; ///< how long a node takes, in words; empty for nothing to show
};

/// A line of text and the area for it; a text that is wider is to be cut.
struct TextLine {
  SV::Rectangle area;
  SV::String text;
  bool isDuration = false;
};

/// A node. A decision is the diamond in its area, start and end are rounded; each side has an odd number of pixels, so that
/// there is a middle.
struct Box {
  NodeKind kind;
  SV::Rectangle area;
  long corner; ///< the radius of its corners
  ISequence<TextLine> lines;
};

/// From the edge of one box to that of another, up and down or right and left by turns.
struct Arrow {
  ISequence<SV::Point> points;
  bool leadsBack;
};

struct Layout {
  SV::Size size;              ///< of all, with a margin
  long line;                  ///< the height of a line of text
  ISequence<Box> boxes;       ///< one for each node
  ISequence<Arrow> arrows;    ///< one for each flow
  ISequence<TextLine> labels; ///< of those flows that have a text
};

Layout layOut(ProcessModel const & model, TextFacts const & facts);

} // namespace modeler
