#pragma once
/// \file
/// Units of dialogs: a quarter of the width and an eighth of the height of a character.

#include "sv/geometry.hpp"
#include "tools/winapi.hpp"

namespace SV::detail {

/// The pixels of so many units in a font of the system, as its own dialogs count them.
Size pixelsOfUnits(HFONT font, Size const & units);

} // namespace SV::detail
