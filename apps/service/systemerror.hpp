#pragma once
/// \file
/// Errors of the system, in words.

#include "tools/string.hpp"

namespace service {

/// "system error 5 (Access is denied)": the number, and the system's text for it where the system has one.
SV::String systemError(int error);

} // namespace service
