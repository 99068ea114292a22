#pragma once
/// \file
/// Writes a process model as a text.

#include "model/processmodel.hpp"

namespace modeler {

/// Writes what readProcessModel reads, in the words of the current language. A file of that name is replaced.
/// \return false for a file that cannot be written, which may then be cut off
bool writeProcessModel(SV::String const & fileName, ProcessModel const & model);

} // namespace modeler
