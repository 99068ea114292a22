#pragma once
/// \file
/// Where a window comes up.

#include "sv/geometry.hpp"
#include "tools/winapi.hpp"

namespace SV::detail {

/// The position at which a window lies in the middle of another one; of the screen when that is null or not to be seen.
Point centredPosition(HWND window, HWND over);

/// The position nearest to \p position at which a window of that size lies inside of the screen that is nearest, beside
/// the task bar. One that is too large keeps its upper left corner on the screen.
Point insideScreen(Point const & position, Size const & size);

} // namespace SV::detail
