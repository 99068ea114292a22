#pragma once
/// \file
/// Comparing texts whose lengths are known. Internal: users take the operators of String.

#include <emmintrin.h>

#include <bit>
#include <cstddef>

namespace SV::detail {

/// Where two runs of 16 characters differ or hold a NUL: one bit each.
inline unsigned stopsOf16(char const * a, char const * b) {
  __m128i const x = _mm_loadu_si128(reinterpret_cast<__m128i const *>(a));
  __m128i const y = _mm_loadu_si128(reinterpret_cast<__m128i const *>(b));
  __m128i const goesOn = _mm_min_epu8(x, _mm_cmpeq_epi8(x, y)); // 0 where they differ or end
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(goesOn, _mm_setzero_si128())));
}

/// What strcmp answers, for texts of which each has \p length characters, NUL or not, and one more behind them. The
/// runtime's own goes character by character; sorted sets of long texts with common beginnings, such as paths, feel it.
inline int compareUpToNul(char const * a, char const * b, std::size_t length) {
  std::size_t at = 0;
  unsigned stops = 0;
  while (stops == 0 && length - at >= 16) {
    stops = stopsOf16(a + at, b + at);
    at += stops != 0 ? static_cast<std::size_t>(std::countr_zero(stops)) : 16;
  }
  while (stops == 0 && at < length && a[at] == b[at] && a[at] != '\0')
    ++at;
  return static_cast<unsigned char>(a[at]) - static_cast<unsigned char>(b[at]);
}

} // namespace SV::detail
