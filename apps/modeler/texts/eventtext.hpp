#pragma once
/// \file
/// What an event looks like to a reader.

#include "kivara.hpp"

namespace modeler {

/// What the event carries besides its type, as a text; empty for an event whose contents are not known.
SV::String eventText(KivEvent const & event);

} // namespace modeler
