#pragma once
/// \file
/// Where the files of a crash lie. Internal.

#include <cstddef>

namespace kivara::crash {

/// The longest path, with its NUL.
inline constexpr std::size_t kPathSize = 260;

struct Paths {
  char report[kPathSize];             ///< the text report of this program, in the temporary folder
  char dumpBase[kPathSize];           ///< the same without ".log": what the names of a crash's own files begin with
  char moduleDirectory[kPathSize];    ///< the program's folder with its backslash, or "."
  char temporaryDirectory[kPathSize]; ///< as the system gives it, or "."
};

/// Asks the system. A name that is too long is cut.
void findPaths(Paths & paths);

} // namespace kivara::crash
