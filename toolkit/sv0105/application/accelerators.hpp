#pragma once
/// \file
/// The accelerators in effect.

#include "tools/winapi.hpp"

namespace SV::detail {

/// Has the accelerators answer a key of the event loop, the one that was inserted last first. False: none has.
bool isAccelerator(MSG const & message);

} // namespace SV::detail
