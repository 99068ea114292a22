#pragma once
/// \file
/// What a process takes in its calendar, in the language of the program.

#include "model/processmodel.hpp"

namespace modeler {

/// Lines of up to three texts: the model and its calendar, the shortest path and the longest one with their times, and each path with its
/// own; what cannot be computed, in a sentence.
ISequence<ISequence<SV::String>> timesReport(ProcessModel const & model);

/// A time as the library writes it; for one beyond the largest number, that it is.
SV::String pathTimeText(KivCoreTime time);

} // namespace modeler
