#pragma once
/// \file
/// The mouse pointer over the toolkit's windows.

namespace SV::detail {

/// Sets the pointer of the present state when it differs from the ordinary one: the hour-glass while waiting, the
/// question mark while help is asked for. False: the pointer is the window's own business.
bool showStatePointer();

/// Brings the pointer in line with a state that has changed.
void updatePointer();

} // namespace SV::detail
