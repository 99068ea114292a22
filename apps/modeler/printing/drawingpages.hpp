#pragma once
/// \file
/// A process model on paper, as a drawing.

#include "model/processmodel.hpp"

#include "aprint.hpp"

namespace modeler {

/// How many pages printDrawing prints, on that printer.
int drawingPages(KivPrinter & printer, ProcessModel const & model);

/// The picture in its full size, over as many pages as it takes, row by row.
/// \return false when the printer refuses
bool printDrawing(KivPrinter & printer, ProcessModel const & model);

} // namespace modeler
