#pragma once
/// \file
/// In a test program that links fatal_exit.cpp, a call of FatalAppExitA by the library is recorded and returns. The real one
/// shows a box, and the test would hang until the watchdog ends it.

#include <string>
#include <vector>

namespace kivtest {

struct FatalExit {
  unsigned action;
  std::string text;
};

/// The calls since the last take. A test fails that does not take all of them.
std::vector<FatalExit> takeFatalExits();

} // namespace kivtest
