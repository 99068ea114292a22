#include "application/guard.hpp"

#include "application/toolkit.hpp"

#include <exception>

namespace SV::detail {
namespace {

void tellDebugger(char const * what) {
  OutputDebugStringA("SV0105: an exception has left a handler: ");
  OutputDebugStringA(what);
  OutputDebugStringA("\n");
}

} // namespace

void reportHandlerFailure() noexcept {
  try {
    throw;
  } catch (std::exception const & exception) {
    tellDebugger(exception.what());
  } catch (...) {
    tellDebugger("of an unknown type");
  }
  raiseException(EXC_HANDLER_FAILED, 0);
}

} // namespace SV::detail
