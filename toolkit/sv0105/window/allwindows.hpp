#pragma once
/// \file
/// What is done to all of the toolkit's windows at once.

namespace SV::detail {

/// Closes the windows that are left.
void destroyWindows();

/// Gives the application's font to the windows that have none of their own.
void applyApplicationFont();

} // namespace SV::detail
