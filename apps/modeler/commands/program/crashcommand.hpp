#pragma once
/// \file
/// A crash on demand, to try what support gets of one.

#include "background/journal.hpp"
#include "commands/command.hpp"

#include "sv/window.hpp"

namespace modeler {

/// Asks first. Then the program fails: docs/crash-reports.md has what it leaves, docs/kivcrash.md the way to the line of source.
/// \param frame, journal  outlive the command
Command crashCommand(SV::Window & frame, Journal & journal);

} // namespace modeler
