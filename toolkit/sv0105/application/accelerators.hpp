#pragma once
/// \file
/// The accelerators in effect.

#include "tools/winapi.hpp"

namespace SV::detail {

/// Offers a key of the event loop to the accelerators, beginning with the one that was inserted last. False if none has handled it.
bool isAccelerator(MSG const & message);

} // namespace SV::detail
