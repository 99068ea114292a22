#pragma once
/// \file
/// Catches exceptions from the program's handlers: they cannot pass through the system's code, which calls the handlers.

namespace SV::detail {

/// Passes the exception that is being handled to Application::Exception as EXC_HANDLER_FAILED, and its text to a debugger. An
/// exception from there ends the process.
void reportHandlerFailure() noexcept;

/// Calls code that may call a handler of the program. False if that has thrown an exception.
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
