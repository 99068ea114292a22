#pragma once
/// \file
/// Sizes that grow with the scale of the screen.

#include "kivara.hpp"
#include "sv/geometry.hpp"

namespace modeler {

/// \param pixels  at 96 dots per inch
inline long scaledAcross(long pixels) {
  return static_cast<long>(static_cast<double>(pixels) * Kiv_GetSystemDPIScaleX());
}
inline long scaledDown(long pixels) {
  return static_cast<long>(static_cast<double>(pixels) * Kiv_GetSystemDPIScaleY());
}
inline SV::Size scaled(SV::Size const & size) { return {scaledAcross(size.width), scaledDown(size.height)}; }

} // namespace modeler
