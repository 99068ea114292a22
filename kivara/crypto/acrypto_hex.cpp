// Hexadecimal digits, as results of KivCryptoUtils.

#include "acrypto.hpp"

#include "crypto/cryptoresult.hpp"
#include "crypto/hexdigits.hpp"
#include "crypto/textlength.hpp"

#include <emmintrin.h>

using namespace kivara::crypto;

namespace {

constexpr std::size_t kPairsAtOnce = 8;

__m128i below(__m128i bytes, char end) {
  return _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(static_cast<char>(end - 1))), bytes);
}

/// Reads eight pairs; false if one of their characters is not a digit.
bool readEightPairs(char const * text, unsigned char * out) {
  __m128i const characters = _mm_loadu_si128(reinterpret_cast<__m128i const *>(text));
  __m128i const digits = _mm_sub_epi8(characters, _mm_set1_epi8('0'));
  __m128i const letters = _mm_sub_epi8(_mm_or_si128(characters, _mm_set1_epi8(0x20)), _mm_set1_epi8('a'));
  __m128i const areDigits = below(digits, 10);
  __m128i const areLetters = below(letters, 6);
  if (_mm_movemask_epi8(_mm_or_si128(areDigits, areLetters)) != 0xffff)
    return false;
  __m128i const values = _mm_or_si128(_mm_and_si128(areDigits, digits),
                                      _mm_and_si128(areLetters, _mm_add_epi8(letters, _mm_set1_epi8(10))));
  __m128i const joined =
      _mm_and_si128(_mm_or_si128(_mm_slli_epi16(values, 4), _mm_srli_epi16(values, 8)), _mm_set1_epi16(0xff));
  _mm_storel_epi64(reinterpret_cast<__m128i *>(out), _mm_packus_epi16(joined, joined));
  return true;
}

/// Reads that many pairs; false at the first character that is not a digit.
bool readPairs(char const * text, std::size_t count, unsigned char * out) {
  for (; count >= kPairsAtOnce; count -= kPairsAtOnce, text += kPairsAtOnce * 2, out += kPairsAtOnce)
    if (!readEightPairs(text, out))
      return false;
  for (; count != 0; --count, text += 2, ++out) {
    int const first = kivara::hex::digitAt(text[0]);
    int const second = kivara::hex::digitAt(text[1]);
    if (first < 0 || second < 0)
      return false;
    *out = static_cast<unsigned char>(first << 4 | second);
  }
  return true;
}

} // namespace

std::pair<char *, int> KivCryptoUtils::HexEncode(unsigned char const * data, int length) {
  if (data == nullptr || length < 0)
    return {nullptr, kBadArgument};
  std::size_t const characters = static_cast<std::size_t>(length) * 2;
  auto text = newBuffer<char>(characters);
  if (text == nullptr)
    return {nullptr, kFailed};
  *kivara::hex::write(data, static_cast<std::size_t>(length), text.get(), kivara::hex::kUpper) = '\0';
  return result(text, characters);
}

std::pair<unsigned char *, int> KivCryptoUtils::HexDecode(char const * text) {
  std::size_t const characters = text != nullptr ? textLength(text) : 0;
  if (text == nullptr || characters % 2 != 0)
    return {nullptr, kBadArgument};
  std::size_t const bytes = characters / 2;
  auto data = newBuffer<unsigned char>(bytes);
  if (data == nullptr || !readPairs(text, bytes, data.get()))
    return {nullptr, kFailed};
  return result(data, bytes);
}
