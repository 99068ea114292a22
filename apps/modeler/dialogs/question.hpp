#pragma once
/// \file
/// Questions to the user.

#include "sv/messbox.hpp"

namespace modeler {

/// Asks a question whose buttons are in the language of the program: those of the library are in that of the system.
/// \param standard  the button that Return presses: SV::WB_DEF_YES or SV::WB_DEF_NO
/// \return whether the answer is yes; false where dialogs are suppressed
bool agrees(SV::Window & owner, SV::String const & question, SV::WinBits standard);

} // namespace modeler
