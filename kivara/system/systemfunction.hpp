#pragma once
/// \file
/// Functions of the system that are seldom needed. Internal.

#include "tools/winapi.hpp"

namespace kivara {

/// Loads a DLL of the system, for the rest of the process, and finds a function in it.
/// \return null where the system has no such DLL or function
template <class Function> Function * systemFunction(char const * library, char const * name) {
  HMODULE const module = LoadLibraryExA(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (module == nullptr)
    return nullptr;
  return reinterpret_cast<Function *>(reinterpret_cast<void *>(GetProcAddress(module, name)));
}

} // namespace kivara
