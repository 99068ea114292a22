#pragma once
/// \file
/// Programs that lie beside the benchmarks, run to their end.

#include "support/ratio.hpp"

#include <string>

namespace bench {

/// The command line of a program that lies beside this one.
std::string commandOf(std::string const & program, std::string const & arguments);

/// Runs it to its end.
/// \param folder  its working folder; empty for that of this process
/// \return its exit code; -1 when it could not be started
long runProgram(std::string command, std::string const & folder = "");

/// A program that ends with 0, from its start to its exit.
Body wholeProcess(std::string const & program, std::string const & arguments);

} // namespace bench
