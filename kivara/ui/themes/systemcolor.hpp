#pragma once
/// \file
/// Colours of the system that have no number of the toolkit. Internal.

#include "sv/color.hpp"
#include "tools/winapi.hpp"

namespace kivara {

/// \param index  COLOR_CAPTIONTEXT and so on
inline SV::Color systemColor(int index) {
  SV::Color color;
  color.SetRGB(GetSysColor(index));
  return color;
}

} // namespace kivara
