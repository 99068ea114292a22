#pragma once
/// \file
/// A fault at a line that is known.

#include <cstdio>

namespace kivtest {

[[gnu::always_inline]] inline void tellLine(int line) {
  std::printf("line %d\n", line);
  std::fflush(stdout);
}

} // namespace kivtest

/// Prints the line in which it stands, and fails there.
#define KIVTEST_FAULT()                                                                                                \
  do {                                                                                                                 \
    kivtest::tellLine(__LINE__);                                                                                       \
    int volatile * volatile nowhere = nullptr;                                                                         \
    *nowhere = 1;                                                                                                      \
  } while (false)
