#pragma once
/// \file
/// Passing a message from the queue to its window.

#include "tools/winapi.hpp"

namespace SV::detail {

/// Help, accelerators, dialogs and MDI keys get the message in this order, before the window does.
void dispatch(MSG & message);

/// Dispatches until a handler sets \p ended or the window is gone. A Quit is left to the outer loop.
void dispatchUntil(bool const & ended, HWND window);

} // namespace SV::detail
