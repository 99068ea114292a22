#pragma once
/// \file
/// The system's dialogs for files of models.

#include "sv/window.hpp"

namespace modeler {

/// The file of a model that the user chooses, which is there; empty when none, and where dialogs are suppressed.
SV::String chosenModel(SV::Window & owner);

/// The file that the user chooses to write to; it may be there already.
/// \param kind     what such files are, as text
/// \param ending   without the dot
SV::String chosenTarget(SV::Window & owner, SV::String const & kind, SV::String const & ending);

} // namespace modeler
