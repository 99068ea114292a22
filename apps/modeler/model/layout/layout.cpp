#include "model/layout/layout.hpp"

#include "model/layout/boxes.hpp"

#include <algorithm>

using SV::Point;
using SV::Size;

namespace modeler {
namespace {

/// From the left or the top, of columns and rows with what lies between them.
struct Band {
  long start = 0;  ///< of a column or a corridor
  long middle = 0; ///< of a column or a row
  long firstLane = 0;
};

/// The points without those between which the way goes on in the same direction.
ISequence<Point> turnsOf(ISequence<Point> const & points) {
  ISequence<Point> turns;
  for (Point const & point : points) {
    if (!turns.empty() && turns.back() == point)
      continue;
    if (std::size_t const count = turns.size(); count > 1) {
      Point const & last = turns[count - 1];
      Point const & former = turns[count - 2];
      if ((former.x == last.x && last.x == point.x) || (former.y == last.y && last.y == point.y))
        turns.pop_back();
    }
    turns.push_back(point);
  }
  return turns;
}

class Drawing {
public:
  Drawing(ProcessModel const & model, TextFacts const & facts)
      : model_(model), grid_(gridOf(model)), routes_(routesFor(model, grid_)), measures_(facts.size),
        ports_(model, routes_, measures_, facts.size), columns_(routes_.channels.size()),
        rows_(routes_.corridors.size()) {
    layout_.line = measures_.line;
    for (std::size_t node = 0; node < model.nodes.size(); ++node)
      layout_.boxes.push_back(
          makeBox(model.nodes[node], ports_.sideReaches[node], ports_.topReaches[node], measures_, facts));
    layout_.size = {placeColumns(), placeRows()};
    for (std::size_t node = 0; node < model.nodes.size(); ++node)
      moveBox(layout_.boxes[node], {columnOf(node).middle, rowOf(node).middle});
    for (std::size_t flow = 0; flow < model.flows.size(); ++flow) {
      layout_.arrows.push_back(arrowOf(flow));
      if (ports_.labelWidths[flow] > 0)
        layout_.labels.push_back(labelOf(flow));
    }
  }

  Layout const & GetLayout() const { return layout_; }

private:
  Band & columnOf(std::size_t node) { return columns_[static_cast<std::size_t>(grid_.cells[node].column)]; }
  Band & rowOf(std::size_t node) { return rows_[static_cast<std::size_t>(grid_.cells[node].row)]; }
  long halfWidth(std::size_t node) const { return layout_.boxes[node].area.GetSize().width / 2; }
  long halfHeight(std::size_t node) const { return layout_.boxes[node].area.GetSize().height / 2; }

  /// The boxes of each column stand in its middle; the channel behind it holds labels, then lanes.
  /// \return the width of all
  long placeColumns() {
    ISequence<long> halves(columns_.size());
    ISequence<long> reaches(columns_.size()); // from the middle, with labels
    for (std::size_t node = 0; node < model_.nodes.size(); ++node) {
      auto const column = static_cast<std::size_t>(grid_.cells[node].column);
      halves[column] = std::max(halves[column], halfWidth(node));
      reaches[column] = std::max(reaches[column], halfWidth(node));
    }
    for (std::size_t place = 0; place < model_.flows.size(); ++place)
      if (long const width = ports_.labelWidths[place]; width > 0 && !routes_.routes[place].leadsBack) {
        std::size_t const node = model_.flows[place].from;
        long & reach = reaches[static_cast<std::size_t>(grid_.cells[node].column)];
        reach = std::max(reach, halfWidth(node) + width + 2 * measures_.gap);
      }
    long x = measures_.line;
    for (std::size_t column = 0; column < columns_.size(); ++column) {
      columns_[column].middle = x + halves[column];
      columns_[column].firstLane = columns_[column].middle + reaches[column] + measures_.lane;
      long const lanes = std::max(routes_.channels[column] - 1, 0L) * measures_.lane;
      bool const isLast = column + 1 == columns_.size();
      x = isLast ? columns_[column].middle + reaches[column] : columns_[column].firstLane + lanes + measures_.approach;
      if (isLast && routes_.channels[column] > 0)
        x = columns_[column].firstLane + lanes;
    }
    return x + measures_.line;
  }

