#pragma once
/// \file
/// Coordinates that the system computes with. Internal.

#include "sv/geometry.hpp"
#include "tools/winapi.hpp"

#include <algorithm>

namespace SV::detail {

/// The system documents 27 bits, and sums of two must not overflow.
inline constexpr long kFarthest = (1L << 26) - 1;

inline long systemCoordinate(long value) { return std::clamp(value, -kFarthest, kFarthest); }

inline Point systemPoint(Point const & point) { return {systemCoordinate(point.x), systemCoordinate(point.y)}; }

/// With the right and bottom edges outside, as the system counts. What lies farther than the system counts is cut off.
inline RECT systemArea(Rectangle const & rectangle) {
  RECT const area = rectangle.ToSystem();
  return {systemCoordinate(area.left), systemCoordinate(area.top), systemCoordinate(area.right),
          systemCoordinate(area.bottom)};
}

} // namespace SV::detail
