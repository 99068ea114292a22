#include "layout.hpp"

#include <algorithm>

namespace modeler {
namespace {

enum class Visit : char { None, Open, Done };

/// Columns by a walk along the flows: the longest way to a node, without those flows that close a circle.
class Columns {
public:
  explicit Columns(ProcessModel const & model)
      : columns(model.nodes.size(), 0), model_(model), visits_(model.nodes.size(), Visit::None) {
    for (std::size_t node = 0; node < model.nodes.size(); ++node)
      visit(node);
    // Behind all that follows comes what leads to it.
    for (auto node = order_.rbegin(); node != order_.rend(); ++node)
      for (Flow const & flow : model.flows)
        if (flow.from == *node && !leadsBack(flow))
          columns[flow.to] = std::max(columns[flow.to], columns[*node] + 1);
  }

  ISequence<long> columns;

private:
  void visit(std::size_t node) {
    if (visits_[node] != Visit::None)
      return;
    visits_[node] = Visit::Open;
    for (Flow const & flow : model_.flows)
      if (flow.from == node) {
        if (visits_[flow.to] == Visit::Open)
          backward_.push_back(&flow);
        else
          visit(flow.to);
      }
    visits_[node] = Visit::Done;
    order_.push_back(node);
  }

  bool leadsBack(Flow const & flow) const {
    return std::find(backward_.begin(), backward_.end(), &flow) != backward_.end();
  }

  ProcessModel const & model_;
  ISequence<Visit> visits_;
  ISequence<Flow const *> backward_;
  ISequence<std::size_t> order_; ///< each node behind those that it leads to
};

} // namespace

Layout layOut(ProcessModel const & model) {
  Columns const walk(model);
  Layout layout{{}, 0, 0};
  ISequence<long> rows;
  for (long const column : walk.columns) {
    if (static_cast<std::size_t>(column) >= rows.size())
      rows.resize(static_cast<std::size_t>(column) + 1, 0);
    long & row = rows[static_cast<std::size_t>(column)];
    layout.cells.push_back({column, row++});
    layout.rows = std::max(layout.rows, row);
  }
  layout.columns = static_cast<long>(rows.size());
  return layout;
}

} // namespace modeler
