#pragma once
/// \file
/// Replacing what modules import. Internal to the test support.

#include "tools/winapi.hpp"

#include <vector>

namespace support {

/// One function of a DLL, and what is to be called in its place.
struct Replacement {
  char const * name;
  void * function;
};

/// In \p module, each import from \p dll that is named in \p replacements now goes to its function.
void replaceImports(HMODULE module, char const * dll, std::vector<Replacement> const & replacements);

/// The program and those DLLs that lie in its folder.
std::vector<HMODULE> ownModules();

} // namespace support
