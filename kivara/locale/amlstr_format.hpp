#pragma once
/// \file
/// The format of kivml.dll, for the reader and the packer. Internal.

#include "fixed_values.hpp"

#include <cstdint>

namespace kivara::mlfile {

inline constexpr std::uint32_t kMagic = 0x0C1B0C1B;
inline constexpr std::uint32_t kVersion = 0x39000;
inline constexpr unsigned char kMask = fixed::kStringMask;
inline constexpr char kFileName[] = "kivml.dll";

} // namespace kivara::mlfile
