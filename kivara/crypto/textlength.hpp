#pragma once
/// \file
/// The length of long strings: some runtimes check one character at a time, which takes longer than decoding the string.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <emmintrin.h>

namespace kivara::crypto {

/// One bit for each NUL among the 16 characters.
inline unsigned nulsAmong(__m128i const * characters) {
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(_mm_load_si128(characters), _mm_setzero_si128())));
}

/// As strlen. It reads 16 aligned bytes at a time, which are always in one page.
inline std::size_t textLength(char const * text) {
  std::size_t const before = reinterpret_cast<std::uintptr_t>(text) % sizeof(__m128i);
  auto const * sixteen = reinterpret_cast<__m128i const *>(text - before);
  unsigned nuls = nulsAmong(sixteen) >> before;
  if (nuls != 0)
    return static_cast<std::size_t>(std::countr_zero(nuls));
  do
    nuls = nulsAmong(++sixteen);
  while (nuls == 0);
  return static_cast<std::size_t>(reinterpret_cast<char const *>(sixteen) - text + std::countr_zero(nuls));
}

} // namespace kivara::crypto
