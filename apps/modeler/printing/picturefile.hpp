#pragma once
/// \file
/// The drawing of a process model as a picture in a file.

#include "model/layout/layout.hpp"
#include "sv/font.hpp"

namespace modeler {

/// Writes a bitmap file (BMP, 24 bits a pixel) with all of the drawing in its full size. A file of that name is replaced.
/// \param font, layout  what the drawing was measured with, and where its parts stand
/// \return false for a file that cannot be written, which may then be cut off, and for a drawing beyond what such a file can hold
bool writePicture(SV::String const & fileName, SV::Font const & font, Layout const & layout);

} // namespace modeler
