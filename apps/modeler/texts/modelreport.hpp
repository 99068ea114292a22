#pragma once
/// \file
/// What is wrong with the file of a process model, in words.

#include "model/processmodel.hpp"

namespace modeler {

/// A sentence in the current language, with the number of the line; empty when nothing is wrong.
SV::String reportText(ModelReport const & report);

} // namespace modeler
