#pragma once
/// \file
/// The application font, as the command line sets it.

namespace kivara {

/// The height in use: the requested one from 4 to 48, otherwise 12.
constexpr int fontHeight(int asked) { return asked >= 4 && asked <= 48 ? asked : 12; }

/// The height in pixels on the screen, truncated.
constexpr int fontPixelHeight(int asked, double scale) { return static_cast<int>(scale * fontHeight(asked)); }

/// Builds the font from the command line and the scale of the screen, and installs it.
void installApplicationFont();

} // namespace kivara
