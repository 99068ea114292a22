#pragma once
/// \file
/// What comes over the event bus, kept for the window that lists it.

#include "kivara.hpp"

#include <functional>

namespace modeler {

/// Hears all types of events before all listeners of normal priority, so that the rows stand in the order in which the
/// events were triggered. Each one is a line of the trace, too.
class EventLog : public KivEventListener {
public:
  struct Row {
    int number;
    SV::String name;
    SV::String text;
  };

  /// Older rows go.
  static constexpr std::size_t kMostRows = 1000;

  EventLog();
  ~EventLog() override;

  ISequence<Row> const & GetRows() const { return rows_; }

  /// Called for each new row; none when it is empty.
  void ChangeRowHdl(std::function<void(Row const &)> handler) { handler_ = std::move(handler); }

private:
  void add(KivEvent * event);

  ISequence<Row> rows_;
  std::function<void(Row const &)> handler_;
};

} // namespace modeler
