#pragma once
/// \file
/// The application font: what the start-up makes of the wishes on the command line.

namespace kivara {

/// The height that is taken: 4 to 48 as asked, 12 for any other wish.
constexpr int fontHeight(int asked) { return asked >= 4 && asked <= 48 ? asked : 12; }

/// The height in pixels of the screen, truncated.
constexpr int fontPixelHeight(int asked, double scale) { return static_cast<int>(scale * fontHeight(asked)); }

/// Builds the font from the command line and the screen, and installs it.
void installApplicationFont();

} // namespace kivara
