#pragma once
/// \file
/// Whether figures have grown over a run: the second tenth of its samples, when all has been used, is compared with the last one.

#include "figures.hpp"

#include <string>
#include <vector>

namespace endurance {

struct Sample {
  double seconds; ///< since the start
  Figures figures;
};

struct Growth {
  Kind kind;
  double before; ///< the median of the second tenth
  double after;  ///< the median of the last one
  double allowed;

  bool isTooMuch() const { return after - before > allowed; }
};

/// How much a figure may grow without being taken for a leak.
double allowedGrowth(Kind kind);

/// A row for each kind of figure.
/// \throws std::runtime_error for less than ten samples
std::vector<Growth> growthIn(std::vector<Sample> const & samples);

/// Its time and its figures, with commas between them.
std::string asLine(Sample const & sample);

/// The rows as a table, with what has grown too much marked.
std::string tableOf(std::vector<Growth> const & rows);

} // namespace endurance
