#pragma once
/// \file
/// Texts longer than the system draws at once. Internal.

#include "sv/geometry.hpp"
#include "tools/string.hpp"
#include "tools/winapi.hpp"

namespace SV::detail {

/// Draws the text in the font of the context; what would begin beyond the context's right edge is left out.
void drawPieces(HDC context, Point const & position, String const & text);

/// In pixels; a width beyond 31 bits is the largest of them.
Size measurePieces(HDC context, String const & text);

} // namespace SV::detail
