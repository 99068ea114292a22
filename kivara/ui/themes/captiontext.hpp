#pragma once
/// \file
/// Texts of captions. Internal.

#include "sv/color.hpp"
#include "sv/geometry.hpp"
#include "tools/string.hpp"

namespace SV {
class OutputDevice;
}

namespace kivara {

/// What a text is drawn in.
struct CaptionColors {
  SV::Color text;
  SV::Color shadow;
  bool hasShadow = true;
};

/// Draws a text that is cut to fit, over its shadow.
void drawCaptionText(SV::OutputDevice & device, SV::Rectangle const & area, SV::String const & text,
                     CaptionColors const & colors);

/// The text itself if it is no wider than \p width in the font of the device; otherwise as much of its beginning as fits
/// with "..." after it, at least "...".
SV::String fittingText(SV::OutputDevice const & device, SV::String const & text, long width);

} // namespace kivara
