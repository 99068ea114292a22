#pragma once
/// \file
/// A process model on paper, as lines of text.

#include "model/processmodel.hpp"

#include "aprint.hpp"

namespace modeler {

/// Name, notes, nodes with their durations, and what follows them.
ISequence<SV::String> linesOf(ProcessModel const & model);

/// How many pages printText prints, on that printer.
int textPages(KivPrinter & printer, ProcessModel const & model);

/// On the printer of the process.
/// \return false when the printer refuses, or there is none
bool printText(ProcessModel const & model);

} // namespace modeler
