#include "growth.hpp"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace endurance {
namespace {

constexpr std::size_t kFewestSamples = 10;

/// The median of one figure: a single sample may see what the system is about to give back.
double medianOf(std::vector<Sample> const & samples, Kind kind, std::size_t from, std::size_t to) {
  std::vector<double> values;
  for (std::size_t i = from; i < to; ++i)
    values.push_back(samples[i].figures[kind]);
  auto const middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

} // namespace

double allowedGrowth(Kind kind) {
  switch (kind) {
  case kHandles: return 6;            // what the system's own pool of threads opens and closes on its own
  case kThreads: return 3;            // that pool
  case kDrawingObjects: return 6;     // fonts and brushes that the system keeps for itself
  case kWindowObjects: return 4;      // a window of the system's for its input methods
  case kHeapBlocks: return 50;        // the system's caches: names, fonts, security descriptors
  case kHeapBytes: return 128 * 1024; // the same, and buffers that have grown to their largest use
  case kPrivateBytes: return 8 << 20; // pages that the heap keeps, and the system's own caches outside of it
  default: return 0;                  // files are ours alone
  }
}

std::vector<Growth> growthIn(std::vector<Sample> const & samples) {
  if (samples.size() < kFewestSamples)
    throw std::runtime_error("there are too few samples: the machine is too busy for so short a run");
  std::size_t const tenth = samples.size() / 10;
  std::vector<Growth> rows;
  for (int i = 0; i < kKinds; ++i) {
    auto const kind = static_cast<Kind>(i);
    rows.push_back({kind, medianOf(samples, kind, tenth, 2 * tenth),
                    medianOf(samples, kind, samples.size() - tenth, samples.size()), allowedGrowth(kind)});
  }
  return rows;
}

std::string asLine(Sample const & sample) {
  std::string line = std::to_string(sample.seconds);
  for (double const figure : sample.figures)
    line += ',' + std::to_string(static_cast<long long>(figure));
  return line + '\n';
}

std::string tableOf(std::vector<Growth> const & rows) {
  std::string table = "figure         second tenth    last tenth     more   allowed\n";
  for (Growth const & row : rows) {
    char line[160];
    std::snprintf(line, sizeof line, "%-14s %12.0f %13.0f %8.0f %9.0f%s\n", nameOf(row.kind), row.before, row.after,
                  row.after - row.before, row.allowed, row.isTooMuch() ? "   GREW" : "");
    table += line;
  }
  return table;
}

} // namespace endurance
