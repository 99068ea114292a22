#pragma once
/// \file
/// Drawing at half strength. Internal.

#include "sv/geometry.hpp"

struct HDC__;
typedef struct HDC__ * HDC;

namespace kivara {

/// Lays the upper left corner of \p source over an area of \p target, whose pixels count for the other half.
void blendHalf(HDC target, SV::Rectangle const & area, HDC source);

} // namespace kivara
