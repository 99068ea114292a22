#pragma once
/// \file
/// The system's code of a call that has just failed.

#include "tools/direntry.hpp"
#include "tools/winapi.hpp"

namespace SV {

/// Never the code of success, even where the system sets none.
inline FSysError lastSystemError() {
  DWORD const code = GetLastError();
  return code != ERROR_SUCCESS ? code : ERROR_GEN_FAILURE;
}

} // namespace SV
