#pragma once
/// \file
/// A short run of the endurance program.

#include "support/processes/child_process.hpp"

#include <gtest/gtest.h>

#include <string>

namespace endurancetest {

inline support::ProgramResult run(std::string const & words) {
  constexpr double kSeconds = 220; // less than a test may take
  return support::runProgram({.program = "endurance", .arguments = words}, kSeconds);
}

inline bool holds(support::ProgramResult const & result, std::string const & text) {
  return result.output.find(text) != std::string::npos;
}

} // namespace endurancetest
