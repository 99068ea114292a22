#pragma once
/// \file
/// What both themes draw alike on bars. Internal.

#include "sv/geometry.hpp"

class KivTheme;

namespace SV {
class OutputDevice;
class Window;
} // namespace SV

namespace kivara {

/// How a button is shown.
struct ButtonState {
  bool checked;
  bool hot;
  bool pressed;
};

/// A part of the gradient that runs over all of the device.
void drawBarGradient(KivTheme const & theme, SV::OutputDevice & device, bool vertical, SV::Rectangle const & area);

/// By the visual style "Toolbar"; false without it.
bool drawStyledButton(SV::Window const & window, SV::OutputDevice & device, SV::Rectangle const & area,
                      ButtonState const & state);

/// A framed rectangle, or nothing for a button that is neither checked, hot nor pressed.
void drawButtonByHand(KivTheme const & theme, SV::Window const & window, SV::OutputDevice & device,
                      SV::Rectangle const & area, ButtonState const & state, bool whiteWhenPressed);

} // namespace kivara
