#pragma once
/// \file
/// Comparing texts whose lengths are known. Internal: users take the operators of String.
///
/// The runtime's own functions are a call each, and its strcmp goes character by character; sorted sets of long texts
/// with common beginnings, such as paths, feel it.

#include <emmintrin.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace SV::detail {

/// For each of 16 characters 0xFF where both texts have the same, and 0 where they differ.
inline __m128i sameOf16(char const * a, char const * b) {
  return _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<__m128i const *>(a)),
                        _mm_loadu_si128(reinterpret_cast<__m128i const *>(b)));
}
inline bool areSame16(char const * a, char const * b) { return _mm_movemask_epi8(sameOf16(a, b)) == 0xFFFF; }
inline bool areSame64(char const * a, char const * b) {
  __m128i const first = _mm_and_si128(sameOf16(a, b), sameOf16(a + 16, b + 16));
  __m128i const second = _mm_and_si128(sameOf16(a + 32, b + 32), sameOf16(a + 48, b + 48));
  return _mm_movemask_epi8(_mm_and_si128(first, second)) == 0xFFFF;
}

template <class Word> bool isSameWord(char const * a, char const * b) {
  Word x, y;
  std::memcpy(&x, a, sizeof x);
  std::memcpy(&y, b, sizeof y);
  return x == y;
}

/// From as many characters as a word has to twice as many: the second word may reach back into the first.
template <class Word> bool areSameTwoWords(char const * a, char const * b, std::size_t length) {
  std::size_t const second = length - sizeof(Word);
  return isSameWord<Word>(a, b) && isSameWord<Word>(a + second, b + second);
}

inline bool areSameBelow16(char const * a, char const * b, std::size_t length) {
  if (length >= 8)
    return areSameTwoWords<std::uint64_t>(a, b, length);
  if (length >= 4)
    return areSameTwoWords<std::uint32_t>(a, b, length);
  if (length >= 2)
    return areSameTwoWords<std::uint16_t>(a, b, length);
  return length == 0 || *a == *b;
}

/// Whether two texts of \p length characters, NUL or not, are the same; what memcmp answers with 0.
inline bool areSame(char const * a, char const * b, std::size_t length) {
  if (length < 16)
    return areSameBelow16(a, b, length);
  for (; length >= 64; a += 64, b += 64, length -= 64)
    if (!areSame64(a, b))
      return false;
  for (; length >= 16; a += 16, b += 16, length -= 16)
    if (!areSame16(a, b))
      return false;
  std::ptrdiff_t const last = static_cast<std::ptrdiff_t>(length) - 16; // reaches back into what was seen
  return length == 0 || areSame16(a + last, b + last);
}

/// For each of 16 characters 0 where the texts differ or end, and something else where they go on.
inline __m128i goesOnOf16(char const * a, char const * b) {
  return _mm_min_epu8(_mm_loadu_si128(reinterpret_cast<__m128i const *>(a)), sameOf16(a, b));
}
inline __m128i goesOnOf32(char const * a, char const * b) {
  return _mm_min_epu8(goesOnOf16(a, b), goesOnOf16(a + 16, b + 16));
}

/// One bit for each of 16 that are 0.
inline unsigned stopsOf(__m128i goesOn) {
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(goesOn, _mm_setzero_si128())));
}
inline bool goOnFor64(char const * a, char const * b) {
  return stopsOf(_mm_min_epu8(goesOnOf32(a, b), goesOnOf32(a + 32, b + 32))) == 0;
}

inline int differenceAt(char const * a, char const * b, int at) {
  return static_cast<unsigned char>(a[at]) - static_cast<unsigned char>(b[at]);
}

/// What strcmp answers, for texts of which each has \p length characters, NUL or not, and one more behind them.
inline int compareUpToNul(char const * a, char const * b, std::size_t length) {
  for (; length >= 64 && goOnFor64(a, b); a += 64, b += 64)
    length -= 64;
  for (; length >= 16; a += 16, b += 16, length -= 16)
    if (unsigned const stops = stopsOf(goesOnOf16(a, b)); stops != 0)
      return differenceAt(a, b, std::countr_zero(stops));
  for (; length != 0 && *a == *b && *a != '\0'; ++a, ++b)
    --length;
  return differenceAt(a, b, 0);
}

} // namespace SV::detail
