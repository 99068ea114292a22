#pragma once
/// \file
/// A library of the system that is needed for a moment, and may be missing. Internal.

#include "adll.hpp"

namespace kivara {

/// Loaded as long as this object lives; the debug output shows it coming and going.
class SystemLibrary : private KivDLLLoader {
public:
  explicit SystemLibrary(char const * file) { load(file); }

  /// Null where the library or the function is missing.
  template <class Function> Function * function(char const * name) {
    return isLoaded() ? reinterpret_cast<Function *>(_getGenericFunctionPtr(name)) : nullptr;
  }
};

} // namespace kivara
