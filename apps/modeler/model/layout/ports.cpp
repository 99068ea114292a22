#include "model/layout/ports.hpp"

#include <algorithm>
#include <map>
#include <tuple>

namespace modeler {
namespace {

using Places = ISequence<std::size_t>;

/// Sets the ports of one kind of side, right or left, of all nodes.
class Sides {
public:
  Sides(ProcessModel const & model, Grid const & grid, ISequence<bool> const & straight, Routes & routes, bool isRight)
      : grid_(grid), straight_(straight), routes_(routes), isRight_(isRight), flows_(model.nodes.size()) {
    for (std::size_t flow = 0; flow < model.flows.size(); ++flow)
      if (!grid.leadBack[flow])
        flows_[isRight ? model.flows[flow].from : model.flows[flow].to].push_back(flow);
    for (std::size_t node = 0; node < flows_.size(); ++node)
      spread(model, node);
  }

  Places const & GetFlows(std::size_t node) const { return flows_[node]; }
  long & portOf(std::size_t flow) const { return isRight_ ? routes_.routes[flow].start : routes_.routes[flow].end; }

private:
  void spread(ProcessModel const & model, std::size_t node) {
    Places & flows = flows_[node];
    std::stable_sort(flows.begin(), flows.end(), [&](std::size_t left, std::size_t right) {
      return std::tuple(levelOf(model, left), !straight_[left]) < std::tuple(levelOf(model, right), !straight_[right]);
    });
    auto const anchor = std::find_if(flows.begin(), flows.end(), [this](std::size_t flow) { return straight_[flow]; });
    long port =
        anchor != flows.end() ? -2 * static_cast<long>(anchor - flows.begin()) : 1 - static_cast<long>(flows.size());
    for (std::size_t const flow : flows) {
      portOf(flow) = port;
      port += 2;
    }
  }

  /// How far down the arrow goes, or comes from: rows are odd, the corridors above them even.
  long levelOf(ProcessModel const & model, std::size_t flow) const {
    ISequence<Leg> const & legs = routes_.routes[flow].legs;
    if (legs.size() > 1)
      return 2 * legs[1].place;
    return 2 * grid_.cells[isRight_ ? model.flows[flow].to : model.flows[flow].from].row + 1;
  }

  Grid const & grid_;
  ISequence<bool> const & straight_;
  Routes & routes_;
  bool isRight_;
  ISequence<Places> flows_;
};

/// Two boxes face each other over a channel: an arrow that leaves the left one and another that enters the right one would run on
/// each other at the same height.
void keepApart(Sides const & left, std::size_t from, Sides const & right, std::size_t to,
               ISequence<bool> const & straight) {
  Places const & entering = right.GetFlows(to);
  auto const meets = [&](std::size_t flow) {
    Places const & leaving = left.GetFlows(from);
    return !straight[flow] && std::any_of(leaving.begin(), leaving.end(), [&](std::size_t other) {
      return other != flow && left.portOf(other) == right.portOf(flow);
    });
  };
  if (std::none_of(entering.begin(), entering.end(), meets))
    return;
  bool const hasStraight =
      std::any_of(entering.begin(), entering.end(), [&](std::size_t flow) { return straight[flow]; });
  for (std::size_t const flow : entering)
    if (!straight[flow])
      right.portOf(flow) += hasStraight && right.portOf(flow) < 0 ? -1 : 1;
}

/// Arrows that end at the left of the box, then those to itself, then those that come from the right.
struct TopKey {
  int group;
  long length;
  long flow;
};

TopKey keyOf(TopPort const & port, ProcessModel const & model, Grid const & grid) {
  Flow const & flow = model.flows[port.flow];
  auto const number = static_cast<long>(port.flow);
  if (flow.from == flow.to)
    return port.leaves ? TopKey{1, 0, -number} : TopKey{2, 0, number};
  long const length = grid.cells[flow.from].column - grid.cells[flow.to].column;
  return port.leaves ? TopKey{0, length, number} : TopKey{3, -length, -number};
}

} // namespace

ISequence<bool> straightFlows(ProcessModel const & model, Grid const & grid) {
  ISequence<bool> straight(model.flows.size(), false);
  ISequence<bool> leaves(model.nodes.size(), false);
  ISequence<bool> arrives(model.nodes.size(), false);
  for (std::size_t place = 0; place < model.flows.size(); ++place) {
    Flow const & flow = model.flows[place];
    Cell const & from = grid.cells[flow.from];
    Cell const & to = grid.cells[flow.to];
    if (grid.leadBack[place] || from.row != to.row || leaves[flow.from] || arrives[flow.to] ||
        !grid.IsRowFree(from.row, from.column, to.column))
      continue;
    straight[place] = leaves[flow.from] = arrives[flow.to] = true;
  }
  return straight;
}

void placePorts(ProcessModel const & model, Grid const & grid, ISequence<bool> const & straight, Routes & routes) {
  Sides const leaving(model, grid, straight, routes, true);
  Sides const entering(model, grid, straight, routes, false);
  std::map<std::pair<long, long>, std::size_t> nodes;
  for (std::size_t node = 0; node < grid.cells.size(); ++node)
    nodes[{grid.cells[node].column, grid.cells[node].row}] = node;
  for (std::size_t node = 0; node < grid.cells.size(); ++node)
    if (auto const before = nodes.find({grid.cells[node].column - 1, grid.cells[node].row}); before != nodes.end())
      keepApart(leaving, before->second, entering, node, straight);
}

void orderTops(ProcessModel const & model, Grid const & grid, Routes & routes) {
  routes.tops.assign(model.nodes.size(), {});
  for (std::size_t flow = 0; flow < model.flows.size(); ++flow)
    if (grid.leadBack[flow]) {
      routes.tops[model.flows[flow].from].push_back({flow, true});
      routes.tops[model.flows[flow].to].push_back({flow, false});
    }
  for (ISequence<TopPort> & ports : routes.tops)
    std::sort(ports.begin(), ports.end(), [&](TopPort const & left, TopPort const & right) {
      TopKey const a = keyOf(left, model, grid);
      TopKey const b = keyOf(right, model, grid);
      return std::tie(a.group, a.length, a.flow) < std::tie(b.group, b.length, b.flow);
    });
}

} // namespace modeler
