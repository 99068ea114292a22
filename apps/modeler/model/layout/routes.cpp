#include "model/layout/routes.hpp"

#include "model/layout/ports.hpp"

#include <algorithm>
#include <tuple>

namespace modeler {
namespace {

// Places along a channel or corridor: boxes are odd, what lies between them even.
long placeOfRow(long row) { return 2 * row + 1; }
long placeOfCorridor(long corridor) { return 2 * corridor; }
long placeOfColumn(long column) { return 2 * column + 1; }
long placeOfChannel(long channel) { return 2 * channel + 2; }

/// A leg with where it leads from and to along its channel or corridor.
struct Stretch {
  Leg leg;
  long from;
  long to;
};

using Stretches = ISequence<Stretch>;

Stretch channel(long place, long from, long to) { return {{true, place, 0}, from, to}; }
Stretch corridor(long place, long from, long to) { return {{false, place, 0}, from, to}; }

Stretches waysOn(Cell const & from, Cell const & to) {
  if (to.column == from.column + 1)
    return {channel(from.column, placeOfRow(from.row), placeOfRow(to.row))};
  long const between = to.row < from.row ? from.row : from.row + 1;
  return {channel(from.column, placeOfRow(from.row), placeOfCorridor(between)),
          corridor(between, placeOfChannel(from.column), placeOfChannel(to.column - 1)),
          channel(to.column - 1, placeOfCorridor(between), placeOfRow(to.row))};
}

Stretches waysBack(Cell const & from, Cell const & to, Grid const & grid) {
  long const above = std::min(from.row, to.row);
  if (grid.IsColumnFree(from.column, above, from.row) && grid.IsColumnFree(to.column, above, to.row))
    return {corridor(above, placeOfColumn(from.column), placeOfColumn(to.column))};
  return {corridor(from.row, placeOfColumn(from.column), placeOfChannel(to.column)),
          channel(to.column, placeOfCorridor(from.row), placeOfCorridor(to.row)),
          corridor(to.row, placeOfChannel(to.column), placeOfColumn(to.column))};
}

/// A stretch on its way to a lane.
struct Candidate {
  std::size_t flow;
  std::size_t leg;
  Span span;
  std::tuple<int, long, long> rank; ///< the lower, the nearer to the first lane
};

/// In a channel those that lead down come first. The one that starts last takes the lane nearest to the start, so that those that
/// start before it need not cross it.
std::tuple<int, long, long> rankInChannel(Stretch const & stretch, Route const & route, bool isFirst, bool isLast) {
  constexpr long kStep = 1 << 16; // more than a side has ports
  long const from = stretch.from * kStep + (isFirst && !route.leadsBack ? route.start : 0);
  long const to = stretch.to * kStep + (isLast && !route.leadsBack ? route.end : 0);
  return to >= from ? std::tuple(0, -from, -to) : std::tuple(1, from, to);
}

class Planner {
public:
  Planner(ProcessModel const & model, Grid const & grid)
      : channels_(static_cast<std::size_t>(grid.columns)), corridors_(static_cast<std::size_t>(grid.rows) + 1) {
    ISequence<bool> const straight = straightFlows(model, grid);
    for (std::size_t place = 0; place < model.flows.size(); ++place) {
      Flow const & flow = model.flows[place];
      Cell const & from = grid.cells[flow.from];
      Cell const & to = grid.cells[flow.to];
      stretches_.push_back(straight[place]        ? Stretches()
                           : grid.leadBack[place] ? waysBack(from, to, grid)
                                                  : waysOn(from, to));
      routes.routes.push_back({grid.leadBack[place], {}, 0, 0});
      for (Stretch const & stretch : stretches_.back())
        routes.routes.back().legs.push_back(stretch.leg);
    }
    placePorts(model, grid, straight, routes);
    orderTops(model, grid, routes);
    collect();
    routes.channels = giveLanes(channels_);
    routes.corridors = giveLanes(corridors_);
  }

  Routes routes;

private:
  void collect() {
    for (std::size_t flow = 0; flow < stretches_.size(); ++flow)
      for (std::size_t leg = 0; leg < stretches_[flow].size(); ++leg) {
        Stretch const & stretch = stretches_[flow][leg];
        auto const place = static_cast<std::size_t>(stretch.leg.place);
        Span const span{std::min(stretch.from, stretch.to), std::max(stretch.from, stretch.to)};
        if (stretch.leg.isChannel)
          channels_[place].push_back(
              {flow, leg, span,
               rankInChannel(stretch, routes.routes[flow], leg == 0, leg + 1 == stretches_[flow].size())});
        else // short ones stay near to the boxes
          corridors_[place].push_back({flow, leg, span, {0, span.to - span.from, 0}});
      }
  }

  ISequence<long> giveLanes(ISequence<ISequence<Candidate>> & places) {
    ISequence<long> counts;
    for (ISequence<Candidate> & candidates : places) {
      std::stable_sort(candidates.begin(), candidates.end(),
                       [](Candidate const & left, Candidate const & right) { return left.rank < right.rank; });
      ISequence<Span> spans;
      for (Candidate const & candidate : candidates)
        spans.push_back(candidate.span);
      Lanes const lanes = lanesFor(spans);
      for (std::size_t i = 0; i < candidates.size(); ++i)
        routes.routes[candidates[i].flow].legs[candidates[i].leg].lane = lanes.lanes[i];
      counts.push_back(lanes.count);
    }
    return counts;
  }

  ISequence<Stretches> stretches_;
  ISequence<ISequence<Candidate>> channels_;
  ISequence<ISequence<Candidate>> corridors_;
};

} // namespace

Routes routesFor(ProcessModel const & model, Grid const & grid) { return Planner(model, grid).routes; }

} // namespace modeler
