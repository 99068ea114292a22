#pragma once
/// \file
/// Pictures in the PNG format. Internal.

#include "sv/image.hpp"

#include <cstddef>
#include <span>

namespace SV::detail {

inline constexpr std::size_t kPngHeaderSize = 24; ///< up to width and height
inline constexpr std::size_t kLargestPng = 4 * 1024 * 1024;

/// Whether the bytes, of which there are kPngHeaderSize, begin a PNG picture of 1 to 4,096 pixels a side.
bool isSizeAllowed(std::span<std::byte const> header);

/// The picture; empty when it is damaged. The size has been tested.
Image decodePng(std::span<std::byte const> file);

} // namespace SV::detail
