#include "model/layout/grid.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace modeler {
namespace {

using Places = ISequence<std::size_t>;

/// The flows that leave each node, and those that arrive there.
struct Joints {
  explicit Joints(ProcessModel const & model) : leaving(model.nodes.size()), arriving(model.nodes.size()) {
    for (std::size_t flow = 0; flow < model.flows.size(); ++flow) {
      leaving[model.flows[flow].from].push_back(flow);
      arriving[model.flows[flow].to].push_back(flow);
    }
  }

  ISequence<Places> leaving;
  ISequence<Places> arriving;
};

/// A walk along the flows finds those that close a circle.
class Walk {
public:
  Walk(ProcessModel const & model, Joints const & joints)
      : leadBack(model.flows.size(), false), model_(model), joints_(joints),
        states_(model.nodes.size(), State::Unseen) {
    for (std::size_t node = 0; node < model.nodes.size(); ++node)
      if (joints.arriving[node].empty())
        visitFrom(node);
    for (std::size_t node = 0; node < model.nodes.size(); ++node)
      visitFrom(node);
    std::reverse(order.begin(), order.end());
  }

  ISequence<bool> leadBack;
  Places order; ///< each node before those that it leads to

private:
  enum class State : char { Unseen, Open, Done };
  struct Step {
    std::size_t node;
    std::size_t next; ///< of its leaving flows
  };

  void visitFrom(std::size_t start) {
    if (states_[start] != State::Unseen)
      return;
    ISequence<Step> way{{start, 0}}; // not the call stack: models may be long chains
    states_[start] = State::Open;
    while (!way.empty()) {
      Step & step = way.back();
      if (step.next == joints_.leaving[step.node].size()) {
        states_[step.node] = State::Done;
        order.push_back(step.node);
        way.pop_back();
      } else if (std::size_t const flow = joints_.leaving[step.node][step.next++]; isNew(flow)) {
        way.push_back({model_.flows[flow].to, 0});
        states_[model_.flows[flow].to] = State::Open;
      }
    }
  }

  bool isNew(std::size_t flow) {
    State const state = states_[model_.flows[flow].to];
    leadBack[flow] = state == State::Open;
    return state == State::Unseen;
  }

  ProcessModel const & model_;
  Joints const & joints_;
  ISequence<State> states_;
};

/// Places the nodes of each column, at first in their order.
class Rows {
public:
  Rows(ProcessModel const & model, Joints const & joints, Grid & grid) : model_(model), joints_(joints), grid_(grid) {
    columns_.resize(static_cast<std::size_t>(grid.columns));
    for (std::size_t node = 0; node < model.nodes.size(); ++node) {
      Places & column = columns_[static_cast<std::size_t>(grid.cells[node].column)];
      grid.cells[node].row = static_cast<long>(column.size());
      column.push_back(node);
    }
  }

  /// There and back, twice: each column looks at those before it, then at those behind it.
  void settle() {
    for (int round = 0; round < 2; ++round) {
      for (Places & column : columns_)
        placeColumn(column, joints_.arriving, &Flow::from);
      for (auto column = columns_.rbegin(); column != columns_.rend(); ++column)
        placeColumn(*column, joints_.leaving, &Flow::to);
    }
    closeGaps();
  }

private:
  /// The middle one of the rows of those that a node is joined with; its own where there are none.
  long wishOf(std::size_t node, ISequence<Places> const & joints, std::size_t Flow::*end) const {
    ISequence<long> rows;
    for (std::size_t const flow : joints[node])
      if (!grid_.leadBack[flow])
        rows.push_back(grid_.cells[model_.flows[flow].*end].row);
    if (rows.empty())
      return grid_.cells[node].row;
    auto const middle = rows.begin() + static_cast<std::ptrdiff_t>((rows.size() - 1) / 2);
    std::nth_element(rows.begin(), middle, rows.end());
    return *middle;
  }

  void placeColumn(Places & column, ISequence<Places> const & joints, std::size_t Flow::*end) {
    std::vector<std::pair<long, std::size_t>> wishes;
    for (std::size_t const node : column)
      wishes.emplace_back(wishOf(node, joints, end), node);
    std::stable_sort(wishes.begin(), wishes.end(),
                     [](auto const & left, auto const & right) { return left.first < right.first; });
    std::transform(wishes.begin(), wishes.end(), column.begin(), [](auto const & wish) { return wish.second; });
    fulfil(wishes);
  }

  /// Different rows, in the order of the wishes and as near to them as can be: those that would push each other away
  /// share what is to be given up.
  void fulfil(std::vector<std::pair<long, std::size_t>> const & wishes) {
    struct Pool {
      long sum; // of the wished rows, less the places in the column
      long count;
      double mean() const { return static_cast<double>(sum) / static_cast<double>(count); }
    };
    ISequence<Pool> pools;
    for (std::size_t place = 0; place < wishes.size(); ++place) {
      pools.push_back({wishes[place].first - static_cast<long>(place), 1});
      while (pools.size() > 1 && pools[pools.size() - 2].mean() > pools.back().mean()) {
        Pool const last = pools.back();
        pools.pop_back();
        pools.back().sum += last.sum;
        pools.back().count += last.count;
      }
    }
    std::size_t place = 0;
    for (Pool const & pool : pools)
      for (long i = 0; i < pool.count; ++i, ++place)
        grid_.cells[wishes[place].second].row =
            static_cast<long>(std::floor(pool.mean() + 0.5)) + static_cast<long>(place);
  }

  void closeGaps() {
    ISequence<long> used;
    for (Cell const & cell : grid_.cells)
      used.push_back(cell.row);
    std::sort(used.begin(), used.end());
    used.erase(std::unique(used.begin(), used.end()), used.end());
    for (Cell & cell : grid_.cells)
      cell.row = std::lower_bound(used.begin(), used.end(), cell.row) - used.begin();
    grid_.rows = static_cast<long>(used.size());
  }

  ProcessModel const & model_;
  Joints const & joints_;
  Grid & grid_;
  ISequence<Places> columns_;
};

} // namespace

bool Grid::IsRowFree(long row, long left, long right) const {
  return std::none_of(cells.begin(), cells.end(),
                      [=](Cell const & cell) { return cell.row == row && cell.column > left && cell.column < right; });
}

bool Grid::IsColumnFree(long column, long top, long bottom) const {
  return std::none_of(cells.begin(), cells.end(),
                      [=](Cell const & cell) { return cell.column == column && cell.row >= top && cell.row < bottom; });
}

Grid gridOf(ProcessModel const & model) {
  Joints const joints(model);
  Walk const walk(model, joints);
  Grid grid{ISequence<Cell>(model.nodes.size()), walk.leadBack, 0, 0};
  for (std::size_t const node : walk.order) {
    long const column = grid.cells[node].column;
    grid.columns = std::max(grid.columns, column + 1);
    for (std::size_t const flow : joints.leaving[node])
      if (!walk.leadBack[flow]) {
        long & next = grid.cells[model.flows[flow].to].column;
        next = std::max(next, column + 1);
      }
  }
  Rows(model, joints, grid).settle();
  return grid;
}

} // namespace modeler
