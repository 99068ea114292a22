#pragma once
/// \file
/// The system's dialog for the printer.

#include "kivara.hpp"

namespace modeler {

/// Lets the user choose a printer and how the paper lies, beginning with the printer of the process, and makes it the printer of the
/// process. Under suppression of dialogs there is nothing to choose.
/// \return false when the user has cancelled it
bool choosePrinter(SV::Window & owner);

} // namespace modeler
