#pragma once
/// \file
/// The error code of the call that has just failed.

#include "tools/direntry.hpp"
#include "tools/winapi.hpp"

namespace SV {

/// The thread's last error; never the code of success, even if the system set none.
inline FSysError lastSystemError() {
  DWORD const code = GetLastError();
  return code != ERROR_SUCCESS ? code : ERROR_GEN_FAILURE;
}

} // namespace SV
