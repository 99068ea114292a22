#pragma once
/// \file
/// The toolkit's windows as a whole.

namespace SV::detail {

/// Registers the window classes; false when the system refuses one.
bool registerWindowClasses();
void unregisterWindowClasses();

/// Closes the windows that are left.
void destroyWindows();

/// Gives the application's font to the windows that have none of their own.
void applyApplicationFont();

} // namespace SV::detail
