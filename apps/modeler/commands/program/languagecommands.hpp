#pragma once
/// \file
/// The choice of the program's language.

#include "background/journal.hpp"
#include "commands/command.hpp"

namespace modeler {

/// One command for each installed language, under its own name, so that a user finds it whatever language is current.
/// \param journal  outlives the commands
/// \param changed  called after each change
Commands languageCommands(Journal & journal, std::function<void()> const & changed);

} // namespace modeler
