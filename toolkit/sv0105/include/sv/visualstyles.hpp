#pragma once
/// \file
/// CVisualStylesXP: the visual styles of the system.

#include "sv/export.hpp"
#include "sv/geometry.hpp"
#include "tools/string.hpp"

namespace SV {

/// The look that the user has chosen, for drawing parts of controls as the system draws them. All of it is static; the
/// system's library is loaded by the first call. Main thread.
///
/// \code
///   if (void * const theme = SV::CVisualStylesXP::OpenThemeData(window.GethWnd(), "Button")) {
///     SV::DrawingScope const scope(window);
///     SV::CVisualStylesXP::DrawThemeBackground(theme, window.GethDC(), 3, 1, {{1, 1}, {13, 13}});
///     SV::CVisualStylesXP::CloseThemeData(theme);
///   }
/// \endcode
class SV_API CVisualStylesXP {
public:
  /// Whether the program is drawn with visual styles at this moment.
  static bool IsAppThemed();

  /// A handle for the parts of a class such as "Button", which CloseThemeData gives back.
  /// \param window   null for parts of no window
  /// \param classes  a name, or several parted by ";", of which the first one that the style has counts
  /// \return null without visual styles, and when the style has none of the classes
  static void * OpenThemeData(HWND window, String const & classes);

  /// False for null and for what is no handle.
  static bool CloseThemeData(void * theme);

  /// Draws a part in a state, by the numbers of the system, into \p area in pixels.
  /// \return false for null, and when the style has no such part
  static bool DrawThemeBackground(void * theme, HDC device, int part, int state, Rectangle const & area);
};

} // namespace SV
