#pragma once
/// \file
/// A fatal end of the process, as the library asks for it, in a test program that links fatal_exit.cpp: it is recorded and
/// returns. Its box would wait for someone to press the button until the watchdog ends the test.

#include <string>
#include <vector>

namespace kivtest {

struct FatalExit {
  unsigned action;
  std::string text;
};

/// Those since the last call. A test fails that leaves one here.
std::vector<FatalExit> takeFatalExits();

} // namespace kivtest
