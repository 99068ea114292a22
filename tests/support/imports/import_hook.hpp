#pragma once
/// \file
/// Replacing what modules import. Internal to the test support.

#include "tools/winapi.hpp"

#include <functional>
#include <string_view>
#include <vector>

namespace support {

/// One function of a DLL, and what is to be called in its place.
struct Replacement {
  char const * name;
  void * function;
};

/// In \p module, each import from \p dll that is named in \p replacements now goes to its function. From a DLL that the
/// module loads late those go there that it has not called yet, and those that it asks GetProcAddress for.
void replaceImports(HMODULE module, char const * dll, std::vector<Replacement> const & replacements);

/// Given a function that a module has asked for by name, what it receives in place of it.
using LateImport = std::function<void *(HMODULE library, std::string_view name, void * function)>;

/// From now on what \p module gets from GetProcAddress goes through \p exchange, and so do the functions of DLLs that it
/// loads late, once each, at the first call.
void watchLateImports(HMODULE module, LateImport exchange);

/// The program and those DLLs that lie in its folder.
std::vector<HMODULE> ownModules();

} // namespace support
