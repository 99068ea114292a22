#pragma once
/// \file
/// The way of a message from the queue to its window.

#include "tools/winapi.hpp"

namespace SV::detail {

/// Help, accelerators, dialogs and MDI keys are asked in this order, before the window gets it.
void dispatch(MSG & message);

/// Dispatches until \p ended, which a handler sets, or until the window is gone. A Quit is left to the loop outside.
void dispatchUntil(bool const & ended, HWND window);

} // namespace SV::detail
