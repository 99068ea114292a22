#pragma once
/// \file
/// Internal: tables by which texts are converted byte by byte.

#include "tools/string.hpp"

#include <array>
#include <cstdint>
#include <stdexcept>

namespace kivara {

/// How many characters each byte becomes.
using ConvertedSizes = std::array<std::int32_t, 256>;

inline unsigned char const * bytesOf(SV::String const & text) {
  return reinterpret_cast<unsigned char const *>(text.c_str());
}

/// The length of a converted text as a String can have it. Checked before anything is allocated by it.
inline std::int32_t checkedLength(std::int64_t length) {
  if (length > SV::STRING_MAXLEN)
    throw std::length_error("a converted text is too long");
  return static_cast<std::int32_t>(length);
}

} // namespace kivara
