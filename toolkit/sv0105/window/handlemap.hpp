#pragma once
/// \file
/// From the system's windows to the objects of the toolkit.

#include "tools/winapi.hpp"

namespace SV {
class Window;
}

namespace SV::detail {

/// The object of a system window; null for a window that is not the toolkit's.
Window * windowOf(HWND handle);

/// Ties the two together until the system window is gone. Nothing of the system window itself is used for it:
/// GWLP_USERDATA belongs to the program, also in windows of the system's classes.
void remember(HWND handle, Window & window);
void forget(HWND handle);

} // namespace SV::detail
