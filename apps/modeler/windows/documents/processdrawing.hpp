#pragma once
/// \file
/// The picture of a process model.

#include "model/layout/layout.hpp"
#include "sv/outputdevice.hpp"

namespace modeler {

/// Colours of the picture, as texts of acolor.hpp.
inline constexpr char kPaper[] = "#fcfcfa";
inline constexpr char kInk[] = "#26343f";

/// Draws boxes, arrows and labels with the device's font, as far as they may touch \p area.
/// \param font  the one that the layout was measured with
void drawProcess(SV::OutputDevice & device, SV::Font const & font, Layout const & layout, SV::Rectangle const & area);

} // namespace modeler
