#pragma once
/// \file
/// The list of the open windows.

#include "commands/command.hpp"
#include "sv/mdi.hpp"

namespace modeler {

/// One command for each of the first nine windows, which brings it to the front; that of the window in front is checked.
/// \param frame  outlives the commands
Commands windowListCommands(SV::MDIFrame & frame);

} // namespace modeler
