#pragma once
/// \file
/// From the system's keys to the toolkit's.

#include "sv/keycodes.hpp"
#include "tools/winapi.hpp"

namespace SV::detail {

/// The code of a virtual key; 0 where it has none.
KeyCode codeOfKey(WPARAM virtualKey);

/// The keys that are held along with the present message.
KeyCode heldModifiers();

} // namespace SV::detail
