#pragma once
/// \file
/// Close buttons of captions, as the system draws them and by hand. Internal.

#include "sv/bitmap.hpp"
#include "sv/geometry.hpp"

namespace SV {
class OutputDevice;
}

namespace kivara {

/// By the visual style "Window".
/// \param state  1 usual, 2 hot, 3 pressed
void drawStyledCloseButton(void * theme, SV::OutputDevice & device, SV::Rectangle const & area, int state);

/// The usual one at half strength.
void drawFadedCloseButton(void * theme, SV::OutputDevice & device, SV::Rectangle const & area);

/// A raised or sunken button.
void drawCloseButtonByHand(SV::OutputDevice & device, SV::Rectangle const & area, SV::Bitmap const & cross,
                           bool pressed);

} // namespace kivara
