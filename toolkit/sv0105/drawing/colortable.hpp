#pragma once
/// \file
/// Pictures whose pixels are numbers of colours. Internal.

#include "tools/winapi.hpp"

#include <array>

namespace SV::detail {

/// What describes a picture of any depth to the system.
struct PictureLayout {
  BITMAPINFOHEADER header;
  std::array<RGBQUAD, 256> colors;
};

/// \param depth  1, 4, 8, 16, 24 or 32; up to 8 with the colours that such pictures have here
PictureLayout pictureLayout(LONG width, LONG height, WORD depth);

} // namespace SV::detail
