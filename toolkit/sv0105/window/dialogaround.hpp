#pragma once
/// \file
/// From a window to the dialog that it lies in.

#include "tools/winapi.hpp"

namespace SV {
class Dialog;
}

namespace SV::detail {

/// The dialog that a window lies in, or is; null for none. A dialog that the window's own one lies over does not count.
Dialog * dialogAround(HWND window);

} // namespace SV::detail
