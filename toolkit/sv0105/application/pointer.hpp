#pragma once
/// \file
/// The mouse pointer over the toolkit's windows.

namespace SV::detail {

/// Sets the pointer of the current state if it is a special one: the hour-glass while waiting, the question mark during extended
/// help. False if the window chooses its pointer.
bool showStatePointer();

/// Updates the pointer after a change of the state.
void updatePointer();

} // namespace SV::detail
