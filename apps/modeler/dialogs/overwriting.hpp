#pragma once
/// \file
/// Files that commands write.

#include "background/journal.hpp"
#include "sv/window.hpp"

#include <functional>

namespace modeler {

/// Writes a file unless it is there already and the user does not agree that it is overwritten. The journal has what became of it, and
/// a box reports a file that cannot be written.
/// \param done   what is done to it, for the journal: "saved"
/// \param write  false when it could not
void writeFile(SV::Window & owner, Journal & journal, SV::String const & done, SV::String const & fileName,
               std::function<bool()> const & write);

} // namespace modeler
