#include "support/ratio.hpp"

#include <algorithm>
#include <cstdio>
#include <map>

namespace bench {
namespace {

struct Registration {
  Row row;
  std::vector<double> ours;
  std::vector<double> peer;
};

std::vector<Registration> & registrations() {
  static std::vector<Registration> all;
  return all;
}

constexpr char oursMark[] = " | ours";
constexpr char peerMark[] = " | peer";

double median(std::vector<double> values) {
  if (values.empty())
    return 0;
  auto const middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// Keeps the times of the repetitions.
class Collector : public benchmark::ConsoleReporter {
public:
  Collector() : ConsoleReporter(OO_None) {}

  void ReportRuns(std::vector<Run> const & runs) override {
    for (auto const & run : runs)
      if (run.error_occurred)
        std::fprintf(stderr, "%s: %s\n", run.run_name.function_name.c_str(), run.error_message.c_str());
      else if (run.run_type == Run::RT_Iteration)
        keep(run.run_name.function_name, run.GetAdjustedRealTime());
  }

private:
  // Processor time comes in steps of the system's clock tick; real time is finer, and both sides are measured alike.
  static void keep(std::string const & name, double nanoseconds) {
    for (auto & each : registrations()) {
      if (name == each.row.name + oursMark)
        each.ours.push_back(nanoseconds);
      else if (name == each.row.name + peerMark)
        each.peer.push_back(nanoseconds);
    }
  }
};

} // namespace

Pair::Pair(std::string name, Goal goal, Body ours, std::string peerName, Body peer) {
  benchmark::RegisterBenchmark((name + oursMark).c_str(), std::move(ours));
  benchmark::RegisterBenchmark((name + peerMark).c_str(), std::move(peer));
  Registration added;
  added.row.name = std::move(name);
  added.row.peerName = std::move(peerName);
  added.row.goal = goal;
  registrations().push_back(std::move(added));
}

std::vector<Row> runPairs() {
  Collector collector;
  benchmark::RunSpecifiedBenchmarks(&collector);
  std::vector<Row> rows;
  for (auto & each : registrations()) {
    each.row.ours = median(each.ours);
    each.row.peer = median(each.peer);
    if (each.row.measured())
      rows.push_back(each.row);
  }
  return rows;
}

} // namespace bench
