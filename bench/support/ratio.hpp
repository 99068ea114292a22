#pragma once
/// \file
/// Pairs of benchmarks: an operation of ours and the peer that does the same, measured in one process.
///
/// \code
///   bench::Pair const copy{"String: copy 64 characters", bench::atMost(1.0 / 3),
///                          [](benchmark::State & state) { for (auto _ : state) ... },
///                          "std::string", [](benchmark::State & state) { for (auto _ : state) ... }};
/// \endcode

#include <benchmark/benchmark.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace bench {

using Body = std::function<void(benchmark::State &)>;

/// The most that our time may be, as a multiple of the peer's; none for a pair that is only shown.
struct Goal {
  std::optional<double> most;
};
inline Goal atMost(double ratio) { return {ratio}; }
/// At least \p times as fast as the peer.
inline Goal timesAsFast(double times) { return {1.0 / times}; }
inline Goal shown() { return {}; }

/// Registers both bodies. Objects of static lifetime; the name is unique.
class Pair {
public:
  Pair(std::string name, Goal goal, Body ours, std::string peerName, Body peer);
};

/// One line of the table: the medians of all repetitions, in nanoseconds of real time per iteration.
struct Row {
  std::string name;
  std::string peerName;
  Goal goal;
  double ours = 0;
  double peer = 0;

  bool measured() const { return ours > 0 && peer > 0; }
  double ratio() const { return ours / peer; }
  bool met() const { return !goal.most || ratio() <= *goal.most; }
};

/// Runs what the filter of the command line selects and gives a row for each pair of which both sides ran.
std::vector<Row> runPairs();

} // namespace bench
