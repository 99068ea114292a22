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

/// Prints the line in which it stands, and fails there: by an instruction in which no checker sees the fault coming.
#define KIVTEST_FAULT()                                                                                                \
  do {                                                                                                                 \
    kivtest::tellLine(__LINE__);                                                                                       \
    __asm__ volatile("movb $1, (%0)" : : "r"(nullptr) : "memory");                                                     \
  } while (false)
