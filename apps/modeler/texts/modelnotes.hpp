#pragma once
/// \file
/// What is shown of a process model besides its picture, in the language of the program.

#include "model/processmodel.hpp"

namespace modeler {

/// How long a node takes; empty when its file says nothing about that.
SV::String durationText(ProcessModel const & model, Node const & node);

/// The name and how long all nodes take.
SV::String headlineOf(ProcessModel const & model);

/// Lines below the headline: the date, and each path with its sum, as far as a screen has room.
ISequence<SV::String> notesOf(ProcessModel const & model);

} // namespace modeler
