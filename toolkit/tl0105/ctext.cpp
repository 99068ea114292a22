#include "tools/ctext.hpp"

#include "tools/detail/text_block.hpp"

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <cwchar>

namespace SV {
namespace {

char const * orEmpty(char const * text) { return text != nullptr ? text : ""; }

std::int32_t clipped(std::size_t length) {
  return static_cast<std::int32_t>(std::min<std::size_t>(length, STRING_MAXLEN));
}

/// A bit for each of 16 characters that is a NUL. Their address is a multiple of 16, so they are all in one page: if one of
/// them can be read, all can.
unsigned nulsOf16(char const * aligned) {
  __m128i const characters = _mm_load_si128(reinterpret_cast<__m128i const *>(aligned));
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(characters, _mm_setzero_si128())));
}

/// strlen. The runtime's goes character by character; for a string of 1,000 that takes longer than allocating and copying it.
std::size_t lengthToNul(char const * text) {
  auto const before = reinterpret_cast<std::uintptr_t>(text) % 16;
  char const * at = text - before;
  unsigned nuls = nulsOf16(at) >> before << before;
  while (nuls == 0)
    nuls = nulsOf16(at += 16);
  return static_cast<std::size_t>(at + std::countr_zero(nuls) - text);
}

char * eachChar(char * text, std::int32_t length, int (*change)(int)) {
  for (std::int32_t i = 0; text != nullptr && i < length; ++i)
    text[i] = static_cast<char>(change(static_cast<unsigned char>(text[i])));
  return text;
}

} // namespace

std::int32_t h_strlen(char const * text) { return text != nullptr ? clipped(lengthToNul(text)) : 0; }
std::int32_t h_strlen(wchar_t const * text) { return text != nullptr ? clipped(std::wcslen(text)) : 0; }

int h_strcmp(char const * a, char const * b) { return std::strcmp(orEmpty(a), orEmpty(b)); }
int h_stricmp(char const * a, char const * b) { return _stricmp(orEmpty(a), orEmpty(b)); }

char const * h_strchr(char const * text, char c) { return text != nullptr ? std::strchr(text, c) : nullptr; }
char * h_strchr(char * text, char c) { return const_cast<char *>(h_strchr(const_cast<char const *>(text), c)); }

char const * h_strstr(char const * text, char const * part) {
  return text != nullptr ? std::strstr(text, orEmpty(part)) : nullptr;
}
char * h_strstr(char * text, char const * part) {
  return const_cast<char *>(h_strstr(const_cast<char const *>(text), part));
}

char * h_strlwr(char * text, std::int32_t length) { return eachChar(text, length, std::tolower); }
char * h_strupr(char * text, std::int32_t length) { return eachChar(text, length, std::toupper); }

int h_atoi(char const * text) { return std::atoi(orEmpty(text)); }
long h_atol(char const * text) { return std::atol(orEmpty(text)); }
unsigned long h_atoul(char const * text) { return std::strtoul(orEmpty(text), nullptr, 10); }

} // namespace SV
