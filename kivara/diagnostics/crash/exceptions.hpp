#pragma once
/// \file
/// What an exception is called and where it happened. Internal.

#include <cstdint>

namespace kivara::crash {

/// The name of an exception of Windows ("ACCESS_VIOLATION"); for any other code the system's text, which may be empty. It is
/// valid until the next call.
char const * exceptionName(unsigned long code);

/// A place in a module.
struct FaultLocation {
  char module[8] = "";      ///< the first seven characters of the path
  unsigned section = 0;     ///< from 1; 0: unknown
  std::uint32_t offset = 0; ///< in the section
};

/// Finds the module and the section that the address lies in. What cannot be found is reported in the report file.
FaultLocation locateFault(void const * address);

} // namespace kivara::crash
