#include "model/layout/boxes.hpp"

#include <algorithm>
#include <cstdlib>

using SV::Point;
using SV::Size;
using SV::String;

namespace modeler {
namespace {

/// A size with a pixel in the middle.
long odd(long size) { return size | 1; }

Point middleOf(Box const & box) {
  Point const & corner = box.area.TopLeft();
  return {corner.x + box.area.GetSize().width / 2, corner.y + box.area.GetSize().height / 2};
}

/// How far a diamond's edge has come in, beside the middle of a side.
long insetOf(Box const & box, long halfSide, long halfDepth, long offset) {
  return box.kind == NodeKind::Decision && halfSide > 0 ? halfDepth * std::labs(offset) / halfSide : 0;
}

/// The lines one below the other, each from the left at 0.
ISequence<TextLine> linesOf(Node const & node, Measures const & measures, TextFacts const & facts) {
  ISequence<TextLine> lines;
  long top = 0;
  auto const add = [&](String const & text, long width, bool isDuration) {
    lines.push_back({{{0, top}, {width, measures.line}}, text, isDuration});
    top += measures.line;
  };
  for (String const & line : wrapped(node.text, measures.textWidth, facts.size))
    add(line, std::min(facts.size(line).width, measures.textWidth), false);
  if (String const text = facts.duration(node); text.Len() > 0) {
    top += lines.empty() ? 0 : measures.gap;
    add(text, facts.size(text).width, true);
  }
  return lines;
}

Size sizeOf(ISequence<TextLine> const & lines) {
  Size size;
  for (TextLine const & line : lines)
    size = {std::max(size.width, line.area.GetSize().width), line.area.TopLeft().y + line.area.GetSize().height};
  return size;
}

long cornerOf(NodeKind kind, Measures const & measures) {
  switch (kind) {
  case NodeKind::Activity: return measures.line / 4;
  case NodeKind::Decision: return 0;
  default: return measures.line;
  }
}

Size rectangleAround(Size const & text, long corner, long sideReach, long topReach, Measures const & measures) {
  return {std::max({text.width + 2 * measures.line, 6 * measures.line, 2 * (topReach + corner + measures.gap)}),
          std::max({text.height + measures.line, 5 * measures.line / 2, 2 * (sideReach + corner + measures.gap)})};
}

/// The text's corners touch the diamond: the higher the diamond, the narrower.
Size diamondAround(Size const & text, long sideReach, long topReach, Measures const & measures) {
  long const height = std::max({text.height + 3 * measures.line, 2 * text.height, 2 * (sideReach + measures.line)});
  long const width = (text.width + measures.line) * height / (height - text.height);
  return {std::max({width, 5 * height / 4, 2 * (topReach + measures.line)}), height};
}

void centre(ISequence<TextLine> & lines) {
  long const height = sizeOf(lines).height;
  for (TextLine & line : lines) {
    Size const size = line.area.GetSize();
    line.area = {{-size.width / 2, line.area.TopLeft().y - height / 2}, size};
  }
}

} // namespace

Measures::Measures(TextSize const & textSize)
    : line(std::max(textSize("Mg").height, 4L)), gap(line / 4), halfStep((5 * line + 7) / 8), lane(3 * line / 4),
      approach(5 * line / 4), textWidth(9 * line) {}

Ports::Ports(ProcessModel const & model, Routes const & routes, Measures const & measures, TextSize const & textSize)
    : starts(model.flows.size()), ends(model.flows.size()), sideReaches(model.nodes.size()),
      topReaches(model.nodes.size()) {
  for (Flow const & flow : model.flows)
    labelWidths.push_back(flow.text.Len() > 0 ? std::min(textSize(flow.text).width, measures.textWidth) : 0);
  placeSides(model, routes, measures.halfStep);
  for (std::size_t node = 0; node < model.nodes.size(); ++node)
    placeTop(routes.tops[node], measures, topReaches[node]);
}

void Ports::placeSides(ProcessModel const & model, Routes const & routes, long halfStep) {
  for (std::size_t place = 0; place < model.flows.size(); ++place) {
    Route const & route = routes.routes[place];
    if (route.leadsBack)
      continue;
    starts[place] = route.start * halfStep;
    ends[place] = route.end * halfStep;
    long & start = sideReaches[model.flows[place].from];
    long & end = sideReaches[model.flows[place].to];
    start = std::max(start, std::labs(starts[place]));
    end = std::max(end, std::labs(ends[place]));
  }
}

/// A label stands to the right of its arrow, so that the next one keeps away from it.
void Ports::placeTop(ISequence<TopPort> const & ports, Measures const & measures, long & reach) {
  long width = 0;
  long room = 0;
  ISequence<long> offsets;
  for (TopPort const & port : ports) {
    width += offsets.empty() ? 0 : room;
    offsets.push_back(width);
    room = 2 * measures.halfStep;
    if (port.leaves && labelWidths[port.flow] > 0)
      room = std::max(room, labelWidths[port.flow] + 3 * measures.gap);
  }
  for (std::size_t i = 0; i < ports.size(); ++i)
    (ports[i].leaves ? starts : ends)[ports[i].flow] = offsets[i] - width / 2;
  reach = ports.empty() ? 0 : width - width / 2 + (ports.back().leaves ? room : 0);
}

Box makeBox(Node const & node, long sideReach, long topReach, Measures const & measures, TextFacts const & facts) {
  Box box{node.kind, {}, cornerOf(node.kind, measures), linesOf(node, measures, facts)};
  Size const text = sizeOf(box.lines);
  Size const size = node.kind == NodeKind::Decision ? diamondAround(text, sideReach, topReach, measures)
                                                    : rectangleAround(text, box.corner, sideReach, topReach, measures);
  Size const whole{odd(size.width), odd(size.height)};
  box.area = {{-(whole.width / 2), -(whole.height / 2)}, whole};
  centre(box.lines);
  return box;
}

void moveBox(Box & box, Point const & middle) {
  Point const from = middleOf(box);
  auto const moved = [&](SV::Rectangle const & area) {
    Point const & corner = area.TopLeft();
    return SV::Rectangle({corner.x - from.x + middle.x, corner.y - from.y + middle.y}, area.GetSize());
  };
  for (TextLine & line : box.lines)
    line.area = moved(line.area);
  box.area = moved(box.area);
}

Point rightEdge(Box const & box, long below) {
  Point const middle = middleOf(box);
  Size const half{box.area.GetSize().width / 2, box.area.GetSize().height / 2};
  return {middle.x + half.width - insetOf(box, half.height, half.width, below), middle.y + below};
}

Point leftEdge(Box const & box, long below) {
  Point const middle = middleOf(box);
  return {2 * middle.x - rightEdge(box, below).x, middle.y + below};
}

Point topEdge(Box const & box, long beside) {
  Point const middle = middleOf(box);
  Size const half{box.area.GetSize().width / 2, box.area.GetSize().height / 2};
  return {middle.x + beside, middle.y - half.height + insetOf(box, half.width, half.height, beside)};
}

} // namespace modeler
