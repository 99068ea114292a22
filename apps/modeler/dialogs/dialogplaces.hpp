#pragma once
/// \file
/// Where things lie in a dialog, in units of dialogs, so that they grow with the font and the scale of the screen.

#include "sv/control.hpp"
#include "sv/dialog.hpp"
#include "sv/mapmode.hpp"

namespace modeler {

/// From the edges of a dialog, and between what lies in it.
inline constexpr long kDialogMargin = 7;
inline constexpr long kDialogGap = 4;
inline constexpr long kLabelHeight = 8;
inline constexpr long kFieldHeight = 13;
inline constexpr SV::Size kButtonSize = {60, 14};

inline void placeInUnits(SV::Dialog const & dialog, SV::Control & control, SV::Point const & position,
                         SV::Size const & size) {
  SV::Size const corner = dialog.LogicToPixel(SV::Size{position.x, position.y}, SV::MAP_APPFONT);
  control.SetPosSizePixel({corner.width, corner.height}, dialog.LogicToPixel(size, SV::MAP_APPFONT));
}

} // namespace modeler