  /// Each row follows its corridor, which holds lanes, and below them the labels of arrows that leave there.
  /// \return the height of all
  long placeRows() {
    ISequence<Extent> extents = extentsOfRows();
    long y = 0;
    for (std::size_t row = 0; row < rows_.size(); ++row) {
      long const lanes = routes_.corridors[row];
      long const lanesHeight = lanes > 0 ? lanes * measures_.lane : 0;
      long const least = row == 0 || row + 1 == rows_.size() ? measures_.line : 3 * measures_.line / 2;
      y += std::max(lanesHeight + measures_.lane / 2 + extents[row].approach, least);
      rows_[row].firstLane = y - extents[row].approach;
      rows_[row].middle = y + extents[row].above;
      y += extents[row].above + extents[row].below + 1;
    }
    return y;
  }

  /// How far a row reaches from its middle, and what it needs above for arrows to the tops of its boxes.
  struct Extent {
    long above = 0;
    long below = 0;
    long approach = 0;
  };

  ISequence<Extent> extentsOfRows() {
    ISequence<Extent> extents(rows_.size());
    auto const extentOf = [&](std::size_t node) -> Extent & {
      return extents[static_cast<std::size_t>(grid_.cells[node].row)];
    };
    for (Extent & extent : extents)
      extent.approach = measures_.lane;
    extents.back().approach = 0;
    for (std::size_t node = 0; node < model_.nodes.size(); ++node) {
      Extent & extent = extentOf(node);
      extent.above = std::max(extent.above, halfHeight(node));
      extent.below = std::max(extent.below, halfHeight(node));
      if (!routes_.tops[node].empty())
        extent.approach = std::max(extent.approach, measures_.approach);
    }
    for (std::size_t place = 0; place < model_.flows.size(); ++place) {
      if (ports_.labelWidths[place] == 0)
        continue;
      Extent & extent = extentOf(model_.flows[place].from);
      if (routes_.routes[place].leadsBack)
        extent.approach = std::max(extent.approach, measures_.line + 3 * measures_.gap);
      else
        extent.above = std::max(extent.above, measures_.line + measures_.gap - ports_.starts[place]);
    }
    return extents;
  }

  /// The arrow turns at each lane that it takes.
  Arrow arrowOf(std::size_t place) {
    Flow const & flow = model_.flows[place];
    Route const & route = routes_.routes[place];
    Box const & from = layout_.boxes[flow.from];
    Box const & to = layout_.boxes[flow.to];
    Point const start = route.leadsBack ? topEdge(from, ports_.starts[place]) : rightEdge(from, ports_.starts[place]);
    Point const end = route.leadsBack ? topEdge(to, ports_.ends[place]) : leftEdge(to, ports_.ends[place]);
    Arrow arrow{{start}, route.leadsBack};
    Point turn = start;
    for (Leg const & leg : route.legs) {
      if (leg.isChannel)
        turn.x = columns_[static_cast<std::size_t>(leg.place)].firstLane + leg.lane * measures_.lane;
      else
        turn.y = rows_[static_cast<std::size_t>(leg.place)].firstLane - leg.lane * measures_.lane;
      arrow.points.push_back(turn);
    }
    (route.leadsBack ? turn.x : turn.y) = route.leadsBack ? end.x : end.y;
    arrow.points.push_back(turn);
    arrow.points.push_back(end);
    arrow.points = turnsOf(arrow.points);
    return arrow;
  }

  /// Above the start of an arrow that leads on, to the right of the start of one that leads back.
  TextLine labelOf(std::size_t place) const {
    Flow const & flow = model_.flows[place];
    SV::Rectangle const & box = layout_.boxes[flow.from].area;
    Point const & start = layout_.arrows[place].points.front();
    Size const size{ports_.labelWidths[place], measures_.line};
    if (routes_.routes[place].leadsBack)
      return {{{start.x + measures_.gap, box.TopLeft().y - measures_.gap - size.height}, size}, flow.text};
    return {{{box.TopLeft().x + box.GetSize().width + measures_.gap, start.y - size.height - 1}, size}, flow.text};
  }

  ProcessModel const & model_;
  Grid grid_;
  Routes routes_;
  Measures measures_;
  Ports ports_;
  ISequence<Band> columns_;
  ISequence<Band> rows_; ///< with the last corridor
  Layout layout_;
};

} // namespace

Layout layOut(ProcessModel const & model, TextFacts const & facts) { return Drawing(model, facts).GetLayout(); }

} // namespace modeler
