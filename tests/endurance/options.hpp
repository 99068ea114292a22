#pragma once
/// \file
/// What the words of the command line ask of an endurance run.

#include <set>
#include <string>

namespace endurance {

struct Options {
  double seconds = 600;
  std::set<std::string> only; ///< names of activities; empty: all
  std::set<std::string> without;
  std::string samples; ///< the file that gets all samples; empty: none
  std::string leak;    ///< what is to be lost on purpose; empty: nothing

  bool wants(std::string const & activity) const {
    return (only.empty() || only.contains(activity)) && !without.contains(activity);
  }
};

/// \throws std::runtime_error for words that mean nothing
Options readOptions(int count, char ** words);

} // namespace endurance
