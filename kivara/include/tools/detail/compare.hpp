#pragma once
/// \file
/// Comparing strings of known length. Internal: users have the operators of String.
///
/// Each of the runtime's functions costs a call, and its strcmp goes character by character. That is noticeable in sorted
/// sets of long strings with a common beginning, such as paths.

#include <emmintrin.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace SV::detail {

/// For each of 16 characters: 0xFF if both strings have the same one, 0 if they differ.
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

/// For lengths from one word to two: the second word may overlap the first.
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

/// Whether two strings of \p length characters, NULs included, are the same: memcmp would return 0.
inline bool areSame(char const * a, char const * b, std::size_t length) {
  if (length < 16)
    return areSameBelow16(a, b, length);
  for (; length >= 64; a += 64, b += 64, length -= 64)
    if (!areSame64(a, b))
      return false;
  for (; length >= 16; a += 16, b += 16, length -= 16)
    if (!areSame16(a, b))
      return false;
  std::ptrdiff_t const last = static_cast<std::ptrdiff_t>(length) - 16; // overlaps what was compared already
  return length == 0 || areSame16(a + last, b + last);
}

/// For each of 16 characters: 0 if the strings differ or end there, otherwise not 0.
inline __m128i goesOnOf16(char const * a, char const * b) {
  return _mm_min_epu8(_mm_loadu_si128(reinterpret_cast<__m128i const *>(a)), sameOf16(a, b));
}
inline __m128i goesOnOf32(char const * a, char const * b) {
  return _mm_min_epu8(goesOnOf16(a, b), goesOnOf16(a + 16, b + 16));
}

/// A bit for each of the 16 that is 0.
inline unsigned stopsOf(__m128i goesOn) {
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(goesOn, _mm_setzero_si128())));
}
inline bool goOnFor64(char const * a, char const * b) {
  return stopsOf(_mm_min_epu8(goesOnOf32(a, b), goesOnOf32(a + 32, b + 32))) == 0;
}

inline int differenceAt(char const * a, char const * b, int at) {
  return static_cast<unsigned char>(a[at]) - static_cast<unsigned char>(b[at]);
}

/// The result of strcmp for two strings that each have at least \p length characters, NULs included, and one more after them.
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
