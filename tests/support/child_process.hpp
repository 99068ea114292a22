#pragma once
/// \file
/// Child programs of tests.

#include <string>

namespace support {

/// How a child ended.
struct ChildResult {
  unsigned long exitCode; ///< kChildTimedOut when it was ended here
  std::string output;     ///< stdout and stderr together, line ends as written
};

/// Exit code of a child that did not end in time.
inline constexpr unsigned long kChildTimedOut = 0xC000013Au;

/// Runs a program from the folder of the running one, waits for its end and gives what it wrote.
/// \param program    file name, such as "misbehave.exe"
/// \param arguments  the rest of its command line
/// \param seconds    how long it may take; then it is ended
/// A program that can't be started is a failed test and gives the exit code -1.
ChildResult runChild(std::string const & program, std::string const & arguments, unsigned seconds = 60);

} // namespace support
