#pragma once
/// \file
/// Where an exception out of the program's handlers ends: the system's code, which has called them, cannot let it pass.

namespace SV::detail {

/// Gives the exception that is being handled to Application::Exception with EXC_HANDLER_FAILED, and its text to a
/// debugger. An exception out of that ends the process.
void reportHandlerFailure() noexcept;

/// Calls what may call a handler of the program. False when an exception has left it.
template <class Call> bool guarded(Call const & call) {
  try {
    call();
    return true;
  } catch (...) {
    reportHandlerFailure();
    return false;
  }
}

} // namespace SV::detail
