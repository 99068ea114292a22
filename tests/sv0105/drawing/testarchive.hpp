#pragma once
/// \file
/// Zip archives and PNG pictures, byte by byte, sound ones and such as no program would write.

#include "sv/geometry.hpp"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace svtest {

/// A file in an archive. What the archive says of it may differ from what it is.
struct Packed {
  std::string name;
  std::string content;
  bool compressed = true;
  std::uint16_t flags = 0;
  std::uint16_t method = 0xFFFF; ///< 0xFFFF: the one that it is packed by
  std::uint32_t statedSize = 0;  ///< 0: the true one
  std::uint32_t checkSumError = 0;
};

std::string zipOf(std::vector<Packed> const & files);

/// 0xAARRGGBB at a place.
using Painter = std::function<std::uint32_t(long x, long y)>;

/// A picture with a fourth channel.
std::string pngOf(SV::Size const & size, Painter const & painter);

/// A picture without one, grey in 8 bits.
std::string grayPngOf(SV::Size const & size, unsigned char gray);

/// The same picture with another size in its header, whose check sum holds.
std::string withStatedSize(std::string png, std::uint32_t width, std::uint32_t height);

} // namespace svtest
