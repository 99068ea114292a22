#pragma once
/// \file
/// System functions that are rarely needed. Internal.

#include "tools/winapi.hpp"

namespace kivara {

/// Finds a function in a DLL of the system, which is loaded and stays loaded for the rest of the process.
/// \return null if the system has no such DLL or function
template <class Function> Function * systemFunction(char const * library, char const * name) {
  HMODULE const module = LoadLibraryExA(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (module == nullptr)
    return nullptr;
  return reinterpret_cast<Function *>(reinterpret_cast<void *>(GetProcAddress(module, name)));
}

} // namespace kivara
