#pragma once
/// \file
/// The choice of the program's look.

#include "background/settings.hpp"
#include "commands/command.hpp"

namespace modeler {

/// One command for each theme, and one for the system's visual styles.
/// \param settings  outlives the commands
Commands lookCommands(Settings const & settings);

} // namespace modeler
